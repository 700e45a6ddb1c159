#include "support/headless_hands.h"

namespace quorvel {

std::unique_ptr<Hands> Hands::Make() { return std::make_unique<HeadlessHands>(); }

}  // namespace quorvel
