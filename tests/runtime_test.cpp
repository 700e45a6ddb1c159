// Reports of exceptions that no handler took, and the signals that end the program.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>

#include "native/quit_signals.h"
#include "native/standard_error.h"
#include "platform/runtime/error_reports.h"

namespace quorvel {
namespace {

TEST(ErrorReports, TellTheFirstOfEachClassAndCountTheRest) {
  const std::string box = "Something went wrong inside Quorvel, which goes on running.\n\nwhy";
  const struct {
    int second;
    const char* class_name;
    Origin origin;
    std::string line, box;
  } cases[] = {
      {0, "A", Origin::Background, "A: why", ""},
      {1, "A", Origin::User, "", box + "\n\n(A)"},
      {3, "B", Origin::User, "B: why", box + "\n\n(B)"},
      {63, "A", Origin::Background, "Further unhandled exceptions: A 2", ""},
      {64, "B", Origin::Background, "", ""},
      {-3600, "B", Origin::Background, "Further unhandled exceptions: B 2", ""},
  };
  ErrorReports reports;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.second);
    const ErrorReports::Time now{std::chrono::hours(2) + std::chrono::seconds(each.second)};
    const auto report = reports.Report({each.class_name, "why", ""}, each.origin, now);
    EXPECT_EQ(report.line, each.line);
    EXPECT_EQ(report.box, each.box);
  }
}

TEST(StandardError, NeitherWaitsNorEndsTheProgram) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const std::string long_line(1 << 20, 'x');
  for (int i = 0; i < 1000; ++i) OfferLine(ends[1], long_line);
  EXPECT_EQ(fcntl(ends[1], F_GETFL) & O_NONBLOCK, 0);
  close(ends[0]);
  close(ends[1]);
  // A pipe with room and without a reader takes a write, and raises SIGPIPE.
  ASSERT_EQ(pipe(ends.data()), 0);
  close(ends[0]);
  OfferLine(ends[1], "nobody reads");
  close(ends[1]);
}

TEST(QuitSignals, LetTheSecondSignalEndTheProcess) {
  // A shell starts its background jobs with SIGINT ignored.
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGTERM, SIG_DFL);
  const QuitSignals quit_signals;
  std::raise(SIGINT);
  EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

}  // namespace
}  // namespace quorvel
