#include "tools/command_line.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "messaging/channel.h"
#include "platform/network/ip_address.h"

namespace quorvel::tools {

namespace {

/// The text with a question mark for each control character but those of `kept`: a quoted name
/// cannot give orders to a terminal.
std::string Printable(std::string text, std::string_view kept) {
  const auto is_order = [kept](char c) {
    return (static_cast<unsigned char>(c) < ' ' || c == 0x7F) &&
           kept.find(c) == std::string_view::npos;
  };
  std::ranges::replace_if(text, is_order, '?');
  return text;
}

/// Reports in one line, whatever characters `what` quotes, and hands the status on.
int Fail(const Tool& tool, int status, const std::string& what) {
  std::cerr << tool.name + ": " + Printable(what, "") + '\n';
  return status;
}

/// Opens a closed standard stream for the wrong direction: no socket gets the stream's descriptor,
/// and reading from the stream, or writing to the stream, still fails.
void ReserveStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
  }
}

/// The status of `work`, whose answers to --help and --version are written.
int Answer(const Tool& tool, const std::function<int()>& work) try {
  return work();
} catch (const CLI::CallForHelp&) {
  Show(tool.help);
  return EXIT_SUCCESS;
} catch (const CLI::CallForVersion&) {
  Show(tool.name + " " QUORVEL_VERSION "\n");
  return EXIT_SUCCESS;
}

void CheckUse(const CLI::Option& option) {
  if (option.count() == 0) return;
  if (option.count() > 1) throw WrongUse(option.get_name() + " is given twice");
  const std::string& value = option.results().front();
  const bool takes_value = option.get_expected_max() > 0;
  if (takes_value && value.empty()) RefuseValue(option);
  if (!takes_value && value != "true") throw WrongUse(option.get_name() + " takes no value");
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
  const auto group = ParseIpv4(Text::FromBytes(completed));
  return group && IsMulticast(*group) && !ParseIpv4(Text::FromBytes(key));
}

}  // namespace

int Run(const Tool& tool, const std::function<int()>& work) try {
  // A write to a pipe that nobody reads fails instead of ending the process.
  std::signal(SIGPIPE, SIG_IGN);
  ReserveStandardStreams();
  return Answer(tool, work);
} catch (const CLI::ParseError&) {
  return Fail(tool, kWrongUse, "the command line is wrong; --help shows the options");
} catch (const WrongUse& wrong_use) {
  return Fail(tool, kWrongUse, wrong_use.what());
} catch (const std::exception& failure) {
  return Fail(tool, kFailed, failure.what());
}

void Show(const std::string& text) {
  std::cout << Printable(text, "\n") << std::flush;
  if (!std::cout) throw std::runtime_error("cannot write to standard output");
}

void Declare(CLI::App& app, const std::vector<std::string>& flags) {
  app.allow_extras();
  app.set_help_flag("--help,-h");
  app.add_flag("--version");
  for (const std::string& flag : flags) app.add_flag(flag);
}

void Parse(CLI::App& app, const std::vector<std::string>& arguments,
           const CLI::Option& number) try {
  app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  if (app.count("--version") > 0) throw CLI::CallForVersion();
  std::ranges::for_each(arguments, CheckEqualsSign);
  for (const CLI::Option* const option : app.get_options()) CheckUse(*option);
} catch (const CLI::ConversionError&) {
  RefuseValue(number);
}

void RefuseValue(const CLI::Option& option) {
  const std::string value = option.results().front();
  throw WrongUse(option.get_name() + (value.empty() ? " needs a value" : " '" + value + "'") +
                 ": give " + option.get_description());
}

bool IsKey(const std::string& key) {
  return Len(Text::FromBytes(key)) >= kShortestKey && !IsIncompleteGroup(key);
}

}  // namespace quorvel::tools
