#pragma once

#include <QTimer>
#include <QWidget>

#include "native/qt/content.h"
#include "native/qt/menu_bar.h"
#include "native/qt/owned.h"
#include "native/window.h"

namespace quorvel::qt {

/// The widget of a window: a menu bar, unless the desktop has one menu bar for all windows, and
/// below the menu bar a content of exactly the asked size.
class Frame final : public QWidget {
 public:
  /// `on_activated` is called when the window has come to the front, after the listener.
  Frame(native::WindowListener& the_listener, native::Callback on_activated);

  void Update(const native::WindowState& state);
  void ShowMenus(const std::vector<native::MenuEntry>& menus, native::MenuListener& menu_listener);
  void ComeToFront();
  /// Calls neither the listener nor `on_activated` from now on.
  void Forget();
  [[nodiscard]] Content& Inside() { return *content; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void ShowButtons(const native::WindowState& state);
  void ShowFullScreen(bool full_screen);
  void SetShown(bool shown);
  [[nodiscard]] int BarHeight(int width) const;
  [[nodiscard]] QSize FrameSize(QSize of_content) const;
  void ApplySize();
  void ResizeUnlimited(QSize frame_size);
  void ApplyLimits();
  void LayOutChildren();
  void CentreIfAsked();
  void NoteUserSize();
  void ReportSize(bool dragging);
  void ReportActivated();

  native::WindowListener* listener;
  native::Callback activated;
  MenuBar* bar = nullptr;
  Content* content;
  QTimer drag_pause;  // restarted by each size of a drag; the drag ends with its timeout
  native::WindowState current;
  QSize content_size{current.Width, current.Height};  // the present size, or the size to come
  Qt::WindowFlags flags;
  bool sizing_itself = false;  // the program's own sizes are not reported
  bool was_shown = false;
};

/// Implements `native::Window` with a frame. The frame is deleted after this object, once no
/// handler of the frame is running.
class Window final : public native::Window {
 public:
  explicit Window(Frame* the_frame) : frame(the_frame) {}
  ~Window() override;
  void Update(const native::WindowState& state) override { frame->Update(state); }
  void Show() override { frame->ComeToFront(); }
  void Refresh() override { frame->repaint(); }
  [[nodiscard]] std::unique_ptr<native::TextField> AddTextField(
      const native::TextFieldState& state, native::TextFieldListener& listener) override;
  [[nodiscard]] std::unique_ptr<native::Label> AddLabel(const native::LabelState& state) override;
  [[nodiscard]] std::unique_ptr<native::Button> AddButton(const native::ButtonState& state,
                                                          native::Callback pressed) override;
  [[nodiscard]] std::unique_ptr<native::Canvas> AddCanvas(
      const native::CanvasState& state) override;

 private:
  Owned<Frame> frame;
};

}  // namespace quorvel::qt
