// A start with any bytes in the key file does what docs/key-file.md promises.

#include <algorithm>

#include "app/app.h"
#include "app/entry.h"
#include "plain.h"
#include "support/side.h"
#include "ui/globals.h"

namespace {

using namespace quorvel;

/// The one file that is there, in memory. The first read gives `first` bytes, the next the rest.
class MemoryFiles : public test::FaultyFiles {
 public:
  using FaultyFiles::FaultyFiles;
  int OpenToRead(const std::string&) override { return 0; }
  int64_t Read(int, std::span<char> into) override {
    const auto part = content.substr(0, std::exchange(first, into.size()));
    content.remove_prefix(part.size());
    std::ranges::copy(part, into.begin());
    return std::ssize(part);
  }
  void Close(int) override {}

  std::string_view content;
  size_t first = 1;
};

class MemoryFolders : public test::FaultyFolders {
 public:
  using FaultyFolders::FaultyFolders;
  bool Exists(const std::string&) override { return true; }
};

class MemorySide : public test::Side {
 public:
  MemoryFiles& Files() override { return memory; }
  MemoryFolders& Folders() override { return names; }
  MemoryFiles memory{faults};
  MemoryFolders names{faults};
};

MemorySide& Side() {
  static auto* const side = new MemorySide;  // outlives the program's own globals
  return *side;
}

/// The first two lines.
std::pair<std::string, std::string> Lines(std::string text) {
  for (size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.erase(at, 1);
  std::ranges::replace(text, '\r', '\n');
  const size_t first = text.find('\n');
  if (first == std::string::npos) return {text, ""};
  return {text.substr(0, first), text.substr(first + 1, text.find('\n', first + 1) - first - 1)};
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  _Start(Side());
  App()->mSetGlobals();
  return 0;
}

// The first byte is the number of bytes that the first read gives, less 1.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view content(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto [marker, key] = Lines(std::string(content));
  Side().memory.content = content;
  Side().memory.first = data[0] + size_t{1};
  Side().dialogs.messages.clear();
  App()->mReadPrefFile();
  const bool marked = marker.starts_with('1');
  const bool valid = plain::Codes(key).size() >= 5;
  const auto& messages = Side().dialogs.messages;
  const auto& title = Side().windows.open.at(0)->state.Title;
  plain::MustEqual("the marker", std::string(mGlobals::sQuorvelVNumber.Bytes()), marker);
  plain::MustEqual("the key", std::string(mGlobals::sProgID.Bytes()), key);
  plain::MustEqual("the window", title.starts_with("Quorvel"), valid);
  plain::MustEqual("the number of messages", messages.size(), size_t{!marked} + size_t{!valid});
  plain::MustEqual("the warning", !marked, !messages.empty() && messages[0].starts_with("The "));
  return 0;
}
