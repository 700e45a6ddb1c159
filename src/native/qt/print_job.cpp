#include "native/qt/print_job.h"

#include <QFile>
#include <cmath>
#include <filesystem>
#include <utility>

#include "native/qt/font.h"
#include "native/qt/print_layout.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

constexpr int kUnitsToTheInch = 72;
constexpr int kLastPage = 9999;

int32_t WholeUnits(qreal length) { return static_cast<int32_t>(std::floor(length)); }

// Removes the file that a link leads to, not the link.
void RemoveFile(const QString& name) {
  std::error_code unreachable;
  const auto file = std::filesystem::canonical(QFile::encodeName(name).toStdString(), unreachable);
  if (std::filesystem::is_regular_file(file, unreachable)) {
    std::filesystem::remove(file, unreachable);
  }
}

}  // namespace

PrintJob::PrintJob(std::shared_ptr<QPrinter> the_printer)
    : printer(std::move(the_printer)),
      begun(painter.begin(printer.get())),
      page(PageRange().first) {}

std::pair<int32_t, int32_t> PrintJob::PageRange() const {
  const int first = printer->fromPage();
  const bool all = printer->printRange() != QPrinter::PageRange || first < 1;
  return all ? std::pair{1, kLastPage} : std::pair{first, printer->toPage()};
}

int32_t PrintJob::Width() const { return WholeUnits(printer->pageRect(QPrinter::Point).width()); }
int32_t PrintJob::Height() const { return WholeUnits(printer->pageRect(QPrinter::Point).height()); }

qreal PrintJob::DotsPerUnit() const { return qreal(printer->resolution()) / kUnitsToTheInch; }

void PrintJob::DrawString(std::string_view text, int32_t x, int32_t y,
                          const native::PrintFont& font) {
  painter.setFont(PaperFontOf(font));
  painter.drawText(QPointF(x, y) * DotsPerUnit(), FromUtf8(text));
}

void PrintJob::NextPage() {
  progress.Show(QString("Printing page %1...").arg(++page));
  if (progress.Cancelled() || !printer->newPage()) CallOff();
}

// abort() leaves the pages written so far in the file. An older file of that name was lost when the
// job began.
void PrintJob::CallOff() {
  if (called_off) return;
  called_off = true;
  printer->abort();
  painter.end();
  RemoveFile(printer->outputFileName());
}

std::unique_ptr<native::PrintLayout> PrintJob::LayOut(std::string_view text,
                                                      const native::PrintFont& font,
                                                      int32_t width) {
  return std::make_unique<PrintLayout>(painter, DotsPerUnit(), text, PaperFontOf(font), width);
}

}  // namespace quorvel::qt
