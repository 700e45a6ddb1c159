#include "native/qt/windows.h"

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWheelEvent>
#include <algorithm>
#include <cstdlib>

#include "native/qt/view/text_view.h"

namespace quorvel::qt {

namespace {

const native::MenuEntry* FindQuit(const std::vector<native::MenuEntry>& entries) {
  for (const native::MenuEntry& entry : entries) {
    if (entry.Role == native::MenuRole::Quit) return &entry;
    if (const native::MenuEntry* found = FindQuit(entry.Children)) return found;
  }
  return nullptr;
}

// In a field of many lines, the text and the scroll bars are widgets inside the field's widget.
bool IsPartOfField(const QWidget* widget) {
  for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
    if (qobject_cast<const QLineEdit*>(widget) != nullptr) return true;
    if (qobject_cast<const QPlainTextEdit*>(widget) != nullptr) return true;
    if (dynamic_cast<const TextView*>(widget) != nullptr) return true;
  }
  return false;
}

native::WindowState SmallWindowState() {
  native::WindowState state;
  state.Title = "Quorvel";
  state.Width = 260;
  state.Height = 0;
  state.Resizeable = false;
  state.MaximizeButton = false;
  return state;
}

}  // namespace

Windows::Windows(EventLoop& the_loop) : loop(the_loop) {
  if (kGlobalMenuBar) global_bar = std::make_unique<MenuBar>(nullptr);
  menu_check.setSingleShot(true);
  menu_check.callOnTimeout([this] { KeepMenusInReach(); });
  loop.WhenRun([this] { menu_check.start(0); });
  qApp->installEventFilter(this);
}

Windows::~Windows() { loop.WhenRun(nullptr); }

Frame* Windows::MakeFrame(native::WindowListener& listener) {
  const QPointer self(this);
  auto* frame = new Frame(listener, [self] {
    if (self) self->NeedMenus();
  });
  ShowMenusIn(*frame);
  return frame;
}

std::unique_ptr<native::Window> Windows::Create(native::WindowListener& listener) {
  std::erase_if(frames, [](const QPointer<Frame>& frame) { return frame.isNull(); });
  frames.emplace_back(MakeFrame(listener));
  return std::make_unique<Window>(frames.back());
}

void Windows::ShowMenuBar(const std::vector<native::MenuEntry>& new_menus,
                          native::MenuListener& listener) {
  menus = new_menus;
  menu_listener = &listener;
  if (global_bar) global_bar->ShowMenus(menus, listener);
  for (const QPointer<Frame>& frame : frames) {
    if (frame) ShowMenusIn(*frame);
  }
  if (small_window) ShowMenusIn(*small_window);
  menu_check.start(0);
}

void Windows::ForgetMenuBar() {
  if (menu_listener != nullptr) ShowMenuBar({}, *menu_listener);
  menu_listener = nullptr;
}

void Windows::ShowMenusIn(Frame& frame) {
  if (menu_listener != nullptr) frame.ShowMenus(menus, *menu_listener);
}

void Windows::NeedMenus() {
  if (menu_listener != nullptr) menu_listener->OnMenuNeeded();
}

// The toolkit sends ShortcutOverride to the QWindow first and then to widgets. Reacting to the
// QWindow alone updates the menus once for each key, before shortcuts are matched.
bool Windows::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::ShortcutOverride && watched->isWindowType()) NeedMenus();
  const bool comes_or_goes = type == QEvent::Show || type == QEvent::Hide;
  if (comes_or_goes && dynamic_cast<Frame*>(watched) != nullptr) menu_check.start(0);
  return type == QEvent::Wheel && TurnsFontSize(watched, event);
}

// Sends the font shortcuts. The toolkit alone would zoom the text of the field under the pointer.
bool Windows::TurnsFontSize(QObject* watched, QEvent* event) {
  const auto* wheel = static_cast<QWheelEvent*>(event);
  const auto* widget = qobject_cast<QWidget*>(watched);
  if ((wheel->modifiers() & Qt::ControlModifier) == 0 || !IsPartOfField(widget)) return false;
  if (menu_listener == nullptr || !widget->window()->isActiveWindow()) return true;
  wheel_turn += wheel->angleDelta().y();
  for (; std::abs(wheel_turn) >= QWheelEvent::DefaultDeltasPerStep;
       wheel_turn -=
       wheel_turn > 0 ? QWheelEvent::DefaultDeltasPerStep : -QWheelEvent::DefaultDeltasPerStep) {
    menu_listener->OnShortcut(wheel_turn > 0 ? "Cmd++" : "Cmd+-");
  }
  return true;
}

bool Windows::AnyOpen() const {
  return std::ranges::any_of(
      frames, [](const QPointer<Frame>& frame) { return frame && frame->isVisible(); });
}

void Windows::KeepMenusInReach() {
  const bool needed = !kGlobalMenuBar && loop.Running() && !menus.empty() && !AnyOpen();
  if (needed) {
    ShowSmallWindow();
  } else if (small_window) {
    small_window->hide();
  }
}

void Windows::ShowSmallWindow() {
  if (small_window) {
    small_window->show();
    return;
  }
  small_window.reset(MakeFrame(*this));
  small_window->Update(SmallWindowState());
}

void Windows::OnCloseRequested() {
  if (const native::MenuEntry* quit = FindQuit(menus)) menu_listener->OnMenuChosen(quit->Name);
}

}  // namespace quorvel::qt
