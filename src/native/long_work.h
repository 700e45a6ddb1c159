#pragma once

#include <functional>
#include <string>

namespace quorvel::native {

/// Work that may keep a slow disk busy for long, to be done beside the event loop. The functions
/// own, or share, all that they use, and let no exception out.
struct LongWork {
  std::string text;  ///< what is being done, for the user to read
  /// Does the work, in any thread.
  std::function<void()> run;
  /// Asks `run` to return soon and to leave nothing half done. Called at any time, also after `run`
  /// has returned.
  std::function<void()> cancel;
  /// How much of the work is done, from 0 to 100. Called at any time.
  std::function<int()> percent;
};

}  // namespace quorvel::native
