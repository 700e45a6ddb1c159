#include "key/key_is_window.h"

#include "ui/globals.h"

namespace quorvel {

namespace {

constexpr Property kWindow[] = {
    {"Title", ""},
    {"AccessibleName", "Key Information"},
    {"Width", 315},
    {"Height", 123},
    {"MinWidth", 315},
    {"MaxWidth", 315},
    {"MinHeight", 123},
    {"MaxHeight", 123},
    {"Frame", 0},
    {"Placement", 0},
    {"Resizeable", false},
    {"CloseButton", true},
    {"ClosesOnEscape", true},
    {"MinimizeButton", true},
    {"MaximizeButton", false},
    {"LiveResize", true},
    {"Composite", false},
    {"HasBackColor", false},
};

constexpr Property kSentence[] = {
    {"Name", "editFieldExtras1"},
    {"AccessibleName", "Key information"},
    {"TabIndex", 0},
    {"Left", 8},
    {"Top", 6},
    {"Width", 301},
    {"Height", 110},
    {"Multiline", true},
    {"ScrollbarVertical", false},
    {"ScrollbarHorizontal", false},
    {"ReadOnly", true},
    {"Border", true},
    {"Styled", false},
    {"UseFocusRing", false},
    {"TextFont", "Geneva"},
    {"TextSize", 12},
};

constexpr const char* kHowToChange =
    "  See information in the HELP guide under FREQUENTLY ASKED QUESTIONS for details on how to "
    "set "
    "or change the key.";

}  // namespace

namespace key_is_window {

using namespace mGlobals;

void wKeyIs::Layout() { LayOut(kWindow); }

void wKeyIs::CreateControls() { CreateControl<editFieldExtras>("editFieldExtras1", kSentence); }

Ref<editFieldExtras> wKeyIs::editFieldExtras1() const {
  return ControlOf<editFieldExtras>(*this, "editFieldExtras1");
}

void wKeyIs::Event_Open() {
  mAppearanceUpdate();
  if (!sProgID.IsEmpty()) {
    editFieldExtras1()->Text(Text("The key associated with this copy of Quorvel is '") + sProgID +
                             "'." + kHowToChange);
  } else {
    editFieldExtras1()->Text(Text("No key has been set.") + kHowToChange);
  }
}

void wKeyIs::mAppearanceUpdate() {
  editFieldExtras1()->TextFont(sTheFont);
  editFieldExtras1()->TextSize(iTheFontSize);
}

}  // namespace key_is_window

Ref<key_is_window::wKeyIs> wKeyIs() { return ImplicitWindow<key_is_window::wKeyIs>(); }

}  // namespace quorvel
