#include "native/qt/event_loop.h"

#include <QApplication>
#include <QDialog>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <optional>
#include <utility>

#include "native/quit_signals.h"

namespace quorvel::qt {

namespace {

// Takes the toolkit's own quit (the desktop's session ends, the dock's menu) and the signals.
class QuitWatch final : public QObject {
 public:
  explicit QuitWatch(native::Callback callback) : asked(std::move(callback)) {
    qApp->installEventFilter(this);
    if (quit_signals->Descriptor() < 0) return;
    notifier.emplace(quit_signals->Descriptor(), QSocketNotifier::Read);
    connect(&*notifier, &QSocketNotifier::activated, this, [this] {
      notifier->setEnabled(false);
      asked();
    });
  }

  void End() {
    qApp->removeEventFilter(this);
    if (notifier) notifier->setEnabled(false);
    quit_signals.reset();
  }

 protected:
  // The toolkit itself would close one window after the other and then end its loop.
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool quit = watched == qApp && event->type() == QEvent::Quit;
    if (quit) asked();
    return quit;
  }

 private:
  native::Callback asked;
  std::optional<QuitSignals> quit_signals{std::in_place};
  std::optional<QSocketNotifier> notifier;
};

void End(QSocketNotifier& notifier) { notifier.setEnabled(false); }
void End(QTimer& timer) { timer.stop(); }
void End(QuitWatch& watch) { watch.End(); }

// deleteLater() puts the deletion off, because the source's own handler may be on the stack.
template <typename Source>
class SourceSubscription final : public native::Subscription {
 public:
  explicit SourceSubscription(Source& the_source) : source(the_source) {}
  ~SourceSubscription() override {
    End(source);
    source.disconnect();
    source.deleteLater();
  }
  SourceSubscription(const SourceSubscription&) = delete;
  SourceSubscription& operator=(const SourceSubscription&) = delete;

 private:
  Source& source;
};

// QCoreApplication::exit() does not end the nested loop of a desktop's own file or print dialog.
void CancelDialogs() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* dialog = qobject_cast<QDialog*>(widget)) dialog->reject();
  }
}

}  // namespace

void EventLoop::Run() {
  running = true;
  if (run_starts) run_starts();
  QApplication::exec();
  running = false;
}

void EventLoop::Stop() {
  CancelDialogs();
  if (std::exchange(running, false)) QCoreApplication::exit();
}

void EventLoop::Turn(int32_t most_ms) {
  QTimer limit;
  limit.setSingleShot(true);
  limit.start(std::max(most_ms, 0));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

std::unique_ptr<native::Subscription> EventLoop::Watch(int descriptor, native::Callback readable) {
  auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                   [callback = std::move(readable)] { callback(); });
  return std::make_unique<SourceSubscription<QSocketNotifier>>(*notifier);
}

std::unique_ptr<native::Subscription> EventLoop::Repeat(std::chrono::milliseconds period,
                                                        native::Callback fired) {
  auto* timer = new QTimer;
  QObject::connect(timer, &QTimer::timeout, timer, [callback = std::move(fired)] { callback(); });
  timer->start(period);
  return std::make_unique<SourceSubscription<QTimer>>(*timer);
}

std::unique_ptr<native::Subscription> EventLoop::WatchQuit(native::Callback asked) {
  return std::make_unique<SourceSubscription<QuitWatch>>(*new QuitWatch(std::move(asked)));
}

}  // namespace quorvel::qt
