#include "log/my_easy_udp_socket.h"

#include "log/decode_word.h"
#include "log/main_window.h"
#include "ui/globals.h"

namespace quorvel {

void myEasyUDPSocket::Event_ReceivedMessage(const Text& from, int32_t, const Text& data) {
  // Comes first: the accessor would open a new window during the shutdown.
  if (!mGlobals::bMainIsOpen) return;
  const Text sDecoded = mGlobals::mDecodeWordReverse(data);
  const auto log = wMain()->efLog();
  log->Text(log->Text() + "IP Address: " + from + " Sent: " + sDecoded + EndOfLine);
}

}  // namespace quorvel
