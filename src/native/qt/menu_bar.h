#pragma once

#include <QMenuBar>
#include <map>
#include <string>
#include <vector>

#include "native/native.h"

namespace quorvel::qt {

/// Whether the desktop has one menu bar for all windows, which is there without any window too.
#ifdef Q_OS_MACOS
constexpr bool kGlobalMenuBar = true;
#else
constexpr bool kGlobalMenuBar = false;
#endif

/// One copy of the program's menu bar.
class MenuBar final : public QMenuBar {
 public:
  explicit MenuBar(QWidget* parent);
  /// While the menus stay the same but for what is enabled, so do their widgets: this may be called
  /// while one of them opens. `listener` outlives this object.
  void ShowMenus(const std::vector<native::MenuEntry>& menus, native::MenuListener& listener);

 private:
  void Build(native::MenuListener& listener);
  void Fill(QMenu& menu, const native::MenuEntry& entry, native::MenuListener& listener);
  void AddItem(QMenu& menu, const native::MenuEntry& entry, native::MenuListener& listener);
  void Enable(const std::vector<native::MenuEntry>& entries);

  std::vector<native::MenuEntry> shown;
  std::map<std::string, QAction*> items;
};

}  // namespace quorvel::qt
