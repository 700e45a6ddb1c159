#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>

#include "platform/files/pending_file.h"
#include "platform/values/object.h"
#include "platform/values/text.h"

namespace quorvel {

/// Reads a text file piece by piece. Closes itself when its last reference goes.
class TextInputStream : public Object {
 public:
  /// Owns `file`, an open descriptor, from here on.
  explicit TextInputStream(int file) : mFile(file) {}
  ~TextInputStream() override;

  /// True when no more can be read; a read that fails ends the file. (The plain name is a macro of
  /// the C library.)
  [[nodiscard]] bool EOF_();
  /// The next line without its line end (LF, CR LF or CR), or the rest when none follows. The
  /// result bears the given mark; Nil is none. Of a line of more than 1 MiB the first 1 MiB is
  /// read, and the stream is then at its end, so that no file can use up the memory.
  [[nodiscard]] Text ReadLine(std::nullptr_t encoding);
  /// The rest of the file, of any length.
  [[nodiscard]] Text _ReadAll();

 private:
  bool Fill();
  Text LastLine();

  int mFile;
  std::string mBuffer;
  size_t mNext = 0;
  bool mAtEnd = false;
};

/// Writes a text file. Only `Close` makes the written text the file: a stream whose last reference
/// goes earlier, because an exception or the quit came between, was not finished, and the old file
/// stays.
class TextOutputStream : public Object {
 public:
  explicit TextOutputStream(std::shared_ptr<PendingFile> file) : mFile(std::move(file)) {}
  ~TextOutputStream() override { mFile->Discard(); }

  /// Writes the bytes with nothing added.
  void Write(const Text& text) { mFile->Write(text.Bytes()); }
  /// Ends the file; the written text is on disk when this returns. After a failed write the old
  /// file, or no file, is there.
  void Close() { mFile->Close(); }
  /// Whether a write or the closing has failed.
  [[nodiscard]] bool WriteError() const { return mFile->Failed(); }

 private:
  std::shared_ptr<PendingFile> mFile;
};

}  // namespace quorvel
