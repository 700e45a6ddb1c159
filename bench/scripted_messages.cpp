// So many messages on their way from datagrams to the log, without a network and without a clock,
// for tools that count instructions. The argument is the number of messages, in batches of 512.

#include <cstdlib>
#include <iostream>

#include "scripted_program.h"

int main(int, char** argv) {
  constexpr int kAtOnce = 512;
  auto& program = quorvel::bench::ScriptedProgram::Started();
  for (int left = std::atoi(argv[1]); left > 0; left -= kAtOnce) {
    program.Hear(kAtOnce, 1);
  }
  std::cout << quorvel::wMain()->efLog()->Text().Bytes().size() << " bytes" << std::endl;
  // Without the ends of the runtime's static objects, which the program's windows outlive.
  std::_Exit(0);
}
