#include "log/main_window.h"

#include "log/my_easy_udp_socket.h"
#include "messaging/channel.h"
#include "platform/runtime/date.h"
#include "platform/runtime/runtime.h"
#include "ui/globals.h"
#include "ui/version.h"

namespace quorvel {

namespace {

constexpr int32_t kTestCommand = 510;
constexpr int32_t kLogMargin = 20;
constexpr int32_t kFontStep = 2;
constexpr int32_t kLargestFont = 72;
constexpr int32_t kSmallestFont = 6;

constexpr Property kWindow[] = {
    {"Width", 620},
    {"Height", 420},
    {"MinWidth", 200},
    {"MinHeight", 200},
    {"MaxWidth", 3000},
    {"MaxHeight", 3000},
    {"Placement", 2},
    {"Frame", 0},
    {"Title", "Quorvel - Open."},
    {"Visible", true},
    {"MenuBarVisible", true},
    {"CloseButton", true},
    {"Resizeable", true},
    {"MaximizeButton", true},
    {"MinimizeButton", true},
    {"LiveResize", false},
    {"FullScreen", false},
    {"Composite", false},
    {"HasBackColor", false},
    {"BackColor", "#ffffff"},
    {"MacProcID", 0},
};

constexpr Property kTimer[] = {
    {"Name", "tmrUDPCheck"},
    {"Mode", Timer::kModeMultiple},
    {"Period", 1000},
};

constexpr Property kLog[] = {
    {"Name", "efLog"},
    {"AccessibleName", "Log"},
    {"TabIndex", 1},
    {"TabPanelIndex", 0},
    {"Left", 7},
    {"Top", 7},
    {"Width", 600},
    {"Height", 400},
    {"LockLeft", false},
    {"LockTop", false},
    {"LockRight", false},
    {"LockBottom", false},
    {"Border", true},
    {"Multiline", true},
    {"ScrollbarVertical", true},
    {"Styled", true},
    {"ReadOnly", true},
    {"FollowsEnd", true},
    {"ScrollbarHorizontal", false},
    {"Password", false},
    {"AcceptTabs", false},
    {"UseFocusRing", true},
    {"Enabled", true},
    {"Visible", true},
    {"AutoDeactivate", true},
    {"TextFont", "Times"},
    {"TextSize", 12},
    {"Bold", false},
    {"Italic", false},
    {"Underline", false},
    {"TextColor", "#000000"},
    {"BackColor", "#ffffff"},
    {"LimitText", 0},
    {"Alignment", 0},
    {"Text", ""},
    {"Format", ""},
    {"Mask", ""},
    {"HelpTag", ""},
};

}  // namespace

namespace main_window {

using namespace mGlobals;

void wMain::Layout() { LayOut(kWindow); }

void wMain::CreateControls() { _CreateControls0(); }

void wMain::_CreateControls0() {
  CreateControl<tmrUDPCheck>("tmrUDPCheck", kTimer);
  _InstallInstanceEventHandler(RuntimeWindowControlByName(*this, "tmrUDPCheck"), "Action",
                               RuntimeSwapSelfAndMe(*this, &wMain::tmrUDPCheck_Action));
  CreateControl<editFieldExtras>("efLog", kLog);
}

void wMain::AddMenuHandlers() {
  _AddMenuHandler("FontLarger", [this] { return _FontLarger_Action(); });
  _AddMenuHandler("FontSmaller", [this] { return _FontSmaller_Action(); });
  TextWindow::AddMenuHandlers();
}

void wMain::Event_Open() {
  bMainIsOpen = true;
  iLoopCounter = 0;
  Title(Text(kNameAndVersion) + " -  Ready...");
  // Paints the title, for the user to see while the network is set up.
  Refresh(true);
  if (bAlreadyRegisteredWithNetwork) return;
  const auto socket = __New<myEasyUDPSocket>();
  socket->Constructor();
  EasyUDPSocket1 = socket;
  EasyUDPSocket1->Bind(kPort);
  EasyUDPSocket1->SendToSelf(true);
  EasyUDPSocket1->Register(sProgID);
  bAlreadyRegisteredWithNetwork = true;
  Title(Text(kNameAndVersion) + " -  Listening...");
}

void wMain::Event_Close() {
  bMainIsOpen = false;
  Quit(0);
}

void wMain::Event_Resized() { FitLog(); }
void wMain::Event_Resizing() { FitLog(); }

void wMain::FitLog() {
  efLog()->Width(Width() - kLogMargin);
  efLog()->Height(Height() - kLogMargin);
}

void wMain::Event_EnableMenuItems() {
  FontSmaller()->Enabled(true);
  FontLarger()->Enabled(true);
  TextWindow::Event_EnableMenuItems();
}

bool wMain::_FontLarger_Action() {
  const int32_t size = efLog()->TextSize();
  if (size < kLargestFont) efLog()->TextSize(size + kFontStep);
  return false;
}

bool wMain::_FontSmaller_Action() {
  const int32_t size = efLog()->TextSize();
  if (size > kSmallestFont) efLog()->TextSize(size - kFontStep);
  return false;
}

Text wMain::_SuggestedName() const {
  const auto now = New<Date>();
  now->Constructor();
  return Text("Quorvel Report ") + Str(now->Month()) + "-" + Str(now->Day()) + "-" +
         Str(now->Year()) + " " + Str(now->Hour()) + "-" + Str(now->Minute()) + ".txt";
}

void wMain::tmrUDPCheck_Action() {
  if (!bTest) return;
  if (EasyUDPSocket1) {
    EasyUDPSocket1->SendMessageToGroup(sProgID, kTestCommand,
                                       Text("message sent ") + Str(iLoopCounter));
  }
  ++iLoopCounter;
}

}  // namespace main_window

}  // namespace quorvel
