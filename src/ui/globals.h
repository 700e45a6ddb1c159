#pragma once

#include <cstdint>

#include "messaging/easy_udp_socket.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

/// The program's shared state: the values that several windows or classes need. `App` sets the
/// start values. Only the event loop's thread reads and writes the values.
namespace quorvel::mGlobals {

/// While True, the main window's timer sends a test message each second.
extern bool bTest;
/// Whether the window is open.
extern bool bAboutIsOpen;
extern bool bHelpIsOpen;
/// Whether the main window is open. Messages received at other times are dropped.
extern bool bMainIsOpen;
/// Whether the socket has been told to join the group, with or without success.
extern bool bAlreadyRegisteredWithNetwork;
/// The program's socket; Nil until the main window opens.
extern Ref<EasyUDPSocket> EasyUDPSocket1;
/// Shared text size of the information windows.
extern int32_t iTheFontSize;
/// The version marker line of the key file.
extern Text sQuorvelVNumber;
/// The key: the group name that the socket registers.
extern Text sProgID;
/// Shared font name of the information windows; ends in a carriage return.
extern Text sTheFont;

/// Empties the reference and the texts, at the end of the process.
void _Release();

}  // namespace quorvel::mGlobals
