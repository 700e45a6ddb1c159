#include "native/qt/dialogs.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <chrono>
#include <future>
#include <system_error>
#include <thread>

#include "native/qt/modal.h"
#include "native/qt/print_job.h"
#include "native/qt/progress.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

/// While the object lives, new windows are laid out in the direction of the user's language, which
/// the dialogs of the toolkit speak.
class DirectionOfLanguage {
 public:
  DirectionOfLanguage() { QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }
  ~DirectionOfLanguage() { QGuiApplication::setLayoutDirection(Qt::LeftToRight); }
  DirectionOfLanguage(const DirectionOfLanguage&) = delete;
  DirectionOfLanguage& operator=(const DirectionOfLanguage&) = delete;
};

QString NearestFolder(std::filesystem::path folder) {
  std::error_code unreadable;
  while (!std::filesystem::is_directory(folder, unreadable) && folder.has_relative_path()) {
    folder = folder.parent_path();
  }
  return QFile::decodeName(folder.c_str());
}

QStringList NameFilters(const native::SaveQuestion& question) {
  const QString all = QFileDialog::tr("All Files (*)");
  if (question.extension.empty()) return {all};
  return {FromUtf8(question.type_name + " (*" + question.extension + ")"), all};
}

/// A printer of its own for each print, so that nothing chosen for one print is there in the next.
class PageSetup final : public native::PageSetup {
 public:
  explicit PageSetup(std::shared_ptr<QPrinter> the_printer) : printer(std::move(the_printer)) {}

  const std::shared_ptr<QPrinter> printer;
  QPageSize paper;  // chosen by the user; not valid for the default of the printer
};

QPageSize Paper(const QPrinter& printer) { return printer.pageLayout().pageSize(); }
QPageSize DefaultPaper(const QPrinter& printer) { return QPrinterInfo(printer).defaultPageSize(); }

// The dialog warns of a printer that writes files, and serves that printer all the same.
bool PageSetupAccepted(QPrinter& printer) {
  const DirectionOfLanguage direction;
  QLoggingCategory& warnings = *QLoggingCategory::defaultCategory();
  warnings.setEnabled(QtWarningMsg, false);
  Modal<QPageSetupDialog> dialog("page setup", &printer);
  warnings.setEnabled(QtWarningMsg, true);
  return dialog.Accepted();
}

bool PrintAccepted(QPrinter& printer) {
  printer.setPrintRange(QPrinter::AllPages);
  printer.setFromTo(0, 0);
  const DirectionOfLanguage direction;
  Modal<QPrintDialog> dialog("print", &printer);
  dialog->setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                     QAbstractPrintDialog::PrintCollateCopies);
  return dialog.Accepted();
}

constexpr std::chrono::milliseconds kBetweenLooks(50);
constexpr std::chrono::seconds kPatience(5);

// The thread is detached: a dead disk would hold up whoever joins it. Without a thread to be had,
// the work is done at once.
std::future<void> Start(const std::function<void()>& work) {
  const auto task = std::make_shared<std::packaged_task<void()>>(work);
  try {
    std::thread([task] { (*task)(); }).detach();
  } catch (const std::system_error&) {
    (*task)();
  }
  return task->get_future();
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
  const DirectionOfLanguage direction;
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

bool Dialogs::Await(const native::LongWork& work) {
  const auto end = Start(work.run);
  const auto ended = [&] { return end.wait_for(kBetweenLooks) == std::future_status::ready; };
  if (ended()) return true;
  Progress progress;
  QDeadlineTimer patience(QDeadlineTimer::Forever);
  while (!ended()) {
    progress.Show(FromUtf8(work.text), work.percent());
    if (patience.hasExpired()) return false;
    if (!progress.Cancelled() || !patience.isForever()) continue;
    work.cancel();
    patience.setRemainingTime(kPatience);
  }
  return true;
}

std::shared_ptr<QPrinter> Dialogs::NewPrinter() const {
  const QPrinterInfo last = QPrinterInfo::printerInfo(last_printer);
  auto printer = std::make_shared<QPrinter>(last, QPrinter::HighResolution);
  printer->setDocName("Quorvel");
  printer->setCreator("Quorvel");
  printer->setPageSize(DefaultPaper(*printer));
  const bool to_file = printer->outputFormat() == QPrinter::PdfFormat;
  if (to_file && !last_print_file.isEmpty()) printer->setOutputFileName(last_print_file);
  return printer;
}

// In the standard mode of a printer the dialog begins with margins of 0, and a printer that cannot
// print to the edge of the paper then refuses the whole page setup.
std::unique_ptr<native::PageSetup> Dialogs::AskPageSetup() {
  auto setup = std::make_unique<PageSetup>(NewPrinter());
  QPrinter& printer = *setup->printer;
  const QPageSize offered = Paper(printer);
  printer.setFullPage(true);
  const bool accepted = PageSetupAccepted(printer);
  printer.setFullPage(false);
  if (Paper(printer) != offered) setup->paper = Paper(printer);
  return accepted ? std::move(setup) : nullptr;
}

// The print dialog puts the default paper of the printer for the paper of the page setup.
std::unique_ptr<native::PrintJob> Dialogs::AskPrint(native::PageSetup* given) {
  const auto setup = given ? static_cast<PageSetup&>(*given) : PageSetup(NewPrinter());
  QPrinter& printer = *setup.printer;
  if (printer.paintingActive() || !PrintAccepted(printer)) return nullptr;
  const bool default_paper = Paper(printer) == DefaultPaper(printer);
  if (default_paper && setup.paper.isValid()) printer.setPageSize(setup.paper);
  const bool to_file = printer.outputFormat() == QPrinter::PdfFormat;
  if (to_file) {
    last_print_file = printer.outputFileName();
  } else {
    last_printer = printer.printerName();
  }
  auto job = std::make_unique<PrintJob>(setup.printer);
  return job->Begun() ? std::move(job) : nullptr;
}

}  // namespace quorvel::qt
