#pragma once

#include <cerrno>
#include <map>
#include <string>
#include <type_traits>
#include <utility>

#include "native/system_calls.h"

namespace quorvel::test {

/// Which of the coming system calls are to fail. Calls go by their function's name.
class Faults {
 public:
  /// The `nth` call from now (1 is the next) fails with `error`, an `errno`.
  void Arrange(const std::string& call, int nth, int error) { mArranged[call] = {nth, error}; }
  /// Whether an arranged failure of the call is still to come.
  [[nodiscard]] bool IsAhead(const std::string& call) const { return mArranged.contains(call); }
  /// Counts a call, and sets `errno` when the call is to fail.
  [[nodiscard]] bool Strike(const std::string& call) {
    const auto found = mArranged.find(call);
    if (found == mArranged.end() || --found->second.first > 0) return false;
    errno = found->second.second;
    mArranged.erase(found);
    return true;
  }

 private:
  std::map<std::string, std::pair<int, int>> mArranged;
};

/// Does the system's calls of one interface, unless a call is to fail.
template <class Calls>
class FaultyCalls : public Calls {
 protected:
  FaultyCalls(Calls& calls, Faults& faults) : mCalls(calls), mFaults(faults) {}

  template <class Result, class... Arguments>
  Result Do(const char* name, Result (Calls::*call)(Arguments...),
            std::type_identity_t<Arguments>... arguments) {
    if (!mFaults.Strike(name)) return (mCalls.*call)(arguments...);
    return std::is_same_v<Result, bool> ? Result{} : static_cast<Result>(-1);
  }

  Calls& mCalls;

 private:
  Faults& mFaults;
};

/// The system's calls on open files, of which a test makes some fail.
class FaultyFiles : public FaultyCalls<FileCalls> {
 public:
  explicit FaultyFiles(Faults& faults) : FaultyCalls(PosixFileCalls(), faults) {}

  int OpenToRead(const std::string& path) override {
    return Do("OpenToRead", &FileCalls::OpenToRead, path);
  }
  int OpenToWrite(const std::string& path) override {
    return Do("OpenToWrite", &FileCalls::OpenToWrite, path);
  }
  int CreateNew(const std::string& path, int like) override {
    return Do("CreateNew", &FileCalls::CreateNew, path, like);
  }
  bool IsReplaceable(int file, const std::string& folder) override {
    return mCalls.IsReplaceable(file, folder);
  }
  bool Empty(int file) override { return Do("Empty", &FileCalls::Empty, file); }
  int64_t Read(int file, std::span<char> into) override {
    return Do("Read", &FileCalls::Read, file, into);
  }
  int64_t Write(int file, std::string_view bytes) override {
    return Do("Write", &FileCalls::Write, file, bytes);
  }
  bool Sync(int file) override { return Do("Sync", &FileCalls::Sync, file); }
  void Close(int file) override { mCalls.Close(file); }
};

/// The system's calls on names of files, of which a test makes some fail.
class FaultyFolders : public FaultyCalls<FolderCalls> {
 public:
  explicit FaultyFolders(Faults& faults) : FaultyCalls(PosixFolderCalls(), faults) {}

  bool Exists(const std::string& path) override { return mCalls.Exists(path); }
  bool IsFree(const std::string& path) override { return mCalls.IsFree(path); }
  std::string LinkTarget(const std::string& path) override { return mCalls.LinkTarget(path); }
  bool MakeFolder(const std::string& path) override {
    return Do("MakeFolder", &FolderCalls::MakeFolder, path);
  }
  bool RenameToNew(const std::string& from, const std::string& to) override {
    return Do("RenameToNew", &FolderCalls::RenameToNew, from, to);
  }
  bool Replace(const std::string& from, const std::string& to) override {
    return Do("Replace", &FolderCalls::Replace, from, to);
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
};

}  // namespace quorvel::test
