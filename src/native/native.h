#pragma once

#include "native/control.h"
#include "native/desktop.h"
#include "native/dialogs.h"
#include "native/event_loop.h"
#include "native/menu.h"
#include "native/network_calls.h"
#include "native/printing.h"
#include "native/system_calls.h"
#include "native/window.h"

/// The interfaces that a native side implements. The contract in `src/platform` holds all rules and
/// all state; a native object shows states and reports the user's doings through a listener.
///
/// Texts cross in valid UTF-8. Sizes and places are in pixels of the toolkit's logical
/// coordinates. A native object may be destroyed inside its own callback, and calls no listener
/// after its destruction. All calls come from one thread.
namespace quorvel::native {

/// All of a native side.
class Side {
 public:
  virtual ~Side() = default;
  virtual EventLoop& Loop() = 0;
  virtual native::Windows& Windows() = 0;
  virtual native::Dialogs& Dialogs() = 0;
  virtual native::Desktop& Desktop() = 0;
  virtual FileCalls& Files() = 0;
  virtual FolderCalls& Folders() = 0;
  virtual SocketCalls& Sockets() = 0;
  virtual LinkCalls& Links() = 0;
};

}  // namespace quorvel::native
