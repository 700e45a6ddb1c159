#include "platform/qt/side.h"
#include "shell/entry.h"

int main(int argc, char** argv) {
  const auto side = quorvel::qt::MakeSide(argc, argv);
  return quorvel::RunQuorvel(*side);
}
