#include "native/qt/view/find_line.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

namespace quorvel::qt {

namespace {

constexpr int kMargin = 3;

QString Words(const FindResult& result) {
  if (!result.found) return "Not found.";
  return result.went_round ? "Went on from the other end." : "";
}

void AddButton(QHBoxLayout& layout, QStyle::StandardPixmap icon, const QString& name,
               std::function<void()> pressed) {
  auto* const button = new QToolButton;
  button->setIcon(button->style()->standardIcon(icon));
  button->setToolTip(name);
  button->setAccessibleName(name);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  QObject::connect(button, &QToolButton::clicked, button, std::move(pressed));
  layout.addWidget(button);
}

}  // namespace

FindLine::FindLine(QWidget* parent, Search the_search, std::function<void()> the_close)
    : QWidget(parent),
      search(std::move(the_search)),
      close_line(std::move(the_close)),
      entry(new QLineEdit),
      match_case(new QCheckBox("Match &case")),
      told(new QLabel) {
  setObjectName("find");
  setAutoFillBackground(true);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  entry->setPlaceholderText("Find");
  entry->setAccessibleName("Find");
  entry->setClearButtonEnabled(true);
  for (auto* const clear : entry->findChildren<QToolButton*>()) clear->setAccessibleName("Clear");
  layout->addWidget(entry, 2);
  AddButton(*layout, QStyle::SP_ArrowUp, "Previous", [this] { Go(FindStep::Previous); });
  AddButton(*layout, QStyle::SP_ArrowDown, "Next", [this] { Go(FindStep::Next); });
  layout->addWidget(match_case);
  told->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  layout->addWidget(told, 1);
  AddButton(*layout, QStyle::SP_TitleBarCloseButton, "Close", [this] { close_line(); });
  connect(entry, &QLineEdit::textChanged, this, [this] { Go(FindStep::Typed); });
  connect(match_case, &QCheckBox::toggled, this, [this] { Go(FindStep::Typed); });
}

void FindLine::Open(const QString& text) {
  if (!text.isEmpty()) entry->setText(text);
  const QFontMetrics metrics = entry->fontMetrics();
  entry->setMinimumWidth(metrics.horizontalAdvance(entry->placeholderText()) + metrics.height());
  show();
  entry->setFocus(Qt::ShortcutFocusReason);
  entry->selectAll();
}

void FindLine::Go(FindStep step) {
  if (entry->text().isEmpty()) {
    told->clear();
  } else {
    Tell(search(entry->text(), match_case->isChecked(), step));
  }
}

void FindLine::Tell(const FindResult& result) {
  told->setText(Words(result));
  entry->setAccessibleDescription(Words(result));
  QPalette colors;
  if (!result.found) colors.setColor(QPalette::Base, QColor(255, 220, 220));
  if (!result.found) colors.setColor(QPalette::Text, Qt::black);
  entry->setPalette(colors);
}

void FindLine::keyPressEvent(QKeyEvent* event) {
  const bool backwards = (event->modifiers() & Qt::ShiftModifier) != 0;
  switch (event->key()) {
    case Qt::Key_Escape:
      close_line();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F3:
      Go(backwards ? FindStep::Previous : FindStep::Next);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace quorvel::qt
