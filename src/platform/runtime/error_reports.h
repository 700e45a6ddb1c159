#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace quorvel {

/// Who caused an event.
enum class Origin : uint8_t {
  User,        ///< a command, a button, a window, the start of the program
  Background,  ///< a socket, a timer, a step of the quit
};

/// An exception that no handler took.
struct UnhandledException {
  std::string class_name;
  std::string message;
  /// The file that the same event failed to open, and the system's reason; empty for none.
  std::string failed_open;
};

/// The words for standard error (one line without its end) and for a message box. Empty words are
/// not to be shown.
struct ErrorReport {
  std::string line;
  std::string box;
};

/// Decides what an unhandled exception shows during one run of the program.
///
/// Line: the first exception of each class is told in full, at once. Further exceptions are
/// counted, and the counts told at a later exception, once a minute has passed since the last line.
/// Box: for the first exception of each class that an event of the user raised.
class ErrorReports {
 public:
  using Time = std::chrono::system_clock::time_point;

  /// The report of one exception, raised by an event of `origin` at the time `now`.
  [[nodiscard]] ErrorReport Report(const UnhandledException& exception, Origin origin, Time now);

 private:
  [[nodiscard]] std::string LineFor(const UnhandledException& exception, Time now);
  [[nodiscard]] std::string TakeCounts();

  std::map<std::string, int64_t> mUntold;  ///< exceptions since the last line, by class
  std::set<std::string> mClassesInBoxes;
  Time mLastLine;
};

}  // namespace quorvel
