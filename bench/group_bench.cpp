// The cost of a group's address, derived from the key.

#include <benchmark/benchmark.h>

#include <string>

#include "messaging/easy_udp_socket.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"

namespace {

class Groups : public quorvel::EasyUDPSocket {
 public:
  Groups() { EasyUDPSocket::Constructor(); }
  using EasyUDPSocket::HashGroupNameToIP;

 protected:
  using EasyUDPSocket::Event_Error;
};

void GroupAddress(benchmark::State& state, const std::string& key) {
  quorvel::test::Side side;
  quorvel::RuntimeInit(side);
  {
    const auto groups = quorvel::New<Groups>();
    const auto text = quorvel::Text::FromBytes(key);
    while (state.KeepRunning()) benchmark::DoNotOptimize(groups->HashGroupNameToIP(text));
  }
  static_cast<void>(quorvel::RuntimeExit());
}
BENCHMARK_CAPTURE(GroupAddress, hashed, "Maple-Room-7");
BENCHMARK_CAPTURE(GroupAddress, accented, "Sal\xC3\xA9 des professeurs!");
BENCHMARK_CAPTURE(GroupAddress, dotted, "239.255.255.255");

}  // namespace
