#include "app/app.h"

#include "help/about_window.h"
#include "help/help_window.h"
#include "key/key_is_window.h"
#include "platform/runtime/runtime.h"
#include "platform/values/numbers.h"
#include "platform/windows/system.h"
#include "ui/globals.h"
#include "ui/menu_bar.h"

namespace quorvel {

namespace {

// Tests for Windows versions. The program does not run on Windows, so each test answers False.
namespace OSVersionInformation {

bool mInitialized = false;
bool mIs2K = false;
bool mIs95 = false;
bool mIs98 = false;
bool mIsME = false;
bool mIsNT4 = false;
bool mIsXP = false;
bool mIsXPPlus = false;

void Initialize() {
  if (!mInitialized) mInitialized = true;
}

bool Flag(const bool& flag) {
  Initialize();
  return flag;
}

bool Is2k() { return Flag(mIs2K); }
bool Is95() { return Flag(mIs95); }
bool Is98() { return Flag(mIs98); }
bool IsME() { return Flag(mIsME); }
bool IsNT4() { return Flag(mIsNT4); }
bool IsXP() { return Flag(mIsXP); }
bool IsXPPlus() { return Flag(mIsXPPlus); }

}  // namespace OSVersionInformation

}  // namespace

namespace app {

using namespace mGlobals;

void App::Event_Open() {
  // `Quit` unwinds, so nothing behind it runs on a system that is too old.
  if (!quorvel::App()->mMacSystemRequirementMet()) Quit(0);
  quorvel::App()->mSetGlobals();
  quorvel::App()->mSetFont();
  quorvel::App()->mReadPrefFile();
}

void App::Event_Close() { EasyUDPSocket1->Unregister(sProgID); }

void App::Event_EnableMenuItems() {
  HelpHelp()->Enabled(true);
  HelpKeyInformation()->Enabled(true);
  HelpAbout()->Enabled(true);
}

// The Help menu belongs to the application, so that its commands work over every window.

bool App::_HelpAbout_Action() {
  wAbout()->Show();
  return false;
}

bool App::_HelpHelp_Action() {
  wHelp()->Show();
  return false;
}

bool App::_HelpKeyInformation_Action() {
  wKeyIs()->Show();
  return false;
}

void App::mSetGlobals() {
  bTest = false;
  bAboutIsOpen = false;
  bHelpIsOpen = false;
  bMainIsOpen = false;
  EasyUDPSocket1 = Nil;
  bAlreadyRegisteredWithNetwork = false;
  sProgID = "";
}

void App::mSetFont() {
  sTheFont = "Geneva\r";
  iTheFontSize = 12;
}

bool App::mMacSystemRequirementMet() {
  constexpr int32_t kMacOs10_4 = 0x1040;
  int32_t version = 0;
  if (!System()->Gestalt("sysv", version)) return true;
  if (version >= kMacOs10_4) return true;
  MsgBox("This program requires Mac OS X 10.4 or higher.");
  return false;
}

bool App::mWindowsSystemRequirementMet() {
  namespace Os = OSVersionInformation;
  if (Os::Is95() || Os::Is98() || Os::IsME() || Os::IsNT4() || Os::Is2k()) {
    MsgBox("Windows XP or newer is required to run this program.");
    return false;
  }
  static_cast<void>(Os::IsXP() || Os::IsXPPlus());
  return true;
}

}  // namespace app

Ref<app::App> App() { return Cast<app::App>(_GetAppObject()); }

}  // namespace quorvel
