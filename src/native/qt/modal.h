#pragma once

#include <QDialog>
#include <QPointer>
#include <utility>

namespace quorvel::qt {

/// The parent of a new dialog: the active window, or the window that was active last while the
/// focus is on the way back from another dialog. Null when that window is hidden or gone.
[[nodiscard]] QWidget* DialogParent();

/// A dialog that blocks the program's windows for the life of the object. The window below may be
/// closed, and destroy the dialog, while the dialog is open.
template <typename Dialog>
class Modal {
 public:
  /// `arguments` stand before the parent in the dialog's constructor.
  template <typename... Arguments>
  explicit Modal(const char* name, Arguments&&... arguments)
      : dialog(new Dialog(std::forward<Arguments>(arguments)..., DialogParent())) {
    dialog->setObjectName(name);
    dialog->setWindowModality(Qt::ApplicationModal);
  }
  ~Modal() { delete dialog; }
  Modal(const Modal&) = delete;
  Modal& operator=(const Modal&) = delete;

  explicit operator bool() const { return !dialog.isNull(); }
  Dialog* operator->() const { return dialog; }
  Dialog& operator*() const { return *dialog; }
  /// False when the user cancels, also by closing the program.
  [[nodiscard]] bool Accepted() { return dialog->exec() == QDialog::Accepted && dialog; }

 private:
  QPointer<Dialog> dialog;
};

}  // namespace quorvel::qt
