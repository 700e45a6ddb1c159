#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace quorvel::native {

// The controls of a window, one state and one interface for each kind. The contract's control
// object owns the state and hands the whole state over: at the making of the native control, and
// after each change of a member. A native control shows the state and keeps no other.
//
// Lengths and positions are in logical pixels and count from the upper left corner of the window's
// content. Colours are "#rrggbb". Texts of states are valid UTF-8.

/// The members that controls of all kinds show.
struct ControlState {
  std::string Name;            ///< unique in the window; for inspection, never shown
  std::string AccessibleName;  ///< spoken by a screen reader; empty for the text of the control
  int32_t Left = 0;
  int32_t Top = 0;
  int32_t Width = 100;
  int32_t Height = 20;
  int32_t TabIndex = 0;  ///< the rank in the keyboard's order, lowest first
  bool Enabled = true;
  bool Visible = true;
  bool FingerPointer = false;  ///< a hand for the mouse cursor over the control, else an arrow
};

/// The font of a control's text.
struct TextState : ControlState {
  /// A family name; control characters at the end of the name are not part of the name. "System"
  /// is the desktop's own font, "Geneva" its sans serif and "Times" its serif where no family of
  /// that name is installed.
  std::string TextFont = "System";
  int32_t TextSize = 0;  ///< in pixels on screen, in points on paper; 0 for the desktop's own size
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
};

struct LabelState : TextState {
  std::string Text;
  std::string TextColor = "#000000";
  int32_t Alignment = 0;   ///< 0: left, 1: centred, 2: right
  bool Multiline = false;  ///< whether a long text wraps at the label's width
  bool Link = false;       ///< the keyboard reaches the label, and Return or Space clicks the label
};

struct ButtonState : TextState {
  std::string Caption;
};

struct TextFieldState : TextState {
  std::string TextColor = "#000000";
  std::string BackColor = "#ffffff";
  std::string Hint;                  ///< what to enter, shown in a single line without text
  bool Multiline = false;            ///< many lines, or a single line; never changes
  bool ScrollbarVertical = false;    ///< shown when the text is higher than a field of many lines
  bool ScrollbarHorizontal = false;  ///< instead of wrapping at the width of a field of many lines
  bool Password = false;             ///< the characters of a single line are hidden
  bool ReadOnly = false;             ///< the user can select, copy and search, not edit; never
                                     ///< changes in a field of many lines
  bool Border = true;
  bool UseFocusRing = true;  ///< a frame can be seen around a field that has the keyboard
  bool AcceptTabs = false;   ///< the Tab key enters a tab into many lines, or moves the keyboard on
  bool FollowsEnd = false;   ///< a field of many lines follows its end (`native/text/following.h`)
  int32_t LimitText = 0;     ///< the most characters that the user can enter into a single line; 0:
                             ///< no limit. A longer text that the program sets is shown whole
};

struct CanvasState : ControlState {
  /// The picture's file, drawn at the picture's own size from the upper left corner; empty for no
  /// picture. `x@2x.png` beside `x.png` holds the picture at twice the size, for screens with more
  /// than one dot to the pixel.
  std::filesystem::path Backdrop;
  bool AcceptFocus = false;
};

/// A control on the screen, from its making until its destruction. A control is owned by the
/// contract's control object and may be destroyed inside its own callback, or after its window.
class Control {
 public:
  virtual ~Control() = default;
  /// Draws the control, with every text that it was told to show, before returning.
  virtual void Refresh() = 0;
};

/// A control that shows a state of its own kind.
template <class State>
class StatefulControl : public Control {
 public:
  /// Shows the whole state. Members with the value that is shown already must not flicker, scroll
  /// or lose the selection.
  virtual void Update(const State& state) = 0;
};

/// Labels take no mouse events: the window reports the mouse over them. A native side that lets the
/// keyboard click a link reports a press and a release in the middle of the label to the window.
using Label = StatefulControl<LabelState>;
using Button = StatefulControl<ButtonState>;
/// Canvases take no mouse events, as labels.
using Canvas = StatefulControl<CanvasState>;

/// The text of a field is no part of the state: a log is too long to be handed over with each
/// change.
class TextField : public StatefulControl<TextFieldState> {
 public:
  /// Shows `text`. The bytes stay as they are until the next call or until the end of the field, so
  /// that a field need not keep a copy. Any bytes are allowed: bytes that are no part of a
  /// well-formed UTF-8 sequence are read as ISO 8859-1. The first `kept` bytes are the first bytes
  /// of the former text, which the call costs nothing for; 0 stands for another text. A field that
  /// follows its end keeps its position in any text; another field shows another text from the top.
  /// The field may wait until the current handler has returned before it shows the text. No
  /// `OnEdited` comes of this call.
  virtual void ShowText(std::string_view text, size_t kept) = 0;
};

/// What the user does to a text field. The listener outlives the field.
class TextFieldListener {
 public:
  virtual ~TextFieldListener() = default;
  /// The user has changed the text of the field to `text`. The field may be gone when the call
  /// returns. A line end that is entered into a single line, by whichever way, is dropped before
  /// the limit counts and before this call.
  virtual void OnEdited(std::string_view text) = 0;
  /// Keeps the bytes of the shown text as they are now, also after the text has changed and the
  /// field is gone, until the last copy of the pointer goes.
  [[nodiscard]] virtual std::shared_ptr<const void> KeepText() = 0;
};

}  // namespace quorvel::native
