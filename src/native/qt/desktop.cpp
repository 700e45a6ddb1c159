#include "native/qt/desktop.h"

#include <unistd.h>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QLibrary>
#include <QOperatingSystemVersion>
#include <QUrl>

#include <algorithm>

#include "native/documents_folder.h"
#include "native/qt/strings.h"
#include "native/standard_error.h"

namespace quorvel::qt {

namespace {

std::filesystem::path PathOf(const QString& name) { return QFile::encodeName(name).toStdString(); }

// Version 10.4.11 is 0x1049: two decimal digits, then one each, of which 9 is the most.
int32_t PackedVersion(const QOperatingSystemVersion& version) {
  const int major = version.majorVersion();
  const int minor = std::clamp(version.minorVersion(), 0, 9);
  const int micro = std::clamp(version.microVersion(), 0, 9);
  return (major / 10 % 10) << 12 | (major % 10) << 8 | minor << 4 | micro;
}

QDir ProgramFolder() { return QCoreApplication::applicationDirPath(); }

// The module of sound/sound.cpp, beside the program or installed; null when the module is absent.
auto FindPlayer() {
  using Player = void (*)(QObject & sounds, const QString& name);
  for (const char* const folder : {".", QUORVEL_MODULES_FOLDER}) {
    QLibrary module(ProgramFolder().filePath(folder) + "/quorvel_sound");
    if (const auto play = module.resolve("quorvel_play_sound")) {
      return reinterpret_cast<Player>(play);
    }
  }
  return Player();
}

}  // namespace

std::filesystem::path Desktop::DocumentsFolder() { return FindDocumentsFolder(); }

std::filesystem::path Desktop::ResourcesFolder() {
  const QString beside = ProgramFolder().filePath("resources");
  const QString installed = ProgramFolder().filePath(QUORVEL_RESOURCES_FOLDER);
  return PathOf(QDir::cleanPath(QDir(beside).exists() ? beside : installed));
}

std::chrono::system_clock::time_point Desktop::Now() { return std::chrono::system_clock::now(); }

std::optional<int32_t> Desktop::Gestalt(std::string_view selector) {
  const auto system = QOperatingSystemVersion::current();
  if (system.type() != QOperatingSystemVersion::MacOS || selector != "sysv") return std::nullopt;
  return PackedVersion(system);
}

void Desktop::OpenUrl(std::string_view url) { QDesktopServices::openUrl(QUrl(FromUtf8(url))); }

void Desktop::PlaySound(const std::filesystem::path& file) {
  static const auto play = FindPlayer();
  if (play) play(sounds, QFile::decodeName(file.c_str()));
}

void Desktop::ReportError(std::string_view line) { OfferLine(STDERR_FILENO, line); }

}  // namespace quorvel::qt
