#include "help/help_window.h"

#include "platform/windows/system.h"
#include "ui/globals.h"
#include "ui/resources.h"

namespace quorvel {

namespace {

constexpr const char* kProductPage = "http://" QUORVEL_PRODUCT_HOST "/products/quorvel.htm";

constexpr Property kWindow[] = {
    {"Title", "Help"},         {"Width", 700},
    {"MinWidth", 700},         {"MaxWidth", 700},
    {"Height", 500},           {"MinHeight", 500},
    {"MaxHeight", 500},        {"Frame", 0},
    {"Placement", 0},          {"Resizeable", false},
    {"CloseButton", true},     {"MinimizeButton", true},
    {"MaximizeButton", false}, {"LiveResize", false},
    {"Composite", true},       {"HasBackColor", true},
    {"BackColor", "#ffffff"},  {"ClosesOnEscape", true},
};

constexpr Property kTopicField[] = {
    {"Name", "EditField1"},
    {"AccessibleName", "Help text"},
    {"TabIndex", 0},
    {"Left", 201},
    {"Top", 8},
    {"Width", 493},
    {"Height", 461},
    {"TextColor", "#000000"},
    {"Underline", false},
    {"Multiline", true},
    {"ScrollbarVertical", true},
    {"ScrollbarHorizontal", false},
    {"Styled", true},
    {"ReadOnly", true},
    {"Border", true},
    {"UseFocusRing", false},
    {"BackColor", "#ffffff"},
    {"TextFont", "Geneva"},
    {"TextSize", 12},
};

// The rows that all links share.
constexpr Property kLink[] = {
    {"Height", 20},         {"Underline", true}, {"Multiline", false}, {"Enabled", true},
    {"TextFont", "Geneva"}, {"TextSize", 12},    {"Bold", false},      {"Italic", false},
};

constexpr Property kWebLink[] = {
    {"Name", "StaticText1"}, {"TabIndex", 1},          {"Left", 201}, {"Top", 473}, {"Width", 493},
    {"TextAlign", 1},        {"TextColor", "#ff0000"}, {"Text", "-"},
};

struct Topic {
  const char* name;
  int32_t tab_index;
  int32_t top;
  const char* caption;
  Text (*text)();
};

constexpr Topic kTopics[] = {
    {"StaticText2", 2, 32, "General Information", ReadMeFirstMac1},
    {"StaticText3", 3, 62, "System Requirements", ReadMeFirstMac2},
    {"StaticText4", 4, 92, "What's new in this version?", ReadMeFirstMac3},
    {"StaticText5", 5, 122, "Frequently Asked Questions", ReadMeFirstMac4},
    {"StaticText7", 7, 182, "Support", ReadMeFirstMac6},
    {"StaticText8", 8, 212, "Use and Distribution", ReadMeFirst7},
    {"StaticText9", 9, 242, "Other Titles", ReadMeFirstMac8},
};

constexpr int32_t kSizeOffset = 2;

}  // namespace

namespace help_window {

using namespace mGlobals;

void wHelp::Layout() { LayOut(kWindow); }

void wHelp::CreateControls() {
  CreateControl<editFieldExtras>("EditField1", kTopicField);
  CreateLink("StaticText1", kWebLink, [] { ShowURL(kProductPage); });
  for (const Topic& topic : kTopics) {
    const Property table[] = {{"Name", topic.name},
                              {"TabIndex", topic.tab_index},
                              {"Left", 20},
                              {"Top", topic.top},
                              {"Width", 175},
                              {"TextAlign", 0},
                              {"TextColor", "#0000ff"},
                              {"Text", topic.caption}};
    CreateLink(topic.name, table, [this, &topic] { ShowTopic(topic.text()); });
  }
}

void wHelp::CreateLink(const Text& name, PropertySet table, const std::function<void()>& chosen) {
  std::vector<Property> properties(std::begin(kLink), std::end(kLink));
  properties.insert(properties.end(), table.begin(), table.end());
  const auto link = CreateControl<StaticText>(name, properties);
  // The link owns its handlers, so the link is there whenever a handler runs.
  const auto cursor = [link = &*link](const Ref<MouseCursor>& shape) {
    return [link, shape](int32_t, int32_t) {
      link->MouseCursor(shape);
      return true;
    };
  };
  _InstallInstanceEventHandler(link, "MouseEnter", cursor(System()->Cursors()->FingerPointer()));
  _InstallInstanceEventHandler(link, "MouseExit", cursor(System()->Cursors()->StandardPointer()));
  // True claims the click: the link gets the release even when the pointer has left the link.
  _InstallInstanceEventHandler(link, "MouseDown", [](int32_t, int32_t) { return true; });
  _InstallInstanceEventHandler(link, "MouseUp", [chosen](int32_t, int32_t) {
    chosen();
    return true;
  });
}

Ref<editFieldExtras> wHelp::EditField1() const {
  return ControlOf<editFieldExtras>(*this, "EditField1");
}

void wHelp::ShowTopic(const Text& text) {
  EditField1()->Text(text);
  EditField1()->Refresh(true);
}

void wHelp::Event_Open() {
  bHelpIsOpen = true;
  mAppearanceUpdate();
  ShowTopic(ReadMeFirst0());
}

void wHelp::Event_Close() { bHelpIsOpen = false; }

void wHelp::mAppearanceUpdate() {
  EditField1()->TextFont(sTheFont);
  EditField1()->TextSize(iTheFontSize + kSizeOffset);
  const auto web_link = ControlOf<StaticText>(*this, "StaticText1");
  web_link->TextFont(sTheFont);
  web_link->TextSize(iTheFontSize + kSizeOffset);
  for (const Topic& topic : kTopics) {
    const auto caption = ControlOf<StaticText>(*this, topic.name);
    caption->TextFont(sTheFont);
    caption->TextSize(iTheFontSize);
  }
  web_link->Text(kProductPage);
}

}  // namespace help_window

Ref<help_window::wHelp> wHelp() { return ImplicitWindow<help_window::wHelp>(); }

}  // namespace quorvel
