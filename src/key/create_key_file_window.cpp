#include "key/create_key_file_window.h"

#include "platform/runtime.h"
#include "shell/globals.h"

namespace quorvel {

namespace {

constexpr Property kWindow[] = {
    {"Title", "Getting Started"},
    {"Width", 637},
    {"Height", 474},
    {"MinWidth", 64},
    {"MinHeight", 64},
    {"MaxWidth", 32000},
    {"MaxHeight", 32000},
    {"Frame", 0},
    {"Placement", 0},
    {"Resizeable", false},
    {"CloseButton", true},
    {"MinimizeButton", true},
    {"MaximizeButton", false},
    {"LiveResize", true},
    {"Composite", false},
    {"HasBackColor", false},
};

}  // namespace

namespace create_key_file_window {

void wCreateKeyFile::Layout() { LayOut(kWindow); }

void wCreateKeyFile::Event_Close() {
  if (mGlobals::sProgID.IsEmpty()) Quit(0);
}

}  // namespace create_key_file_window

Ref<create_key_file_window::wCreateKeyFile> wCreateKeyFile() {
  return ImplicitWindow<create_key_file_window::wCreateKeyFile>();
}

}  // namespace quorvel
