#pragma once

#include <QLineEdit>

#include "native/control.h"
#include "native/qt/content.h"
#include "native/qt/owned.h"

namespace quorvel::qt {

/// The rules for the characters that the user enters into a single line: no line ends, and no more
/// characters than the limit. A text that the program sets is exempt, and stays.
class EntryRules {
 public:
  /// The most characters; 0 for no limit.
  void SetLimit(int characters) { limit = characters; }
  /// The program has set `text`.
  void NoteText(const QString& text);
  /// The user has entered characters that end at `cursor`, which made the text `text`. Removes the
  /// characters that break a rule, from the cursor backwards; true when there were any.
  bool Apply(QString& text, int& cursor);

 private:
  bool DropLineEnds(QString& text, int& cursor) const;
  bool DropSurplus(QString& text, int& cursor) const;

  qsizetype limit = 0;
  qsizetype held_characters = 0;
  qsizetype held_line_ends = 0;
};

/// A text field of a single line.
class TextLine final : public native::TextField {
 public:
  TextLine(Content& content, const native::TextFieldState& state,
           native::TextFieldListener& the_listener);
  void Update(const native::TextFieldState& state) override;
  void Refresh() override;
  void ShowText(std::string_view text, size_t kept) override;

 private:
  void OnEdited();

  native::TextFieldListener& listener;
  Owned<QLineEdit> widget;
  EntryRules rules;
  QObject receiver;  // the context of the connections: no signal arrives after its destruction
};

}  // namespace quorvel::qt
