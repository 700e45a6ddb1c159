#include "native/qt/view/text_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <chrono>
#include <limits>

#include "native/qt/view/accessible_view.h"
#include "native/qt/view/paint.h"

namespace quorvel::qt {

namespace {

constexpr std::chrono::milliseconds kFrame(16);
constexpr qreal kMargin = 4;
// The most of a selection that becomes the text to find, in bytes.
constexpr size_t kLongestWanted = 200;

// The scroll bar counts bytes, or units of so many bytes that a very long text still fits.
int UnitsShift(size_t size) {
  int shift = 0;
  while ((size >> shift) > static_cast<size_t>(std::numeric_limits<int>::max())) ++shift;
  return shift;
}

}  // namespace

TextView::TextView(QWidget* parent, std::function<Keeper()> keep)
    : QAbstractScrollArea(parent),
      keeper(std::move(keep)),
      announcer(*this, [this] { return rows.Text(); }),
      new_lines(new NewLinesMark(viewport())) {
  AccessibleView::Install();
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &TextView::OnBarAction);
  connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, &TextView::UpdateBars);
  connect(new_lines, &QPushButton::clicked, this, &TextView::GoToEnd);
  since_frame.start();
  LookChanged();
}

void TextView::ShowText(std::string_view text, size_t kept) {
  rows.SetText(text, kept);
  announcer.NoteChange(kept);
  selection.anchor = std::min(selection.anchor, text.size());
  selection.caret = std::min(selection.caret, text.size());
  if (kept == 0 && !follows) {
    selection = {};
    page.ScrollToBegin();
  }
  ChangeSoon();
}

// The next frame comes when the last frame is a frame's time ago.
void TextView::ChangeSoon() {
  out_of_date = true;
  if (frame_timer.isActive()) return;
  const qint64 rest = kFrame.count() - since_frame.elapsed();
  frame_timer.start(static_cast<int>(std::max<qint64>(rest, 0)), Qt::PreciseTimer, this);
}

void TextView::ShowNow() {
  ChangeSoon();
  viewport()->repaint();
}

void TextView::SetWrapping(bool wanted) {
  wraps = wanted;
  LookChanged();
}

void TextView::FollowEnd(bool wanted) {
  follows = wanted;
  following.Want(wanted);
  ChangeSoon();
}

void TextView::LookChanged() {
  rows.SetLook({font(), std::max(viewport()->width() - 2 * kMargin, kMargin), wraps});
  page.SetHeight(viewport()->height() - kMargin / 2);
  out_of_date = true;
  viewport()->update();
}

void TextView::BringUpToDate() {
  if (!out_of_date) return;
  out_of_date = false;
  page.Update(following.KeepsEnd());
  UpdateBars();
  new_lines->Count(rows.Text(), follows && !following.KeepsEnd());
  announcer.Tell();
}

const Page& TextView::CurrentPage() {
  BringUpToDate();
  return page;
}

QPointF TextView::PageCorner() const {
  return {kMargin - horizontalScrollBar()->value(), kMargin / 2};
}

void TextView::UpdateBars() {
  QScrollBar& bar = *verticalScrollBar();
  if (bar.isSliderDown()) return;
  const size_t size = rows.Text().size();
  const Range seen = page.Bytes();
  const int shift = UnitsShift(size);
  const auto units = [&](size_t bytes) { return static_cast<int>(bytes >> shift); };
  const bool whole = page.BeginInSight() && page.EndInSight();
  const int most = whole ? 0 : std::max(units(size - (seen.end - seen.begin)), 1);
  bar.setRange(0, most);
  bar.setPageStep(std::max(units(seen.end - seen.begin), 1));
  bar.setValue(page.EndInSight() ? most : std::min(units(seen.begin), most - 1));
  qreal widest = 0;
  for (const auto& placed : page.Shown()) widest = std::max(widest, placed.row.Width());
  const int across = wraps ? 0 : static_cast<int>(widest + 2 * kMargin) - viewport()->width();
  horizontalScrollBar()->setRange(0, std::max(across, 0));
  horizontalScrollBar()->setPageStep(viewport()->width());
}

void TextView::OnBarAction(int action) {
  BringUpToDate();
  const QScrollBar& bar = *verticalScrollBar();
  switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
      page.ScrollBy(page.RowHeight());
      break;
    case QAbstractSlider::SliderSingleStepSub:
      page.ScrollBy(-page.RowHeight());
      break;
    case QAbstractSlider::SliderPageStepAdd:
      page.ScrollBy(page.PageStep());
      break;
    case QAbstractSlider::SliderPageStepSub:
      page.ScrollBy(-page.PageStep());
      break;
    default:
      if (bar.sliderPosition() >= bar.maximum()) {
        page.ScrollToEnd();
      } else {
        page.ScrollTo(static_cast<size_t>(bar.sliderPosition()) << UnitsShift(rows.Text().size()));
      }
  }
  Scrolled();
}

// The user has scrolled, or has tried to.
void TextView::Scrolled() {
  following.UserScrolled(page.EndInSight());
  UpdateBars();
  new_lines->Count(rows.Text(), follows && !following.KeepsEnd());
  viewport()->update();
}

// The bars only ask for the scrolling: the actions of the vertical bar are handled on their own.
void TextView::scrollContentsBy(int, int) { viewport()->update(); }

void TextView::BringIntoSight(size_t position) {
  BringUpToDate();
  page.ScrollIntoSight(position);
  Scrolled();
}

void TextView::GoToEnd() {
  BringUpToDate();
  page.ScrollToEnd();
  Scrolled();
  setFocus(Qt::OtherFocusReason);
}

void TextView::Select(const Selection& selected) {
  selection = selected;
  caret_shown = true;
  viewport()->update();
  announcer.TellCaret();
}

void TextView::paintEvent(QPaintEvent* event) {
  BringUpToDate();
  QPainter painter(viewport());
  PaintRows(painter, page, PageCorner(), event->rect(), selection.Bytes(), palette());
  if (!caret_shown || !hasFocus()) return;
  const QRectF caret = CaretRectangle(page, selection.caret);
  painter.fillRect(caret.translated(PageCorner()), palette().color(QPalette::Text));
}

void TextView::resizeEvent(QResizeEvent*) {
  LookChanged();
  PlaceParts();
}

void TextView::timerEvent(QTimerEvent* event) {
  if (event->timerId() == frame_timer.timerId()) {
    frame_timer.stop();
    since_frame.start();
    BringUpToDate();
    viewport()->update();
  } else if (event->timerId() == drag_timer.timerId()) {
    DragTo(drag_point);
  }
}

// The deferred deletion deletes the view.
bool TextView::event(QEvent* event) {
  if (event->type() == QEvent::DeferredDelete) return QAbstractScrollArea::event(event);
  if (event->type() == QEvent::ShortcutOverride &&
      RunCommand(*static_cast<QKeyEvent*>(event), true)) {
    event->accept();
    return true;
  }
  const bool handled = QAbstractScrollArea::event(event);
  if (shows_focus) ShowFocusFrame(*this, *event);
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      viewport()->update();
      break;
    case QEvent::FontChange:
    case QEvent::Show:
      LookChanged();
      break;
    default:
      break;
  }
  return handled;
}

void TextView::OpenFind() {
  if (find == nullptr) {
    find = new FindLine(
        this,
        [this](const QString& text, bool match_case, FindStep step) {
          return Find(text, match_case, step);
        },
        [this] { CloseFind(); });
    find->setFont(QApplication::font());
  }
  const Range selected = selection.Bytes();
  const std::string_view wanted = rows.Text().substr(selected.begin, selected.end - selected.begin);
  const bool short_enough = wanted.size() <= kLongestWanted && wanted.find('\n') == wanted.npos;
  std::vector<uint32_t> offsets;
  find->Open(short_enough ? ShownText(wanted, offsets) : QString());
  PlaceParts();
}

void TextView::CloseFind() {
  find->hide();
  PlaceParts();
  setFocus(Qt::OtherFocusReason);
}

// The first search begins at the rows in sight, later searches at the last hit.
FindResult TextView::Find(const QString& text, bool match_case, FindStep step) {
  BringUpToDate();
  const bool selected_in_sight = caret_shown && page.IsInSight(selection.caret);
  const size_t first = page.Bytes().begin;
  const Range from = selected_in_sight ? selection.Bytes() : Range{first, first};
  const FindResult result = FindIn(rows.Text(), from, text, match_case, step);
  if (result.found) {
    Select({result.hit.begin, result.hit.end});
    page.ScrollToMiddle(result.hit.begin);
    Scrolled();
  }
  return result;
}

// The find line stands below the text.
void TextView::PlaceParts() {
  const bool finds = find != nullptr && find->isVisibleTo(this);
  const int height = finds ? find->sizeHint().height() : 0;
  if (viewportMargins().bottom() != height) setViewportMargins(0, 0, 0, height);
  if (finds) {
    const QRect text = viewport()->geometry();
    find->setGeometry(text.left(), text.bottom() + 1, text.width(), height);
  }
  new_lines->MoveToCorner();
}

}  // namespace quorvel::qt
