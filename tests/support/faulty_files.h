#pragma once

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <utility>

#include "native/system_calls.h"

namespace quorvel::test {

/// Which of the coming system calls are to fail. Calls go by their function's name.
class Faults {
 public:
  /// The `nth` call from now (1 is the next) fails with `error`, an `errno`.
  void Arrange(const std::string& call, int nth, int error) {
    Arrange(call, nth, [error] { return errno = error, true; });
  }
  /// The `nth` call from now first does `act`, and fails when `act` returns true.
  void Arrange(const std::string& call, int nth, std::function<bool()> act) {
    mArranged[call] = {nth, std::move(act)};
  }
  /// Whether an arranged failure of the call is still to come.
  [[nodiscard]] bool IsAhead(const std::string& call) const { return mArranged.contains(call); }
  /// Counts a call. True, with the reason in `errno`, when the call is to fail.
  [[nodiscard]] bool Strike(const std::string& call) {
    const auto found = mArranged.find(call);
    if (found == mArranged.end() || --found->second.first > 0) return false;
    const auto act = std::move(found->second.second);
    mArranged.erase(found);
    return act();
  }

 private:
  std::map<std::string, std::pair<int, std::function<bool()>>> mArranged;
};

/// The system's calls on open files, of which a test makes some fail.
class FaultyFiles : public FileCalls {
 public:
  explicit FaultyFiles(Faults& faults) : mFaults(faults) {}

  int OpenToRead(const std::string& path) override {
    return mFaults.Strike("OpenToRead") ? -1 : mCalls.OpenToRead(path);
  }
  int OpenToWrite(const std::string& path) override {
    return mFaults.Strike("OpenToWrite") ? -1 : mCalls.OpenToWrite(path);
  }
  int CreateNew(const std::string& path, int like) override {
    return mFaults.Strike("CreateNew") ? -1 : mCalls.CreateNew(path, like);
  }
  bool IsReplaceable(int file, const std::string& folder) override {
    return mCalls.IsReplaceable(file, folder);
  }
  int64_t Room(int file) override { return std::min(room, mCalls.Room(file)); }
  bool Empty(int file) override { return mCalls.Empty(file); }
  int64_t Read(int file, std::span<char> into) override {
    return mFaults.Strike("Read") ? -1 : mCalls.Read(file, into);
  }
  int64_t Write(int file, std::string_view bytes) override {
    return mFaults.Strike("Write") ? -1 : mCalls.Write(file, bytes);
  }
  bool Sync(int file) override { return !mFaults.Strike("Sync") && mCalls.Sync(file); }
  void Close(int file) override { mCalls.Close(file); }

  /// The most that any file can hold.
  int64_t room = std::numeric_limits<int64_t>::max();

 private:
  FileCalls& mCalls = PosixFileCalls();
  Faults& mFaults;
};

/// The system's calls on names of files, of which a test makes some fail.
class FaultyFolders : public FolderCalls {
 public:
  explicit FaultyFolders(Faults& faults) : mFaults(faults) {}

  bool Exists(const std::string& path) override { return mCalls.Exists(path); }
  bool IsFree(const std::string& path) override { return mCalls.IsFree(path); }
  bool IsPipeOrDevice(const std::string& path) override { return mCalls.IsPipeOrDevice(path); }
  bool IsWritable(const std::string& path) override { return mCalls.IsWritable(path); }
  std::string LinkTarget(const std::string& path) override { return mCalls.LinkTarget(path); }
  bool MakeFolder(const std::string& path) override { return mCalls.MakeFolder(path); }
  bool RenameToNew(const std::string& from, const std::string& to) override {
    return mCalls.RenameToNew(from, to);
  }
  bool Replace(const std::string& from, const std::string& to) override {
    return !mFaults.Strike("Replace") && mCalls.Replace(from, to);
  }
  bool Remove(const std::string& path) override { return mCalls.Remove(path); }
  void SyncFolder(const std::string& path) override { mCalls.SyncFolder(path); }
  bool SetFinderInfo(const std::string& path, std::string_view type,
                     std::string_view creator) override {
    finder_info[path] = std::string(type) + std::string(creator);
    return true;
  }

  /// The last type and creator of each file.
  std::map<std::string, std::string> finder_info;

 private:
  FolderCalls& mCalls = PosixFolderCalls();
  Faults& mFaults;
};

}  // namespace quorvel::test
