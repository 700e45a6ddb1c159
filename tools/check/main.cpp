// quorvel-check: why does nothing arrive?

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

#include "key/key_file.h"
#include "native/headless/side.h"
#include "platform/files/folder_item.h"
#include "platform/runtime/runtime.h"
#include "platform/values/exceptions.h"
#include "tools/check/findings.h"
#include "tools/check/gather.h"
#include "tools/check/report.h"
#include "tools/command_line.h"

namespace {

using quorvel::Text;
using quorvel::tools::RefuseValue;
using quorvel::tools::WrongUse;

constexpr int32_t kMostSeconds = 86400;

constexpr const char* kHelp =
    R"(Usage: quorvel-check [OPTION...]

Tells why no message arrives on this computer: network cards, the port, the firewall, and who is
heard. Listens to the group of a key on UDP port 5563, beside a running Quorvel.

  --key KEY      the key of the group, which has at least 5 characters; without this option, the
                 key in Quorvel's key file
  --seconds N    listen for N seconds, 0 to 86400; 5 unless given. Control and C end the listening,
                 and the report comes
  --json         write the report as one JSON object
  --help, -h     show this help
  --version      show the version

The administrator sees more: the names of other users' programs, and the rules of the firewall.
While quorvel-check listens, messages that are sent to this one computer instead of a group can
arrive here and not in Quorvel. Nothing is sent but an empty datagram by each network card, which
brings no message to anybody.

Example:
  quorvel-check --key Maple-Room-7 --seconds 20

Exit status:
  0  nothing was found that keeps this computer from hearing
  1  something was found, or writing the report failed
  2  the command line was wrong, or there is no key
)";

struct Options {
  std::string key;
  int32_t seconds = 5;
  bool json = false;
};

/// Raises what quorvel::tools::Parse() raises.
Options ReadCommandLine(const std::vector<std::string>& arguments) {
  using quorvel::tools::DeclareValue;
  Options options;
  CLI::App app;
  quorvel::tools::Declare(app, {"--json"});
  auto* const key = DeclareValue(app, "--key", options.key, quorvel::tools::kKeyDescription);
  auto* const seconds =
      DeclareValue(app, "--seconds", options.seconds, "a whole number from 0 to 86400");
  quorvel::tools::Parse(app, arguments, *seconds);
  if (app.remaining_size() > 0) throw WrongUse("unknown argument " + app.remaining().front());
  if (key->count() > 0 && !quorvel::tools::IsKey(options.key)) RefuseValue(*key);
  if (options.seconds < 0 || options.seconds > kMostSeconds) RefuseValue(*seconds);
  options.json = app.count("--json") > 0;
  return options;
}

Text ReadKeyFile(const std::string& path) try {
  const auto file = quorvel::FindKeyFile();
  if (!file->Exists()) throw WrongUse("there is no key file " + path + ": give a key with --key");
  Text key = quorvel::ReadKeyFile(*file).key;
  if (quorvel::tools::IsKey(std::string(key.Bytes()))) return key;
  throw WrongUse("the key file " + path + " holds no key: give a key with --key");
} catch (const quorvel::NilObjectException&) {
  throw WrongUse("cannot read the key file " + path + ": give a key with --key");
}

quorvel::check::Facts Gather(const Options& options) {
  const auto path = (quorvel::DefaultFolder() / quorvel::kKeyFileName).string();
  const bool is_given = !options.key.empty();
  const Text key = is_given ? Text::FromBytes(options.key) : ReadKeyFile(path);
  auto facts = quorvel::check::Gather(key, std::chrono::seconds(options.seconds));
  facts.key_from = is_given ? "given with --key" : "in the file " + path;
  return facts;
}

int Check(const Options& options) {
  const auto side = quorvel::headless::MakeSide();
  quorvel::RuntimeInit(*side);
  const auto facts = Gather(options);
  static_cast<void>(quorvel::RuntimeExit());
  quorvel::tools::Show(options.json ? InJson(facts) : InSentences(facts));
  return KeepFromHearing(quorvel::check::Judge(facts)) ? quorvel::tools::kFailed : EXIT_SUCCESS;
}

}  // namespace

int main(int argc, char** argv) {
  return quorvel::tools::Run({"quorvel-check", kHelp}, [&] {
    return Check(ReadCommandLine(std::vector<std::string>(argv + 1, argv + argc)));
  });
}
