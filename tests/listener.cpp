// A listener for fault tests: writes each message to standard output as a line "sender command
// text". Arguments: a group, and a number of milliseconds for which the handler of the text "stall"
// keeps the event loop busy.

#include <chrono>
#include <iostream>
#include <string>
#include <thread>

#include "messaging/channel.h"
#include "native/headless/side.h"
#include "platform/runtime/runtime.h"
#include "support/station.h"

namespace {

class Program : public quorvel::RuntimeClient {
 public:
  Program(const char* group, const char* stall) : mGroup(group), mStall(std::stoi(stall)) {
    mStation->act = [this] { Print(); };
  }
  void _Open() override {
    mStation->Bind(quorvel::kPort);
    mStation->Register(mGroup);
    std::cout << "listening" << std::endl;
  }
  void _End() override { mStation->Close(); }
  bool _Unhandled(const quorvel::RuntimeException&) override { return false; }

 private:
  void Print() {
    std::cout << mStation->messages.back() << std::endl;
    if (mStation->heard.back() == "stall") std::this_thread::sleep_for(mStall);
  }

  quorvel::Text mGroup;
  std::chrono::milliseconds mStall;
  quorvel::Ref<quorvel::Station> mStation = quorvel::New<quorvel::Station>();
};

}  // namespace

int main(int, char** argv) {
  const auto side = quorvel::headless::MakeSide();
  quorvel::RuntimeInit(*side);
  quorvel::_RuntimeRegisterAppObject(quorvel::New<Program>(argv[1], argv[2]));
  quorvel::_RuntimeRun();
  return quorvel::RuntimeExit();
}
