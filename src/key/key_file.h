#pragma once

#include "platform/files/folder_item.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

/// The key file (`docs/key-file.md`): the version marker on the first line, the key on the second.
namespace quorvel {

inline constexpr const char* kKeyFileName = "QuorvelKeyFile";
/// The marker that the program writes. A reader looks at the first character alone, so the marker
/// does not follow the program's version.
inline constexpr const char* kKeyFileMarker = "1.0.5";

/// The lines of a key file. A missing line is empty.
struct KeyFile {
  Text marker;
  Text key;
};

/// The user's key file, whether the file exists or not.
[[nodiscard]] Ref<FolderItem> FindKeyFile();
/// Reads a key file. A file that does not exist has empty lines; a file that cannot be opened
/// raises `NilObjectException`.
[[nodiscard]] KeyFile ReadKeyFile(const FolderItem& file);

}  // namespace quorvel
