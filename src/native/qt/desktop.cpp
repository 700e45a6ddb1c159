#include "native/qt/desktop.h"

#include <unistd.h>
#include <QAudioDevice>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMediaDevices>
#include <QOperatingSystemVersion>
#include <QSoundEffect>
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

void DeleteWhenDone(QSoundEffect& sound) {
  QObject::connect(&sound, &QSoundEffect::playingChanged, &sound, [&sound] {
    if (!sound.isPlaying()) sound.deleteLater();
  });
  QObject::connect(&sound, &QSoundEffect::statusChanged, &sound, [&sound] {
    if (sound.status() == QSoundEffect::Error) sound.deleteLater();
  });
}

}  // namespace

std::filesystem::path Desktop::DocumentsFolder() { return FindDocumentsFolder(); }

std::filesystem::path Desktop::ResourcesFolder() {
  const QDir program(QCoreApplication::applicationDirPath());
  const QString beside = program.filePath("resources");
  const QString installed = program.filePath("../share/quorvel/resources");
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
  const QString name = QFile::decodeName(file.c_str());
  if (!QFileInfo(name).isFile() || QMediaDevices::defaultAudioOutput().isNull()) return;
  auto* sound = new QSoundEffect(&sounds);
  DeleteWhenDone(*sound);
  sound->setSource(QUrl::fromLocalFile(name));
  sound->play();
}

void Desktop::ReportError(std::string_view line) { OfferLine(STDERR_FILENO, line); }

}  // namespace quorvel::qt
