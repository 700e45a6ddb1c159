#pragma once

#include <QPointer>
#include <QWidget>

namespace quorvel::qt {

/// Holds the widget of a native object. The destructor hides the widget at once; the event loop
/// deletes the widget when no handler of the widget can be running. Empty once the widget's window
/// has been deleted.
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
