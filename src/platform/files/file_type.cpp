#include "platform/files/file_type.h"

#include <map>
#include <string>
#include <utility>

namespace quorvel {

namespace {

std::map<std::string, RegisteredFileType>& Registry() {
  static std::map<std::string, RegisteredFileType> types;
  return types;
}

}  // namespace

void FileType::Register() {
  if (std::exchange(mRegistered, true)) return;
  Registry().insert_or_assign(std::string(mName.Bytes()),
                              RegisteredFileType{mName, mMacCreator, mMacType, mExtensions});
}

void FileType::Deregister() {
  if (std::exchange(mRegistered, false)) Registry().erase(std::string(mName.Bytes()));
}

Text FileType::ToText() {
  Register();
  return mName;
}

std::optional<RegisteredFileType> FindFileType(const Text& name) {
  const auto found = Registry().find(std::string(name.Bytes()));
  if (found == Registry().end()) return std::nullopt;
  return found->second;
}

}  // namespace quorvel
