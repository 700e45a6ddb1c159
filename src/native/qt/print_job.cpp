#include "native/qt/print_job.h"

#include <QFile>
#include <cmath>
#include <filesystem>

#include "native/qt/font.h"
#include "native/qt/print_layout.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

constexpr int kUnitsToTheInch = 72;
constexpr int kLastPage = 9999;

int32_t WholeUnits(qreal length) { return static_cast<int32_t>(std::floor(length)); }

// A link to the file stays.
void RemoveFile(const QString& name) {
  std::error_code unreachable;
  const auto file = std::filesystem::canonical(QFile::encodeName(name).toStdString(), unreachable);
  if (std::filesystem::is_regular_file(file, unreachable)) {
    std::filesystem::remove(file, unreachable);
  }
}

}  // namespace

PrintJob::PrintJob(QPrinter& the_printer, bool& in_use)
    : use(in_use, true),
      printer(the_printer),
      begun(painter.begin(&the_printer)),
      page(PageRange().first) {}

PrintJob::~PrintJob() {
  if (begun && std::uncaught_exceptions() > exceptions) CallOff();
}

std::pair<int32_t, int32_t> PrintJob::PageRange() const {
  const int first = printer.fromPage();
  const bool all = printer.printRange() != QPrinter::PageRange || first < 1;
  return all ? std::pair{1, kLastPage} : std::pair{first, printer.toPage()};
}

int32_t PrintJob::Width() const { return WholeUnits(printer.pageRect(QPrinter::Point).width()); }
int32_t PrintJob::Height() const { return WholeUnits(printer.pageRect(QPrinter::Point).height()); }

qreal PrintJob::Dots(int32_t units) const {
  return qreal(units) * printer.resolution() / kUnitsToTheInch;
}

void PrintJob::DrawString(std::string_view text, int32_t x, int32_t y, std::string_view font,
                          int32_t size) {
  if (called_off) return;
  native::TextState look;
  look.TextFont = font;
  look.TextSize = size;
  painter.setFont(PaperFontOf(look));
  painter.drawText(QPointF(Dots(x), Dots(y)), FromUtf8(text));
}

void PrintJob::NextPage() {
  if (called_off) return;
  progress.Show(++page);
  if (progress.Cancelled() || !printer.newPage()) CallOff();
}

// What was drawn on a file goes with the file; it was emptied when the job began.
void PrintJob::CallOff() {
  if (called_off) return;
  called_off = true;
  printer.abort();
  painter.end();
  RemoveFile(printer.outputFileName());
}

std::unique_ptr<native::PrintLayout> PrintJob::LayOut(std::string_view text,
                                                      const native::TextState& look,
                                                      int32_t width) {
  return std::make_unique<PrintLayout>(*this, text, PaperFontOf(look), Dots(width));
}

}  // namespace quorvel::qt
