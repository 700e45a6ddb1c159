#pragma once

#include <optional>

#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// A kind of file that save dialogs offer. The first conversion to a text registers the kind.
class FileType : public Object {
 public:
  [[nodiscard]] const quorvel::Text& Name() const { return mName; }
  void Name(const quorvel::Text& name) { mName = name; }
  [[nodiscard]] const quorvel::Text& MacCreator() const { return mMacCreator; }
  void MacCreator(const quorvel::Text& creator) { mMacCreator = creator; }
  [[nodiscard]] const quorvel::Text& MacType() const { return mMacType; }
  void MacType(const quorvel::Text& type) { mMacType = type; }
  [[nodiscard]] const quorvel::Text& Extensions() const { return mExtensions; }
  void Extensions(const quorvel::Text& extensions) { mExtensions = extensions; }

  void Register();
  void Deregister();
  /// Registers the type, then yields its name.
  [[nodiscard]] quorvel::Text ToText();

 private:
  quorvel::Text mName;
  quorvel::Text mMacCreator;
  quorvel::Text mMacType;
  quorvel::Text mExtensions;
  bool mRegistered = false;
};

/// What the registry holds of a type from its `Register` to its `Deregister`.
struct RegisteredFileType {
  Text name;
  Text mac_creator;
  Text mac_type;
  Text extensions;
};

/// Nothing when no type of that name is registered.
[[nodiscard]] std::optional<RegisteredFileType> FindFileType(const Text& name);

}  // namespace quorvel
