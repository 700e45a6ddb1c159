#include "ui/text_window.h"

namespace quorvel {

void TextWindow::AddMenuHandlers() {
  _AddMenuHandler("FilePrint", [this] { return _FilePrint_Action(); });
  _AddMenuHandler("FileSave", [this] { return _FileSave_Action(); });
}

void TextWindow::Event_EnableMenuItems() {
  FilePrint()->Enabled(true);
  FileSave()->Enabled(true);
}

bool TextWindow::_FilePrint_Action() {
  _TextField()->efPrint(_PageNumbers());
  return false;
}

bool TextWindow::_FileSave_Action() {
  _TextField()->efSave(_SuggestedName());
  return false;
}

}  // namespace quorvel
