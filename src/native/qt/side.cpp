#include "native/qt/side.h"

#include <dlfcn.h>
#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <QLibraryInfo>
#include <QLocale>
#include <QPixmap>
#include <QSettings>
#include <QTimer>
#include <QTranslator>
#include <future>
#include <string>

#include "native/qt/desktop.h"
#include "native/qt/dialogs.h"
#include "native/qt/event_loop.h"
#include "native/qt/style.h"
#include "native/qt/windows.h"

namespace quorvel::qt {

namespace {

// The toolkit's file dialog would keep its look and its history in QtProject.conf in the user's
// configuration folder. No file can be made below this path, so the toolkit keeps nothing.
void KeepNoSettings() {
  for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat}) {
    QSettings::setPath(format, QSettings::UserScope, "/dev/null");
  }
}

// Reading the list of installed fonts is a tenth of the start, and the toolkit does so as late as
// at the first text. Where the toolkit takes the list from this library, the library keeps the
// list.
void ReadFontList() {
  const auto read = reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "FcInit"));
  if (read) read();
}

// The icons in the folder that lies to the program as the installed folder does, also in a build
// tree. A search by name through the desktop's icon themes would be a fifth of the start. To detect
// the format, the toolkit would load its modules for all formats.
QIcon WindowIcon() {
  QIcon icon;
  const QString folder = QCoreApplication::applicationDirPath() + "/" QUORVEL_ICONS_FOLDER "/";
  for (const int side : {16, 24, 32, 48}) {
    const QString file = QString("%1x%1/apps/" QUORVEL_APPLICATION_ID ".png").arg(side);
    QImageReader reader(folder + file, "png");
    reader.setAutoDetectImageFormat(false);
    icon.addPixmap(QPixmap::fromImageReader(&reader));
  }
  return icon;
}

class Side final : public native::Side {
 public:
  explicit Side(const char* program_name)
      : name(program_name), application(argument_count, arguments), windows(loop) {
    QCoreApplication::setApplicationName("Quorvel");
    QCoreApplication::setQuitLockEnabled(false);
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName(QUORVEL_APPLICATION_ID);
    QApplication::setStyle(new Style(QApplication::style()));
    // Otherwise each menu bar first asks over the bus of the session for a global menu bar.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar, !kGlobalMenuBar);
    // Reading the pictures is a tenth of the start, and the first window need not wait for them.
    QTimer::singleShot(0, &application, [] { QApplication::setWindowIcon(WindowIcon()); });
    KeepNoSettings();
    SpeakTheUsersLanguage();
  }
  // Widgets that were given to deleteLater() cannot outlive the application.
  ~Side() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;

  native::EventLoop& Loop() override { return loop; }
  native::Windows& Windows() override { return windows; }
  native::Dialogs& Dialogs() override { return dialogs; }
  native::Desktop& Desktop() override { return desktop; }
  FileCalls& Files() override { return PosixFileCalls(); }
  FolderCalls& Folders() override { return PosixFolderCalls(); }
  SocketCalls& Sockets() override { return PosixSocketCalls(); }
  LinkCalls& Links() override { return PosixLinkCalls(); }

 private:
  // The dialogs of the toolkit speak the user's language. The texts of the program are not looked
  // up in the translation and stay; so does their direction, in which painters draw all texts.
  void SpeakTheUsersLanguage() {
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!translator.load(QLocale::system(), "qtbase", "_", folder)) return;
    QCoreApplication::installTranslator(&translator);
  }

  // The toolkit sees the program's name alone, so no option of the toolkit has an effect.
  std::string name;
  // Goes on while the application connects to the screen.
  const std::future<void> font_list = std::async(ReadFontList);
  int argument_count = 1;
  char* arguments[2] = {name.data(), nullptr};
  QApplication application;
  QTranslator translator;
  EventLoop loop;
  qt::Windows windows;
  qt::Dialogs dialogs;
  qt::Desktop desktop;
};

}  // namespace

std::unique_ptr<native::Side> MakeSide(const char* program_name) {
  return std::make_unique<Side>(program_name);
}

}  // namespace quorvel::qt
