#include "platform/runtime/error_reports.h"

#include <utility>

namespace quorvel {

namespace {

constexpr std::chrono::minutes kBetweenCounts(1);

std::string InFull(const UnhandledException& exception) {
  const std::string& file = exception.failed_open;
  return exception.class_name + ": " + exception.message + (file.empty() ? "" : " (" + file + ")");
}

std::string BoxFor(const UnhandledException& exception) {
  const bool file = !exception.failed_open.empty();
  return std::string(file ? "Quorvel could not open a file that it needs."
                          : "Something went wrong inside Quorvel, which goes on running.") +
         "\n\n" + (file ? exception.failed_open : exception.message) + "\n\n(" +
         exception.class_name + ")";
}

}  // namespace

ErrorReport ErrorReports::Report(const UnhandledException& exception, Origin origin, Time now) {
  ErrorReport report{.line = LineFor(exception, now), .box = {}};
  const bool boxed = origin == Origin::User && mClassesInBoxes.insert(exception.class_name).second;
  if (boxed) report.box = BoxFor(exception);
  return report;
}

std::string ErrorReports::LineFor(const UnhandledException& exception, Time now) {
  const auto [count, first] = mUntold.try_emplace(exception.class_name, 0);
  if (!first) ++count->second;
  // A clock that was set back must not silence the reports until the old time comes again.
  const bool waits = now >= mLastLine && now - mLastLine < kBetweenCounts;
  if (!first && waits) return {};
  mLastLine = now;
  return first ? InFull(exception) : TakeCounts();
}

std::string ErrorReports::TakeCounts() {
  std::string counts;
  for (auto& [class_name, untold] : mUntold) {
    const int64_t count = std::exchange(untold, 0);
    if (count == 0) continue;
    counts += (counts.empty() ? "" : ", ") + class_name + " " + std::to_string(count);
  }
  return "Further unhandled exceptions: " + counts;
}

}  // namespace quorvel
