#include "support/failing_calls.h"

#include <cerrno>

namespace quorvel::test {

namespace {
FileCalls& Files() { return PosixFileCalls(); }
SocketCalls& Sockets() { return PosixSocketCalls(); }
}  // namespace

bool Faults::Strike(const std::string& call) {
  const auto found = mArranged.find(call);
  if (found == mArranged.end() || --found->second.calls_left > 0) return false;
  errno = found->second.error;
  mArranged.erase(found);
  return true;
}

bool FailingFileCalls::Exists(const std::string& path) {
  return !mFaults.Strike("Exists") && Files().Exists(path);
}
int FailingFileCalls::OpenToRead(const std::string& path) {
  return mFaults.Strike("OpenToRead") ? -1 : Files().OpenToRead(path);
}
int FailingFileCalls::Create(const std::string& path) {
  return mFaults.Strike("Create") ? -1 : Files().Create(path);
}
bool FailingFileCalls::MakeFolder(const std::string& path) {
  return !mFaults.Strike("MakeFolder") && Files().MakeFolder(path);
}
int64_t FailingFileCalls::Read(int file, std::span<char> into) {
  return mFaults.Strike("Read") ? -1 : Files().Read(file, into);
}
int64_t FailingFileCalls::Write(int file, std::string_view bytes) {
  return mFaults.Strike("Write") ? -1 : Files().Write(file, bytes);
}
bool FailingFileCalls::Sync(int file) { return !mFaults.Strike("Sync") && Files().Sync(file); }
void FailingFileCalls::Close(int file) { Files().Close(file); }
bool FailingFileCalls::RenameToNew(const std::string& from, const std::string& to) {
  return !mFaults.Strike("RenameToNew") && Files().RenameToNew(from, to);
}
bool FailingFileCalls::SetFinderInfo(const std::string& path, std::string_view type,
                                     std::string_view creator) {
  return Files().SetFinderInfo(path, type, creator);
}

int FailingSocketCalls::Open(int receive_buffer_bytes) {
  return mFaults.Strike("Open") ? -1 : Sockets().Open(receive_buffer_bytes);
}
void FailingSocketCalls::Close(int socket) { Sockets().Close(socket); }
bool FailingSocketCalls::Bind(int socket, uint16_t port) {
  return !mFaults.Strike("Bind") && Sockets().Bind(socket, port);
}
bool FailingSocketCalls::SharePort(int socket) {
  return !mFaults.Strike("SharePort") && Sockets().SharePort(socket);
}
bool FailingSocketCalls::SetMulticastLoop(int socket, bool on) {
  return Sockets().SetMulticastLoop(socket, on);
}
bool FailingSocketCalls::SetMulticastHops(int socket, int hops) {
  return Sockets().SetMulticastHops(socket, hops);
}
bool FailingSocketCalls::SetMulticastInterface(int socket, InterfaceIndex interface) {
  return Sockets().SetMulticastInterface(socket, interface);
}
bool FailingSocketCalls::Join(int socket, Ipv4Address group, InterfaceIndex interface) {
  return !mFaults.Strike("Join") && Sockets().Join(socket, group, interface);
}
bool FailingSocketCalls::Leave(int socket, Ipv4Address group, InterfaceIndex interface) {
  return !mFaults.Strike("Leave") && Sockets().Leave(socket, group, interface);
}
bool FailingSocketCalls::Send(int socket, Ipv4Address to, uint16_t port, std::string_view bytes) {
  return !mFaults.Strike("Send") && Sockets().Send(socket, to, port, bytes);
}
bool FailingSocketCalls::Receive(int socket, ReceiveBatch& batch) {
  return !mFaults.Strike("Receive") && Sockets().Receive(socket, batch);
}
std::vector<InterfaceIndex> FailingSocketCalls::UsableInterfaces() {
  return Sockets().UsableInterfaces();
}

}  // namespace quorvel::test
