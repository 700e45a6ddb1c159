#include "native/qt/frame.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <utility>

#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

// A drag that pauses for longer counts as done.
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

Frame::Frame(native::WindowListener& the_listener, native::Callback came_to_front)
    : listener(&the_listener),
      front(std::move(came_to_front)),
      content(new Content(this, the_listener)) {
  if (!kGlobalMenuBar) bar = new MenuBar(this);
  settled.setSingleShot(true);
  settled.setInterval(kDragPause);
  settled.callOnTimeout([this] { TellSize(false); });
}

void Frame::Update(const native::WindowState& state) {
  const bool new_size = state.Width != last.Width || state.Height != last.Height;
  if (new_size) content_size = QSize(state.Width, state.Height);
  const native::WindowState before = std::exchange(last, state);
  setWindowTitle(FromUtf8(state.Title));
  content->ShowBackground(state);
  if (bar != nullptr) bar->setVisible(state.MenuBarVisible);
  ShowButtons(state);
  if (state.FullScreen != before.FullScreen) ShowFullScreen(state.FullScreen);
  Fit();
  SetShown(state.Visible);
}

// Other buttons make the toolkit hide the window.
void Frame::ShowButtons(const native::WindowState& state) {
  if (FlagsOf(state) == flags) return;
  flags = FlagsOf(state);
  setWindowFlags(flags);
}

void Frame::ShowFullScreen(bool full_screen) {
  setWindowState(windowState().setFlag(Qt::WindowFullScreen, full_screen));
}

void Frame::SetShown(bool shown) {
  if (shown == isVisible()) return;
  if (shown && !placed) Place();
  setVisible(shown);
}

void Frame::Place() {
  placed = true;
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (last.Placement != 2 || screen == nullptr) return;
  QRect place(QPoint(), size());
  place.moveCenter(screen->availableGeometry().center());
  move(place.topLeft());
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
  Fit();
}

void Frame::PaintNow() {
  QEvent show_waiting(kShowWaiting);
  QCoreApplication::sendEvent(content, &show_waiting);
  repaint();
}

void Frame::Forget() {
  listener = nullptr;
  front = nullptr;
  content->Forget();
}

int Frame::BarHeight(int width) const {
  const bool there = bar != nullptr && last.MenuBarVisible && !bar->actions().isEmpty();
  return there ? bar->heightForWidth(width) : 0;
}

QSize Frame::Whole(QSize of_content) const {
  return of_content + QSize(0, BarHeight(of_content.width()));
}

void Frame::Fit() {
  const QScopedValueRollback not_by_the_user(fitting, true);
  const bool sized_by_desktop = (windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) != 0;
  if (!sized_by_desktop && size() != Whole(content_size)) TakeSize(Whole(content_size));
  FitLimits();
  Arrange();
}

// In one step: a size on the way, at some limit, would come back as the user's.
void Frame::TakeSize(QSize whole) {
  setMinimumSize(0, 0);
  setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  resize(whole);
}

// The limits are the user's: a size that the program gives may lie outside.
void Frame::FitLimits() {
  const QSize least = last.Resizeable ? QSize(last.MinWidth, last.MinHeight) : content_size;
  const QSize most = last.Resizeable ? QSize(last.MaxWidth, last.MaxHeight) : content_size;
  setMinimumSize(Whole(least.boundedTo(content_size)));
  setMaximumSize(Whole(most.expandedTo(content_size)));
}

void Frame::Arrange() {
  const int top = BarHeight(width());
  if (bar != nullptr) bar->setGeometry(0, 0, width(), top);
  content->setGeometry(0, top, width(), height() - top);
}

void Frame::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (listener != nullptr) listener->OnCloseRequested();
}

void Frame::resizeEvent(QResizeEvent*) {
  Arrange();
  if (!fitting) NoteSize();
}

void Frame::NoteSize() {
  if (content->size() == content_size) return;
  content_size = content->size();
  settled.start();
  TellSize(true);
}

void Frame::TellSize(bool dragging) {
  if (listener == nullptr) return;
  listener->OnResized(content_size.width(), content_size.height(), dragging);
}

bool Frame::event(QEvent* event) {
  const bool handled = QWidget::event(event);
  switch (event->type()) {
    case QEvent::WindowActivate:
      TellFront();
      break;
    case QEvent::Show:
    case QEvent::FontChange:
    case QEvent::StyleChange:
      Fit();
      break;
    default:
      break;
  }
  return handled;
}

void Frame::TellFront() {
  if (listener != nullptr) listener->OnActivated();
  const native::Callback tell = front;
  if (tell) tell();
}

}  // namespace quorvel::qt
