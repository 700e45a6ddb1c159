#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/system_calls.h"

/// What a native side implements. The contract above holds all rules and all state; a native
/// object shows what it is told and reports what the user does, through a listener.
///
/// Texts cross in valid UTF-8. Sizes and places are in pixels of the toolkit's logical
/// coordinates. A native object may be destroyed inside its own callback, and calls no listener
/// once it is gone. All calls come from one thread.
namespace quorvel::native {

using Callback = std::function<void()>;

/// Ends what it stands for (a watch, a timer) when it goes, also inside its own callback.
class Subscription {
 public:
  virtual ~Subscription() = default;
};

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  /// Delivers events until `Stop`.
  virtual void Run() = 0;
  /// Ends `Run`, or the next one, and any dialog that is open as if the user had cancelled it.
  virtual void Stop() = 0;
  /// Waits up to `most_ms` for an event, delivers what is there, returns.
  virtual void Turn(int32_t most_ms) = 0;
  /// Calls back whenever `descriptor` has something to read.
  [[nodiscard]] virtual std::unique_ptr<Subscription> Watch(int descriptor, Callback readable) = 0;
  [[nodiscard]] virtual std::unique_ptr<Subscription> Repeat(std::chrono::milliseconds period,
                                                             Callback fired) = 0;
};

struct WindowState {
  std::string Title;
  int32_t Width = 300;
  int32_t Height = 300;
  int32_t MinWidth = 64;
  int32_t MinHeight = 64;
  int32_t MaxWidth = 32000;
  int32_t MaxHeight = 32000;
  int32_t Placement = 0;  ///< 0: the desktop's choice; 2: centred on the main screen
  int32_t Frame = 0;
  int32_t MacProcID = 0;
  bool Visible = true;
  bool Resizeable = true;
  bool CloseButton = true;
  bool MinimizeButton = true;
  bool MaximizeButton = true;
  bool MenuBarVisible = true;
  bool FullScreen = false;
  bool LiveResize = true;
  bool Composite = false;
  bool HasBackColor = false;
  std::string BackColor = "#ffffff";
};

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

/// A place in a window's content. Outside of the window, both are -1.
struct Point {
  int32_t x = -1;
  int32_t y = -1;
};

class WindowListener {
 public:
  virtual ~WindowListener() = default;
  virtual void OnCloseRequested() = 0;
  virtual void OnActivated() = 0;
  /// The user gave the content a new size; `dragging` while it may still change.
  virtual void OnResized(int32_t width, int32_t height, bool dragging) = 0;
  virtual void OnMouseMoved(Point place) = 0;
  virtual void OnMousePressed(Point place) = 0;
  virtual void OnMouseReleased(Point place) = 0;
};

class Window {
 public:
  virtual ~Window() = default;
  virtual void Update(const WindowState& state) = 0;
  /// Visible, and in front of the others.
  virtual void Show() = 0;
  virtual void Refresh() = 0;
  [[nodiscard]] virtual std::unique_ptr<TextField> AddTextField(TextFieldListener& listener) = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddLabel() = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddButton(Callback pressed) = 0;
  [[nodiscard]] virtual std::unique_ptr<Control> AddCanvas() = 0;
};

enum class MenuRole : uint8_t { Plain, About, Quit };

struct MenuEntry {
  std::string Name;
  std::string Text;              ///< "&" marks the mnemonic
  std::string KeyboardShortcut;  ///< as "Cmd+S"; empty for none
  MenuRole Role = MenuRole::Plain;
  bool Enabled = false;
  std::vector<MenuEntry> Children;
};

class MenuListener {
 public:
  virtual ~MenuListener() = default;
  /// A menu is about to open, a shortcut to be tried, or another window has come to the front.
  virtual void OnMenuNeeded() = 0;
  virtual void OnMenuChosen(std::string_view name) = 0;
};

/// Makes and shows windows, and the one menu bar: the desktop's own, or a copy in each window.
class Windows {
 public:
  virtual ~Windows() = default;
  [[nodiscard]] virtual std::unique_ptr<Window> Create(WindowListener& listener) = 0;
  /// The whole menu bar, and again after each change. `listener` outlives this object.
  virtual void ShowMenuBar(const std::vector<MenuEntry>& menus, MenuListener& listener) = 0;
};

struct SaveQuestion {
  std::string default_name;
  std::string type_name;
  std::string extension;  ///< with its point; empty for none
  std::filesystem::path folder;
};

/// A text laid out to a width on the pages of a print job; goes before its job.
class PrintLayout {
 public:
  virtual ~PrintLayout() = default;
  /// Draws as many of the remaining lines as fit whole into `height`, from that point down.
  virtual void DrawBlock(int32_t x, int32_t y, int32_t height) = 0;
  /// Whether all has been drawn.
  [[nodiscard]] virtual bool AtEnd() const = 0;
};

/// A print job, on its first page. Lengths are in 1/72 inch, places count from the corner of the
/// printable area, colours are black on white. The job goes to the printer when this object goes.
class PrintJob {
 public:
  virtual ~PrintJob() = default;
  /// The pages that the user asked for; 1 to 9999 for all.
  [[nodiscard]] virtual std::pair<int32_t, int32_t> PageRange() const = 0;
  [[nodiscard]] virtual int32_t Width() const = 0;
  [[nodiscard]] virtual int32_t Height() const = 0;
  virtual void DrawString(std::string_view text, int32_t x, int32_t y, std::string_view font,
                          int32_t size) = 0;
  /// Ends the page and begins the next. Shows how far the job is, and delivers events.
  virtual void NextPage() = 0;
  /// Whether the user has called the job off: nothing more of it will be printed.
  [[nodiscard]] virtual bool Cancelled() const = 0;
  /// The text in the font of `look`.
  [[nodiscard]] virtual std::unique_ptr<PrintLayout> LayOut(std::string_view text,
                                                            const ControlState& look,
                                                            int32_t width) = 0;
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual void Message(std::string_view text) = 0;
  /// The page setup of the job to come; false when the user cancels.
  [[nodiscard]] virtual bool AskPageSetup() = 0;
  /// A job on the printer, or the PDF, that the user chose; null when the user cancels or the
  /// printer cannot be opened.
  [[nodiscard]] virtual std::unique_ptr<PrintJob> AskPrint() = 0;
  /// The chosen file, or nothing when the user cancels. Asks itself before a file is replaced.
  [[nodiscard]] virtual std::optional<std::filesystem::path> AskSaveFile(
      const SaveQuestion& question) = 0;
};

class Desktop {
 public:
  virtual ~Desktop() = default;
  /// The user's documents folder.
  [[nodiscard]] virtual std::filesystem::path DocumentsFolder() = 0;
  /// The folder with the program's texts, pictures and sounds.
  [[nodiscard]] virtual std::filesystem::path ResourcesFolder() = 0;
  [[nodiscard]] virtual std::chrono::system_clock::time_point Now() = 0;
  /// What the system answers to a four-character selector; nothing when it knows none.
  [[nodiscard]] virtual std::optional<int32_t> Gestalt(std::string_view selector) = 0;
  virtual void OpenUrl(std::string_view url) = 0;
  /// Starts to play and returns.
  virtual void PlaySound(const std::filesystem::path& file) = 0;
  /// Where unhandled exceptions are reported: one line, without its end.
  virtual void ReportError(std::string_view line) = 0;
};

/// All of a native side.
class Side {
 public:
  virtual ~Side() = default;
  virtual EventLoop& Loop() = 0;
  virtual native::Windows& Windows() = 0;
  virtual native::Dialogs& Dialogs() = 0;
  virtual native::Desktop& Desktop() = 0;
  virtual FileCalls& Files() { return PosixFileCalls(); }
  virtual SocketCalls& Sockets() { return PosixSocketCalls(); }
};

}  // namespace quorvel::native
