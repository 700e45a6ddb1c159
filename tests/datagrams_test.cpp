// Recorded datagrams, well and ill formed, whose log has to stay the same to the byte.

#include <unistd.h>

#include <algorithm>
#include <sstream>

#include "platform/network/ip_address.h"
#include "support/program.h"

namespace quorvel {
namespace {

const std::filesystem::path kData = QUORVEL_TEST_DATA;

// "7a00*3" is the bytes 7a 00, three times.
std::string Bytes(const std::string& word) {
  const size_t star = std::min(word.find('*'), word.size());
  std::string once, bytes;
  for (size_t i = 0; i < star; i += 2) {
    once += static_cast<char>(std::stoi(word.substr(i, 2), nullptr, 16));
  }
  for (int i = star < word.size() ? std::stoi(word.substr(star + 1)) : 1; i > 0; --i) bytes += once;
  return bytes;
}

class Datagrams : public Program {
 protected:
  Datagrams() {
    Start("1.0.5\nMaple-Room-7");
    // The socket stays readable: each turn of the event loop looks at what has arrived.
    EXPECT_EQ(write(mSide.sockets.open.begin()->second, "", 1), 1);
  }
  /// Hears the datagrams of a recording; a blank line is a turn of the event loop.
  void Hear(const std::string& recording) {
    std::istringstream lines(recording + "\n\n");
    for (std::string line; std::getline(lines, line);) {
      std::istringstream words(line.substr(0, line.find('#')));
      std::string from, bytes;
      if (!(words >> from)) {
        mSide.loop.Turn(0);
        continue;
      }
      for (std::string word; words >> word;) bytes += Bytes(word);
      mSide.sockets.arriving.emplace_back(ParseIpv4(Text::FromBytes(from)).value(), bytes);
    }
  }
};

TEST_F(Datagrams, GiveTheSameLogToTheByteOnTheScreenAndInTheSavedFile) {
  const int whole_texts = mSide.windows.FindControl("efLog")->whole_texts;
  Hear(ReadFile(kData / "datagrams.txt"));
  // The field took each line alone.
  EXPECT_EQ(mSide.windows.FindControl("efLog")->whole_texts, whole_texts);
  const std::string log = ReadFile(kData / "log.txt");
  mSide.dialogs.save_answer = mFolder.Path() / "log.txt";
  mHands.Choose("FileSave");
  EXPECT_EQ(ReadFile(mFolder.Path() / "log.txt"), log);
  EXPECT_EQ(mHands.ShownText("efLog"), log);
  // Hostile packets show no message box.
  EXPECT_THAT(mSide.desktop.errors,
              testing::ElementsAre(testing::StartsWith("StackOverflowException: ")));
  EXPECT_THAT(Messages(), testing::IsEmpty());
}

}  // namespace
}  // namespace quorvel
