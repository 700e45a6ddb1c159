#include "native/qt/progress.h"

#include <QCoreApplication>
#include <chrono>

namespace quorvel::qt {

namespace {

constexpr std::chrono::milliseconds kMoment(500);
constexpr std::chrono::milliseconds kBetweenEvents(50);
constexpr std::chrono::milliseconds kMostForEvents(50);
constexpr int kAll = 100;

}  // namespace

// Quitting rejects every dialog, also a progress dialog that is not visible yet.
Progress::Progress() : dialog("progress"), bar(new QProgressBar(&*dialog)) {
  dialog->setWindowTitle("Quorvel");
  dialog->setBar(bar);
  const auto cancel = [this] { cancelled = true; };
  dialog->connect(&*dialog, &QProgressDialog::canceled, cancel);
  dialog->connect(&*dialog, &QDialog::rejected, cancel);
  since_start.start();
  since_events.start();
}

// Nothing keeps the user from the windows unless the dialog is visible, so leave what the user does
// in the queue until then.
void Progress::Show(const QString& doing, int percent) {
  if (!since_events.hasExpired(kBetweenEvents.count())) return;
  if (dialog) {
    if (cancelled) dialog->setCancelButton(nullptr);
    dialog->setLabelText(cancelled ? "Stopping..." : doing);
    bar->setRange(0, percent < 0 ? 0 : kAll);
    bar->setValue(percent);
    if (since_start.hasExpired(kMoment.count())) dialog->show();
  }
  const bool visible = dialog && dialog->isVisible();
  QCoreApplication::processEvents(
      visible ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents, kMostForEvents.count());
  since_events.start();
}

}  // namespace quorvel::qt
