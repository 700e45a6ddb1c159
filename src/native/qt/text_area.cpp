#include <QScrollBar>
#include <QSignalBlocker>
#include <utility>

#include "native/qt/control_widget.h"
#include "native/qt/input_limit.h"
#include "native/qt/owned.h"
#include "native/qt/strings.h"
#include "native/qt/text_box.h"
#include "native/qt/text_view.h"

namespace quorvel::qt {

namespace {

// Every kind of line end starts a new line, and a NUL can be seen.
QString Shown(QString text) {
  text.replace("\r\n", "\n");
  text.replace('\r', '\n');
  return WithVisibleNulls(std::move(text));
}

Qt::ScrollBarPolicy ScrollBarPolicy(bool wanted) {
  return wanted ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

/// Where the user is in a text.
struct View {
  int cursor = 0;
  int anchor = 0;
  int across = 0;
  int down = 0;
  bool at_end = false;
};

/// A text field of many lines. It stays quick however long the text gets.
class TextArea final : public TextBox {
 public:
  TextArea(Content& content, Edited the_edited)
      : edited(std::move(the_edited)), widget(new TextView(&content)) {
    content.Add(*widget, false);
    QObject::connect(&*widget, &QPlainTextEdit::textChanged, &receiver, [this] { OnEdited(); });
  }

  void Update(const native::ControlState& state) override {
    if (!widget) return;
    const QSignalBlocker no_edit(&*widget);
    if (widget->isReadOnly() != state.ReadOnly) SetReadOnly(state.ReadOnly);
    ShowFrame(state);
    widget->setTabChangesFocus(!state.AcceptTabs);
    widget->setPalette(TextBoxColors(state));
    ShowControl(*widget, state);
    limit.Set(state.LimitText);
    Measure();
  }

  [[nodiscard]] QString Text() const override { return widget ? widget->Text() : QString(); }

  void SetText(const QString& text) override {
    if (!widget) return;
    const QSignalBlocker no_edit(&*widget);
    const QString shown = Shown(text);
    View view = Look();
    if (!SameAboveView(shown)) view.down = 0, view.at_end = false;
    widget->ShowText(shown);
    Return(view);
    ends_in_return = text.endsWith('\r');
    Measure();
  }

  void AppendText(const QString& text) override {
    if (!widget) return;
    const QSignalBlocker no_edit(&*widget);
    const bool second_half = ends_in_return && text.startsWith('\n');
    const View view = Look();
    widget->ShowAdded(Shown(second_half ? text.mid(1) : text));
    Return(view);
    ends_in_return = text.endsWith('\r');
    Measure();
  }

  void Refresh() override {
    if (widget) widget->viewport()->repaint();
  }

 private:
  void SetReadOnly(bool read_only) {
    const QString text = Text();
    widget->setReadOnly(read_only);
    if (read_only) {
      widget->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    widget->setUndoRedoEnabled(!read_only);
    widget->ShowText(text);
  }

  void ShowFrame(const native::ControlState& state) {
    widget->setFrameShape(state.Border ? QFrame::StyledPanel : QFrame::NoFrame);
    widget->setVerticalScrollBarPolicy(ScrollBarPolicy(state.ScrollbarVertical));
    widget->setHorizontalScrollBarPolicy(ScrollBarPolicy(state.ScrollbarHorizontal));
    widget->setLineWrapMode(state.ScrollbarHorizontal ? QPlainTextEdit::NoWrap
                                                      : QPlainTextEdit::WidgetWidth);
  }

  [[nodiscard]] View Look() const {
    const QTextCursor cursor = widget->textCursor();
    const QScrollBar& down = *widget->verticalScrollBar();
    return {cursor.position(), cursor.anchor(), widget->horizontalScrollBar()->value(),
            down.value(), down.maximum() > 0 && down.value() == down.maximum()};
  }

  // A cursor at the end moves with what is added there, and a cursor that is set moves the view.
  void Return(const View& view) {
    const QTextCursor now = widget->textCursor();
    if (now.position() != view.cursor || now.anchor() != view.anchor) {
      const int last = widget->document()->characterCount() - 1;
      QTextCursor cursor(widget->document());
      cursor.setPosition(qMin(view.anchor, last));
      cursor.setPosition(qMin(view.cursor, last), QTextCursor::KeepAnchor);
      widget->setTextCursor(cursor);
    }
    QScrollBar& down = *widget->verticalScrollBar();
    down.setValue(view.at_end ? down.maximum() : view.down);
    widget->horizontalScrollBar()->setValue(view.across);
  }

  // What begins like the text that is there is the same text gone on; any other is read from its
  // top.
  [[nodiscard]] bool SameAboveView(const QString& text) const {
    const int first = widget->cursorForPosition(QPoint(0, 0)).position();
    return text.startsWith(widget->TextBefore(first));
  }

  void Measure() {
    if (limit.Any()) limit.Put(Text());
  }

  void OnEdited() {
    if (limit.Any()) Trim(limit.Surplus(Text(), widget->textCursor().position()));
    ends_in_return = false;
    const Edited tell = edited;
    tell(Text());
  }

  void Trim(int surplus) {
    if (surplus == 0) return;
    const QSignalBlocker no_edit(&*widget);
    QTextCursor cursor = widget->textCursor();
    cursor.setPosition(cursor.position() - surplus, QTextCursor::KeepAnchor);
    cursor.joinPreviousEditBlock();
    cursor.removeSelectedText();
    cursor.endEditBlock();
  }

  const Edited edited;
  Owned<TextView> widget;
  InputLimit limit;
  bool ends_in_return = false;
  QObject receiver;  // no edit arrives without it
};

}  // namespace

std::unique_ptr<TextBox> MakeTextArea(Content& content, Edited edited) {
  return std::make_unique<TextArea>(content, std::move(edited));
}

}  // namespace quorvel::qt
