#include "native/qt/canvas.h"

#include <QFile>
#include <QPainter>
#include <QPixmap>

#include "native/qt/accessible.h"
#include "native/qt/show_control.h"

namespace quorvel::qt {

/// Paints a picture file, one unit for each of its pixels. Where a unit has more pixels on the
/// screen, a file "x@2x.png" beside "x.png", of twice the size, is painted into the same rectangle.
class Picture final : public QWidget {
 public:
  explicit Picture(QWidget* parent) : QWidget(parent) {}

  void Show(const std::filesystem::path& new_file) {
    if (new_file == file) return;
    file = new_file;
    auto fine_file = file;
    fine_file.replace_filename(file.stem().string() + "@2x" + file.extension().string());
    plain = Load(file);
    fine = Load(fine_file);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool enlarged = devicePixelRatioF() > 1 && !fine.isNull();
    painter.drawPixmap(QRect(QPoint(), plain.size()), enlarged ? fine : plain);
  }

 private:
  static QPixmap Load(const std::filesystem::path& file) {
    return QPixmap(QFile::decodeName(file.c_str()));
  }

  std::filesystem::path file;
  QPixmap plain;
  QPixmap fine;  // null without a file of double size
};

Canvas::Canvas(Content& content, const native::CanvasState& state) : widget(new Picture(&content)) {
  InstallRole<Picture, QAccessible::Graphic>();
  content.Add(*widget, Content::Mouse::Reported);
  Update(state);
}

Canvas::~Canvas() = default;

void Canvas::Update(const native::CanvasState& state) {
  if (!widget) return;
  widget->Show(state.Backdrop);
  widget->setFocusPolicy(state.AcceptFocus ? Qt::StrongFocus : Qt::NoFocus);
  ShowControl(*widget, state, QString());
}

void Canvas::Refresh() {
  if (widget) widget->repaint();
}

}  // namespace quorvel::qt
