#include "platform/files/file_type.h"

#include <map>
#include <utility>

namespace quorvel {

namespace {

std::map<std::string, std::string>& ExtensionsByTypeName() {
  static std::map<std::string, std::string> types;
  return types;
}

}  // namespace

void FileType::Register() {
  if (std::exchange(mRegistered, true)) return;
  ExtensionsByTypeName().insert_or_assign(std::string(mName.Bytes()),
                                          std::string(mExtensions.Bytes()));
}

void FileType::Deregister() {
  if (std::exchange(mRegistered, false)) ExtensionsByTypeName().erase(std::string(mName.Bytes()));
}

Text FileType::ToText() {
  Register();
  return mName;
}

std::string RegisteredExtensions(const Text& type_name) {
  const auto type = ExtensionsByTypeName().find(std::string(type_name.Bytes()));
  return type == ExtensionsByTypeName().end() ? std::string() : type->second;
}

}  // namespace quorvel
