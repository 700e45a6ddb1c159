#include "native/qt/print_progress.h"

#include <QCoreApplication>
#include <chrono>

namespace quorvel::qt {

namespace {

constexpr std::chrono::milliseconds kMoment(500);
constexpr std::chrono::milliseconds kBetweenEvents(50);

}  // namespace

// Quitting rejects every dialog, also a progress dialog that is not visible yet.
PrintProgress::PrintProgress() : dialog("progress") {
  dialog->setWindowTitle("Quorvel");
  dialog->setRange(0, 0);
  const auto cancel = [this] { cancelled = true; };
  dialog->connect(&*dialog, &QProgressDialog::canceled, cancel);
  dialog->connect(&*dialog, &QDialog::rejected, cancel);
  since_start.start();
  since_events.start();
}

// Nothing keeps the user from the windows until the dialog is visible, so leave what the user does
// in the queue until then.
void PrintProgress::Show(int page) {
  if (cancelled || !dialog || !since_events.hasExpired(kBetweenEvents.count())) return;
  if (since_start.hasExpired(kMoment.count())) dialog->show();
  dialog->setLabelText(QString("Printing page %1...").arg(page));
  QCoreApplication::processEvents(dialog->isVisible() ? QEventLoop::AllEvents
                                                      : QEventLoop::ExcludeUserInputEvents);
  since_events.start();
}

}  // namespace quorvel::qt
