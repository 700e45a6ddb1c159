#pragma once

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "app/app.h"
#include "app/entry.h"
#include "log/main_window.h"
#include "support/side.h"
#include "ui/globals.h"

namespace quorvel::bench {

/// Sockets without a network that receive the same datagram as often as asked for, in turns from
/// some senders, and do next to no work of their own.
class RepeatingSockets final : public test::ScriptedSockets {
 public:
  using ScriptedSockets::ScriptedSockets;

  bool Receive(int, ReceiveBatch& batch) override {
    batch.Clear();
    arrival.to = joined.back();
    arrival.interface = kCard;
    for (size_t i = 0; i < ReceiveBatch::kMostDatagrams && left > 0; ++i, --left) {
      std::memcpy(batch.Slot(i).data(), kPacket.data(), kPacket.size());
      last_sender = last_sender + 1 < senders ? last_sender + 1 : 0;
      arrival.from = kFirstSender + last_sender;
      batch.Add(arrival, kPacket.size());
    }
    errno = EAGAIN;
    return !batch.Received().empty();
  }

  Ipv4Address senders = 1;
  int left = 0;

 private:
  Ipv4Address last_sender = 0;

  static constexpr Ipv4Address kFirstSender = 0x0A000001;
  static constexpr InterfaceIndex kCard = 2;
  static constexpr std::string_view kPacket{"\0\0\0\x20\0\0\0\0Nziph: 0 lu 89, tllw dlip", 32};
};

/// A field that keeps a view of the text, as a field on a screen does.
class ViewingField final : public native::TextField {
 public:
  void Update(const native::TextFieldState&) override {}
  void Refresh() override {}
  void ShowText(std::string_view text, size_t) override { mShown = text; }

 private:
  std::string_view mShown;
};

/// Windows with fields that keep views.
class ViewingWindows final : public test::Windows {
 public:
  std::unique_ptr<native::Window> Create(native::WindowListener& listener) override {
    class Window final : public test::Window {
     public:
      using test::Window::Window;
      std::unique_ptr<native::TextField> AddTextField(const native::TextFieldState&,
                                                      native::TextFieldListener&) override {
        return std::make_unique<ViewingField>();
      }
    };
    return std::make_unique<Window>(open, listener);
  }
};

/// The program on a side without a screen, with the log window open and repeating sockets. The
/// program's own windows live to the end of the process, and so do the side and this object.
class ScriptedProgram {
 public:
  static ScriptedProgram& Started() {
    static auto* const program = new ScriptedProgram;
    return *program;
  }

  /// One batch of messages, in turns from so many senders.
  void Hear(int messages, Ipv4Address senders) {
    mSide.sockets.left = messages;
    mSide.sockets.senders = senders;
    mGlobals::EasyUDPSocket1->Poll();
  }

 private:
  ScriptedProgram() {
    _Start(mSide);
    App()->mSetGlobals();
    wMain()->Show();
  }

  struct Side final : test::Side {
    ViewingWindows& Windows() override { return windows; }
    RepeatingSockets& Sockets() override { return sockets; }
    ViewingWindows windows;
    RepeatingSockets sockets{faults};
  };
  Side mSide;
};

}  // namespace quorvel::bench
