#include "native/qt/canvas.h"

#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

#include "native/qt/show_control.h"

namespace quorvel::qt {

/// Paints a picture file at its own size. A file "x@2x.png" beside "x.png" serves screens that have
/// more than one pixel to the unit.
class Picture final : public QWidget {
 public:
  explicit Picture(QWidget* parent) : QWidget(parent) {}

  void Show(const std::filesystem::path& new_file) {
    if (new_file == file) return;
    file = new_file;
    const QString name = QFile::decodeName(file.c_str());
    size = file.empty() ? QSize() : QPixmap(name).size();
    icon = size.isEmpty() ? QIcon() : QIcon(name);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    if (!icon.isNull()) QPainter(this).drawPixmap(0, 0, icon.pixmap(size, devicePixelRatioF()));
  }

 private:
  std::filesystem::path file;
  QSize size;
  QIcon icon;
};

Canvas::Canvas(Content& content, const native::CanvasState& state) : widget(new Picture(&content)) {
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
