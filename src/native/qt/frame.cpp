#include "native/qt/frame.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <utility>

#include "native/qt/accessible.h"
#include "native/qt/canvas.h"
#include "native/qt/controls.h"
#include "native/qt/reading_area.h"
#include "native/qt/strings.h"
#include "native/qt/text_area.h"
#include "native/qt/text_line.h"

namespace quorvel::qt {

namespace {

// A drag of the window's edge that pauses for longer counts as done.
constexpr std::chrono::milliseconds kDragPause(150);

Qt::WindowFlags FlagsOf(const native::WindowState& state) {
  Qt::WindowFlags flags =
      Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
  flags.setFlag(Qt::WindowCloseButtonHint, state.CloseButton);
  flags.setFlag(Qt::WindowMinimizeButtonHint, state.MinimizeButton);
  flags.setFlag(Qt::WindowMaximizeButtonHint, state.MaximizeButton);
  return flags;
}

}  // namespace

Frame::Frame(native::WindowListener& the_listener, native::Callback on_activated)
    : listener(&the_listener),
      activated(std::move(on_activated)),
      content(new Content(this, the_listener)) {
  InstallRole<Frame, QAccessible::Window>();
  setLayoutDirection(Qt::LeftToRight);  // also while a dialog of the toolkit is open
  content->hide();
  if (!kGlobalMenuBar) {
    bar = new MenuBar(this);
    bar->hide();
  }
  drag_pause.setSingleShot(true);
  drag_pause.setInterval(kDragPause);
  drag_pause.callOnTimeout([this] { ReportSize(false); });
}

void Frame::Update(const native::WindowState& state) {
  const bool new_size = state.Width != current.Width || state.Height != current.Height;
  if (new_size) content_size = QSize(state.Width, state.Height);
  const native::WindowState before = std::exchange(current, state);
  setWindowTitle(FromUtf8(state.Title));
  Name(*this, FromUtf8(state.AccessibleName));
  content->ShowBackground(state);
  ShowButtons(state);
  if (state.FullScreen != before.FullScreen) ShowFullScreen(state.FullScreen);
  ApplySize();
  SetShown(state.Visible);
}

// New window flags make the toolkit hide the window, so equal flags are not set again.
void Frame::ShowButtons(const native::WindowState& state) {
  if (FlagsOf(state) == flags) return;
  flags = FlagsOf(state);
  setWindowFlags(flags);
}

void Frame::ShowFullScreen(bool full_screen) {
  setWindowState(windowState().setFlag(Qt::WindowFullScreen, full_screen));
}

// The children are shown after the window, so that the window manager works on the window while the
// toolkit prepares the children.
void Frame::SetShown(bool shown) {
  if (shown && !was_shown) CentreIfAsked();
  if (shown != isVisible()) setVisible(shown);
  if (!was_shown) return;
  content->show();
  if (bar != nullptr) bar->setVisible(current.MenuBarVisible);
}

void Frame::CentreIfAsked() {
  was_shown = true;
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (current.Placement != 2 || screen == nullptr) return;
  QRect centred(QPoint(), size());
  centred.moveCenter(screen->availableGeometry().center());
  move(centred.topLeft());
}

void Frame::ComeToFront() {
  SetShown(true);
  setWindowState(windowState().setFlag(Qt::WindowMinimized, false));
  raise();
  activateWindow();
}

void Frame::ShowMenus(const std::vector<native::MenuEntry>& menus,
                      native::MenuListener& menu_listener) {
  if (bar == nullptr) return;
  bar->ShowMenus(menus, menu_listener);
  ApplySize();
}

void Frame::Forget() {
  listener = nullptr;
  activated = nullptr;
  content->Forget();
}

int Frame::BarHeight(int width) const {
  const bool there = bar != nullptr && current.MenuBarVisible && !bar->actions().isEmpty();
  return there ? bar->heightForWidth(width) : 0;
}

QSize Frame::FrameSize(QSize of_content) const {
  return of_content + QSize(0, BarHeight(of_content.width()));
}

void Frame::ApplySize() {
  const QScopedValueRollback not_by_the_user(sizing_itself, true);
  const bool sized_by_desktop = (windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
  if (!sized_by_desktop && size() != FrameSize(content_size))
    ResizeUnlimited(FrameSize(content_size));
  ApplyLimits();
  LayOutChildren();
}

// Lifts the old limits first. The toolkit would clamp the new size to the old limits, and
// resizeEvent would report the clamped size as a resize by the user.
void Frame::ResizeUnlimited(QSize frame_size) {
  setMinimumSize(0, 0);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  resize(frame_size);
}

// The limits bind the user; a size that the program gives may lie outside the limits.
void Frame::ApplyLimits() {
  const QSize least =
      current.Resizeable ? QSize(current.MinWidth, current.MinHeight) : content_size;
  const QSize most = current.Resizeable ? QSize(current.MaxWidth, current.MaxHeight) : content_size;
  setMinimumSize(FrameSize(least.boundedTo(content_size)));
  setMaximumSize(FrameSize(most.expandedTo(content_size)));
}

void Frame::LayOutChildren() {
  const int top = BarHeight(width());
  if (bar != nullptr) bar->setGeometry(0, 0, width(), top);
  content->setGeometry(0, top, width(), height() - top);
}

void Frame::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (listener != nullptr) listener->OnCloseRequested();
}

// The find line of a text closes before its window, wherever in the window the keyboard is. A key
// that is held down closes no more than one press does.
void Frame::keyPressEvent(QKeyEvent* event) {
  const bool escape = event->matches(QKeySequence::Cancel);
  const bool closes = current.ClosesOnEscape && !event->isAutoRepeat();
  if (!closes || (!escape && !event->matches(QKeySequence::Close))) {
    return QWidget::keyPressEvent(event);
  }
  auto* const find = findChild<QWidget*>("find");
  if (escape && find != nullptr && find->isVisible()) {
    QCoreApplication::sendEvent(find, event);
  } else {
    close();
  }
}

void Frame::resizeEvent(QResizeEvent*) {
  LayOutChildren();
  if (!sizing_itself) NoteUserSize();
}

void Frame::NoteUserSize() {
  if (content->size() == content_size) return;
  content_size = content->size();
  drag_pause.start();
  ReportSize(true);
}

void Frame::ReportSize(bool dragging) {
  if (listener == nullptr) return;
  listener->OnResized(content_size.width(), content_size.height(), dragging);
}

bool Frame::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  switch (event->type()) {
    case QEvent::WindowActivate:
      ReportActivated();
      break;
    case QEvent::Show:
    case QEvent::FontChange:
    case QEvent::StyleChange:
      ApplySize();
      break;
    default:
      break;
  }
  return handled;
}

void Frame::ReportActivated() {
  if (listener != nullptr) listener->OnActivated();
  const native::Callback call = activated;
  if (call) call();
}

Window::~Window() {
  if (frame) frame->Forget();
}

std::unique_ptr<native::TextField> Window::AddTextField(const native::TextFieldState& state,
                                                        native::TextFieldListener& listener) {
  if (state.Multiline && state.ReadOnly) {
    return std::make_unique<ReadingArea>(frame->Inside(), state, listener);
  }
  if (state.Multiline) return std::make_unique<TextArea>(frame->Inside(), state, listener);
  return std::make_unique<TextLine>(frame->Inside(), state, listener);
}

std::unique_ptr<native::Label> Window::AddLabel(const native::LabelState& state) {
  return std::make_unique<Label>(frame->Inside(), state);
}

std::unique_ptr<native::Button> Window::AddButton(const native::ButtonState& state,
                                                  native::Callback pressed) {
  return std::make_unique<Button>(frame->Inside(), state, std::move(pressed));
}

std::unique_ptr<native::Canvas> Window::AddCanvas(const native::CanvasState& state) {
  return std::make_unique<Canvas>(frame->Inside(), state);
}

}  // namespace quorvel::qt
