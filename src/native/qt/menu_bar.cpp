#include "native/qt/menu_bar.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QToolButton>
#include <algorithm>

#include "native/qt/accessible.h"
#include "native/qt/strings.h"

namespace quorvel::qt {

namespace {

using Entries = std::vector<native::MenuEntry>;

bool SameButForEnabled(const Entries& a, const Entries& b) {
  return std::ranges::equal(a, b, [](const native::MenuEntry& x, const native::MenuEntry& y) {
    return x.Name == y.Name && x.Text == y.Text && x.KeyboardShortcut == y.KeyboardShortcut &&
           x.Role == y.Role && SameButForEnabled(x.Children, y.Children);
  });
}

// The toolkit's "Ctrl" is the Command key on macOS. Many keyboards have the plus sign over "=";
// "Ctrl+=" as a second shortcut spares the user the shift key.
QList<QKeySequence> Shortcuts(const std::string& text) {
  QString keys = FromUtf8(text);
  if (keys.startsWith("Cmd+")) keys.replace(0, 3, "Ctrl");
  QList<QKeySequence> shortcuts = {QKeySequence(keys, QKeySequence::PortableText)};
  if (keys == "Ctrl++") shortcuts.append(QKeySequence("Ctrl+="));
  return shortcuts;
}

QAction::MenuRole RoleOf(native::MenuRole role) {
  switch (role) {
    case native::MenuRole::About:
      return QAction::AboutRole;
    case native::MenuRole::Quit:
      return QAction::QuitRole;
    case native::MenuRole::Plain:
      break;
  }
  return QAction::NoRole;
}

}  // namespace

MenuBar::MenuBar(QWidget* parent) : QMenuBar(parent) {
  setNativeMenuBar(kGlobalMenuBar);
  Name(*this, "Menus");
  if (auto* further_menus = findChild<QToolButton*>()) further_menus->setArrowType(Qt::RightArrow);
}

void MenuBar::ShowMenus(const Entries& menus, native::MenuListener& listener) {
  const bool same = SameButForEnabled(menus, shown);
  shown = menus;
  if (!same) Build(listener);
  for (const native::MenuEntry& menu : shown) Enable(menu.Children);
}

void MenuBar::Build(native::MenuListener& listener) {
  clear();
  for (QMenu* menu : findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
    menu->deleteLater();
  }
  items.clear();
  for (const native::MenuEntry& entry : shown) {
    QMenu& menu = *addMenu(FromUtf8(entry.Text));
    Fill(menu, entry, listener);
    connect(&menu, &QMenu::aboutToShow, this, [&listener] { listener.OnMenuNeeded(); });
  }
}

void MenuBar::Fill(QMenu& menu, const native::MenuEntry& entry, native::MenuListener& listener) {
  menu.menuAction()->setObjectName(FromUtf8(entry.Name));
  Name(menu, FromUtf8(entry.Text).remove('&'));
  for (const native::MenuEntry& item : entry.Children) {
    if (item.Children.empty()) {
      AddItem(menu, item, listener);
    } else {
      Fill(*menu.addMenu(FromUtf8(item.Text)), item, listener);
    }
  }
}

void MenuBar::AddItem(QMenu& menu, const native::MenuEntry& entry, native::MenuListener& listener) {
  QAction* action = menu.addAction(FromUtf8(entry.Text));
  action->setObjectName(FromUtf8(entry.Name));
  action->setMenuRole(RoleOf(entry.Role));
  if (!entry.KeyboardShortcut.empty()) action->setShortcuts(Shortcuts(entry.KeyboardShortcut));
  connect(action, &QAction::triggered, this,
          [&listener, name = entry.Name] { listener.OnMenuChosen(name); });
  items[entry.Name] = action;
}

void MenuBar::Enable(const Entries& entries) {
  for (const native::MenuEntry& item : entries) {
    if (item.Children.empty()) {
      items.at(item.Name)->setEnabled(item.Enabled);
    } else {
      Enable(item.Children);
    }
  }
}

}  // namespace quorvel::qt
