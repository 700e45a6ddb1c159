#include "native/qt/printing.h"

#include <QLoggingCategory>
#include <QPageSetupDialog>
#include <QPrintDialog>

#include "native/qt/modal.h"
#include "native/qt/print_job.h"

namespace quorvel::qt {

QPrinter& Printing::Printer() {
  if (!printer) {
    printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName("Quorvel");
    printer->setCreator("Quorvel");
  }
  return *printer;
}

// The toolkit warns of a printer that is a file, and then does with it what it should.
bool Printing::AskPageSetup() {
  if (in_use) return false;
  QLoggingCategory& warnings = *QLoggingCategory::defaultCategory();
  warnings.setEnabled(QtWarningMsg, false);
  Modal<QPageSetupDialog> dialog("page setup", &Printer());
  warnings.setEnabled(QtWarningMsg, true);
  return dialog.Accepted();
}

std::unique_ptr<native::PrintJob> Printing::AskPrint() {
  if (in_use) return nullptr;
  Printer().setPrintRange(QPrinter::AllPages);
  Printer().setFromTo(0, 0);
  Modal<QPrintDialog> dialog("print", &Printer());
  dialog->setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                     QAbstractPrintDialog::PrintCollateCopies);
  if (!dialog.Accepted()) return nullptr;
  auto job = std::make_unique<PrintJob>(Printer(), in_use);
  return job->Begun() ? std::move(job) : nullptr;
}

}  // namespace quorvel::qt
