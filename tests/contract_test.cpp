// The contract of windows, controls, menus and the event loop, tested on each native side.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/windows/application.h"
#include "platform/windows/system.h"
#include "platform/windows/timer.h"
#include "platform/windows/window.h"
#include "support/hands.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

  template <class Kind>
  Ref<Kind> Get(const char* name) {
    return Cast<Kind>(RuntimeWindowControlByName(*this, name));
  }

  void Event_Open() override { Happens("open"); }
  void Event_Close() override { Happens("close"); }
  bool Event_CancelClose(bool application_quits) override {
    Happens(application_quits ? "quits" : "asked");
    return stays_open;
  }
  void Event_EnableMenuItems() override { MenuBar()->_Lookup("Hooked")->Enabled(true); }
  void Event_Resizing() override { Happens("resizing"); }
  void Event_Resized() override { Happens("resized"); }

  bool stays_open = false;

 protected:
  void Layout() override {
    MenuBar(_TheApplication()->MenuBar());
    static constexpr Property kTable[] = {{"Title", "Probe"}, {"Width", 400}, {"Height", 300}};
    _SetProperties(*this, kTable);
  }
  void CreateControls() override {
    static constexpr Property kField[] = {{"Name", "field"}, {"Left", 10},       {"Top", 100},
                                          {"Width", 300},    {"Height", 150},    {"Multiline", 1},
                                          {"ReadOnly", 1},   {"LockLeft", false}};
    static constexpr Property kLine[] = {{"Name", "line"}, {"Left", 10}, {"Top", 70}};
    static constexpr Property kButton[] = {{"Name", "button"}, {"Left", 10}, {"Top", 40}};
    static constexpr Property kLink[] = {{"Name", "link"}, {"Left", 20}, {"Top", 10}};
    CreateControl<EditField>("field", kField);
    CreateControl<EditField>("line", kLine);
    Tell(CreateControl<PushButton>("button", kButton), "Action");
    const auto link = CreateControl<StaticText>("link", kLink);
    for (const char* const event : {"MouseEnter", "MouseExit", "MouseDown", "MouseUp"}) {
      Tell(link, event);
    }
  }
  void AddMenuHandlers() override {
    Happens("menus");
    _AddMenuHandler("Routed", [] { return Happens("window's"), false; });
  }

 private:
  static void Tell(const Ref<Component>& control, const std::string& event) {
    control->_Install(event, [=](int32_t x, int32_t y) {
      Happens(event + " " + std::to_string(x) + "," + std::to_string(y));
      return true;
    });
  }
};

/// A window without controls and handlers.
class Bare : public Window {
 public:
  static constexpr const char* kClassName = "Bare.Bare";
  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Layout() override { Title("Bare"); }
};

/// A window without a menu bar: the set-up raises before the controls are made.
class Broken : public Bare {
 public:
  static constexpr const char* kClassName = "Broken.Broken";
  [[nodiscard]] Text _ClassName() const override { return kClassName; }
  void Layout() override {
    Bare::Layout();
    _AddMenuHandler("Everywhere", [] { return false; });
  }
};

class ProbeApp : public Application {
 public:
  void Event_Open() override {
    if (const auto then = gThen["application's open"]) then();
  }
  void Event_Close() override { Happens("application's close"); }
};

template <class Kind>
void AppendItem(MenuItem& menu, const char* name) {
  const auto item = New<Kind>();
  item->Name(name);
  item->Text(name);
  menu.Append(item);
}

class Contract : public testing::Test {
 protected:
  Contract() {
    Start();
    const auto bar = New<MenuBar>();
    AppendItem<MenuItem>(*bar, "Menu");
    auto& menu = *bar->Child("Menu");
    for (const char* const name : {"Hooked", "Routed", "Everywhere", "Nobodys"}) {
      AppendItem<MenuItem>(menu, name);
    }
    AppendItem<QuitMenuItem>(menu, "Leave");
    mApp->MenuBar(bar);
    mApp->_AddMenuHandler("Everywhere", [] { return Happens("application's"), false; });
  }
  ~Contract() override {
    gThen.clear();
    for (const auto& window : _WindowSupport::Windows()) window->Close();
    mApp->MenuBar(Nil);
    static_cast<void>(RuntimeExit());
    gEvents.clear();
  }

  void Start() {
    RuntimeInit(mHands->Side());
    _RuntimeRegisterAppObject(mApp);
  }
  /// Runs the event loop with `body` as an event, and ends the loop after `body`.
  void Running(const std::function<void()>& body) {
    mHands->Post([=, this] {
      body();
      mHands->Post([this] { mHands->Side().Loop().Stop(); });
    });
    _RuntimeRun();
  }
  /// Runs the event loop with `handler` as an event until `handler` quits the application.
  void RunsUntilQuit(const std::function<void()>& handler) {
    mHands->Post([=] { Dispatch(handler); });
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

  std::unique_ptr<Hands> mHands = Hands::Make();
  Ref<ProbeApp> mApp = New<ProbeApp>();
};

TEST_F(Contract, AnAccessorFindsTheOpenWindowOrOpensANewWindow) {
  gThen["open"] = [] { EXPECT_TRUE(_GetImplicitWindow(Probe::kClassName)); };
  const auto first = ImplicitWindow<Probe>();
  EXPECT_EQ(mHands->ContentSize("Probe"), std::pair(400, 300));
  first->Title("Changed");
  EXPECT_EQ(ImplicitWindow<Probe>(), first);
  EXPECT_TRUE(mHands->IsOpen("Changed"));
  first->Close();
  EXPECT_FALSE(mHands->IsOpen("Changed"));
  const auto second = ImplicitWindow<Probe>();
  EXPECT_FALSE(second == first);
  EXPECT_EQ(second->Title().Bytes(), "Probe");
  EXPECT_THAT(Happened(), ElementsAre("menus", "open", "asked", "close", "menus", "open"));
}

TEST_F(Contract, AWindowMayRefuseToClose) {
  const auto probe = OpenProbe();
  probe->stays_open = true;
  mHands->PressCloseButton("Probe");
  EXPECT_TRUE(mHands->IsOpen("Probe"));
  EXPECT_TRUE(probe->Get<EditField>("field"));
  probe->stays_open = false;
  mHands->PressCloseButton("Probe");
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(RuntimeWindowControlByName(*probe, "field"));
  EXPECT_THAT(Happened(), ElementsAre("asked", "asked", "close"));
}

TEST_F(Contract, AWindowClosesEvenWhenTheCloseHookClosesAgainOrRaises) {
  const auto probe = OpenProbe();
  gThen["close"] = [&] {
    probe->Close();
    throw RuntimeException("in close");
  };
  Running([&] { mHands->PressCloseButton("Probe"); });
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(_GetImplicitWindow(Probe::kClassName));
  EXPECT_EQ(mHands->Messages().size(), 1U);
}

TEST_F(Contract, QuitUnwindsThenClosesTheWindowsAndTheApplicationOnce) {
  OpenProbe();
  ImplicitWindow<Bare>();
  gThen["close"] = [] { throw RuntimeException("in the quit"); };
  RunsUntilQuit([] {
    Quit(0);
    Happens("behind the quit");
  });
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(mHands->IsOpen("Bare"));
  EXPECT_THAT(Happened(), ElementsAre("quits", "close", "application's close"));

  Start();
  RunsUntilQuit([] {
    Dispatch([] { Quit(0); });
    throw RuntimeException("in a handler that the quit unwinds");
  });
  EXPECT_THAT(mHands->Messages(), IsEmpty());
}

TEST_F(Contract, AQuitInsideANestedLoopUnwindsTheOuterHandler) {
  const auto close = [&] { mHands->PressCloseButton("Probe"); };
  const std::function<void()> handlers[] = {[&] {
                                              mHands->Post(close);
                                              for (int i = 0; i < 100; ++i) mApp->DoEvents(-1);
                                            },
                                            [&] {
                                              mHands->WhileNextMessageIsUp(close);
                                              MsgBox("up");
                                            }};
  gThen["close"] = [] { Quit(0); };
  for (const auto& handler : handlers) {
    Start();
    OpenProbe();
    RunsUntilQuit([&] {
      handler();
      Happens("behind the quit");
    });
    EXPECT_THAT(Happened(), ElementsAre("asked", "close", "application's close"));
  }
  EXPECT_THAT(mHands->Messages(), ElementsAre("up"));
}

TEST_F(Contract, ARequestFromOutsideQuitsAlsoBeforeTheLoopRuns) {
  OpenProbe();
  RunsUntilQuit([&] { mHands->AskToQuit(); });
  EXPECT_THAT(Happened(), ElementsAre("quits", "close", "application's close"));

  Start();
  gThen["application's open"] = [&] {
    mHands->WhileNextMessageIsUp([&] {
      mHands->AskToQuit();
      mHands->Side().Loop().Turn(0);
    });
    MsgBox("up");
    Happens("behind the message");
  };
  _RuntimeRun();
  EXPECT_THAT(Happened(), ElementsAre("application's close"));
  EXPECT_THAT(mHands->Messages(), ElementsAre("up"));
}

TEST_F(Contract, AStopBeforeTheLoopRunsEndsNothing) {
  mHands->Side().Loop().Stop();
  Running([] { Happens("event"); });
  EXPECT_THAT(Happened(), ElementsAre("event"));
}

TEST_F(Contract, EachKindOfUnhandledExceptionIsShownOnceAndTheLoopGoesOn) {
  OpenProbe();
  Running([&] {
    for (int i = 0; i < 2; ++i) {
      gThen["Action 0,0"] = [] { throw RuntimeException("one"); };
      mHands->PressButton("button");
      gThen["Action 0,0"] = [] { static_cast<void>(*Ref<Probe>()); };
      mHands->PressButton("button");
    }
    gThen["Action 0,0"] = [] { throw std::runtime_error("of the library"); };
    mHands->PressButton("button");
    const auto timer = TickingTimer("tick");
    gThen["tick"] = [] { throw OutOfBoundsException("without a message box"); };
    EXPECT_TRUE(
        mHands->WaitUntil([] { return testing::Value(gEvents, testing::Contains("tick")); }));
  });
  EXPECT_THAT(mHands->Messages(), ElementsAre(testing::EndsWith("one\n\n(RuntimeException)"),
                                              testing::HasSubstr("NilObjectException"),
                                              testing::HasSubstr("of the library")));
  EXPECT_TRUE(mHands->IsOpen("Probe"));
}

TEST_F(Contract, WindowsAndTimersMayEndInsideTheirOwnHandlers) {
  OpenProbe();
  gThen["Action 0,0"] = [] { ImplicitWindow<Probe>()->Close(); };
  mHands->PressButton("button");
  EXPECT_FALSE(mHands->IsOpen("Probe"));

  auto timer = New<Timer>();
  int fired = 0;
  timer->_Install("Action", [&](int32_t, int32_t) {
    timer = Nil;
    return ++fired > 0;
  });
  timer->Period(1);
  timer->Mode(Timer::kModeMultiple);
  EXPECT_TRUE(mHands->WaitUntil([&] { return fired > 0; }));
  EXPECT_EQ(fired, 1);
}

TEST_F(Contract, ATimerEndsWithItsWindow) {
  const auto probe = OpenProbe();
  const auto owned = TickingTimer("window's");
  const auto free = TickingTimer("free");
  probe->_AddControl("timer", owned);
  probe->Close();
  gEvents.clear();
  EXPECT_TRUE(mHands->WaitUntil([] { return gEvents.size() > 2; }));
  EXPECT_THAT(Happened(), testing::Each("free"));
}

TEST_F(Contract, MenusFollowTheFrontWindow) {
  ImplicitWindow<Probe>();
  ImplicitWindow<Bare>();
  mHands->BringToFront("Bare");
  EXPECT_THAT(mHands->EnabledItems(), ElementsAre("Everywhere", "Leave"));
  mHands->BringToFront("Probe");
  EXPECT_THAT(mHands->EnabledItems(), ElementsAre("Hooked", "Routed", "Everywhere", "Leave"));
  gEvents.clear();
  for (const char* const item : {"Routed", "Everywhere", "Nobodys"}) mHands->Choose(item);
  EXPECT_THAT(Happened(), ElementsAre("window's", "application's"));
  mHands->BringToFront("Bare");
  mHands->Choose("Routed");
  EXPECT_THAT(Happened(), IsEmpty());
}

TEST_F(Contract, AFieldReturnsTheAssignedOrTypedText) {
  const auto probe = OpenProbe();
  const auto field = probe->Get<EditField>("field");
  const std::string odd("a\0b\r\n\xC3\xA9 \xE9 \xE2\x82", 12);
  field->Text(Text::FromBytes(odd));
  EXPECT_EQ(field->Text().Bytes(), odd);
  probe->Get<StaticText>("link")->Text(Text::FromBytes(odd));
  EXPECT_EQ(probe->Get<StaticText>("link")->Text().Bytes(), odd);
  field->Text(field->Text() + "\xAC more\n");
  EXPECT_THAT(mHands->ShownText("field"), testing::EndsWith("\xE2\x82\xAC more\n"));
  std::string lines;
  field->Text("");
  for (int i = 0; i < 100; ++i) {
    field->Text(field->Text() + Str(i) + EndOfLine);
    lines += std::to_string(i) + "\n";
  }
  EXPECT_EQ(mHands->ShownText("field"), lines);
  field->Text("something else");
  EXPECT_EQ(mHands->ShownText("field"), "something else");

  const auto line = probe->Get<EditField>("line");
  mHands->Type("line", "Maple");
  EXPECT_EQ(line->Text().Bytes(), "Maple");
  line->Text("");
  EXPECT_EQ(mHands->ShownText("line"), "");
}

TEST_F(Contract, AResizeByTheUserIsReported) {
  const auto probe = OpenProbe();
  mHands->Resize("Probe", 500, 350);
  EXPECT_TRUE(mHands->WaitUntil([] { return gEvents == Events{"resizing", "resized"}; }));
  EXPECT_EQ(std::pair(probe->Width(), probe->Height()), std::pair(500, 350));
}

TEST_F(Contract, TheMouseEntersAndLeavesAtTheEdges) {
  OpenProbe();
  mHands->UseMouse(Hands::Mouse::Move, "Probe", 19, 15);
  mHands->UseMouse(Hands::Mouse::Move, "Probe", 20, 10);
  mHands->UseMouse(Hands::Mouse::Move, "Probe", 120, 30);
  EXPECT_THAT(Happened(), ElementsAre("MouseEnter 0,0"));
  mHands->UseMouse(Hands::Mouse::Move, "Probe", 121, 30);
  mHands->UseMouse(Hands::Mouse::Move, "Probe", 120, 31);
  EXPECT_THAT(Happened(), ElementsAre("MouseExit 0,0"));
}

TEST_F(Contract, TheControlThatClaimedAClickGetsTheRelease) {
  OpenProbe();
  mHands->UseMouse(Hands::Mouse::Press, "Probe", 25, 12);
  mHands->UseMouse(Hands::Mouse::Release, "Probe", 200, 200);
  EXPECT_THAT(Happened(), testing::IsSupersetOf({"MouseDown 5,2", "MouseUp 180,190"}));
  mHands->UseMouse(Hands::Mouse::Press, "Probe", 25, 12);  // and the release is lost
  static_cast<void>(Happened());
  mHands->UseMouse(Hands::Mouse::Press, "Probe", 200, 20);
  mHands->UseMouse(Hands::Mouse::Release, "Probe", 25, 12);
  EXPECT_THAT(Happened(), IsEmpty());
}

TEST_F(Contract, UnknownNamesAndWrongControlsRaise) {
  const auto probe = OpenProbe();
  const auto button = probe->Get<PushButton>("button");
  const auto install = [&](const char* event) {
    _InstallInstanceEventHandler(button, event, [](int32_t, int32_t) { return false; });
  };
  static constexpr Property kWindowsOwn[] = {{"MinWidth", 3}};
  static constexpr Property kFieldsOwn[] = {{"LimitText", 3}};
  static constexpr Property kIdle[] = {{"HelpTag", ""}, {"AutoDeactivate", true}, {"Default", 0}};
  EXPECT_NO_THROW(_SetProperties(*probe, kWindowsOwn));
  EXPECT_THROW(_SetProperties(*probe, kFieldsOwn), RuntimeException);
  EXPECT_THROW(_SetProperties(button, kWindowsOwn), RuntimeException);
  EXPECT_THROW(_SetProperties(button, kFieldsOwn), RuntimeException);
  EXPECT_NO_THROW(_SetProperties(button, kIdle));
  EXPECT_NO_THROW(install("MouseUp"));
  EXPECT_THROW(install("Pressed"), RuntimeException);
  EXPECT_THROW(probe->_AddMenuHandler("Nowhere", [] { return false; }), RuntimeException);
  EXPECT_THROW(mApp->_AddMenuHandler("Nowhere", [] { return false; }), RuntimeException);
  EXPECT_THROW(static_cast<void>(probe->Get<Canvas>("field")), IllegalCastException);
  EXPECT_THROW(probe->Get<Canvas>("nothing")->Refresh(true), NilObjectException);
  EXPECT_THROW(ImplicitWindow<Broken>(), NilObjectException);  // Broken has no menu bar
  EXPECT_FALSE(_GetImplicitWindow(Broken::kClassName));
  EXPECT_FALSE(mHands->IsOpen("Bare"));
}

}  // namespace
}  // namespace quorvel
