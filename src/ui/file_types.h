#pragma once

#include "platform/files/file_type.h"
#include "platform/values/object.h"

namespace quorvel::FileTypes1 {

/// The creator code of the files that the program writes.
inline constexpr const char* kCreator = "QVL7";

/// The one kind of file that the program saves: "text".
extern Ref<FileType> pText;

/// Makes `pText` and registers it.
void _Initialize();

}  // namespace quorvel::FileTypes1
