#include "native/headless/side.h"

#include <unistd.h>

#include <stdexcept>

#include "native/documents_folder.h"
#include "native/headless/event_loop.h"
#include "native/standard_error.h"

namespace quorvel::headless {

namespace {

class NoWindows final : public native::Windows {
 public:
  std::unique_ptr<native::Window> Create(native::WindowListener&) override {
    throw std::logic_error("a program without a screen makes no window");
  }
  void ShowMenuBar(const std::vector<native::MenuEntry>&, native::MenuListener&) override {}
  void ForgetMenuBar() override {}
};

class Dialogs final : public native::Dialogs {
 public:
  void Message(std::string_view text) override { OfferLine(STDERR_FILENO, text); }
  std::unique_ptr<native::PageSetup> AskPageSetup() override { return nullptr; }
  std::unique_ptr<native::PrintJob> AskPrint(native::PageSetup*) override { return nullptr; }
  std::optional<std::filesystem::path> AskSaveFile(const native::SaveQuestion&) override {
    return std::nullopt;
  }
  bool Await(const native::LongWork& work) override {
    work.run();
    return true;
  }
};

class Desktop final : public native::Desktop {
 public:
  std::filesystem::path DocumentsFolder() override { return FindDocumentsFolder(); }
  std::filesystem::path ResourcesFolder() override { return {}; }
  std::chrono::system_clock::time_point Now() override { return std::chrono::system_clock::now(); }
  std::optional<int32_t> Gestalt(std::string_view) override { return std::nullopt; }
  void OpenUrl(std::string_view) override {}
  void PlaySound(const std::filesystem::path&) override {}
  void ReportError(std::string_view line) override { OfferLine(STDERR_FILENO, line); }
};

class Side final : public native::Side {
 public:
  EventLoop& Loop() override { return mLoop; }
  native::Windows& Windows() override { return mWindows; }
  native::Dialogs& Dialogs() override { return mDialogs; }
  native::Desktop& Desktop() override { return mDesktop; }
  FileCalls& Files() override { return PosixFileCalls(); }
  FolderCalls& Folders() override { return PosixFolderCalls(); }
  SocketCalls& Sockets() override { return PosixSocketCalls(); }
  LinkCalls& Links() override { return PosixLinkCalls(); }

 private:
  EventLoop mLoop;
  NoWindows mWindows;
  headless::Dialogs mDialogs;
  headless::Desktop mDesktop;
};

}  // namespace

std::unique_ptr<native::Side> MakeSide() { return std::make_unique<Side>(); }

}  // namespace quorvel::headless
