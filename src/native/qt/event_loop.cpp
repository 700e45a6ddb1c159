#include "native/qt/event_loop.h"

#include <QDialog>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace quorvel::qt {

namespace {

void Disable(QSocketNotifier& notifier) { notifier.setEnabled(false); }
void Disable(QTimer& timer) { timer.stop(); }

// The source may be the one whose handler is running, so it goes later; it is silent at once.
template <typename Source>
class SourceSubscription final : public native::Subscription {
 public:
  explicit SourceSubscription(Source& the_source) : source(the_source) {}
  ~SourceSubscription() override {
    Disable(source);
    source.disconnect();
    source.deleteLater();
  }
  SourceSubscription(const SourceSubscription&) = delete;
  SourceSubscription& operator=(const SourceSubscription&) = delete;

 private:
  Source& source;
};

// A desktop's own dialogs run loops that leaving ours does not end.
void CancelDialogs() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* dialog = qobject_cast<QDialog*>(widget)) dialog->reject();
  }
}

}  // namespace

void EventLoop::Run() {
  if (!stopped) {
    running = true;
    if (run_starts) run_starts();
    QApplication::exec();
    running = false;
  }
  stopped = false;
}

void EventLoop::Stop() {
  stopped = true;
  CancelDialogs();
  if (running) QCoreApplication::exit();
}

void EventLoop::Turn(int32_t most_ms) {
  QTimer limit;
  limit.setSingleShot(true);
  limit.start(std::max(most_ms, 0));
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  // Inside a handler, what waits for its end may be the object whose handler it is.
  if (application.Handling()) return;
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
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

}  // namespace quorvel::qt
