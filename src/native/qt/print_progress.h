#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

#include "native/qt/modal.h"

namespace quorvel::qt {

/// A dialog that tells the user how far a print job is, once the job has taken a moment, and lets
/// the user call the job off.
class PrintProgress final {
 public:
  PrintProgress();
  /// `page` is being printed. Delivers events, though not at every call.
  void Show(int page);
  [[nodiscard]] bool Cancelled() const { return cancelled; }

 private:
  bool cancelled = false;
  QElapsedTimer since_start;
  QElapsedTimer since_events;
  Modal<QProgressDialog> dialog;
};

}  // namespace quorvel::qt
