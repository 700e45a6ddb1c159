#include "platform/files/pending_file.h"

#include <cerrno>
#include <chrono>
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

}  // namespace

PendingFile::PendingFile(std::filesystem::path path, std::filesystem::path hidden, int file)
    : mPath(std::move(path)),
      mChosen(mPath),
      mReplaces(!hidden.empty()),
      mDraft(std::make_shared<Draft>(std::move(hidden), file)) {}

std::shared_ptr<PendingFile> PendingFile::Open(const std::filesystem::path& path) {
  const int old = Files().OpenToWrite(path.string());
  if (old < 0 && errno != ENOENT) return nullptr;
  const auto folder = Resolved(path).parent_path();
  HiddenFile hidden;
  bool direct = old >= 0 && !Files().IsReplaceable(old, folder.string());
  if (!direct) {
    hidden = CreateHiddenFile(folder, old);
    direct = hidden.file < 0 && old >= 0 && FolderTakesNoFile(errno);
  }
  if (direct && Files().Empty(old)) return std::make_shared<PendingFile>(path, "", old);
  if (old >= 0) Files().Close(old);
  return hidden.file < 0 ? nullptr : std::make_shared<PendingFile>(path, hidden.path, hidden.file);
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
