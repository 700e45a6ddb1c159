#include "ui/edit_field_extras.h"

#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"
#include "platform/windows/printing.h"
#include "platform/windows/system.h"
#include "ui/file_types.h"

namespace quorvel {

namespace {

constexpr int32_t kMargin = 65;
constexpr int32_t kFooterRise = 5;
constexpr int32_t kFooterSize = 8;
constexpr const char* kExtension = ".txt";

void DrawFooter(Graphics& page, int32_t number) {
  page.TextFont("Geneva");
  page.TextSize(kFooterSize);
  page.DrawString(Text("Page: ") + Str(number), kMargin, page.Height() - kFooterRise, 0, false);
}

}  // namespace

void editFieldExtras::efPrint(PageNumbers page_numbers) {
  if (Text().IsEmpty()) {
    MsgBox("There is nothing to print.");
    return;
  }
  const auto setup = New<PrinterSetup>();
  if (!setup->PageSetupDialog(Nil)) return;
  const auto pages = OpenPrinterDialog(setup, Nil);
  if (!pages) return;
  const int32_t first = pages->FirstPage();
  const int32_t last = pages->LastPage();
  const auto printer = styledTextPrinter(pages, pages->Width() - 2 * kMargin);
  for (int32_t number = first; number <= last; ++number) {
    if (printer->EOF_()) break;
    if (number != first) pages->NextPage();
    printer->DrawBlock(kMargin, kMargin, pages->Height() - 2 * kMargin);
    if (page_numbers == PageNumbers::On) DrawFooter(*pages, number);
    RuntimeBackgroundTask();
  }
}

void editFieldExtras::efSave(const quorvel::Text& suggested_name) {
  if (Text().IsEmpty()) {
    MsgBox("There is nothing to save.");
    return;
  }
  const size_t bytes = ConvertEncoding(Text(), Encodings::UTF8).Bytes().size();
  const auto file =
      GetSaveFolderItem(FileTypes1::pText->ToText(), suggested_name, static_cast<int64_t>(bytes));
  if (!file) return;
  const auto stream = file->CreateTextFile();
  const quorvel::Text name = file->Name();
  if (Right(name, 4) != kExtension) file->Name(name + kExtension);
  if (!stream || !file->Exists()) return;
  stream->Write(ConvertEncoding(Text(), Encodings::UTF8));
  stream->Close();
  file->MacCreator(FileTypes1::kCreator);
  file->MacType("text");
}

}  // namespace quorvel
