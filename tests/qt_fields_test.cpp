// Fields, labels and buttons of the Qt side under a user's hands.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>
#include <functional>
#include <map>

#include "native/qt/side.h"
#include "support/following_cases.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Recorder : native::WindowListener, native::TextFieldListener, native::MenuListener {
  void OnCloseRequested() override {}
  void OnActivated() override {}
  void OnResized(int32_t, int32_t, bool) override {}
  void OnMouseMoved(native::Point) override {}
  void OnMousePressed(native::Point) override { events.emplace_back("pressed"); }
  void OnMouseReleased(native::Point) override { events.emplace_back("released"); }
  void OnEdited(std::string_view text) override { events.emplace_back(text); }
  void OnMenuNeeded() override {}
  void OnMenuChosen(std::string_view) override {}
  void OnShortcut(std::string_view shortcut) override { events.emplace_back(shortcut); }
  std::vector<std::string> events;
};

class QtFields : public testing::Test {
 protected:
  QtFields() {
    mSide->Windows().ShowMenuBar({}, mUser);
    mState.Title = "Fields";
    mWindow->Update(mState);
    static_cast<void>(QTest::qWaitForWindowActive(Frame()));
  }

  static QWidget* Frame() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      if (widget->windowTitle() == "Fields") return widget;
    }
    return nullptr;
  }
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
  static void Turn(QWidget& over, int units, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QWheelEvent event(over.rect().center(), over.mapToGlobal(over.rect().center()), {}, {0, units},
                      Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&over, &event);
  }

  Recorder mUser;
  std::unique_ptr<native::Side> mSide = qt::MakeSide("quorvel");
  native::WindowState mState;
  std::unique_ptr<native::Window> mWindow = mSide->Windows().Create(mUser);
};

class QtLog : public QtFields {
 protected:
  QtLog() { Open(); }
  void Open() {
    mField.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    mLook = Field(true);
    mLook.FollowsEnd = true;
    mField = mWindow->AddTextField(mLook, mUser);
    Grow();
    QCoreApplication::processEvents();
  }
  QPlainTextEdit& View() { return Find<QPlainTextEdit>(); }
  QScrollBar& Bar() { return *View().verticalScrollBar(); }
  void Grow() {
    for (int i = 0; i < 60; ++i) mField->AppendText("a line that wraps in a narrow view\n");
    mField->Refresh();
  }
  bool EndInSight() {
    const QTextBlock last = View().document()->lastBlock().previous();
    return View().viewport()->rect().contains(View().cursorRect(QTextCursor(last)).center());
  }
  int TopLine() { return View().cursorForPosition({5, 5}).blockNumber(); }
  void Key(Qt::Key key) { QTest::keyClick(&View(), key, Qt::ControlModifier); }
  void Do(Scroll step) {
    const std::map<Scroll, std::function<void()>> ways = {
        {Scroll::WheelUp, [&] { Turn(*View().viewport(), 120); }},
        {Scroll::WheelToEnd, [&] { Turn(*View().viewport(), -12000); }},
        {Scroll::BarUp, [&] { Bar().triggerAction(QScrollBar::SliderPageStepSub); }},
        {Scroll::BarToEnd, [&] { Bar().triggerAction(QScrollBar::SliderToMaximum); }},
        {Scroll::ControlHome, [&] { Key(Qt::Key_Home); }},
        {Scroll::ControlEnd, [&] { Key(Qt::Key_End); }},
        {Scroll::PageDownToEnd,
         [&] {
           for (int i = 0; i < 30; ++i) QTest::keyClick(&View(), Qt::Key_PageDown);
         }},
        {Scroll::OtherFont, [&] { mLook.TextSize = 20; }},
        {Scroll::Narrower, [&] { mLook.Width = 110; }},
        {Scroll::Lower, [&] { mLook.Height = 90; }},
        {Scroll::Higher, [&] { mLook.Height = 270; }},
        {Scroll::HiddenAndShown, [&] { Frame()->hide(), Frame()->show(); }}};
    ways.at(step)();
    mField->Update(mLook);
    QCoreApplication::processEvents();
  }

  native::TextFieldState mLook;
  std::unique_ptr<native::TextField> mField;
};

TEST_F(QtLog, FollowsItsEndUntilTheUserScrollsAway) {
  for (const auto& [name, steps, follows] : FollowingCases()) {
    Open();
    for (const Scroll step : steps) Do(step);
    const int top = TopLine();
    EXPECT_TRUE(EndInSight() || !follows) << name;
    Grow();
    EXPECT_EQ(EndInSight(), follows) << name;
    if (!follows) {
      EXPECT_EQ(TopLine(), top) << name;
    }
  }
}

TEST_F(QtLog, RightToLeftLinesStandAtTheRightEdge) {
  mField->SetText("one\n\u05E9\u05DC\u05D5\u05DD\nthree\n");
  const auto left = [&](int line) {
    return View().cursorRect(QTextCursor(View().document()->findBlockByNumber(line))).left();
  };
  EXPECT_LT(left(0), 20);
  EXPECT_GT(left(1), 260);
  EXPECT_LT(left(2), 20);
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
  for (const int units : {120, -120, 240, 60, 60, 30}) {
    Turn(*View().viewport(), units, Qt::ControlModifier);
  }
  EXPECT_THAT(mUser.events, ElementsAre("Cmd++", "Cmd+-", "Cmd++", "Cmd++", "Cmd++"));
  EXPECT_EQ(View().font(), font);
  mUser.events.clear();
  Turn(*Find<QPlainTextEdit>().parentWidget(), 120, Qt::ControlModifier);
  QWidget other;
  other.show();
  other.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
  Turn(*View().viewport(), 120, Qt::ControlModifier);
  EXPECT_THAT(mUser.events, IsEmpty());
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
    for (const bool pasted : {true, false}) {
      field->SetText(set);
      line.setFocus();
      line.setCursorPosition(static_cast<int>(line.text().size()));
      QGuiApplication::clipboard()->setText(entered);
      QInputMethodEvent commit;
      commit.setCommitString(entered);
      pasted ? line.paste() : static_cast<void>(QApplication::sendEvent(&line, &commit));
      EXPECT_EQ(line.text(), result);
      ASSERT_FALSE(mUser.events.empty());
      EXPECT_EQ(mUser.events.back(), result);
    }
  }
  line.undo();
  EXPECT_EQ(line.text(), "a\nbc");
}

TEST_F(QtFields, ALinkWhoseTextChangesStillReportsClicks) {
  native::LabelState look;
  look.Name = "it";
  look.Link = true;
  const auto link = mWindow->AddLabel(look);
  look.Text = "http://www.quorvel.example/";
  link->Update(look);
  QTest::mouseClick(&Find<QWidget>(), Qt::LeftButton);
  EXPECT_THAT(mUser.events, ElementsAre("pressed", "released"));
}

TEST_F(QtFields, ReturnPressesTheButtonWithTheKeyboard) {
  native::ButtonState look;
  look.Name = "it";
  int pressed = 0;
  const auto button = mWindow->AddButton(look, [&] { ++pressed; });
  const auto field = mWindow->AddTextField(Field(false), mUser);
  QTest::keyClick(Frame()->findChild<QLineEdit*>(), Qt::Key_Return);
  EXPECT_EQ(pressed, 0);
  Find<QPushButton>().setFocus();
  QTest::keyClick(&Find<QPushButton>(), Qt::Key_Return);
  EXPECT_EQ(pressed, 1);
}

}  // namespace
}  // namespace quorvel
