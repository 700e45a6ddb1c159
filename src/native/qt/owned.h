#pragma once

#include <QPointer>
#include <QWidget>

namespace quorvel::qt {

/// Holds a widget for a native object. When that goes, the widget is hidden at once and deleted
/// when none of its handlers can be running any more. Empty once the widget's window has gone.
template <typename Widget>
class Owned {
 public:
  explicit Owned(Widget* the_widget) : widget(the_widget) {}
  ~Owned() {
    if (!widget) return;
    widget->hide();
    widget->deleteLater();
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;

  explicit operator bool() const { return !widget.isNull(); }
  Widget* operator->() const { return widget; }
  Widget& operator*() const { return *widget; }

 private:
  QPointer<Widget> widget;
};

}  // namespace quorvel::qt
