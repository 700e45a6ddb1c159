#pragma once

#include <functional>
#include <string>
#include <vector>

#include "messaging/easy_udp_socket.h"

namespace quorvel {

/// A socket that keeps what its events told.
class Station : public EasyUDPSocket {
 public:
  explicit Station(bool send_only = false) {
    EasyUDPSocket::Constructor();
    SendOnly(send_only);
  }

  using EasyUDPSocket::Event_Error;

  std::vector<std::string> heard;     ///< the data of each message
  std::vector<std::string> messages;  ///< sender, command and data of each message
  std::vector<int32_t> errors;
  /// What the handler of a message does.
  std::function<void()> act = [] {};

 protected:
  void Event_ReceivedMessage(const Text& from, int32_t command, const Text& data) override {
    const Text message = from + " " + Str(command) + " " + data;
    messages.emplace_back(message.Bytes());
    heard.emplace_back(data.Bytes());
    const auto acts = act;  // the act may set another
    acts();
  }
  void Event_Error(int32_t code) override { errors.push_back(code); }
};

}  // namespace quorvel
