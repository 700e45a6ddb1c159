#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// A picture in a file.
class Picture : public Object {
 public:
  explicit Picture(std::filesystem::path file) : mFile(std::move(file)) {}
  [[nodiscard]] const std::filesystem::path& File() const { return mFile; }

 private:
  std::filesystem::path mFile;
};

/// A sound in a file.
class Sound : public Object {
 public:
  explicit Sound(std::filesystem::path file) : mFile(std::move(file)) {}
  /// Starts the sound and returns at once.
  void Play() const;

 private:
  std::filesystem::path mFile;
};

/// The program's own texts, pictures and sounds, by kind and number: files below the resources
/// folder, like `TEXT/170.txt`, `PICT/169.png`, `snd/168.wav`.
class ResourceFork : public Object {
 public:
  /// The picture, or sound, with the number `number`; Nil when the file is missing.
  [[nodiscard]] Ref<Picture> GetPicture(int32_t number) const;
  [[nodiscard]] Ref<Sound> GetSound(int32_t number) const;
  /// The bytes of the text with the number `number`, without an encoding mark; empty when the file
  /// is missing.
  [[nodiscard]] Text GetResource(const Text& type, int32_t number) const;
};

/// The program's resources.
[[nodiscard]] Ref<ResourceFork> appResourceForkGetter();

}  // namespace quorvel
