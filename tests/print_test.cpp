// What a print puts on the paper: a text is printed to a PDF, and the words are read back. And the
// box of a long print or save.

#include <QApplication>
#include <QPrinter>
#include <QProcess>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <semaphore>

#include "native/qt/dialogs.h"
#include "native/qt/print_job.h"
#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/windows/application.h"
#include "support/running.h"
#include "support/temporary_folder.h"
#include "ui/edit_field_extras.h"

namespace quorvel {
namespace {

/// A word on a sheet, in units from the corner of the printable area.
struct Word {
  std::string text;
  double left, top, right, bottom;
};
using Sheet = std::vector<Word>;

class Paper : public Running {
 protected:
  static constexpr double kMargin = 20;                 // between paper and printable area
  static constexpr double kWidth = 400, kHeight = 260;  // of the printable area

  Paper() {
    _RuntimeRegisterAppObject(New<Application>());
    mPrinter->setOutputFileName(mFile);
    mPrinter->setPageSize(QPageSize(QSizeF(440, 300), QPageSize::Point));
    mPrinter->setPageMargins(QMarginsF(20, 20, 20, 20), QPageLayout::Point);
    mSide.dialogs.start_print = [this] {
      auto job = std::make_unique<qt::PrintJob>(mPrinter);
      mJob = job.get();
      return job;
    };
  }

  std::vector<Sheet> Printed(const std::string& text) {
    const auto field = New<editFieldExtras>();
    field->TextFont("DejaVu Sans");
    field->TextSize(12);
    field->Text(Text::FromBytes(text, Encodings::UTF8));
    Dispatch([&] { field->efPrint(PageNumbers::On); });
    QProcess reader;
    reader.start("pdftotext", {"-tsv", mFile, "-"});
    EXPECT_TRUE(reader.waitForFinished());
    std::vector<Sheet> sheets;
    while (reader.canReadLine()) {
      const QStringList cells = QString::fromUtf8(reader.readLine()).trimmed().split('\t');
      if (cells[0] == "1") sheets.emplace_back();
      if (cells[0] != "5") continue;
      const double left = cells[6].toDouble() - kMargin, top = cells[7].toDouble() - kMargin;
      sheets.back().push_back({cells[11].toStdString(), left, top, left + cells[8].toDouble(),
                               top + cells[9].toDouble()});
    }
    return sheets;
  }
  static std::string Lines(int count) {
    std::string lines;
    for (int i = 1; i <= count; ++i) lines += "line" + std::to_string(i) + "\n";
    return lines;
  }

  TemporaryFolder mFolder;
  const QString mFile = QString::fromStdString(mFolder.Path() / "print.pdf");
  const std::shared_ptr<QPrinter> mPrinter = std::make_shared<QPrinter>(QPrinter::HighResolution);
  qt::PrintJob* mJob = nullptr;
};

// Of 12 points, nine lines fit between the margins.
TEST_F(Paper, HoldsWholeLinesBetweenTheMarginsAndAFooter) {
  const auto sheets = Printed(Lines(18));
  ASSERT_EQ(sheets.size(), 2U);
  for (const auto& sheet : sheets) {
    ASSERT_EQ(sheet.size(), 9U + 2);
    EXPECT_NEAR(sheet[0].left, 65, 1);
    EXPECT_NEAR(sheet[0].top, 65, 2);
    EXPECT_LT(sheet[8].bottom, kHeight - 65 + 1);
    EXPECT_NEAR(sheet[9].bottom, kHeight - 5 + 2, 1);  // letters reach 2 below the line
    EXPECT_NEAR(sheet[9].bottom - sheet[9].top, 8 * 1.2, 1);
  }
}

TEST_F(Paper, ARangeIsAsManySheetsFromTheFirstLineOn) {
  mPrinter->setPrintRange(QPrinter::PageRange);
  mPrinter->setFromTo(3, 5);
  const auto sheets = Printed(Lines(100));
  ASSERT_EQ(sheets.size(), 3U);
  EXPECT_EQ(sheets[0].front().text + " on " + sheets[0].back().text, "line1 on 3");
  EXPECT_EQ(sheets[2].front().text + " on " + sheets[2].back().text, "line19 on 5");
}

TEST_F(Paper, ALongParagraphLosesNoLetter) {
  std::string words, printed;
  for (int i = 0; i < 900; ++i) words += "\u00e9" + std::to_string(i) + " ";
  for (int i = 0; i < 900; ++i) words += "\u00e9" + std::to_string(i);
  for (const auto& sheet : Printed(words)) {
    for (size_t i = 0; i + 2 < sheet.size(); ++i) {
      EXPECT_LT(sheet[i].right, kWidth - 65 + 1);
      printed += sheet[i].text;
    }
  }
  std::erase(words, ' ');
  EXPECT_EQ(printed, words);
}

TEST_F(Paper, TabStopsAre80UnitsApartAndRightToLeftLinesAtTheRight) {
  for (const int dots_per_inch : {72, 300, 1200}) {
    mPrinter->setResolution(dots_per_inch);
    const Sheet sheet = Printed("a\tlonger\tb\n\u05d0").front();
    ASSERT_EQ(sheet.size(), 4U + 2);
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(sheet[i].top, sheet[0].top);
      EXPECT_NEAR(sheet[i].left, 65 + 80.0 * static_cast<double>(i), 1);
    }
    EXPECT_NEAR(sheet[3].right, kWidth - 65, 2);
  }
}

TEST_F(Paper, ACancelOrAQuitLeavesNoFile) {
  mSide.dialogs.accepts_page_setup = false;
  EXPECT_TRUE(Printed("text").empty());
  mSide.dialogs.accepts_page_setup = true;
  const std::function<void()> cancel = [&] { mJob->CallOff(); };
  const std::function<void()> quit = [] { Dispatch([] { Quit(0); }); };
  for (const auto& end : {cancel, quit}) {
    QTimer::singleShot(0, end);
    EXPECT_TRUE(Printed(Lines(20000)).empty());
  }
  mSide.dialogs.start_print = nullptr;
  EXPECT_TRUE(Printed("text").empty());
}

TEST_F(Paper, ASlowDiskShowsTheBoxOfALongPrintAndACancelKeepsTheOldFile) {
  WriteFile(mFolder.Path() / "old", "precious");
  qt::Dialogs dialogs;
  mSide.dialogs.await = [&](const native::LongWork& work) { return dialogs.Await(work); };
  std::binary_semaphore disk(0);
  mSide.faults.Arrange("Write", 1, [&] { return disk.acquire(), false; });
  QString told;
  QTimer look;
  look.callOnTimeout([&] {
    auto* const box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    told += box->labelText();
    if (auto* const cancel = box->findChild<QPushButton*>()) return cancel->click();
    look.stop();
    disk.release();
  });
  look.start(1);
  const auto stream = New<FolderItem>(mFolder.Path() / "old")->CreateTextFile();
  stream->Write("text");
  stream->Close();
  EXPECT_EQ(told, "Saving...Stopping...");
  EXPECT_EQ(ReadFile(mFolder.Path() / "old"), "precious");
}

}  // namespace
}  // namespace quorvel

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", "1.5");
  const QApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
