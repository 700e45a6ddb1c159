#pragma once

#include "platform/controls.h"

namespace quorvel {

/// The text field of the windows that print and save.
class editFieldExtras : public EditField {};

}  // namespace quorvel
