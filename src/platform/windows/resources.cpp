#include "platform/windows/resources.h"

#include <string>

#include "native/native.h"
#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

std::filesystem::path PathOf(std::string_view kind, int32_t number, const char* extension) {
  return Native().Desktop().ResourcesFolder() / kind / (std::to_string(number) + extension);
}

template <class Resource>
Ref<Resource> IfThere(const std::filesystem::path& path) {
  if (!Native().Folders().Exists(path.string())) return Nil;
  return New<Resource>(path);
}

}  // namespace

void Sound::Play() const { Native().Desktop().PlaySound(mFile); }

Ref<Picture> ResourceFork::GetPicture(int32_t number) const {
  return IfThere<Picture>(PathOf("PICT", number, ".png"));
}

Ref<Sound> ResourceFork::GetSound(int32_t number) const {
  return IfThere<Sound>(PathOf("snd", number, ".wav"));
}

Text ResourceFork::GetResource(const Text& type, int32_t number) const {
  const auto stream = New<FolderItem>(PathOf(type.Bytes(), number, ".txt"))->OpenAsTextFile();
  return stream ? stream->_ReadAll() : Text();
}

Ref<ResourceFork> appResourceForkGetter() { return New<ResourceFork>(); }

}  // namespace quorvel
