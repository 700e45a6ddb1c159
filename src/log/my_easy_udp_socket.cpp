#include "log/my_easy_udp_socket.h"

#include "log/decode_word.h"
#include "log/main_window.h"
#include "ui/globals.h"

namespace quorvel {

void myEasyUDPSocket::Event_ReceivedMessage(const Text& from, int32_t, const Text& data) {
  // Asks the flag and not `wMain()`: during the shutdown, `wMain()` would open a new window.
  if (!mGlobals::bMainIsOpen) return;
  const Text sDecoded = mGlobals::mDecodeWordReverse(data);
  const auto log = wMain()->efLog();
  log->Text(log->Text() + "IP Address: " + from + " Sent: " + sDecoded + EndOfLine);
}

}  // namespace quorvel
