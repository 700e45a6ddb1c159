#pragma once

#include <QElapsedTimer>
#include <QProgressBar>
#include <QProgressDialog>

#include "native/qt/modal.h"

namespace quorvel::qt {

/// A dialog that tells the user how far something long is, once it has taken a moment, and lets the
/// user call it off.
class Progress final {
 public:
  Progress();
  /// Tells what is being done, and how many percent of it are done; -1 when nobody knows. Delivers
  /// events, though not at every call.
  void Show(const QString& doing, int percent = -1);
  [[nodiscard]] bool Cancelled() const { return cancelled; }

 private:
  bool cancelled = false;
  QElapsedTimer since_start;
  QElapsedTimer since_events;
  Modal<QProgressDialog> dialog;
  QProgressBar* const bar;  // belongs to the dialog
};

}  // namespace quorvel::qt
