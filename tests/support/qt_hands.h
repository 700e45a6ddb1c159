#pragma once

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <sstream>
#include <utility>

#include "native/qt/side.h"
#include "native/qt/view/text_view.h"

namespace quorvel {

// The platform without a screen has no browser, and warns of each address that the platform is
// asked to open.
inline std::vector<std::string> gUrls;

inline void TakeUrl(QtMsgType, const QMessageLogContext&, const QString& message) {
  if (message.contains("openUrl")) gUrls.push_back(message.section('\'', 1, 1).toStdString());
}

/// What a user sees and does, on the Qt side without a screen.
class QtHands {
 public:
  enum class Mouse { Move, Press, Release };

  QtHands() {
    gUrls.clear();
    qInstallMessageHandler(TakeUrl);
    mWatch.callOnTimeout([this] { ReadMessage(); });
    mWatch.start(1);
  }

  native::Side& Side() { return *mSide; }
  bool WaitUntil(const std::function<bool()>& reached) { return QTest::qWaitFor(reached, 5000); }
  void Post(std::function<void()> step) { QTimer::singleShot(0, qApp, std::move(step)); }

  bool IsOpen(const std::string& title) { return WindowOf(title) != nullptr; }
  std::string ShownText(const std::string& field) {
    QCoreApplication::processEvents();
    if (auto* const line = Control<QLineEdit>(field)) return Std(line->text());
    if (auto* const area = Control<QPlainTextEdit>(field)) return Std(area->toPlainText());
    return std::string(Control<qt::TextView>(field)->Text());
  }
  /// The content's size and the user's limits, then a line for each control, as in `windows.txt`:
  /// the name, the rectangle, the kind and the look, with the first line of a field's text or the
  /// number of a picture's resource. All with the role and the name that a screen reader gets.
  std::string WindowLook(const std::string& title) {
    auto* const window = WindowOf(title);
    const QSize bar(0, window->height() - Content(title)->height());
    std::ostringstream look;
    look << Size(window->size() - bar) << " from " << Size(window->minimumSize() - bar) << " to "
         << Size(window->maximumSize() - bar) << Spoken(window) << "\n";
    for (auto* const widget : DirectChildren(Content(title))) {
      const bool finger = widget->cursor().shape() == Qt::PointingHandCursor;
      look << Std(widget->objectName()) << " " << widget->x() << "," << widget->y() << " "
           << Size(widget->size()) << " " << KindLook(*widget) << (finger ? " finger" : "")
           << Spoken(widget) << "\n";
    }
    return look.str();
  }
  /// The items that can be chosen once the user has opened the menus over the front window.
  std::vector<std::string> EnabledItems() {
    std::vector<std::string> enabled;
    for (auto* const menu : Bar()->findChildren<QMenu*>()) {
      emit menu->aboutToShow();
      for (auto* const action : menu->actions()) {
        if (!action->menu() && action->isEnabled()) enabled.push_back(Std(action->objectName()));
      }
    }
    return enabled;
  }
  /// The addresses that the browser was asked to open.
  std::vector<std::string> OpenedUrls() { return gUrls; }
  std::vector<std::string> Messages() { return mMessages; }

  void PressCloseButton(const std::string& title) { WindowOf(title)->close(); }
  void Resize(const std::string& title, int width, int height) {
    auto* const window = WindowOf(title);
    window->resize(window->size() + QSize(width, height) - Content(title)->size());
  }
  void BringToFront(const std::string& title) {
    auto* const window = WindowOf(title);
    window->activateWindow();
    static_cast<void>(WaitUntil([&] { return window->isActiveWindow(); }));
  }
  void Choose(const std::string& item) {
    Bar()->findChild<QAction*>(QString::fromStdString(item))->trigger();
  }
  void Type(const std::string& field, const std::string& text) {
    QTest::keyClicks(Control<QWidget>(field), QString::fromStdString(text));
  }
  void PressButton(const std::string& button) { Control<QPushButton>(button)->click(); }
  // The mouse acts on the widget below the point; once pressed, on that widget until the release.
  void UseMouse(Mouse act, const std::string& title, int x, int y) {
    QWidget* const content = Content(title);
    QWidget* const below = content->childAt(x, y);
    if (mGrabbed == nullptr) mGrabbed = below != nullptr ? below : content;
    const QPoint point = mGrabbed->mapFrom(content, QPoint(x, y));
    if (act == Mouse::Press) return QTest::mousePress(mGrabbed, Qt::LeftButton, {}, point);
    if (act == Mouse::Release) QTest::mouseRelease(mGrabbed, Qt::LeftButton, {}, point);
    if (act == Mouse::Move) QTest::mouseMove(mGrabbed, point);
    mGrabbed = nullptr;
  }
  void AskToQuit() {
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
  }
  void WhileNextMessageIsUp(std::function<void()> act) { mAct = std::move(act); }

  static QWidget* WindowOf(const std::string& title) {
    for (auto* const window : QApplication::topLevelWidgets()) {
      const bool shown = window->isVisible() && qobject_cast<QMenu*>(window) == nullptr;
      if (shown && Std(window->windowTitle()) == title) return window;
    }
    return nullptr;
  }

 private:
  // Notes the text of a message box, and dismisses the box. An act during which the program has to
  // end the box itself is followed by a note when the act left the box open.
  void ReadMessage() {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    mMessages.push_back(box->text().toStdString());
    if (const auto ends_box = std::exchange(mAct, nullptr)) {
      ends_box();
      if (box->isVisible()) mMessages.emplace_back("left open");
    }
    box->accept();
  }
  static std::string Std(const QString& text) { return text.toStdString(); }
  static std::string Size(QSize size) {
    return Std(QString("%1x%2").arg(size.width()).arg(size.height()));
  }
  static std::string Spoken(QWidget* widget) {
    const auto& spoken = *QAccessible::queryAccessibleInterface(widget);
    const char* const role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(spoken.role());
    return Std(QString(" - %1 '%2'").arg(role, spoken.text(QAccessible::Name)));
  }
  template <class Field>
  static std::string FieldLook(const Field& field, const QString& text, bool read_only) {
    const QPalette& colours = field.palette();
    return Std(QString("field '%1' %2px %3 on %4%5")
                   .arg(text.section('\n', 0, 0))
                   .arg(std::max(field.font().pixelSize(), 0))
                   .arg(colours.color(QPalette::Text).name(), colours.color(QPalette::Base).name(),
                        read_only ? " read-only" : ""));
  }
  static std::string KindLook(QWidget& widget) {
    if (const auto* const label = qobject_cast<QLabel*>(&widget)) {
      return Std(QString("label '%1' %2px %3%4%5")
                     .arg(label->text(), QString::number(label->font().pixelSize()))
                     .arg(label->palette().color(QPalette::WindowText).name(),
                          label->font().underline() ? " underlined" : "",
                          label->focusPolicy() == Qt::NoFocus ? "" : " link"));
    }
    if (const auto* const line = qobject_cast<QLineEdit*>(&widget)) {
      const QString hint = line->placeholderText();
      const bool secret = line->echoMode() != QLineEdit::Normal;
      return FieldLook(*line, line->text(), line->isReadOnly()) + (secret ? " secret" : "") +
             (hint.isEmpty() ? "" : Std(QString(" hint '%1'").arg(hint)));
    }
    if (const auto* const area = qobject_cast<QPlainTextEdit*>(&widget)) {
      return FieldLook(*area, area->toPlainText(), area->isReadOnly()) + " many lines";
    }
    if (const auto* const view = dynamic_cast<qt::TextView*>(&widget)) {
      return FieldLook(*view, QString::fromUtf8(view->Text()), true) + " many lines";
    }
    if (const auto* const button = qobject_cast<QPushButton*>(&widget)) {
      return "button '" + Std(button->text()) + "'";
    }
    for (const QString number : {"169", "170"}) {
      QImage expected(widget.size(), QImage::Format_RGB32);
      expected.fill(Qt::white);
      const QString folder = QCoreApplication::applicationDirPath() + "/resources/PICT/";
      QPainter(&expected).drawPixmap(0, 0, QPixmap(folder + number + ".png"));
      const QImage shown = widget.grab().toImage();
      if (shown.convertToFormat(QImage::Format_RGB32) == expected) return Std("picture " + number);
    }
    return "no picture";
  }
  static QList<QWidget*> DirectChildren(const QWidget* parent) {
    return parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  }
  static QWidget* Content(const std::string& title) {
    for (auto* const child : DirectChildren(WindowOf(title))) {
      if (qobject_cast<QMenuBar*>(child) == nullptr) return child;
    }
    return nullptr;
  }
  static QMenuBar* Bar() { return QApplication::activeWindow()->findChild<QMenuBar*>(); }
  template <class Widget>
  static Widget* Control(const std::string& name) {
    for (auto* const window : QApplication::topLevelWidgets()) {
      QWidget* const found = window->findChild<QWidget*>(QString::fromStdString(name));
      if (found != nullptr && window->isVisible()) return dynamic_cast<Widget*>(found);
    }
    return nullptr;
  }

  std::unique_ptr<native::Side> mSide = qt::MakeSide("quorvel");
  QTimer mWatch;
  std::vector<std::string> mMessages;
  std::function<void()> mAct;
  QWidget* mGrabbed = nullptr;
};

/// The hands of the contract tests, which build with this header too.
using Hands = QtHands;

}  // namespace quorvel
