#include "messaging/easy_udp_socket.h"

#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "platform/values/numbers.h"

namespace quorvel {

namespace {

constexpr int32_t kMostHops = 255;

[[noreturn]] void RaiseDirectCall(const Text& operation) {
  throw RuntimeException(Text("You cannot call ") + operation + " on an EasyUDPSocket directly.");
}

}  // namespace

void EasyUDPSocket::Constructor() {
  mHashBins = ToInt32(Pow(2, 24));
  mBuffers = Dictionary();
  mListed.clear();
  mIsStuck = false;
  mWaitForThisCommand = kNoWait;
}

void EasyUDPSocket::Bind(int32_t port) {
  Port(port);
  Connect();
  if (LastErrorCode() != 0) Event_Error(LastErrorCode());
  SendToSelf(true);
  RouterHops(kMostHops);
}

void EasyUDPSocket::Register(const Text& group) {
  if (!IsConnected()) return;
  if (!JoinMulticastGroup(HashGroupNameToIP(group))) Event_Error(LastErrorCode());
}

void EasyUDPSocket::Unregister(const Text& group) {
  if (!IsConnected()) return;
  LeaveMulticastGroup(HashGroupNameToIP(group));
  if (LastErrorCode() != 0) Event_Error(LastErrorCode());
}

void EasyUDPSocket::SendMessageToGroup(const Text& group, int32_t command, const Text& data) {
  if (!IsConnected()) return;
  const MemoryBlock packet = CreatePacket(command, data);
  UDPSocket::Write(HashGroupNameToIP(group), packet.StringValue(0, packet.Size()));
}

void EasyUDPSocket::SendMessageToIndividual(const Text& address, int32_t command,
                                            const Text& data) {
  if (!IsConnected()) return;
  const MemoryBlock packet = CreatePacket(command, data);
  UDPSocket::Write(address, packet.StringValue(0, packet.Size()));
}

Text EasyUDPSocket::WaitForMessage(int32_t command, Text& from) {
  const auto app = getAppObject();
  if (!IsConnected()) return "";
  mWaitForThisCommand = command;
  mCommandResponse = "";
  mMessageFrom = "";
  while (mCommandResponse.IsEmpty()) {
    Poll();
    if (LastErrorCode() != 0) return "";
    // Sleeps until the next event, so that the wait takes next to no processor time.
    app->DoEvents(-1);
    RuntimeBackgroundTask();
  }
  mWaitForThisCommand = kNoWait;
  from = mMessageFrom;
  return mCommandResponse;
}

void EasyUDPSocket::Write(const Text&, const Text&) { RaiseDirectCall("Write"); }
void EasyUDPSocket::Write(const Ref<Datagram>&) { RaiseDirectCall("Write"); }
Ref<Datagram> EasyUDPSocket::Read(std::nullptr_t) { RaiseDirectCall("Read"); }

void EasyUDPSocket::Event_Error() { Event_Error(LastErrorCode()); }
void EasyUDPSocket::Event_Error(int32_t) {}
void EasyUDPSocket::Event_ReceivedMessage(const Text&, int32_t, const Text&) {}

}  // namespace quorvel
