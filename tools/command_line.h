#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// The command line of a tool: options, errors in one line each, exit statuses.
namespace quorvel::tools {

inline constexpr int kFailed = 1;
inline constexpr int kWrongUse = 2;

/// A command line that a tool refuses before doing anything.
struct WrongUse : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Tool {
  std::string name;
  /// The answer to --help.
  std::string help;
};

/// Does a tool's work and returns the exit status. What `work` raises becomes the answer to --help
/// or --version, or an error in one line on standard error, whatever characters the error quotes:
/// status 2 for WrongUse and CLI::ParseError, else 1. A closed standard stream, and an output that
/// nobody reads, end no tool by a signal.
[[nodiscard]] int Run(const Tool& tool, const std::function<int()>& work);

/// Writes the text to standard output, with `?` for control characters but line ends. Raises
/// std::runtime_error when the output takes no more.
void Show(const std::string& text);

/// Declares --help, --version and the named flags, and leaves to the tool the arguments that belong
/// to no option.
void Declare(CLI::App& app, const std::vector<std::string>& flags);

/// Declares an option with one value; `description` completes the sentence "give ...".
template <class Value>
CLI::Option* DeclareValue(CLI::App& app, const std::string& name, Value& value,
                          const std::string& description) {
  // CLI11 takes the next option for a value that an option must have, but not for a value that an
  // option may have. Parse() refuses a missing value and a second value.
  return app.add_option(name, value, description)->expected(0, 1)->take_all();
}

/// Has CLI11 sort the arguments. `number` is the option that takes a number. Raises WrongUse,
/// CLI::ParseError, CLI::CallForHelp or CLI::CallForVersion.
void Parse(CLI::App& app, const std::vector<std::string>& arguments, const CLI::Option& number);

/// Raises WrongUse: the option needs another value.
[[noreturn]] void RefuseValue(const CLI::Option& option);

/// Whether a key is long enough, and no group's address in which a number is missing.
[[nodiscard]] bool IsKey(const std::string& key);
inline constexpr const char* kKeyDescription =
    "a key of at least 5 characters, or a group's address in which no number is missing";

}  // namespace quorvel::tools
