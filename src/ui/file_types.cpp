#include "ui/file_types.h"

namespace quorvel::FileTypes1 {

Ref<FileType> pText;

void _Initialize() {
  pText = New<FileType>();
  pText->Name("text");
  pText->Extensions(".txt");
  pText->MacType("text");
  pText->MacCreator("");
  // The conversion registers the type.
  static_cast<void>(pText->ToText());
}

}  // namespace quorvel::FileTypes1
