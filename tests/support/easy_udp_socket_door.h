#pragma once

#include "messaging/easy_udp_socket.h"

namespace quorvel {

/// Lets tests see how an address comes about, and set a wait without waiting.
struct EasyUDPSocketDoor {
  static Text Address(EasyUDPSocket& socket, const Text& group) {
    return socket.HashGroupNameToIP(group);
  }
  static bool IsAddress(const Text& group) { return EasyUDPSocket::IsClassDAddress(group); }
  static void WaitFor(EasyUDPSocket& socket, int32_t command) {
    socket.mWaitForThisCommand = command;
  }
  static Text Response(EasyUDPSocket& socket) { return socket.mCommandResponse; }
  static Text Responder(EasyUDPSocket& socket) { return socket.mMessageFrom; }
  static Text Held(EasyUDPSocket& socket, const Text& sender) {
    return socket.mBuffers.Lookup(sender, "never heard of");
  }
};

}  // namespace quorvel
