#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace quorvel::native {

/// What controls of all kinds show; each kind uses the members that mean something to it.
struct ControlState {
  std::string Name;
  std::string AccessibleName;  ///< what a screen reader says; empty for the caption
  int32_t Left = 0;
  int32_t Top = 0;
  int32_t Width = 100;
  int32_t Height = 20;
  int32_t TabIndex = 0;
  bool Enabled = true;
  bool Visible = true;
  bool UseFocusRing = true;
  bool AcceptTabs = false;
  // Text.
  std::string TextFont = "System";
  int32_t TextSize = 0;
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  std::string TextColor = "#000000";
  std::string BackColor = "#ffffff";
  int32_t Alignment = 0;  ///< 0: left, 1: centred, 2: right
  std::string Caption;    ///< a label's or a button's text
  // Text fields.
  bool Multiline = false;
  bool ScrollbarVertical = false;
  bool ScrollbarHorizontal = false;
  bool Styled = false;
  bool Password = false;
  bool ReadOnly = false;
  bool Border = true;
  int32_t LimitText = 0;  ///< the most characters that can be entered; 0: no limit
  // Buttons.
  bool Default = false;
  bool Cancel = false;
  // Canvases.
  bool AcceptFocus = false;
  bool EraseBackground = true;
  std::filesystem::path Backdrop;  ///< the picture's file; empty for none
  // Labels.
  bool Link = false;  ///< can be reached and pressed with the keyboard too
  // The cursor over the control.
  bool FingerPointer = false;
};

class Control {
 public:
  virtual ~Control() = default;
  /// Shows the whole state; what did not change costs nothing that can be seen.
  virtual void Update(const ControlState& state) = 0;
  virtual void Refresh() = 0;
};

class TextField : public Control {
 public:
  virtual void SetText(std::string_view text) = 0;
  /// Adds at the end. A view at the very end stays at the end, any other stays where it is.
  virtual void AppendText(std::string_view text) = 0;
};

class TextFieldListener {
 public:
  virtual ~TextFieldListener() = default;
  /// The user changed the text, which is now `text`.
  virtual void OnEdited(std::string_view text) = 0;
};

}  // namespace quorvel::native
