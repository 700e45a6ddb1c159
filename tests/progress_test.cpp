// The box that stands for a slow disk.

#include <gtest/gtest.h>

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <semaphore>

#include "native/qt/dialogs.h"
#include "platform/files/folder_item.h"
#include "platform/files/text_stream.h"
#include "platform/runtime/runtime.h"
#include "support/side.h"
#include "support/temporary_folder.h"

namespace quorvel {
namespace {

TEST(SlowDisk, ShowsABoxWhoseCancelKeepsTheOldFile) {
  const TemporaryFolder folder;
  WriteFile(folder.Path() / "old", "precious");
  test::Side side;
  qt::Dialogs dialogs;
  side.dialogs.await = [&](const native::LongWork& work) { return dialogs.Await(work); };
  std::binary_semaphore disk(0);
  side.faults.Arrange("Write", 1, [&] { return disk.acquire(), false; });
  QString told;
  QTimer look;
  look.callOnTimeout([&] {
    for (auto* const widget : QApplication::topLevelWidgets()) {
      auto* const box = qobject_cast<QProgressDialog*>(widget);
      if (box == nullptr || !box->isVisible()) continue;
      if (told.isEmpty()) return told = box->labelText(), box->findChild<QPushButton*>()->click();
      told += box->labelText();
      look.stop();
      disk.release();
    }
  });
  look.start(1);
  RuntimeInit(side);
  const auto stream = New<FolderItem>(folder.Path() / "old")->CreateTextFile();
  stream->Write("text");
  EXPECT_TRUE(stream->WriteError());
  stream->Close();
  static_cast<void>(RuntimeExit());
  EXPECT_EQ(told, "Saving...Stopping...");
  EXPECT_EQ(ReadFile(folder.Path() / "old"), "precious");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

}  // namespace
}  // namespace quorvel
