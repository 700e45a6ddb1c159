#pragma once

#include <QString>

namespace quorvel::qt {

/// Keeps a text field's text from growing beyond a number of characters by what the user enters.
/// A longer text that the program has put there stays.
class InputLimit {
 public:
  /// The most characters; 0 for no limit.
  void Set(int characters) { most = characters; }
  [[nodiscard]] bool Any() const { return most > 0; }
  /// The program has put `text` there.
  void Put(const QString& text);
  /// The user has entered something that ends at `cursor`, which made the text `text`: how many
  /// UTF-16 units before the cursor must go again.
  [[nodiscard]] int Surplus(const QString& text, int cursor);

 private:
  qsizetype most = 0;
  qsizetype held = 0;
};

}  // namespace quorvel::qt
