#pragma once

#include <map>
#include <string>

#include "native/system_calls.h"

namespace quorvel::test {

/// Which of the coming system calls are to fail. Calls go by their function's name.
class Faults {
 public:
  /// The `nth` call from now (1 is the next) fails with `error`, an `errno`.
  void Arrange(const std::string& call, int nth, int error) { mArranged[call] = {nth, error}; }
  /// Counts a call, and sets `errno` when it is to fail.
  [[nodiscard]] bool Strike(const std::string& call);

 private:
  struct Fault {
    int calls_left = 0;
    int error = 0;
  };
  std::map<std::string, Fault> mArranged;
};

/// The system's file calls, with faults.
class FailingFileCalls : public FileCalls {
 public:
  explicit FailingFileCalls(Faults& faults) : mFaults(faults) {}
  bool Exists(const std::string& path) override;
  int OpenToRead(const std::string& path) override;
  int Create(const std::string& path) override;
  bool MakeFolder(const std::string& path) override;
  int64_t Read(int file, std::span<char> into) override;
  int64_t Write(int file, std::string_view bytes) override;
  bool Sync(int file) override;
  void Close(int file) override;
  bool RenameToNew(const std::string& from, const std::string& to) override;
  bool SetFinderInfo(const std::string& path, std::string_view type,
                     std::string_view creator) override;

 private:
  Faults& mFaults;
};

/// The system's socket calls, with faults.
class FailingSocketCalls : public SocketCalls {
 public:
  explicit FailingSocketCalls(Faults& faults) : mFaults(faults) {}
  int Open(int receive_buffer_bytes) override;
  void Close(int socket) override;
  bool Bind(int socket, uint16_t port) override;
  bool SharePort(int socket) override;
  bool SetMulticastLoop(int socket, bool on) override;
  bool SetMulticastHops(int socket, int hops) override;
  bool SetMulticastInterface(int socket, InterfaceIndex interface) override;
  bool Join(int socket, Ipv4Address group, InterfaceIndex interface) override;
  bool Leave(int socket, Ipv4Address group, InterfaceIndex interface) override;
  bool Send(int socket, Ipv4Address to, uint16_t port, std::string_view bytes) override;
  bool Receive(int socket, ReceiveBatch& batch) override;
  std::vector<InterfaceIndex> UsableInterfaces() override;

 private:
  Faults& mFaults;
};

}  // namespace quorvel::test
