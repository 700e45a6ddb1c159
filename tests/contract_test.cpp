// The rules that windows, controls, menus and the event loop keep, on either native side.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

void Happens(const std::string& event) { gEvents.push_back(event); }
Events Happened() { return std::exchange(gEvents, {}); }

/// A window that tells what happens to it, and does what a test wants done in its hooks.
class Probe : public Window {
 public:
  static constexpr const char* kClassName = "Probe.Probe";
  [[nodiscard]] Text _ClassName() const override { return kClassName; }

  template <class Kind>
  Ref<Kind> Get(const char* name) {
    return Cast<Kind>(RuntimeWindowControlByName(*this, name));
  }

  void Event_Open() override { Happens("open"); }
  void Event_Close() override {
    Happens("close");
    if (on_close) on_close();
  }
  bool Event_CancelClose(bool) override { return stays_open; }
  void Event_EnableMenuItems() override { MenuBar()->_Lookup("Hooked")->Enabled(true); }
  void Event_Resized() override { Happens("resized"); }
  void button_Action() {
    Happens("button");
    if (on_button) on_button();
  }
  bool link_MouseDown(int32_t x, int32_t y) {
    Happens("down " + std::to_string(x) + "," + std::to_string(y));
    return true;
  }
  void link_MouseUp(int32_t x, int32_t y) {
    Happens("up " + std::to_string(x) + "," + std::to_string(y));
  }
  void link_MouseEnter() {
    Happens("enter");
    Get<StaticText>("link")->MouseCursor(System()->Cursors()->FingerPointer());
  }
  void link_MouseExit() {
    Happens("exit");
    Get<StaticText>("link")->MouseCursor(System()->Cursors()->StandardPointer());
  }

  bool stays_open = false;
  std::function<void()> on_close;
  std::function<void()> on_button;

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
    static constexpr Property kLine[] = {
        {"Name", "line"}, {"Left", 10}, {"Top", 70}, {"Width", 300}, {"Height", 22}};
    static constexpr Property kButton[] = {
        {"Name", "button"}, {"Left", 10}, {"Top", 40}, {"Width", 80}, {"Height", 20}};
    static constexpr Property kLink[] = {{"Name", "link"}, {"Left", 20},   {"Top", 10},
                                         {"Width", 100},   {"Height", 20}, {"Text", "link"}};
    CreateControl<EditField>("field", kField);
    CreateControl<EditField>("line", kLine);
    CreateControl<PushButton>("button", kButton);
    CreateControl<StaticText>("link", kLink);
    Install("button", "Action", &Probe::button_Action);
    Install("link", "MouseEnter", &Probe::link_MouseEnter);
    Install("link", "MouseExit", &Probe::link_MouseExit);
    Install("link", "MouseDown", &Probe::link_MouseDown);
    Install("link", "MouseUp", &Probe::link_MouseUp);
  }
  void AddMenuHandlers() override {
    _AddMenuHandler("Routed", [] {
      Happens("window's");
      return false;
    });
  }

 private:
  template <class Method>
  void Install(const char* control, const char* event, Method method) {
    _InstallInstanceEventHandler(RuntimeWindowControlByName(*this, control), event,
                                 RuntimeSwapSelfAndMe(*this, method));
  }
};

/// A window with nothing in it.
class Bare : public Window {
 public:
  static constexpr const char* kClassName = "Bare.Bare";
  [[nodiscard]] Text _ClassName() const override { return kClassName; }

 protected:
  void Layout() override {
    MenuBar(_TheApplication()->MenuBar());
    static constexpr Property kTable[] = {{"Title", "Bare"}};
    _SetProperties(*this, kTable);
  }
};

class ProbeApp : public Application {
 public:
  void Event_Close() override {
    Happens("application's close");
    if (on_close) on_close();
  }
  std::function<void()> on_close;
};

Ref<MenuItem> Item(const Ref<MenuItem>& item, const char* name) {
  item->Name(name);
  item->Text(name);
  return item;
}

class Contract : public testing::Test {
 protected:
  Contract() {
    RuntimeInit(mHands->Side());
    _RuntimeRegisterAppObject(mApp);
    const auto bar = New<MenuBar>();
    bar->Append(Item(New<MenuItem>(), "Menu"));
    for (const char* const name : {"Hooked", "Routed", "Everywhere", "Nobodys"}) {
      bar->Child("Menu")->Append(Item(New<MenuItem>(), name));
    }
    bar->Child("Menu")->Append(Item(New<QuitMenuItem>(), "Leave"));
    mApp->MenuBar(bar);
    mApp->_AddMenuHandler("Everywhere", [] {
      Happens("application's");
      return false;
    });
  }
  ~Contract() override {
    for (const auto& window : _WindowSupport::Windows()) window->Close();
    static_cast<void>(RuntimeExit());
    gEvents.clear();
  }

  /// Runs the event loop with `body` as its one event; ends by itself.
  void Running(const std::function<void()>& body) {
    mHands->Post([=, this] {
      body();
      mHands->Post([this] { mHands->Side().Loop().Stop(); });
    });
    _RuntimeRun();
  }
  static Ref<Probe> OpenProbe() {
    auto probe = ImplicitWindow<Probe>();
    gEvents.clear();
    return probe;
  }

  std::unique_ptr<Hands> mHands = Hands::Make();
  Ref<ProbeApp> mApp = New<ProbeApp>();
};

TEST_F(Contract, AnAccessorFindsTheOpenWindowOrMakesAFreshOne) {
  const auto first = ImplicitWindow<Probe>();
  EXPECT_TRUE(mHands->IsOpen("Probe"));
  EXPECT_EQ(mHands->ContentSize("Probe"), std::pair(400, 300));
  first->Title("Changed");
  EXPECT_EQ(ImplicitWindow<Probe>(), first);
  EXPECT_TRUE(mHands->IsOpen("Changed"));
  first->Close();
  EXPECT_FALSE(mHands->IsOpen("Changed"));
  const auto second = ImplicitWindow<Probe>();
  EXPECT_FALSE(second == first);
  EXPECT_EQ(second->Title().Bytes(), "Probe");
  EXPECT_THAT(Happened(), ElementsAre("open", "close", "open"));
}

TEST_F(Contract, AWindowMayRefuseToClose) {
  const auto probe = OpenProbe();
  probe->stays_open = true;
  mHands->PressCloseButton("Probe");
  EXPECT_TRUE(mHands->IsOpen("Probe"));
  EXPECT_TRUE(RuntimeWindowControlByName(*probe, "field"));
  probe->stays_open = false;
  mHands->PressCloseButton("Probe");
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(RuntimeWindowControlByName(*probe, "field"));
  EXPECT_THAT(Happened(), ElementsAre("close"));
}

TEST_F(Contract, AHookThatRaisesDoesNotStopAClose) {
  OpenProbe()->on_close = [] { throw RuntimeException("in close"); };
  Running([&] { mHands->PressCloseButton("Probe"); });
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(_GetImplicitWindow(Probe::kClassName));
  EXPECT_EQ(mHands->Messages().size(), 1U);
}

TEST_F(Contract, QuitUnwindsThenClosesTheWindowsAndTheApplicationOnce) {
  const auto probe = OpenProbe();
  probe->on_close = [] { Quit(0); };
  mHands->Post([&] { mHands->PressCloseButton("Probe"); });
  _RuntimeRun();
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_THAT(Happened(), ElementsAre("close", "application's close"));

  RuntimeInit(mHands->Side());
  _RuntimeRegisterAppObject(mApp);
  const auto again = OpenProbe();
  const auto bare = ImplicitWindow<Bare>();
  again->on_close = [] { throw RuntimeException("in the quit"); };
  mHands->Post([] {
    Dispatch([] {
      Quit(0);
      Happens("behind the quit");
    });
  });
  _RuntimeRun();
  EXPECT_FALSE(mHands->IsOpen("Probe"));
  EXPECT_FALSE(mHands->IsOpen("Bare"));
  EXPECT_THAT(Happened(), ElementsAre("close", "application's close"));
  EXPECT_THAT(mHands->Messages(), IsEmpty());
}

TEST_F(Contract, AQuitInsideANestedLoopUnwindsTheOuterHandlerToo) {
  OpenProbe()->on_close = [] { Quit(0); };
  mHands->Post([&] {
    Dispatch([&] {
      mHands->Post([&] { mHands->PressCloseButton("Probe"); });
      for (int i = 0; i < 100; ++i) mApp->DoEvents(-1);
      Happens("behind the events");
    });
  });
  _RuntimeRun();
  EXPECT_THAT(Happened(), ElementsAre("close", "application's close"));
}

TEST_F(Contract, AQuitWhileAMessageIsUpEndsTheMessageToo) {
  OpenProbe()->on_close = [] { Quit(0); };
  mHands->WhileNextMessageIsUp([&] { mHands->PressCloseButton("Probe"); });
  mHands->Post([] {
    Dispatch([] {
      MsgBox("up");
      Happens("behind the message");
    });
  });
  _RuntimeRun();
  EXPECT_THAT(Happened(), ElementsAre("close", "application's close"));
}

TEST_F(Contract, EachKindOfUnhandledExceptionIsShownOnceAndTheLoopGoesOn) {
  const auto probe = OpenProbe();
  Running([&] {
    for (int i = 0; i < 2; ++i) {
      probe->on_button = [] { throw RuntimeException("one"); };
      mHands->PressButton("button");
      probe->on_button = [] { static_cast<void>(*Ref<Probe>()); };
      mHands->PressButton("button");
    }
    probe->on_button = [] { throw std::runtime_error("of the library"); };
    mHands->PressButton("button");
  });
  EXPECT_THAT(mHands->Messages(), ElementsAre(testing::HasSubstr("RuntimeException: one"),
                                              testing::HasSubstr("NilObjectException"),
                                              testing::HasSubstr("of the library")));
  EXPECT_TRUE(mHands->IsOpen("Probe"));
}

TEST_F(Contract, ThingsMayGoInsideTheirOwnHandlers) {
  auto probe = OpenProbe();
  probe->on_button = [] { ImplicitWindow<Probe>()->Close(); };
  probe = Nil;
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

TEST_F(Contract, AFieldGivesBackWhatItWasGiven) {
  const auto field = OpenProbe()->Get<EditField>("field");
  const std::string odd("a\0b\r\n\xC3\xA9 \xE9 \xE2\x82", 12);
  field->Text(Text::FromBytes(odd));
  EXPECT_EQ(field->Text().Bytes(), odd);
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
}

TEST_F(Contract, WhatIsTypedReachesTheField) {
  const auto line = OpenProbe()->Get<EditField>("line");
  mHands->Type("line", "Maple");
  EXPECT_EQ(line->Text().Bytes(), "Maple");
  line->Text("");
  EXPECT_EQ(mHands->ShownText("line"), "");
}

TEST_F(Contract, AUsersResizeIsTold) {
  const auto probe = OpenProbe();
  mHands->Resize("Probe", 500, 350);
  EXPECT_TRUE(
      mHands->WaitUntil([] { return testing::Value(gEvents, testing::Contains("resized")); }));
  EXPECT_EQ(probe->Width(), 500);
  EXPECT_EQ(probe->Height(), 350);
}

TEST_F(Contract, TheMouseEntersAndLeavesAtTheEdges) {
  OpenProbe();
  mHands->MoveMouse("Probe", 19, 15);
  mHands->MoveMouse("Probe", 20, 10);
  EXPECT_TRUE(mHands->HasFingerCursor("link"));
  mHands->MoveMouse("Probe", 120, 30);
  EXPECT_THAT(Happened(), ElementsAre("enter"));
  mHands->MoveMouse("Probe", 121, 30);
  mHands->MoveMouse("Probe", 120, 31);
  EXPECT_THAT(Happened(), ElementsAre("exit"));
  EXPECT_FALSE(mHands->HasFingerCursor("link"));
}

TEST_F(Contract, AClaimedClickEndsWhereItBegan) {
  OpenProbe();
  mHands->PressMouse("Probe", 25, 12);
  mHands->ReleaseMouse("Probe", 200, 200);
  mHands->PressMouse("Probe", 200, 20);
  mHands->ReleaseMouse("Probe", 25, 12);
  EXPECT_THAT(Happened(), testing::IsSupersetOf({"down 5,2", "up 180,190"}));
  EXPECT_THAT(Happened(), IsEmpty());
}

TEST_F(Contract, AWrongTableOrNameIsRaised) {
  const auto probe = OpenProbe();
  static constexpr Property kWrong[] = {{"Widht", 3}};
  EXPECT_THROW(_SetProperties(*probe, kWrong), RuntimeException);
  EXPECT_THROW(static_cast<void>(probe->Get<Canvas>("field")), IllegalCastException);
  EXPECT_THROW(probe->Get<Canvas>("nothing")->Refresh(true), NilObjectException);
}

}  // namespace
}  // namespace quorvel
