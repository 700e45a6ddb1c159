#pragma once

#include "messaging/easy_udp_socket.h"

namespace quorvel {

/// The program's socket: writes each received message as a line at the end of the log.
class myEasyUDPSocket : public EasyUDPSocket {
 protected:
  /// Drops the message when the main window is not open.
  void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data) override;
};

}  // namespace quorvel
