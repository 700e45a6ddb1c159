#pragma once

#include <QMenuBar>
#include <map>
#include <string>
#include <vector>

#include "native/native.h"

namespace quorvel::qt {

/// Whether the desktop has a menu bar for all windows, visible even when no window is open.
#ifdef Q_OS_MACOS
constexpr bool kGlobalMenuBar = true;
#else
constexpr bool kGlobalMenuBar = false;
#endif

/// A widget with a copy of the program's menu bar.
class MenuBar final : public QMenuBar {
 public:
  explicit MenuBar(QWidget* parent);
  /// Shows the menus. Menus that differ from the shown menus in enabled items alone keep their
  /// widgets, so that a menu which is about to open can be updated. `listener` outlives the widget.
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
