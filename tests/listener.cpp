// A listener for fault tests: writes each message to standard output as a line "sender text".
// Arguments: a group, and a number of milliseconds for which the handler of the text "stall" keeps
// the event loop busy.

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include "messaging/channel.h"
#include "messaging/easy_udp_socket.h"
#include "native/headless/side.h"
#include "platform/runtime/runtime.h"

namespace {

using quorvel::Text;

class Listener : public quorvel::EasyUDPSocket {
 public:
  explicit Listener(std::chrono::milliseconds stall) : mStall(stall) { Constructor(); }

 protected:
  using EasyUDPSocket::Event_Error;
  void Event_ReceivedMessage(const Text& from, int32_t, const Text& data) override {
    std::cout << from.Bytes() << ' ' << data.Bytes() << std::endl;
    if (data.Bytes() == "stall") std::this_thread::sleep_for(mStall);
  }
  void Event_Error(int32_t code) override { std::cout << "error " << code << std::endl; }

 private:
  std::chrono::milliseconds mStall;
};

class Program : public quorvel::RuntimeClient {
 public:
  Program(const char* group, const char* stall)
      : mGroup(group),
        mListener(quorvel::New<Listener>(std::chrono::milliseconds(std::stoi(stall)))) {}
  void _Open() override {
    mListener->Bind(quorvel::kPort);
    mListener->Register(mGroup);
    std::cout << "listening" << std::endl;
  }
  void _End() override { mListener->Close(); }
  bool _Unhandled(const quorvel::RuntimeException&) override { return false; }

 private:
  Text mGroup;
  quorvel::Ref<Listener> mListener;
};

}  // namespace

int main(int, char** argv) {
  const auto side = quorvel::headless::MakeSide();
  quorvel::RuntimeInit(*side);
  quorvel::_RuntimeRegisterAppObject(quorvel::New<Program>(argv[1], argv[2]));
  quorvel::_RuntimeRun();
  return quorvel::RuntimeExit();
}
