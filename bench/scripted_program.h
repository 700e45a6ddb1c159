#pragma once

#include <cstdint>
#include <string>

#include "app/app.h"
#include "app/entry.h"
#include "log/main_window.h"
#include "support/side.h"
#include "ui/globals.h"

namespace quorvel::bench {

/// The program on a side without a screen, with the log window open and scripted sockets. The
/// program's own windows live to the end of the process, and so do the side and this object.
class ScriptedProgram {
 public:
  static ScriptedProgram& Started() {
    static auto* const program = new ScriptedProgram;
    return *program;
  }

  /// One batch of messages, in turns from so many senders.
  void Hear(Ipv4Address messages, Ipv4Address senders) {
    for (Ipv4Address i = 0; i < messages; ++i) {
      mSide.sockets.arriving.emplace_back(0x0A000001 + i % senders, mPacket);
    }
    mGlobals::EasyUDPSocket1->Poll();
  }

 private:
  ScriptedProgram() {
    _Start(mSide);
    App()->mSetGlobals();
    wMain()->Show();
  }

  test::Side mSide;
  const std::string mPacket{"\0\0\0\x20\0\0\0\0Nziph: 0 lu 89, tllw dlip", 32};
};

}  // namespace quorvel::bench
