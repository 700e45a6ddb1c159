#pragma once

#include "platform/files/files.h"
#include "platform/values/object.h"

namespace quorvel::FileTypes1 {

/// The one kind of file that the program saves: "text".
extern Ref<FileType> pText;

/// Makes `pText` and registers it.
void _Initialize();

}  // namespace quorvel::FileTypes1
