#include "support/printing.h"

#include <sstream>

namespace quorvel::test {

namespace {

constexpr int32_t kCharacterWidth = 6;
constexpr int32_t kLineHeight = 12;

class Layout : public native::PrintLayout {
 public:
  Layout(Print& print, std::string_view text, int32_t width) : mPrint(print), mWidth(width) {
    const auto columns = static_cast<size_t>(width / kCharacterWidth);
    std::istringstream paragraphs{std::string(text)};
    for (std::string paragraph; std::getline(paragraphs, paragraph);) {
      mLines.push_back(paragraph.substr(0, columns));
      for (size_t at = columns; at < paragraph.size(); at += columns) {
        mLines.push_back(paragraph.substr(at, columns));
      }
    }
  }

  void DrawBlock(int32_t x, int32_t y, int32_t height) override {
    std::ostringstream block;
    block << mWidth << "x" << height << " at " << x << "," << y;
    mPrint.sheets.back().block = block.str();
    for (int32_t used = kLineHeight; used <= height && !AtEnd(); used += kLineHeight) {
      mPrint.sheets.back().lines.push_back(mLines[mNext++]);
    }
  }
  [[nodiscard]] bool AtEnd() const override { return mNext == mLines.size(); }

 private:
  Print& mPrint;
  std::vector<std::string> mLines;
  int32_t mWidth;
  size_t mNext = 0;
};

class Job : public native::PrintJob {
 public:
  Job(const PrintAnswer& answer, Print& print) : mAnswer(answer), mPrint(print) {
    mPrint = {.sheets = {{}}};
  }
  ~Job() override { mPrint.finished = !mCalledOff; }

  [[nodiscard]] std::pair<int32_t, int32_t> PageRange() const override {
    return {mAnswer.first_page, mAnswer.last_page};
  }
  [[nodiscard]] int32_t Width() const override { return mAnswer.width; }
  [[nodiscard]] int32_t Height() const override { return mAnswer.height; }
  void DrawString(std::string_view text, int32_t x, int32_t y,
                  const native::PrintFont& font) override {
    std::ostringstream drawn;
    drawn << text << " at " << x << "," << y << " in " << font.family << " " << font.size;
    mPrint.sheets.back().strings.push_back(drawn.str());
  }
  void NextPage() override {
    if (mAnswer.between_pages) mAnswer.between_pages();
    mCalledOff = static_cast<int32_t>(mPrint.sheets.size()) >= mAnswer.cancel_after;
    if (!mCalledOff) mPrint.sheets.emplace_back();
  }
  [[nodiscard]] bool Cancelled() const override { return mCalledOff; }
  void CallOff() override { mCalledOff = true; }
  std::unique_ptr<native::PrintLayout> LayOut(std::string_view text, const native::PrintFont&,
                                              int32_t width) override {
    return std::make_unique<Layout>(mPrint, text, width);
  }

 private:
  PrintAnswer mAnswer;
  Print& mPrint;
  bool mCalledOff = false;
};

}  // namespace

std::unique_ptr<native::PrintJob> StartPrint(const PrintAnswer& answer, Print& print) {
  return std::make_unique<Job>(answer, print);
}

}  // namespace quorvel::test
