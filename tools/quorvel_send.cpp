// Sends texts the way Quorvel's senders do: mirrored, one packet and one datagram each.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "log/decode_word.h"
#include "messaging/easy_udp_socket.h"

namespace {

using quorvel::Text;

constexpr int32_t kPort = 5563;
constexpr int32_t kShortestKey = 5;

struct Options {
  std::string key;
  std::string host;
  int32_t command = 0;
  bool raw = false;
  bool from_stdin = false;
  std::vector<std::string> texts;
};

/// Reports in one line; the status for the process.
int Fail(const std::string& what) {
  std::cerr << "quorvel-send: " << what << '\n';
  return EXIT_FAILURE;
}

class Sender {
 public:
  explicit Sender(const Options& options) : mOptions(options) {}

  /// 0, or the system's error.
  int32_t Open() {
    mSocket->Constructor();
    // A listener on this host keeps the port, and all that is sent to it, for itself.
    mSocket->SendOnly(true);
    mSocket->Bind(kPort);
    return mSocket->IsConnected() ? 0 : mSocket->LastErrorCode();
  }

  int32_t Send(const std::string& text) {
    const Text plain = Text::FromBytes(text);
    const Text data = mOptions.raw ? plain : quorvel::mGlobals::mDecodeWordReverse(plain);
    if (mOptions.host.empty()) {
      mSocket->SendMessageToGroup(mKey, mOptions.command, data);
    } else {
      mSocket->SendMessageToIndividual(mOptions.host.c_str(), mOptions.command, data);
    }
    return mSocket->LastErrorCode();
  }

 private:
  const Options& mOptions;
  Text mKey = mOptions.key.c_str();
  quorvel::Ref<quorvel::EasyUDPSocket> mSocket = quorvel::New<quorvel::EasyUDPSocket>();
};

int SendAll(const Options& options) {
  Sender sender(options);
  if (const int32_t error = sender.Open()) {
    return Fail(std::string("cannot open a socket: ") + std::strerror(error));
  }
  const auto failed = [&](const std::string& text) {
    const int32_t error = sender.Send(text);
    if (error != 0) Fail(std::string("cannot send: ") + std::strerror(error));
    return error != 0;
  };
  for (const std::string& text : options.texts) {
    if (failed(text)) return EXIT_FAILURE;
  }
  for (std::string line; options.from_stdin && std::getline(std::cin, line);) {
    if (line.ends_with('\r')) line.pop_back();
    if (failed(line)) return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}

void Declare(CLI::App& app, Options& options) {
  app.add_option("--key", options.key, "the key that names the group to send to");
  app.add_option("--to", options.host, "send to this IPv4 address instead of the group");
  app.add_option("--command", options.command, "the command number, 0 unless given");
  app.add_flag("--raw", options.raw, "send the text as it is, not mirrored");
  app.add_flag("--stdin", options.from_stdin, "send each line of standard input");
  app.add_option("TEXT", options.texts, "the texts, one message each");
}

}  // namespace

int main(int argc, char** argv) try {
  CLI::App app("Sends texts to the Quorvel windows that listen for a key.", "quorvel-send");
  Options options;
  Declare(app, options);
  CLI11_PARSE(app, argc, argv);
  if (options.host.empty() && quorvel::Len(options.key.c_str()) < kShortestKey) {
    return Fail("give a key of at least 5 characters with --key");
  }
  if (options.texts.empty() && !options.from_stdin) {
    return Fail("give at least one text, or --stdin");
  }
  return SendAll(options);
} catch (const std::exception& exception) {
  return Fail(exception.what());
}
