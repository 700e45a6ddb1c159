#pragma once

#include "platform/windows/controls.h"

namespace quorvel {

enum class PageNumbers : bool { Off, On };

/// A text field that can print itself and save itself as a text file. Neither tells how it went:
/// a cancelled dialog, and a failure of a file or a printer, end it in silence.
class editFieldExtras : public EditField {
 public:
  /// Prints the text through the desktop's dialogs, with page numbers at the foot or without.
  virtual void efPrint(PageNumbers page_numbers);
  /// Asks where to save, and writes the text there as UTF-8; adds ".txt" to a name without it.
  virtual void efSave(const quorvel::Text& suggested_name);
};

}  // namespace quorvel
