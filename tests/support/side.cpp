#include "support/side.h"

#include <utility>

namespace quorvel::test {

void Dialogs::Message(std::string_view text) {
  messages.emplace_back(text);
  if (while_open) std::exchange(while_open, nullptr)();
}

std::optional<std::filesystem::path> Dialogs::AskSaveFile(const native::SaveQuestion& question) {
  save_questions.push_back(question);
  if (while_open) std::exchange(while_open, nullptr)();
  if (save_answers.empty()) return std::nullopt;
  auto answer = save_answers.front();
  save_answers.pop_front();
  return answer;
}

bool Dialogs::AskPageSetup() {
  ++page_setups;
  return accepts_page_setup;
}

std::unique_ptr<native::PrintJob> Dialogs::AskPrint() {
  return print_answer ? StartPrint(*print_answer, print) : nullptr;
}

std::optional<int32_t> Desktop::Gestalt(std::string_view selector) {
  const auto found = gestalt.find(selector);
  return found == gestalt.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace quorvel::test
