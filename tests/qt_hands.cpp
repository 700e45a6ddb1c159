#include "support/qt_hands.h"

namespace quorvel {

std::unique_ptr<Hands> Hands::Make() { return std::make_unique<QtHands>(); }

}  // namespace quorvel
