// The module that plays sounds. The toolkit's multimedia library would double what the program
// loads at its start, so the desktop loads this module, and the library with the module, at the
// first sound.

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

namespace {

void DeleteWhenDone(QSoundEffect& sound) {
  QObject::connect(&sound, &QSoundEffect::playingChanged, &sound, [&sound] {
    if (!sound.isPlaying()) sound.deleteLater();
  });
  QObject::connect(&sound, &QSoundEffect::statusChanged, &sound, [&sound] {
    if (sound.status() == QSoundEffect::Error) sound.deleteLater();
  });
}

}  // namespace

/// Starts to play the WAV file `name`. The sound belongs to `sounds` until the sound has ended.
extern "C" Q_DECL_EXPORT void quorvel_play_sound(QObject& sounds, const QString& name) {
  if (!QFileInfo(name).isFile() || QMediaDevices::defaultAudioOutput().isNull()) return;
  auto* const sound = new QSoundEffect(&sounds);
  DeleteWhenDone(*sound);
  sound->setSource(QUrl::fromLocalFile(name));
  sound->play();
}
