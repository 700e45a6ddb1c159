#include "ui/menu_bar.h"

#include <span>

#include "platform/runtime/runtime.h"
#include "platform/windows/application.h"

namespace quorvel {

namespace {

enum class Kind : uint8_t { Item, Apple, Quit };

struct Row {
  const char* name;
  Kind kind;
  const char* text;
  const char* shortcut;
};

constexpr Row kFileMenu = {"FileMenu", Kind::Item, "&File", ""};
constexpr Row kFileItems[] = {
    {"FileSave", Kind::Item, "Save", "Cmd+S"},
    {"FilePrint", Kind::Item, "Print", "Cmd+P"},
    {"FileQuit", Kind::Quit, "&Quit", "Cmd+Q"},
};

constexpr Row kFontMenu = {"FontMenu", Kind::Item, "Font", ""};
constexpr Row kFontItems[] = {
    {"FontSmaller", Kind::Item, "Smaller", "Cmd+-"},
    {"FontLarger", Kind::Item, "Larger", "Cmd++"},
};

constexpr Row kHelpMenu = {"HelpMenu", Kind::Item, "Help", ""};
constexpr Row kHelpItems[] = {
    {"HelpKeyInformation", Kind::Item, "Key Information...", ""},
    {"HelpHelp", Kind::Item, "Help with Quorvel", "Cmd+H"},
    {"HelpAbout", Kind::Apple, "About Quorvel", ""},
};

Ref<MenuItem> NewItem(Kind kind) {
  if (kind == Kind::Apple) return New<AppleMenuItem>();
  if (kind == Kind::Quit) return New<QuitMenuItem>();
  return New<MenuItem>();
}

Ref<MenuItem> Built(const Row& row) {
  auto item = NewItem(row.kind);
  item->Constructor();
  item->Name(row.name);
  item->AutoEnable(true);
  item->Text(row.text);
  item->KeyboardShortcut(row.shortcut);
  return item;
}

void AppendMenu(MenuBar& bar, const Row& menu, std::span<const Row> items) {
  bar.Append(Built(menu));
  for (const Row& item : items) bar.Child(menu.name)->Append(Built(item));
}

Ref<menu_bar::MenuBar1>& Instance() {
  static Ref<menu_bar::MenuBar1> instance;
  return instance;
}

Ref<MenuItem> ApplicationItem(const char* name) {
  return _TheApplication()->MenuBar()->_Lookup(name);
}

}  // namespace

namespace menu_bar {

void MenuBar1::Constructor() {
  Untitled0();
  Untitled1();
  Untitled2();
}

void MenuBar1::Untitled0() { AppendMenu(*this, kFileMenu, kFileItems); }
void MenuBar1::Untitled1() { AppendMenu(*this, kFontMenu, kFontItems); }
void MenuBar1::Untitled2() { AppendMenu(*this, kHelpMenu, kHelpItems); }

}  // namespace menu_bar

Ref<menu_bar::MenuBar1> MenuBar1() {
  if (!Instance()) {
    Instance() = New<menu_bar::MenuBar1>();
    Instance()->Constructor();
  }
  return Instance();
}

void _ReleaseMenuBar1() { Instance() = Nil; }

Ref<AppleMenuItem> HelpAbout() { return Cast<AppleMenuItem>(ApplicationItem("HelpAbout")); }
Ref<MenuItem> HelpHelp() { return ApplicationItem("HelpHelp"); }
Ref<MenuItem> HelpKeyInformation() { return ApplicationItem("HelpKeyInformation"); }

}  // namespace quorvel
