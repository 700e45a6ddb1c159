#include "platform/files/pending_file.h"

#include <cerrno>
#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "native/native.h"
#include "platform/files/draft.h"
#include "platform/runtime/runtime.h"

namespace quorvel {

namespace {

constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;

FileCalls& Files() { return Native().Files(); }
FolderCalls& Folders() { return Native().Folders(); }

// The path of the file itself, which need not exist.
std::filesystem::path Resolved(std::filesystem::path path) {
  for (int links = 0; links < kMostLinks; ++links) {
    const std::string target = Folders().LinkTarget(path.string());
    if (target.empty()) break;
    path = path.parent_path() / target;
  }
  return path;
}

// Another name at each call, and short, so that a file with the longest possible name can be saved.
std::string HiddenName() {
  return ".quorvel-" + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count());
}

struct HiddenFile {
  std::filesystem::path path;
  int file = -1;
};

HiddenFile CreateHiddenFile(const std::filesystem::path& folder, int like) {
  HiddenFile hidden;
  for (int names = 0; names < kMostNames; ++names) {
    hidden.path = folder / HiddenName();
    hidden.file = Files().CreateNew(hidden.path.string(), like);
    if (hidden.file >= 0 || errno != EEXIST) break;
  }
  return hidden;
}

bool FolderTakesNoFile(int error) { return error == EACCES || error == EPERM || error == EROFS; }

// What a save writes to: the hidden file, or else the old file itself.
struct Target {
  int old = -1;
  HiddenFile hidden;
  [[nodiscard]] bool IsHidden() const { return hidden.file >= 0; }
};

void CloseOld(const Target& target) {
  if (target.old >= 0) Files().Close(target.old);
}

// Nothing, with the reason in `errno`, when the file cannot be written.
std::optional<Target> OpenTarget(const std::filesystem::path& path) {
  Target target{.old = Files().OpenToWrite(path.string()), .hidden = {}};
  if (target.old < 0 && errno != ENOENT) return std::nullopt;
  const auto folder = Resolved(path).parent_path();
  if (target.old >= 0 && !Files().IsReplaceable(target.old, folder.string())) return target;
  target.hidden = CreateHiddenFile(folder, target.old);
  if (target.IsHidden() || (target.old >= 0 && FolderTakesNoFile(errno))) return target;
  const int error = errno;
  CloseOld(target);
  errno = error;
  return std::nullopt;
}

}  // namespace

PendingFile::PendingFile(std::filesystem::path path, std::filesystem::path hidden, int file)
    : mPath(std::move(path)),
      mChosen(mPath),
      mReplaces(!hidden.empty()),
      mDraft(std::make_shared<Draft>(std::move(hidden), file)) {}

std::shared_ptr<PendingFile> PendingFile::Open(const std::filesystem::path& path) {
  const auto target = OpenTarget(path);
  if (!target) return nullptr;
  const auto& [old, hidden] = *target;
  if (!target->IsHidden() && Files().Empty(old)) {
    return std::make_shared<PendingFile>(path, "", old);
  }
  CloseOld(*target);
  if (!target->IsHidden()) return nullptr;
  return std::make_shared<PendingFile>(path, hidden.path, hidden.file);
}

int PendingFile::Obstacle(const std::filesystem::path& path, int64_t bytes) {
  if (Folders().IsPipeOrDevice(path.string())) {
    return Folders().IsWritable(path.string()) ? 0 : errno;
  }
  const auto target = OpenTarget(path);
  if (!target) return errno;
  const auto& [old, hidden] = *target;
  const int64_t room = Files().Room(target->IsHidden() ? hidden.file : old);
  CloseOld(*target);
  if (target->IsHidden()) {
    Files().Close(hidden.file);
    Folders().Remove(hidden.path.string());
  }
  return room < bytes ? ENOSPC : 0;
}

bool PendingFile::HasNoFileYet() const {
  return IsOpen() && mReplaces && (mPath != mChosen || Folders().IsFree(mPath.string()));
}

bool PendingFile::Rename(const std::filesystem::path& renamed) {
  if (HasNoFileYet()) {
    if (!Folders().IsFree(renamed.string())) return false;
  } else {
    if (!Folders().RenameToNew(mPath.string(), renamed.string())) return false;
    mChosen = renamed;
  }
  mPath = renamed;
  return true;
}

void PendingFile::Write(std::string_view bytes) {
  Do([draft = mDraft, bytes] { draft->Write(bytes); });
}

void PendingFile::Close() {
  const std::filesystem::path fresh = mPath != mChosen ? mPath : "";
  Do([draft = mDraft, fresh, file = Resolved(mChosen)] { draft->Finish(fresh, file); });
  // Another program took the new name meanwhile: the text went to the file that the user chose.
  if (mDraft && !mDraft->IsFresh()) mPath = mChosen;
  Discard();
}

void PendingFile::Discard() {
  if (mDraft) mDraft->GiveUp();
  mDraft.reset();
}

void PendingFile::Do(std::function<void()> work) {
  const auto draft = mDraft;
  if (!draft || mFailed) return;
  const native::LongWork long_work{.text = "Saving...",
                                   .run = std::move(work),
                                   .cancel = [draft] { draft->Cancel(); },
                                   .percent = [draft] { return draft->Percent(); }};
  Nested([&] {
    const bool ended = Native().Dialogs().Await(long_work);
    mFailed = draft->Failed();
    if (!ended) mDraft.reset();
  });
}

}  // namespace quorvel
