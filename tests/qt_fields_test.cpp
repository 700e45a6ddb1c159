// Fields, labels and buttons of the Qt side under a user's hands.

#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QMenuBar>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>
#include <tuple>

#include "support/qt_hands.h"
#include "support/recorder.h"

namespace quorvel {
namespace {

using testing::ElementsAre;

// The toolkit asks for the language once in a process, so this test comes first.
TEST(QtLanguage, DialogsSpeakTheUsersLanguageAndWindowsKeepTheirDirection) {
  qputenv("LANGUAGE", "ar");
  const auto side = qt::MakeSide("quorvel");
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel").front().script(),
            QChar::Script_Arabic);
  EXPECT_EQ(QGuiApplication::layoutDirection(), Qt::LeftToRight);
}

class QtFields : public testing::Test {
 protected:
  QtFields() {
    mSide->Windows().ShowMenuBar({}, mUser);
    mState.Title = "Fields";
    mWindow->Update(mState);
    static_cast<void>(QTest::qWaitForWindowActive(Frame()));
  }

  static QWidget* Frame() { return QtHands::WindowOf("Fields"); }
  template <class Widget>
  static Widget& Find() {
    return *Frame()->findChild<Widget*>("it");
  }
  static native::TextFieldState Field(bool many_lines) {
    native::TextFieldState state;
    state.Name = "it";
    state.Width = 300;
    state.Height = 200;
    state.Multiline = state.ReadOnly = state.ScrollbarVertical = many_lines;
    state.TextSize = 12;
    return state;
  }

  Recorder mUser;
  std::unique_ptr<native::Side> mSide = qt::MakeSide("quorvel");
  native::WindowState mState;
  std::unique_ptr<native::Window> mWindow = mSide->Windows().Create(mUser);
};

class QtLog : public QtFields {
 protected:
  QtLog() {
    mLook.FollowsEnd = true;
    Grow();
  }
  qt::TextView& View() { return dynamic_cast<qt::TextView&>(Find<QAbstractScrollArea>()); }
  void Show(const std::string& text) {
    const size_t kept = text.starts_with(mText) ? mText.size() : 0;
    const std::string shown = std::exchange(mText, text);
    mField->ShowText(mText, kept);
  }
  void Grow() {
    for (int i = 0; i < 60; ++i) Show(mText + "a line that wraps in a narrow view\n");
    mField->Update(mLook);
    QCoreApplication::processEvents();
  }
  bool EndInSight() { return View().CurrentPage().EndInSight(); }
  size_t Top() { return View().CurrentPage().Bytes().begin; }
  void Wheel(int units, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QWidget& over = *View().viewport();
    QWheelEvent event(over.rect().center(), over.mapToGlobal(over.rect().center()), {}, {0, units},
                      Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&over, &event);
  }
  void Bar(QScrollBar::SliderAction action) { View().verticalScrollBar()->triggerAction(action); }
  void Key(Qt::Key key) { QTest::keyClick(&View(), key, Qt::ControlModifier); }

  native::TextFieldState mLook = Field(true);
  std::string mText;
  std::unique_ptr<native::TextField> mField = mWindow->AddTextField(mLook, mUser);
};

TEST_F(QtLog, FollowsItsEndUntilTheUserScrollsAway) {
  const std::tuple<const char*, std::function<void()>, bool> steps[] = {
      {"the wheel up and down", [&] { Wheel(120), Wheel(-240); }, true},
      {"the bar up", [&] { Bar(QScrollBar::SliderPageStepSub); }, false},
      {"the bar down", [&] { Bar(QScrollBar::SliderToMaximum); }, true},
      {"Control+Home", [&] { Key(Qt::Key_Home); }, false},
      {"Control+End", [&] { Key(Qt::Key_End); }, true},
      {"a larger font", [&] { mLook.TextSize = 20; }, true},
      {"a narrower view", [&] { mLook.Width = 110; }, true},
      {"a lower view", [&] { mLook.Height = 90; }, true},
      {"hidden and shown", [frame = Frame()] { frame->hide(), frame->show(); }, true},
      {"the wheel up", [&] { Wheel(120); }, false}};
  for (const auto& [name, step, follows] : steps) {
    step();
    mField->Update(mLook);
    QCoreApplication::processEvents();
    const size_t top = Top();
    EXPECT_TRUE(EndInSight() || !follows) << name;
    Grow();
    EXPECT_EQ(EndInSight(), follows) << name;
    EXPECT_TRUE(follows || Top() == top) << name;
  }
}

TEST_F(QtLog, TheMouseAndTheKeyboardSelectText) {
  Show("one");
  View().ShowNow();
  Show("one two\nthree four\nfive");
  const auto at = [&](size_t position) {
    const auto& placed = *View().CurrentPage().RowOf(position);
    return (View().PageCorner() + QPointF(placed.row.XOf(position) + 1, placed.y + 5)).toPoint();
  };
  const auto selected = [&] {
    const qt::Range range = View().Selected().Bytes();
    return mText.substr(range.begin, range.end - range.begin);
  };
  QWidget* const port = View().viewport();
  QTest::mousePress(port, Qt::LeftButton, {}, at(4));
  QTest::mouseMove(port, at(13));
  QTest::mouseRelease(port, Qt::LeftButton, {}, at(13));
  EXPECT_EQ(selected(), "two\nthree");
  QTest::mouseClick(port, Qt::LeftButton, Qt::ShiftModifier, at(18));
  EXPECT_EQ(selected(), "two\nthree four");
  QTest::mouseDClick(port, Qt::LeftButton, {}, at(15));
  EXPECT_EQ(selected(), "four");
  QTest::mouseClick(port, Qt::LeftButton, {}, at(15));
  EXPECT_EQ(selected(), "three four\n");
  QTest::mouseDClick(port, Qt::LeftButton, {}, at(15));
  QTest::mouseMove(port, at(9));
  EXPECT_EQ(selected(), "three four");
  QTest::mouseRelease(port, Qt::LeftButton, {}, at(9));
  QTest::mouseClick(port, Qt::LeftButton, {}, at(19));
  for (const auto key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}) {
    QTest::keyClick(&View(), key, Qt::ShiftModifier);
  }
  EXPECT_EQ(selected(), "\nthree four\n");
  QTest::keyClick(&View(), Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(selected(), "one two\nthree four\n");
}

TEST_F(QtLog, EveryRowInSightIsPainted) {
  Show("short\n" + std::string(6000, 'w') + "\nshort");
  for (int step = 0; step < 60; ++step) {
    const QImage image = View().viewport()->grab().toImage();
    for (const auto& [row, y] : View().CurrentPage().Shown()) {
      int dark = 0;
      const int middle = static_cast<int>(View().PageCorner().y() + y + row.Height() / 2);
      for (int x = 0; x < 100 && image.valid(x, middle); ++x)
        dark += qGray(image.pixel(x, middle)) < 128;
      ASSERT_TRUE(dark > 2 || !image.valid(0, middle)) << "row at " << y << " after step " << step;
    }
    Wheel(120);
  }
}

// The copy of a long text is made by the reader of the clipboard.
TEST_F(QtLog, ACopyIsTheTextAsItWas) {
  for (const size_t size : {size_t{10}, size_t{200000}}) {
    auto kept = std::make_shared<const std::string>("\xFF\n" + std::string(size, 'w'));
    mUser.keep = [&] { return kept; };
    mField->ShowText(*kept, 0);
    View().setFocus();
    QTest::keyClick(&View(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&View(), Qt::Key_C, Qt::ControlModifier);
    Show("another text");
    kept.reset();
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(),
              "\u00FF\n" + std::string(size, 'w'));
  }
}

TEST_F(QtLog, FindGoesFromHitToHit) {
  Show(mText + "Gr\u00FCn 1\n" + mText + "gr\u00DCn 2\n");
  View().setFocus();
  Key(Qt::Key_Home);
  Key(Qt::Key_F);
  auto* const entry = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  const auto hit = [&] {
    const qt::Range range = View().Selected().Bytes();
    EXPECT_TRUE(View().CurrentPage().IsInSight(range.begin));
    return range.IsEmpty() ? "" : mText.substr(range.begin, 7);
  };
  entry->setText(QString::fromUtf8("gr\u00FCn"));
  EXPECT_EQ(hit(), "Gr\u00FCn 1");
  for (const char* const next : {"gr\u00DCn 2", "Gr\u00FCn 1"}) {
    QTest::keyClick(entry, Qt::Key_Return);
    EXPECT_EQ(hit(), next);
  }
  QTest::keyClick(entry, Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(hit(), "gr\u00DCn 2");
  QTest::keyClick(entry, Qt::Key_F3);
  Grow();
  EXPECT_FALSE(EndInSight());
  QTest::keyClick(entry, Qt::Key_Escape);
  EXPECT_TRUE(View().hasFocus());
  EXPECT_FALSE(entry->isVisible());
}

TEST_F(QtLog, AMarkCountsTheLinesOutOfSightAndLeadsToTheEnd) {
  auto& mark = *Frame()->findChild<QPushButton*>("newLines");
  EXPECT_FALSE(mark.isVisible());
  EXPECT_FALSE(mark.text().isEmpty());
  Wheel(120);
  Grow();
  QTest::qWait(0);
  View().ShowNow();
  EXPECT_TRUE(mark.isVisible());
  EXPECT_TRUE(mark.text().startsWith("60 new lines")) << mark.text().toStdString();
  QTest::keyClick(&mark, Qt::Key_Space);
  EXPECT_TRUE(EndInSight());
  EXPECT_FALSE(mark.isVisible());
  Grow();
  EXPECT_TRUE(EndInSight());
}

TEST_F(QtLog, AScreenReaderReadsTheTextAroundTheRowsInSight) {
  std::string text;
  while (text.size() < 400000) text += "line " + std::to_string(text.size()) + " \u00E4\n";
  Show(text);
  Key(Qt::Key_End);
  QAccessibleInterface& view = *QAccessible::queryAccessibleInterface(&View());
  EXPECT_TRUE(view.state().readOnly && view.state().multiLine && view.state().focusable);
  QAccessibleTextInterface& reader = *view.textInterface();
  const int count = reader.characterCount();
  EXPECT_LT(count, 100000);
  EXPECT_EQ(reader.text(count - 14, count).toStdString(), text.substr(text.size() - 15));
  reader.setSelection(0, count - 14, count - 2);
  EXPECT_EQ(View().Selected().Bytes(), (qt::Range{text.size() - 15, text.size() - 3}));
  const QRect letter = reader.characterRect(count - 14);
  EXPECT_TRUE(
      View().viewport()->rect().contains(View().viewport()->mapFromGlobal(letter.center())));
  EXPECT_EQ(reader.offsetAtPoint(letter.center() - QPoint(1, 0)), count - 14);
  reader.setCursorPosition(0);
  EXPECT_TRUE(View().CurrentPage().IsInSight(View().Selected().caret));
}

TEST_F(QtLog, AFieldWithTheKeyboardShowsAFrame) {
  const auto edge = [&] { return View().grab().toImage().pixel(150, 0); };
  View().setFocus();
  const QRgb focused = edge();
  View().clearFocus();
  EXPECT_NE(edge(), focused);
}

TEST_F(QtLog, ControlAndTheWheelCountAsTheFontShortcuts) {
  const QFont font = View().font();
  for (const int units : {120, -240, 60, 60, 30}) Wheel(units, Qt::ControlModifier);
  EXPECT_EQ(View().font(), font);
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
  Wheel(120, Qt::ControlModifier);
  EXPECT_THAT(mUser.events, ElementsAre("Cmd++", "Cmd+-", "Cmd+-", "Cmd++"));
}

TEST_F(QtFields, LineEndsEnteredIntoASingleLineAreDroppedBeforeTheLimitCounts) {
  auto look = Field(false);
  look.LimitText = 8;
  const auto field = mWindow->AddTextField(look, mUser);
  auto& line = Find<QLineEdit>();
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"", "Birch-90\n", "Birch-90"},
      {"", "a\rb\r\nc\vd\f\u0085\u2028e\u2029\n", "abcde"},
      {"Maple", "\n-Room-7", "Maple-Ro"},
      {"1234567890", "x", "1234567890"},
      {"", "\U0001F426\U0001F426345678901", "\U0001F426\U0001F426345678"},
      {"a\nb", "\nc", "a\nbc"}};
  for (const auto& [set, entered, result] : cases) {
    field->ShowText(set, 0);
    line.setFocus();
    QGuiApplication::clipboard()->setText(entered);
    line.end(false);
    line.paste();
    EXPECT_EQ(line.text(), result);
    EXPECT_THAT(mUser.events, testing::Contains(result));
  }
  line.undo();
  EXPECT_EQ(line.text(), "a\nbc");
}

TEST_F(QtFields, ACaptionThatDoesNotFitBecomesSmaller) {
  native::ButtonState look;
  look.Name = "it";
  look.Caption = "Generate Key File";
  look.TextSize = 28;
  const auto button = mWindow->AddButton(look, nullptr);
  const QFontMetrics used(Find<QWidget>().font());
  EXPECT_LE(used.horizontalAdvance("Generate Key File"), look.Width);
  EXPECT_LE(used.height(), look.Height);
}

TEST_F(QtFields, MenusWithoutRoomInTheMenuBarAreBehindAButtonThatCanBeSeen) {
  native::MenuEntry menu;
  menu.Name = menu.Text = "A menu with a name that is far too long for the bar";
  menu.Children.emplace_back().Name = "item";
  mSide->Windows().ShowMenuBar({menu, menu}, mUser);
  QCoreApplication::processEvents();
  const auto& further_menus = *Frame()->findChild<QMenuBar*>()->findChild<QToolButton*>();
  EXPECT_TRUE(further_menus.isVisible());
  EXPECT_TRUE(further_menus.arrowType() != Qt::NoArrow || !further_menus.icon().isNull());
}

TEST_F(QtFields, ReturnClicksALink) {
  native::LabelState look;
  look.Name = "it";
  look.Link = true;
  const auto link = mWindow->AddLabel(look);
  QTest::keyClick(&Find<QWidget>(), Qt::Key_Return);
  EXPECT_THAT(mUser.events, ElementsAre("pressed", "released"));
}

TEST_F(QtFields, ReturnPressesTheButtonWithTheKeyboard) {
  native::ButtonState look;
  look.Name = "it";
  int pressed = 0;
  const auto button = mWindow->AddButton(look, [&] { ++pressed; });
  Find<QPushButton>().setFocus();
  QTest::keyClick(&Find<QPushButton>(), Qt::Key_Return);
  EXPECT_EQ(pressed, 1);
}

}  // namespace
}  // namespace quorvel
