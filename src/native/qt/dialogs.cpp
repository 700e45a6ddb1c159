#include "native/qt/dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QMessageBox>

#include "native/qt/modal.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

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
  Modal<QMessageBox> box("message");
  box->setWindowTitle("Quorvel");
  box->setTextFormat(Qt::PlainText);
  box->setText(FromUtf8(text));
  box->setStandardButtons(QMessageBox::Ok);
  static_cast<void>(box.Accepted());
}

std::optional<std::filesystem::path> Dialogs::AskSaveFile(const native::SaveQuestion& question) {
  const bool again = !last_folder.isEmpty() && QDir(last_folder).exists();
  Modal<QFileDialog> dialog("save");
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
