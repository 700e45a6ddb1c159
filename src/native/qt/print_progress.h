#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

#include "native/qt/modal.h"

namespace quorvel::qt {

/// Tells the user how far a print job is, once it has taken a moment, and lets them call it off.
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
