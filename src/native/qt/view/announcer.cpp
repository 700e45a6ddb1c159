#include "native/qt/view/announcer.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "native/qt/view/piece.h"

namespace quorvel::qt {

namespace {

// The most of the new text that is told at a time, in bytes.
constexpr size_t kMostTold = 1000;
constexpr std::chrono::milliseconds kPause(400);

}  // namespace

Announcer::Announcer(QWidget& of, std::function<std::string_view()> text_of_view)
    : view(of), text(std::move(text_of_view)) {
  pause.setSingleShot(true);
  pause.setInterval(kPause);
  pause.callOnTimeout([this] { Tell(); });
}

void Announcer::Tell() {
  const std::string_view now = text();
  if (!QAccessible::isActive()) told_to = now.size();
  if (told_to == now.size() || pause.isActive()) return;
  const size_t length = std::min(now.size() - told_to, kMostTold);
  std::vector<uint32_t> offsets;
  const bool is_another = std::exchange(told_to, now.size()) == 0;
  const QString added =
      ShownText(now.substr(is_another ? 0 : now.size() - length, length), offsets);
  const auto begin = Accessible().characterCount() - static_cast<int>(added.size());
  QAccessibleTextInsertEvent event(&view, is_another ? 0 : std::max(begin, 0), added);
  QAccessible::updateAccessibility(&event);
  pause.start();
}

void Announcer::TellCaret() {
  if (!QAccessible::isActive()) return;
  QAccessibleTextCursorEvent moved(&view, Accessible().cursorPosition());
  QAccessible::updateAccessibility(&moved);
}

const QAccessibleTextInterface& Announcer::Accessible() const {
  return *QAccessible::queryAccessibleInterface(&view)->textInterface();
}

}  // namespace quorvel::qt
