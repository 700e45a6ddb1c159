#pragma once

#include "platform/windows/controls.h"

namespace quorvel {

enum class PageNumbers : bool { Off, On };

/// A text field with the commands Print and Save. Both show a message for an empty text. A
/// cancelled dialog, and a failure of a file or a printer, end the command without a message.
class editFieldExtras : public EditField {
 public:
  /// Prints the text through the desktop's dialogs, with page numbers at the foot or without.
  virtual void efPrint(PageNumbers page_numbers);
  /// Asks for a file and writes the text to the file as UTF-8. Adds ".txt" to a file name without
  /// ".txt" at the end.
  virtual void efSave(const quorvel::Text& suggested_name);
};

}  // namespace quorvel
