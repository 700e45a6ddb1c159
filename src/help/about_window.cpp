#include "help/about_window.h"

#include "ui/globals.h"
#include "ui/resources.h"
#include "ui/version.h"

namespace quorvel {

namespace {

// Width exceeds MaxWidth: the texts need the width, and the user cannot resize the window.
constexpr Property kWindow[] = {
    {"Title", "About"},        {"Width", 594},
    {"Height", 130},           {"MinWidth", 564},
    {"MaxWidth", 564},         {"MinHeight", 130},
    {"MaxHeight", 130},        {"Frame", 0},
    {"Placement", 0},          {"Resizeable", false},
    {"CloseButton", true},     {"MinimizeButton", true},
    {"MaximizeButton", false}, {"LiveResize", false},
    {"Composite", true},       {"HasBackColor", true},
    {"BackColor", "#ffffff"},
};

constexpr Property kCopyright[] = {
    {"Name", "stCopyright"}, {"TabIndex", 0},  {"Left", 153},        {"Top", 93},
    {"Width", 436},          {"Height", 20},   {"TextAlign", 0},     {"TextColor", "#000000"},
    {"TextFont", "Geneva"},  {"TextSize", 10}, {"Multiline", false},
};

constexpr Property kVersion[] = {
    {"Name", "stVersion"},  {"TabIndex", 3},  {"Left", 153},        {"Top", 65},
    {"Width", 370},         {"Height", 20},   {"TextAlign", 0},     {"TextColor", "#000000"},
    {"TextFont", "Geneva"}, {"TextSize", 10}, {"Multiline", false},
};

constexpr Property kLogo[] = {
    {"Name", "Canvas1"},
    {"AccessibleName", "A bird that listens"},
    {"TabIndex", 1},
    {"Left", 8},
    {"Top", 0},
    {"Width", 127},
    {"Height", 127},
    {"AcceptFocus", false},
    {"AcceptTabs", false},
    {"EraseBackground", true},
    {"UseFocusRing", true},
};

constexpr Property kTitlePicture[] = {
    {"Name", "Canvas2"},
    {"AccessibleName", "Quorvel listens to the room"},
    {"TabIndex", 2},
    {"Left", 136},
    {"Top", 6},
    {"Width", 385},
    {"Height", 58},
    {"AcceptFocus", false},
    {"AcceptTabs", false},
    {"EraseBackground", true},
    {"UseFocusRing", true},
};

constexpr const char* kLines[] = {"stVersion", "stCopyright"};
constexpr int32_t kSizeOffset = -2;

}  // namespace

namespace about_window {

using namespace mGlobals;

void wAbout::Layout() { LayOut(kWindow); }

void wAbout::CreateControls() {
  CreateControl<StaticText>("stCopyright", kCopyright);
  CreateControl<Canvas>("Canvas1", kLogo)->Backdrop(Ossiand());
  CreateControl<Canvas>("Canvas2", kTitlePicture)->Backdrop(OssiandTitle());
  CreateControl<StaticText>("stVersion", kVersion);
}

void wAbout::Event_Open() {
  bAboutIsOpen = true;
  mAppearanceUpdate();
  ControlOf<StaticText>(*this, "stVersion")->Text(kNameAndVersion);
  ControlOf<StaticText>(*this, "stCopyright")->Text("Copyright © 2026 the makers of Quorvel.");
}

void wAbout::Event_Close() { bAboutIsOpen = false; }

void wAbout::mAppearanceUpdate() {
  for (const char* const name : kLines) {
    const auto line = ControlOf<StaticText>(*this, name);
    line->TextFont(sTheFont);
    line->TextSize(iTheFontSize + kSizeOffset);
  }
}

}  // namespace about_window

Ref<about_window::wAbout> wAbout() { return ImplicitWindow<about_window::wAbout>(); }

}  // namespace quorvel
