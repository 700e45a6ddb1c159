#include "platform/qt/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include "platform/qt/strings.h"

namespace quorvel::qt {

namespace {

// The window below may be closed, and take the dialog with it, while the dialog is open.
template <typename Dialog>
class Scoped {
 public:
  Scoped() : dialog(new Dialog(QApplication::activeWindow())) {
    dialog->setWindowModality(Qt::ApplicationModal);
  }
  ~Scoped() { delete dialog; }
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;

  Dialog* operator->() const { return dialog; }
  /// False when the user cancels, also by closing the program.
  [[nodiscard]] bool Accepted() { return dialog->exec() == QDialog::Accepted && dialog; }

 private:
  QPointer<Dialog> dialog;
};

QString NearestFolder(std::filesystem::path folder) {
  std::error_code unreadable;
  while (!std::filesystem::is_directory(folder, unreadable) && folder.has_relative_path()) {
    folder = folder.parent_path();
  }
  return QFile::decodeName(folder.c_str());
}

QStringList NameFilters(const native::SaveQuestion& question) {
  const QString all = "All files (*)";
  if (question.extension.empty()) return {all};
  return {FromUtf8(question.type_name + " (*" + question.extension + ")"), all};
}

}  // namespace

void Dialogs::Message(std::string_view text) {
  Scoped<QMessageBox> box;
  box->setWindowTitle("Quorvel");
  box->setTextFormat(Qt::PlainText);
  box->setText(FromUtf8(text));
  box->setStandardButtons(QMessageBox::Ok);
  static_cast<void>(box.Accepted());
}

std::optional<std::filesystem::path> Dialogs::AskSaveFile(const native::SaveQuestion& question) {
  const bool again = !last_folder.isEmpty() && QDir(last_folder).exists();
  Scoped<QFileDialog> dialog;
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setFileMode(QFileDialog::AnyFile);
  dialog->setNameFilters(NameFilters(question));
  dialog->setDirectory(again ? last_folder : NearestFolder(question.folder));
  dialog->selectFile(FromUtf8(question.default_name));
  if (!dialog.Accepted()) return std::nullopt;
  const QString file = dialog->selectedFiles().value(0);
  last_folder = QFileInfo(file).path();
  return std::filesystem::path(QFile::encodeName(file).toStdString());
}

}  // namespace quorvel::qt
