#include "app/entry.h"
#include "native/qt/side.h"

int main(int argc, char** argv) {
  const auto side = quorvel::qt::MakeSide(argc > 0 ? argv[0] : "quorvel");
  return quorvel::RunQuorvel(*side);
}
