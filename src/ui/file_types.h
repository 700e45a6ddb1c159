#pragma once

#include "platform/files/file_type.h"
#include "platform/values/object.h"

namespace quorvel::FileTypes1 {

/// The creator code of all files from the program.
inline constexpr const char* kCreator = "QVL7";

/// The file type "text", for all files that the program saves.
extern Ref<FileType> pText;

/// Makes and registers `pText`.
void _Initialize();

}  // namespace quorvel::FileTypes1
