#include "app/entry.h"
#include "native/qt/side.h"

int main(int argc, char** argv) {
  const auto side = quorvel::qt::MakeSide(argc, argv);
  return quorvel::RunQuorvel(*side);
}
