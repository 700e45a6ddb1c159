// The contract of windows, controls, menus and the event loop, tested on each native side.

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "platform/windows/system.h"
#include "platform/windows/timer.h"
#include "platform/windows/window.h"
#include QUORVEL_HANDS

namespace quorvel {
namespace {

using testing::ElementsAre;

using Events = std::vector<std::string>;
Events gEvents;
/// A test's functions by event; `Happens` calls the event's function.
std::map<std::string, std::function<void()>> gThen;

void Happens(const std::string& event) {
  gEvents.push_back(event);
  if (const auto then = gThen[event]) then();
}
Events Happened() { return std::exchange(gEvents, {}); }

/// A window that passes all events to `Happens`.
class Probe : public Window {
 public:
  static constexpr const char* kClassName = "Probe.Probe";
  [[nodiscard]] Text _ClassName() const override { return kClassName; }

  void Event_Open() override { Happens("open"); }
  void Event_Close() override { Happens("close"); }
  bool Event_CancelClose(bool application_quits) override {
    Happens(application_quits ? "quits" : "asked");
    return stays_open;
  }
  void Event_Resizing() override { Happens("resizing"); }
  void Event_Resized() override { Happens("resized"); }

  bool stays_open = false;

 protected:
  void Layout() override {
    Title("Probe");
    Happens("layout");
  }
  void CreateControls() override {
    static constexpr Property kField[] = {{"Name", "field"}, {"Top", 100}, {"Multiline", 1}};
    static constexpr Property kButton[] = {{"Name", "button"}, {"Top", 40}};
    static constexpr Property kLink[] = {{"Name", "link"}, {"Left", 20}, {"Top", 10}};
    CreateControl<EditField>("field", kField);
    Tell(CreateControl<PushButton>("button", kButton), "Action");
    const auto link = CreateControl<StaticText>("link", kLink);
    for (const char* const it : {"MouseEnter", "MouseExit", "MouseDown", "MouseUp"}) Tell(link, it);
  }
  void AddMenuHandlers() override { Happens("menus"); }

 private:
  static void Tell(const Ref<Component>& control, const std::string& event) {
    control->_Install(event, [=](int32_t x, int32_t y) {
      Happens(event + " " + std::to_string(x) + "," + std::to_string(y));
      return true;
    });
  }
};

class ProbeApp : public Application {
 public:
  void Event_Open() override { Happens("start"); }
  void Event_Close() override { Happens("end"); }
};

class Contract : public testing::Test {
 protected:
  Contract() { Start(); }
  ~Contract() override {
    gThen.clear();
    for (const auto& window : _WindowSupport::Windows()) window->Close();
    static_cast<void>(RuntimeExit());
    gEvents.clear();
  }

  void Start() {
    RuntimeInit(mHands.Side());
    _RuntimeRegisterAppObject(mApp);
  }
  /// Runs the event loop, which an earlier stop does not end, with `handler` as an event until
  /// `handler` quits the application.
  void RunsUntilQuit(const std::function<void()>& handler) {
    mHands.Side().Loop().Stop();
    mHands.Post([=] { Dispatch(handler); });
    _RuntimeRun();
  }
  static Ref<Probe> OpenProbe() {
    auto probe = ImplicitWindow<Probe>();
    gEvents.clear();
    return probe;
  }
  static Ref<Timer> TickingTimer(const std::string& tick) {
    auto timer = New<Timer>();
    timer->_Install("Action", [tick](int32_t, int32_t) { return Happens(tick), true; });
    timer->Period(1);
    timer->Mode(Timer::kModeMultiple);
    return timer;
  }

  Hands mHands;
  Ref<ProbeApp> mApp = New<ProbeApp>();
};

TEST_F(Contract, AnAccessorFindsTheOpenWindowOrOpensANewWindow) {
  gThen["open"] = [] { EXPECT_TRUE(_GetImplicitWindow(Probe::kClassName)); };
  const auto first = ImplicitWindow<Probe>();
  EXPECT_EQ(ImplicitWindow<Probe>(), first);
  first->stays_open = true;
  mHands.PressCloseButton("Probe");
  EXPECT_TRUE(mHands.IsOpen("Probe"));
  first->stays_open = false;
  gThen["close"] = [&] {
    first->Close();
    throw RuntimeException("in close");
  };
  EXPECT_THROW(first->Close(), RuntimeException);
  gThen.erase("close");
  EXPECT_FALSE(mHands.IsOpen("Probe"));
  EXPECT_THAT(Happened(), ElementsAre("layout", "menus", "open", "asked", "asked", "close"));
  gThen["layout"] = [] { throw RuntimeException("in the set-up"); };
  EXPECT_THROW(ImplicitWindow<Probe>(), RuntimeException);
  EXPECT_FALSE(_GetImplicitWindow(Probe::kClassName));
  gThen.erase("layout");
  EXPECT_FALSE(ImplicitWindow<Probe>() == first);
}

TEST_F(Contract, AQuitUnwindsAllHandlersThenClosesTheWindowsAndTheApplicationOnce) {
  using Act = std::function<void()>;
  const Act fail = [] { throw RuntimeException("in the quit"); };
  const Act quit = [] { Quit(0), Happens("behind the quit"); };
  const Act ask = [&] { mHands.AskToQuit(); };
  const Act close = [&] { mHands.PressCloseButton("Probe"); };
  const Act nest = [&] {
    mHands.Post(close);
    for (int i = 0; i < 100; ++i) mApp->DoEvents(-1);
    Happens("behind the quit");
  };
  const Act show_box = [&] {
    mHands.WhileNextMessageIsUp(close);
    MsgBox("up"), Happens("behind the quit");
  };
  using Case = std::tuple<Act, Act, const char*>;
  for (const auto& [handler, close_handler, question] :
       {Case{quit, fail, "quits"}, Case{ask, fail, "quits"}, Case{nest, quit, "asked"},
        Case{show_box, quit, "asked"}}) {
    gThen["close"] = close_handler;
    Start();
    OpenProbe();
    RunsUntilQuit(handler);
    EXPECT_FALSE(mHands.IsOpen("Probe"));
    EXPECT_THAT(Happened(), ElementsAre("start", question, "close", "end"));
  }
  EXPECT_THAT(mHands.Messages(), ElementsAre("up"));
}

TEST_F(Contract, ARequestFromOutsideQuitsAlsoBeforeTheLoopRuns) {
  gThen["start"] = [&] {
    mHands.AskToQuit();
    mApp->DoEvents(0);
  };
  _RuntimeRun();
  EXPECT_THAT(Happened(), ElementsAre("start", "end"));
}

TEST_F(Contract, EachKindOfUnhandledExceptionIsShownOnceAndTheLoopGoesOn) {
  OpenProbe();
  const std::function<void()> own = [] { throw RuntimeException("why"); };
  const std::function<void()> library = [] { throw std::runtime_error("of the library"); };
  RunsUntilQuit([&] {
    for (const auto& raise : {own, library, own}) {
      gThen["Action 0,0"] = raise;
      mHands.PressButton("button");
    }
    Quit(0);
  });
  EXPECT_THAT(mHands.Messages(), ElementsAre(testing::EndsWith("why\n\n(RuntimeException)"),
                                             testing::HasSubstr("of the library")));
}

TEST_F(Contract, WindowsAndTimersMayEndInsideHandlersAndATimerEndsWithItsWindow) {
  const auto probe = OpenProbe();
  const auto owned = TickingTimer("window's");
  probe->_AddControl("timer", owned);
  gThen["Action 0,0"] = [&] { probe->Close(); };
  mHands.PressButton("button");
  EXPECT_FALSE(mHands.IsOpen("Probe"));
  gEvents.clear();
  auto once = TickingTimer("once");
  gThen["once"] = [&] { once = Nil; };
  const auto free = TickingTimer("free");
  EXPECT_TRUE(mHands.WaitUntil([] { return std::ranges::count(gEvents, "free") > 1; }));
  std::erase(gEvents, "free");
  EXPECT_THAT(Happened(), ElementsAre("once"));
}

TEST_F(Contract, AFieldReturnsTheAssignedTextAndShowsAllThatCanBeRead) {
  const auto field = Cast<EditField>(RuntimeWindowControlByName(*OpenProbe(), "field"));
  const std::string odd("a\0b\r\n\xC3\xA9 \xE9 \xE2\x82", 12);
  field->Text(Text::FromBytes(odd));
  EXPECT_EQ(field->Text().Bytes(), odd);
  field->Text(field->Text() + "\xAC more\n");
  field->Text(field->Text() + "lines" + EndOfLine);
  EXPECT_THAT(mHands.ShownText("field"), testing::EndsWith("\xE2\x82\xAC more\nlines\n"));
  field->Text("something else");
  EXPECT_EQ(mHands.ShownText("field"), "something else");
}

TEST_F(Contract, TheMouseActsUpToTheEdgesAndOnTheClaimingControlAndResizes) {
  using enum Hands::Mouse;
  using Step = std::tuple<Hands::Mouse, int, int, Events>;
  const auto probe = OpenProbe();
  for (const auto& [act, x, y, events] : {Step{Move, 19, 15, {}},
                                          {Move, 20, 10, {"MouseEnter 0,0"}},
                                          {Move, 120, 30, {}},
                                          {Move, 121, 31, {"MouseExit 0,0"}},
                                          {Press, 25, 12, {"MouseDown 5,2"}},
                                          {Release, 200, 200, {"MouseUp 180,190"}},
                                          {Press, 25, 12, {"MouseDown 5,2"}},  // release lost
                                          {Press, 200, 20, {}},
                                          {Release, 25, 12, {}}}) {
    mHands.UseMouse(act, "Probe", x, y);
    // Whether a click also moves the mouse is up to the native side.
    if (act != Move) std::erase_if(gEvents, [](const auto& it) { return it.ends_with(" 0,0"); });
    EXPECT_EQ(Happened(), events) << x << "," << y;
  }
  mHands.Resize("Probe", 500, 350);
  EXPECT_TRUE(mHands.WaitUntil([] { return gEvents == Events{"resizing", "resized"}; }));
  EXPECT_EQ(std::pair(probe->Width(), probe->Height()), std::pair(500, 350));
}

}  // namespace
}  // namespace quorvel
