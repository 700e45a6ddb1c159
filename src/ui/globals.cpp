#include "ui/globals.h"

namespace quorvel::mGlobals {

bool bTest = false;
bool bAboutIsOpen = false;
bool bHelpIsOpen = false;
bool bMainIsOpen = false;
bool bAlreadyRegisteredWithNetwork = false;
Ref<EasyUDPSocket> EasyUDPSocket1;
int32_t iTheFontSize = 0;
Text sQuorvelVNumber;
Text sProgID;
Text sTheFont;

void _Release() {
  EasyUDPSocket1 = Nil;
  sTheFont = "";
  sQuorvelVNumber = "";
  sProgID = "";
}

}  // namespace quorvel::mGlobals
