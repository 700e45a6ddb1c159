// Pictures on a screen with more pixels than units.

#include <gtest/gtest.h>

#include <QPixmap>

#include "native/qt/canvas.h"
#include "support/recorder.h"
#include "support/temporary_folder.h"

namespace quorvel {
namespace {

TEST(Canvas, PaintsTheDoubleSizePictureIntoTheRectangleOfTheSmallOne) {
  const TemporaryFolder folder;
  const auto save = [&](const char* name, int size, Qt::GlobalColor color) {
    QPixmap picture(size, size);
    picture.fill(color);
    EXPECT_TRUE(picture.save(QString::fromStdString(folder.Path() / name)));
  };
  save("p.png", 20, Qt::red);
  save("p@2x.png", 40, Qt::blue);
  Recorder user;
  qt::Content content(nullptr, user);
  native::CanvasState state;
  state.Name = "canvas";
  state.Backdrop = folder.Path() / "p.png";
  const qt::Canvas canvas(content, state);
  const QImage shown = content.findChild<QWidget*>("canvas")->grab().toImage();
  EXPECT_EQ(shown.devicePixelRatio(), 1.5);
  EXPECT_EQ(shown.pixelColor(29, 19), QColor(Qt::blue));
  EXPECT_NE(shown.pixelColor(30, 19), QColor(Qt::blue));
}

}  // namespace
}  // namespace quorvel
