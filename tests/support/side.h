#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "native/native.h"
#include "support/faulty_files.h"
#include "support/scripted_loop.h"
#include "support/scripted_sockets.h"
#include "support/windows.h"

namespace quorvel::test {

/// Answers dialogs from a script and records the questions.
class Dialogs : public native::Dialogs {
 public:
  void Message(std::string_view text) override {
    messages.emplace_back(text);
    Open();
  }
  std::optional<std::filesystem::path> AskSaveFile(const native::SaveQuestion& question) override {
    save_questions.push_back(question);
    Open();
    return std::exchange(save_answer, std::nullopt);
  }
  std::unique_ptr<native::PageSetup> AskPageSetup() override {
    auto setup = accepts_page_setup ? std::make_unique<native::PageSetup>() : nullptr;
    page_setup = setup.get();
    return setup;
  }
  std::unique_ptr<native::PrintJob> AskPrint(native::PageSetup* setup) override {
    return setup == page_setup && start_print ? start_print() : nullptr;
  }
  bool Await(const native::LongWork& work) override {
    if (await) return await(work);
    work.run();
    return true;
  }

  std::vector<std::string> messages;
  std::vector<native::SaveQuestion> save_questions;
  bool accepts_page_setup = true;
  /// The last answer. A print dialog that is given another page setup is cancelled.
  native::PageSetup* page_setup = nullptr;
  /// The answer to print dialogs; nothing cancels.
  std::function<std::unique_ptr<native::PrintJob>()> start_print;
  /// The answer to the next save dialog; nothing cancels.
  std::optional<std::filesystem::path> save_answer;
  /// Waits for long work; nothing does the work at once.
  std::function<bool(const native::LongWork&)> await;
  /// Runs while the next message or save dialog is open.
  std::function<void()> while_open;

 private:
  void Open() {
    if (const auto act = std::exchange(while_open, nullptr)) act();
  }
};

/// A desktop of settable facts, which records what the program does to it.
class Desktop : public native::Desktop {
 public:
  std::filesystem::path DocumentsFolder() override { return documents; }
  std::filesystem::path ResourcesFolder() override { return QUORVEL_RESOURCES; }
  std::chrono::system_clock::time_point Now() override { return now; }
  std::optional<int32_t> Gestalt(std::string_view selector) override {
    return selector == "sysv" ? system_version : std::nullopt;
  }
  void OpenUrl(std::string_view) override {}
  void PlaySound(const std::filesystem::path& file) override { sounds.push_back(file); }
  void ReportError(std::string_view line) override { errors.emplace_back(line); }

  std::filesystem::path documents;
  std::chrono::system_clock::time_point now;
  std::optional<int32_t> system_version;
  std::vector<std::filesystem::path> sounds;
  std::vector<std::string> errors;
};

/// A native side without a screen: real files, scripted sockets and answers, recorded calls.
class Side : public native::Side {
 public:
  Side() = default;
  /// With these sockets, and the system's interfaces, in the stead of the scripted ones.
  explicit Side(SocketCalls& real) : mSockets(real), mLinks(PosixLinkCalls()) {}

  ScriptedLoop& Loop() override { return loop; }
  test::Windows& Windows() override { return windows; }
  test::Dialogs& Dialogs() override { return dialogs; }
  test::Desktop& Desktop() override { return desktop; }
  FaultyFiles& Files() override { return files; }
  FaultyFolders& Folders() override { return folders; }
  SocketCalls& Sockets() override { return mSockets; }
  LinkCalls& Links() override { return mLinks; }

  Faults faults;
  ScriptedLoop loop;
  test::Windows windows;
  test::Dialogs dialogs;
  test::Desktop desktop;
  FaultyFiles files{faults};
  FaultyFolders folders{faults};
  ScriptedSockets sockets{faults};
  ScriptedLinks links{faults};

 private:
  SocketCalls& mSockets = sockets;
  LinkCalls& mLinks = links;
};

}  // namespace quorvel::test
