#pragma once

#include <cstdint>

#include "messaging/easy_udp_socket.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

/// The few values that more than one window or class needs: all of the program's shared state.
/// `App` gives them their start values. Touched by the event loop's thread alone.
namespace quorvel::mGlobals {

/// The main window's timer sends a test message each time that it fires.
extern bool bTest;
extern bool bAboutIsOpen;
extern bool bHelpIsOpen;
/// Received messages go to the log only while this is True.
extern bool bMainIsOpen;
/// The socket was created and told to join its group; not that this succeeded.
extern bool bAlreadyRegisteredWithNetwork;
/// The one socket; Nil until the main window opens.
extern Ref<EasyUDPSocket> EasyUDPSocket1;
/// Shared text size of the information windows.
extern int32_t iTheFontSize;
/// The version marker line of the key file.
extern Text sQuorvelVNumber;
/// The key: the group name that the socket registers.
extern Text sProgID;
/// Shared font name of the information windows; ends in a carriage return.
extern Text sTheFont;

/// Gives up what the module holds, at the end of the process.
void _Release();

}  // namespace quorvel::mGlobals
