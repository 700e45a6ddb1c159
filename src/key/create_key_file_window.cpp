#include "key/create_key_file_window.h"

#include "key/key_file.h"
#include "log/main_window.h"
#include "messaging/channel.h"
#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"
#include "platform/windows/system.h"
#include "ui/file_types.h"
#include "ui/globals.h"
#include "ui/resources.h"

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

constexpr Property kGenerate[] = {
    {"Name", "pbGenerate"},
    {"TabIndex", 0},
    {"Left", 317},
    {"Top", 434},
    {"Width", 135},
    {"Height", 20},
    {"Caption", "Generate Key File"},
    {"Default", false},
    {"Cancel", false},
    {"TextFont", "System"},
    {"TextSize", 0},
};

constexpr Property kKey[] = {
    {"Name", "efKey"},      {"AccessibleName", "Key"},
    {"TabIndex", 1},        {"Left", 9},
    {"Top", 433},           {"Width", 296},
    {"Height", 22},         {"Multiline", false},
    {"LimitText", 20},      {"Password", false},
    {"Border", true},       {"Styled", false},
    {"UseFocusRing", true}, {"ReadOnly", false},
    {"TextFont", "System"}, {"TextSize", 0},
    {"Text", ""},           {"Hint", "Type a key, for example: room 12"},
};

constexpr Property kInstructions[] = {
    {"Name", "efHelp"},
    {"AccessibleName", "Instructions"},
    {"TabIndex", 2},
    {"Left", 9},
    {"Top", 8},
    {"Width", 617},
    {"Height", 413},
    {"Multiline", true},
    {"ScrollbarVertical", true},
    {"ReadOnly", false},
    {"Border", true},
    {"Styled", false},
    {"UseFocusRing", true},
    {"TextFont", "System"},
    {"TextSize", 0},
    {"Text", ""},
};

}  // namespace

namespace create_key_file_window {

using namespace mGlobals;

void wCreateKeyFile::Layout() { LayOut(kWindow); }

void wCreateKeyFile::CreateControls() {
  CreateControl<PushButton>("pbGenerate", kGenerate);
  _InstallInstanceEventHandler(RuntimeWindowControlByName(*this, "pbGenerate"), "Action",
                               RuntimeSwapSelfAndMe(*this, &wCreateKeyFile::pbGenerate_Action));
  CreateControl<EditField>("efKey", kKey);
  CreateControl<editFieldExtras>("efHelp", kInstructions);
}

Ref<editFieldExtras> wCreateKeyFile::efHelp() const {
  return ControlOf<editFieldExtras>(*this, "efHelp");
}

Ref<EditField> wCreateKeyFile::efKey() const { return ControlOf<EditField>(*this, "efKey"); }

void wCreateKeyFile::Event_Open() { efHelp()->Text(QuorvelInstructions()); }

void wCreateKeyFile::Event_Close() {
  if (sProgID.IsEmpty()) Quit(0);
}

void wCreateKeyFile::pbGenerate_Action() {
  const Text key = Trim(efKey()->Text());
  if (Len(key) < kShortestKey) {
    MsgBox("Key must be 5-20 characters.");
    return;
  }
  const Text lines = Text(kKeyFileMarker) + EndOfLine + key;
  const auto file = GetSaveFolderItem(FileTypes1::pText->ToText(), kKeyFileName, LenB(lines));
  if (!file) return;
  const auto stream = file->CreateTextFile();
  if (file->Name() != kKeyFileName) {
    file->Name(kKeyFileName);
    MsgBox("Key file must always be named exactly 'QuorvelKeyFile'.");
  }
  if (!stream) return;
  stream->Write(lines);
  stream->Close();
  file->MacCreator(FileTypes1::kCreator);
  file->MacType("pref");
  // The typed key, not the trimmed key: blanks at the ends count until the next start reads the
  // trimmed key from the file.
  sProgID = efKey()->Text();
  if (const auto sound = sndRegSuccess()) sound->Play();
  quorvel::wMain()->Show();
  Close();
}

}  // namespace create_key_file_window

Ref<create_key_file_window::wCreateKeyFile> wCreateKeyFile() {
  return ImplicitWindow<create_key_file_window::wCreateKeyFile>();
}

}  // namespace quorvel
