// Sends texts the way Quorvel's senders do: mirrored, one packet and one datagram each.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "log/decode_word.h"
#include "messaging/channel.h"
#include "messaging/easy_udp_socket.h"
#include "platform/network/ip_address.h"
#include "tools/command_line.h"

namespace {

using quorvel::Text;
using quorvel::tools::RefuseValue;
using quorvel::tools::WrongUse;

// The bytes that fit into a datagram, less the 8 bytes of a packet's length and command.
constexpr size_t kLongestText = 65507 - 8;

constexpr const char* kHelp =
    R"(Usage: quorvel-send --key KEY [OPTION...] TEXT...
       quorvel-send --to ADDRESS [OPTION...] TEXT...

Sends each TEXT as one message to UDP port 5563. Quorvel shows each message as a line of its log.
Required are a key or an address, and a text or --stdin.

  --key KEY      send to the group of this key, which has at least 5 characters; the log that is
                 to show the messages must use the same key
  --to ADDRESS   send to the one computer with this dotted IPv4 address, such as 10.0.0.7; stands
                 instead of --key
  --command N    the command number of the messages, 0 unless given; the log shows all numbers
  --interface NAME
                 send to the group by the network interface of this name, such as eth0; otherwise
                 by the interface of the best route
  --stdin        send each line of standard input as one message as well, after the texts
  --raw          send the texts as they are; texts are mirrored otherwise, as Quorvel expects them
  --             end of the options: put -- before texts that begin with a dash
  --help, -h     show this help
  --version      show the version

A text has at most 65,499 bytes. The first text that cannot be sent ends the sending. Nobody
acknowledges a message: a sent message is not always a received message.

Example:
  quorvel-send --key Maple-Room-7 "Hello, everybody" -- "-2 degrees"

Exit status:
  0  all messages were sent
  1  opening the socket, sending, reading standard input or writing the output failed
  2  the command line was wrong; nothing was sent
)";

struct Options {
  std::string key;
  /// The dotted address of the one receiver; empty when the key's group receives.
  std::string address;
  /// The interface for sends to the group; empty for the socket's choice.
  std::string interface;
  int32_t command = 0;
  bool raw = false;
  bool from_stdin = false;
  std::vector<std::string> texts;
};

/// Declares the options; returns the option that takes a number. CLI11 splits [1,2] into 1 and 2
/// for an option that collects values, so the texts belong to no option: texts are the arguments
/// that remain.
CLI::Option* Declare(CLI::App& app, Options& options) {
  using quorvel::tools::DeclareValue;
  quorvel::tools::Declare(app, {"--raw", "--stdin"});
  auto* const key = DeclareValue(app, "--key", options.key, quorvel::tools::kKeyDescription);
  auto* const interface =
      DeclareValue(app, "--interface", options.interface, "the name of a network interface");
  DeclareValue(app, "--to", options.address, "a dotted IPv4 address such as 10.0.0.7, not a name")
      ->excludes(key)
      ->excludes(interface);
  return DeclareValue(app, "--command", options.command,
                      "a whole number from -2147483648 to 2147483647");
}

void CheckText(const std::string& text) {
  if (!text.starts_with('-') || text == "-") return;
  throw WrongUse("unknown option " + text + "; put -- before texts that begin with a dash");
}

void CheckReceiver(const CLI::App& app, const std::string& key, const std::string& address) {
  if (key.empty() && address.empty()) {
    throw WrongUse("give a key with --key, or an address with --to");
  }
  if (!key.empty() && !quorvel::tools::IsKey(key)) RefuseValue(*app["--key"]);
  if (!address.empty() && !quorvel::ParseIpv4(Text::FromBytes(address))) RefuseValue(*app["--to"]);
}

/// Checks the arguments before the first `--` as far as possible without a network. Raises what
/// quorvel::tools::Parse() raises.
void Parse(CLI::App& app, const std::vector<std::string>& arguments, const Options& options,
           const CLI::Option& command) try {
  quorvel::tools::Parse(app, arguments, command);
  std::ranges::for_each(app.remaining(), CheckText);
  CheckReceiver(app, options.key, options.address);
} catch (const CLI::ExcludesError&) {
  throw WrongUse("--to stands alone: give neither --key nor --interface with it");
}

/// The options and texts of the command line. Raises what Parse() raises.
Options ReadCommandLine(const std::vector<std::string>& arguments) {
  Options options;
  CLI::App app;
  const auto* const command = Declare(app, options);
  const auto dashes = std::ranges::find(arguments, "--");
  Parse(app, {arguments.begin(), dashes}, options, *command);
  options.raw = app.count("--raw") > 0;
  options.from_stdin = app.count("--stdin") > 0;
  options.texts = app.remaining();
  if (dashes != arguments.end()) {
    options.texts.insert(options.texts.end(), dashes + 1, arguments.end());
  }
  if (options.texts.empty() && !options.from_stdin) {
    throw WrongUse("give at least one text, or --stdin");
  }
  return options;
}

class Sender {
 public:
  /// Opens the socket. Raises std::runtime_error.
  explicit Sender(const Options& options) : mOptions(options) {
    mSocket->Constructor();
    // A listener on this host keeps the port, and all that is sent to the port, for itself.
    mSocket->SendOnly(true);
    mSocket->SendInterface(options.interface);
    mSocket->Bind(quorvel::kPort);
    if (!mSocket->IsConnected()) Raise("cannot open a socket");
    CheckInterface();
  }

  /// Sends one message; `name` names the text in the std::runtime_error that a failure raises.
  void Send(const std::string& text, const std::string& name) {
    if (text.size() > kLongestText) {
      throw std::runtime_error(name + " is too long: a text has at most 65,499 bytes");
    }
    const Text plain = Text::FromBytes(text);
    const Text data = mOptions.raw ? plain : quorvel::mGlobals::mDecodeWordReverse(plain);
    if (mOptions.address.empty()) {
      mSocket->SendMessageToGroup(Text::FromBytes(mOptions.key), mOptions.command, data);
    } else {
      mSocket->SendMessageToIndividual(Text::FromBytes(mOptions.address), mOptions.command, data);
    }
    if (mSocket->LastErrorCode() != 0) Raise(name + ": cannot send");
  }

 private:
  void CheckInterface() const {
    const auto all = mSocket->NetworkInterfaces();
    const auto& name = mOptions.interface;
    if (name.empty() || std::ranges::count(all, name, &quorvel::NetworkInterface::name) > 0) return;
    throw WrongUse("--interface '" + name + "': this computer has no such network interface");
  }

  void Raise(const std::string& what) {
    throw std::system_error(mSocket->LastErrorCode(), std::generic_category(), what);
  }

  const Options& mOptions;
  quorvel::Ref<quorvel::EasyUDPSocket> mSocket = quorvel::New<quorvel::EasyUDPSocket>();
};

/// The next line of standard input without its LF or CR LF; of a line that is too long, enough
/// to show the excess. Nothing at the end of the input. Raises std::runtime_error.
std::optional<std::string> ReadLine() {
  constexpr size_t kEnough = kLongestText + 2;
  std::string line;
  int byte = 0;
  while (line.size() < kEnough && (byte = std::getc(stdin)) != EOF && byte != '\n') {
    line += static_cast<char>(byte);
  }
  if (std::ferror(stdin) != 0) {
    throw std::system_error(errno, std::generic_category(), "cannot read standard input");
  }
  if (byte == EOF && line.empty()) return std::nullopt;
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

void SendAll(const Options& options) {
  Sender sender(options);
  int64_t number = 0;
  for (const std::string& text : options.texts) {
    sender.Send(text, "text " + std::to_string(++number));
  }
  if (!options.from_stdin) return;
  number = 0;
  while (const auto line = ReadLine()) sender.Send(*line, "line " + std::to_string(++number));
}

}  // namespace

int main(int argc, char** argv) {
  return quorvel::tools::Run({"quorvel-send", kHelp}, [&] {
    SendAll(ReadCommandLine(std::vector<std::string>(argv + 1, argv + argc)));
    return EXIT_SUCCESS;
  });
}
