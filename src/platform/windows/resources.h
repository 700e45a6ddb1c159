#pragma once

#include <cstdint>
#include <filesystem>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// A picture in a file; its size is the file's.
class Picture : public Object {
 public:
  explicit Picture(std::filesystem::path file) : mFile(std::move(file)) {}
  [[nodiscard]] const std::filesystem::path& File() const { return mFile; }

 private:
  std::filesystem::path mFile;
};

class Sound : public Object {
 public:
  explicit Sound(std::filesystem::path file) : mFile(std::move(file)) {}
  /// Starts to play and returns.
  void Play() const;

 private:
  std::filesystem::path mFile;
};

/// The program's own texts, pictures and sounds, by kind and number: files below its resources
/// folder, as `TEXT/170.txt`, `PICT/169.png`, `snd/168.wav`.
class ResourceFork : public Object {
 public:
  /// Nil when there is none of that number.
  [[nodiscard]] Ref<Picture> GetPicture(int32_t number) const;
  [[nodiscard]] Ref<Sound> GetSound(int32_t number) const;
  /// The bytes as a text with no mark; empty when there is none of that number.
  [[nodiscard]] Text GetResource(const Text& type, int32_t number) const;
};

[[nodiscard]] Ref<ResourceFork> appResourceForkGetter();

}  // namespace quorvel
