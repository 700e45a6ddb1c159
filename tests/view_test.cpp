// The rows of a text view and their scrolling, without a view.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QTextLayout>
#include <cmath>
#include <string>
#include <vector>

#include "native/qt/view/motion.h"
#include "native/qt/view/page.h"
#include "support/random.h"

namespace quorvel::qt {
namespace {

// The first words run to the right, and the toolkit lays them out alike wherever a layout begins.
constexpr size_t kRightwards = 7;
constexpr const char* kWords[] = {"word",
                                  "a",
                                  "mm-mm",
                                  "5,000.00",
                                  "\u00E9te\u0301",
                                  "\u6F22\u5B57\u4EEE\u540D",
                                  "(x)",
                                  "\u05E9\u05DC\u05D5\u05DD",
                                  "\u0645\u0631\u062D\u0628\u0627",
                                  "\u0939\u093F\u0928\u094D\u0926\u0940",
                                  "\u2028",
                                  "\t",
                                  "\U0001F469\u200D\U0001F467"};

std::string RandomLine(Random& random, size_t words, size_t kinds = std::size(kWords)) {
  std::string line;
  for (size_t i = 0; i < words; ++i) line += std::string(kWords[random.Below(kinds)]) + " ";
  return line;
}

class View : public testing::Test {
 protected:
  Rows& RowsOf(const std::string& text, qreal width) {
    mRows.SetText({}, 0);
    mRows.SetLook({QFont("DejaVu Sans", 10), width, true});
    mRows.SetText(text, 0);
    return mRows;
  }
  // The rows from the row of `position` on.
  std::vector<Row> From(size_t position) {
    std::vector<Row> rows = {mRows.At(position)};
    while (const auto next = mRows.After(rows.back())) rows.push_back(*next);
    return rows;
  }

  Random mRandom;
  Rows mRows;
};

TEST_F(View, WrapsAndFindsPositionsAsTheToolkitDoesInTheWholeLine) {
  for (int run = 0; run < 40; ++run) {
    const std::string line = run % 4 == 0 ? RandomLine(mRandom, 1500, kRightwards)
                                          : RandomLine(mRandom, 1 + mRandom.Below(60));
    const auto width = static_cast<qreal>(60 + mRandom.Below(600));
    const std::string text = "w\n" + line;
    RowsOf(text, width);
    const QString shown = QString::fromStdString(line);
    QTextLayout whole(shown, QFont("DejaVu Sans", 10));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTabStopDistance(80);
    option.setTextDirection(shown.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    option.setAlignment(shown.isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft);
    whole.setTextOption(option);
    whole.setCacheEnabled(true);
    whole.beginLayout();
    for (QTextLine row = whole.createLine(); row.isValid(); row = whole.createLine())
      row.setLineWidth(width);
    whole.endLayout();
    const auto rows = From(2);
    ASSERT_EQ(rows.size(), whole.lineCount()) << line;
    const auto byte = [&](int unit) {
      return 2 + static_cast<size_t>(shown.left(unit).toUtf8().size());
    };
    for (int i = 0; i < whole.lineCount(); ++i) {
      const QTextLine row = whole.lineAt(i);
      const Row& ours = rows[static_cast<size_t>(i)];
      ASSERT_EQ(ours.Bytes().begin, byte(row.textStart())) << line;
      const int unit =
          row.textStart() + static_cast<int>(mRandom.Below(static_cast<size_t>(row.textLength())));
      const bool is_stop = whole.isValidCursorPosition(unit) && !shown[unit].isLowSurrogate();
      const int stop = is_stop ? unit : row.textStart();
      EXPECT_NEAR(ours.XOf(byte(stop)), row.cursorToX(stop), 0.02) << line;
      const bool ends_line = i + 1 == whole.lineCount();
      EXPECT_TRUE(ends_line || ours.PositionAt(2 * width) < ours.Bytes().end) << line;
      const auto x = static_cast<qreal>(mRandom.Below(static_cast<size_t>(width)));
      const int hit = row.xToCursor(x);
      const bool inside = hit < row.textStart() + row.textLength() && !shown[hit].isLowSurrogate();
      const qreal distance = std::abs(ours.XOf(ours.PositionAt(x)) - x);
      EXPECT_TRUE(!inside || std::abs(distance - std::abs(row.cursorToX(hit) - x)) < 0.1) << line;
    }
  }
}

TEST_F(View, ScrollsToTheSameRowsFromEitherSide) {
  std::string text;
  for (int i = 0; i < 30; ++i) {
    const size_t kind = mRandom.Below(12);
    text += kind == 0 ? std::string(40000, 'w') : RandomLine(mRandom, mRandom.Below(40));
    if (kind == 1) text += "\xFF\x80\x01";
    text += kind < 9 ? "\n" : "\r\n";
  }
  Page page(RowsOf(text, 300));
  page.SetHeight(200);
  page.Update(true);
  EXPECT_TRUE(page.EndInSight());
  for (int step = 0; step < 200; ++step) {
    const size_t position = mRandom.Below(text.size() + 1);
    const size_t kind = mRandom.Below(4);
    if (kind == 0) page.ScrollTo(position);
    if (kind == 1) page.ScrollIntoSight(position);
    ASSERT_TRUE(kind != 1 || page.IsInSight(position)) << position;
    if (kind == 2) page.ScrollBy(static_cast<qreal>(mRandom.Below(1000)) - 500);
    if (kind == 3) {
      RowsOf(text, static_cast<qreal>(150 + mRandom.Below(300)));
      page.Update(mRandom.Below(4) == 0);
    }
    const auto& shown = page.Shown();
    ASSERT_LE(shown.front().y, 0);
    for (size_t i = 1; i < shown.size(); ++i) {
      ASSERT_EQ(shown[i - 1].row.Next(), shown[i].row.Bytes().begin);
      ASSERT_EQ(shown[i - 1].y + shown[i - 1].row.Height(), shown[i].y);
      ASSERT_EQ(mRows.Before(shown[i].row)->Bytes(), shown[i - 1].row.Bytes());
    }
    const auto& last = shown.back();
    const qreal room = 200 - last.y - last.row.Height();
    ASSERT_TRUE(room <= 0 || (page.EndInSight() && room < shown.front().row.Height() + 20)) << room;
  }
}

TEST_F(View, TheCaretPassesEveryCharacterAndEveryRowBothWays) {
  const std::string text =
      "ab\u05E9\u05DC cd\r\n\n\xFF e\u0301\n" + RandomLine(mRandom, 300) + "\nend\n";
  RowsOf(text, 120);
  CaretMotion caret(mRows);
  for (const auto& [there, back] : {std::pair(Motion::NextCharacter, Motion::PreviousCharacter),
                                    std::pair(Motion::RowDown, Motion::RowUp)}) {
    std::vector<size_t> stops = {0};
    while (true) {
      const size_t next = caret.Moved(stops.back(), there, 100);
      if (next == stops.back() || stops.size() > text.size() + 1) break;
      stops.push_back(next);
    }
    EXPECT_EQ(mRows.At(stops.back()).Next(), text.size());
    for (; stops.size() > 1; stops.pop_back()) {
      ASSERT_EQ(caret.Moved(stops.back(), back, 100), stops[stops.size() - 2]);
    }
  }
}

}  // namespace
}  // namespace quorvel::qt

int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication toolkit(count, arguments);
  return RUN_ALL_TESTS();
}
