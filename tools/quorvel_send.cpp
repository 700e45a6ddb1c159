// Sends texts the way Quorvel's senders do: mirrored, one packet and one datagram each.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "log/decode_word.h"
#include "messaging/channel.h"
#include "messaging/easy_udp_socket.h"
#include "platform/network/ip_address.h"

namespace {

using quorvel::Text;

// The bytes that fit into a datagram, less the 8 bytes of a packet's length and command.
constexpr size_t kLongestText = 65507 - 8;

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

constexpr const char* kVersion = "quorvel-send " QUORVEL_VERSION "\n";
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

/// A command line that quorvel-send refuses before it sends anything.
struct WrongUse : std::runtime_error {
  using std::runtime_error::runtime_error;
};

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

/// Declares the options. CLI11 splits [1,2] into 1 and 2 for an option that collects values, so
/// the texts belong to no option: texts are the arguments that remain.
void Declare(CLI::App& app, Options& options) {
  app.allow_extras();
  app.set_help_flag("--help,-h");
  for (const char* const flag : {"--version", "--raw", "--stdin"}) app.add_flag(flag);
  auto* const key = app.add_option(
      "--key", options.key,
      "a key of at least 5 characters, or a group's address in which no number is missing");
  auto* const address =
      app.add_option("--to", options.address, "a dotted IPv4 address such as 10.0.0.7, not a name");
  auto* const command =
      app.add_option("--command", options.command, "a whole number from -2147483648 to 2147483647");
  auto* const interface =
      app.add_option("--interface", options.interface, "the name of a network interface");
  address->excludes(key)->excludes(interface);
  // CLI11 takes the next option for a value that an option must have, but not for a value that
  // an option may have. CheckUse() refuses a missing value and a second value.
  for (auto* const option : {key, address, command, interface}) option->expected(0, 1)->take_all();
}

[[noreturn]] void RefuseValue(const CLI::Option& option) {
  const std::string value = option.results().front();
  throw WrongUse(option.get_name() + (value.empty() ? " needs a value" : " '" + value + "'") +
                 ": give " + option.get_description());
}

void CheckUse(const CLI::Option& option) {
  if (option.count() == 0) return;
  if (option.count() > 1) throw WrongUse(option.get_name() + " is given twice");
  const std::string& value = option.results().front();
  const bool takes_value = option.get_expected_max() > 0;
  if (takes_value && value.empty()) RefuseValue(option);
  if (!takes_value && value != "true") throw WrongUse(option.get_name() + " takes no value");
}

void CheckText(const std::string& text) {
  if (!text.starts_with('-') || text == "-") return;
  throw WrongUse("unknown option " + text + "; put -- before texts that begin with a dash");
}

/// Refuses `--name=`, for CLI11 takes the next argument for the value.
void CheckEqualsSign(const std::string& argument) {
  if (!argument.starts_with("--") || argument.find('=') + 1 != argument.size()) return;
  throw WrongUse(argument + ": nothing follows the equals sign");
}

/// Whether Quorvel takes the key for a group's address although a number is missing, as in
/// 224.1..3. A zero before each number supplies the missing numbers and changes no other number.
bool IsIncompleteGroup(const std::string& key) {
  std::string completed = "0";
  for (const char c : key) completed += c == '.' ? std::string(".0") : std::string(1, c);
  const auto group = quorvel::ParseIpv4(Text::FromBytes(completed));
  return group && quorvel::IsMulticast(*group) && !quorvel::ParseIpv4(Text::FromBytes(key));
}

bool IsKey(const std::string& key) {
  return quorvel::Len(Text::FromBytes(key)) >= quorvel::kShortestKey && !IsIncompleteGroup(key);
}

void CheckReceiver(const CLI::App& app, const std::string& key, const std::string& address) {
  if (key.empty() && address.empty()) {
    throw WrongUse("give a key with --key, or an address with --to");
  }
  if (!key.empty() && !IsKey(key)) RefuseValue(*app["--key"]);
  if (!address.empty() && !quorvel::ParseIpv4(Text::FromBytes(address))) RefuseValue(*app["--to"]);
}

/// Has CLI11 sort the arguments before the first `--`, and checks them as far as possible without
/// a network. Raises WrongUse, CLI::CallForHelp or CLI::CallForVersion.
void Parse(CLI::App& app, const std::vector<std::string>& arguments, const Options& options) try {
  app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  if (app.count("--version") > 0) throw CLI::CallForVersion();
  std::ranges::for_each(app.remaining(), CheckText);
  std::ranges::for_each(arguments, CheckEqualsSign);
  for (const CLI::Option* const option : app.get_options()) CheckUse(*option);
  CheckReceiver(app, options.key, options.address);
} catch (const CLI::ExcludesError&) {
  throw WrongUse("--to stands alone: give neither --key nor --interface with it");
} catch (const CLI::ConversionError&) {
  RefuseValue(*app["--command"]);
}

/// The options and texts of the command line. Raises what Parse() raises.
Options ReadCommandLine(const std::vector<std::string>& arguments) {
  Options options;
  CLI::App app;
  Declare(app, options);
  const auto dashes = std::ranges::find(arguments, "--");
  Parse(app, {arguments.begin(), dashes}, options);
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

/// Reports in one line, whatever characters `what` quotes, and hands the status on.
int Fail(int status, std::string what) {
  const auto breaks_line = [](unsigned char c) { return c < ' ' || c == 0x7F; };
  std::ranges::replace_if(what, breaks_line, '?');
  std::cerr << "quorvel-send: " + what + '\n';
  return status;
}

int Show(const char* text) {
  std::cout << text << std::flush;
  return std::cout ? EXIT_SUCCESS : Fail(kFailed, "cannot write to standard output");
}

/// Opens a closed standard stream for the wrong direction: the socket does not get the stream's
/// descriptor, and reading from the stream, or writing to the stream, still fails.
void ReserveStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

}  // namespace

int main(int argc, char** argv) try {
  // A write to a pipe that nobody reads fails instead of ending the process.
  std::signal(SIGPIPE, SIG_IGN);
  ReserveStandardStreams();
  SendAll(ReadCommandLine(std::vector<std::string>(argv + 1, argv + argc)));
  return EXIT_SUCCESS;
} catch (const CLI::CallForHelp&) {
  return Show(kHelp);
} catch (const CLI::CallForVersion&) {
  return Show(kVersion);
} catch (const CLI::ParseError&) {
  return Fail(kWrongUse, "the command line is wrong; --help shows the options");
} catch (const WrongUse& wrong_use) {
  return Fail(kWrongUse, wrong_use.what());
} catch (const std::exception& failure) {
  return Fail(kFailed, failure.what());
}
