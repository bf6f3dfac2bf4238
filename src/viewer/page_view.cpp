// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/page_view.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPdfDocument>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

namespace tavlo::viewer {
namespace {

constexpr int kSpacing = 8;
constexpr double kPointsPerInch = 72;
constexpr std::array kScales = {0.25, 0.5, 0.75, 1.0, 1.25, 1.5, 2.0, 3.0, 4.0};
/// As a marker pen does: what is dark stays dark.
constexpr QRgb kMark = qRgb(255, 236, 120);
constexpr QRgb kCurrentMark = qRgb(255, 170, 60);

/// Dots of the screen for a point of the page.
double DotsPerPoint() {
  return QGuiApplication::primaryScreen()->logicalDotsPerInch() / kPointsPerInch;
}

}  // namespace

PageView::PageView(QPdfDocument& document, QWidget* parent) : QPdfView(parent) {
  connect(&document, &QPdfDocument::statusChanged, this, &PageView::Measure);
  setDocument(&document);
  setPageMode(PageMode::MultiPage);
  setZoomMode(ZoomMode::FitToWidth);
  setPageSpacing(kSpacing);
  setDocumentMargins({kSpacing, kSpacing, kSpacing, kSpacing});
  setAccessibleName(QStringLiteral("Document"));
  verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll pages"));
  horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll sideways"));
  // The pages keep their width when the last line comes into sight.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &PageView::Tell);
}

void PageView::Measure() {
  sizes_.clear();
  if (document()->status() != QPdfDocument::Status::Ready) return;
  for (int page = 0; page < document()->pageCount(); ++page) sizes_.append(document()->pagePointSize(page));
}

/// As the toolkit lays the pages out; it does not tell.
QSize PageView::SizeOf(int page) const {
  const QSizeF natural = sizes_[page] * DotsPerPoint();
  if (zoomMode() == ZoomMode::Custom) return (natural * zoomFactor()).toSize();
  const QSize size = natural.toSize();
  const QMargins margins = documentMargins();
  const int room = viewport()->width() - margins.left() - margins.right();
  return size * (static_cast<double>(room) / std::max(size.width(), 1));
}

QList<QRect> PageView::Places() const {
  QList<QRect> places;
  const QMargins margins = documentMargins();
  int width = viewport()->width();
  int y = margins.top();
  for (int page = 0; page < PageCount(); ++page) {
    places.append({QPoint(0, y), SizeOf(page)});
    y += places.back().height() + pageSpacing();
    width = std::max(width, places.back().width() + margins.left() + margins.right());
  }
  for (QRect& place : places) place.moveLeft((width - place.width()) / 2);
  return places;
}

QRectF PageView::PlaceOf(int page, const QRectF& points) const {
  const QRect place = PlaceOf(page);
  const double scale = place.width() / std::max(sizes_[page].width(), 1.0);
  return {place.left() + points.left() * scale, place.top() + points.top() * scale, points.width() * scale,
          points.height() * scale};
}

int PageView::CurrentPage() const {
  const int seen = verticalScrollBar()->value() + viewport()->height() / 3;
  const QList<QRect> places = Places();
  const auto after =
      std::ranges::upper_bound(places, seen, {}, [](const QRect& place) { return place.top(); });
  return static_cast<int>(std::max<qsizetype>(after - places.begin() - 1, 0));
}

void PageView::GoTo(int page) {
  if (PageCount() == 0) return;
  verticalScrollBar()->setValue(PlaceOf(std::clamp(page, 0, PageCount() - 1)).top() - kSpacing);
}

void PageView::Show(const Match& match) {
  if (match.places.isEmpty() || match.page >= PageCount()) return;
  const QRectF place = PlaceOf(match.page, match.places.front());
  const QRectF seen(horizontalScrollBar()->value(), verticalScrollBar()->value(), viewport()->width(),
                    viewport()->height());
  if (seen.contains(place)) return;
  verticalScrollBar()->setValue(static_cast<int>(place.center().y() - seen.height() / 3));
  horizontalScrollBar()->setValue(static_cast<int>(place.center().x() - seen.width() / 2));
}

void PageView::Turn(int way) {
  const int from = verticalScrollBar()->value();
  int to = from + way * std::max(verticalScrollBar()->pageStep() - 2 * kSpacing, 1);
  for (const QRect& place : Places()) {
    const int top = place.top() - kSpacing;
    if (way > 0 && top > from && top < to) to = top;
    if (way < 0 && top < from && top > to) to = top;
  }
  verticalScrollBar()->setValue(to);
}

void PageView::SetMarks(const QList<Match>& matches, int current) {
  marks_ = matches;
  current_ = current;
  viewport()->update();
}

double PageView::Scale() const {
  if (PageCount() == 0) return 1;
  const double natural = sizes_.front().width() * DotsPerPoint();
  return SizeOf(0).width() / std::max(natural, 1.0);
}

void PageView::Zoom(int steps) {
  const int page = CurrentPage();
  const double now = Scale();
  // The next one that can be told from the present one.
  const auto* const above = std::ranges::find_if(kScales, [now](double scale) { return scale > now * 1.01; });
  const auto* const from_below =
      std::ranges::find_if(kScales, [now](double scale) { return scale > now * 0.99; });
  const double larger = above == kScales.end() ? kScales.back() : *above;
  const double smaller = from_below == kScales.begin() ? kScales.front() : *(from_below - 1);
  setZoomFactor(steps > 0 ? larger : smaller);
  setZoomMode(ZoomMode::Custom);
  GoTo(page);
  emit ScaleChanged();
}

void PageView::FitWidth() {
  const int page = CurrentPage();
  setZoomMode(ZoomMode::FitToWidth);
  GoTo(page);
  emit ScaleChanged();
}

void PageView::Tell() {
  const int page = CurrentPage();
  if (page == told_page_) return;
  told_page_ = page;
  emit PageChanged();
}

void PageView::paintEvent(QPaintEvent* event) {
  QPdfView::paintEvent(event);
  const QRect seen(horizontalScrollBar()->value(), verticalScrollBar()->value(), viewport()->width(),
                   viewport()->height());
  const QList<QRect> pages = Places();
  QPainter painter(viewport());
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  painter.translate(-seen.topLeft());
  for (qsizetype i = 0; i < marks_.size(); ++i) {
    if (marks_[i].page >= pages.size() || !pages[marks_[i].page].intersects(seen)) continue;
    for (const QRectF& place : marks_[i].places) {
      painter.fillRect(PlaceOf(marks_[i].page, place).adjusted(-1, -1, 1, 1),
                       QColor(i == current_ ? kCurrentMark : kMark));
    }
  }
}

void PageView::resizeEvent(QResizeEvent* event) {
  QPdfView::resizeEvent(event);
  emit ScaleChanged();
  Tell();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  const bool with_control = event->modifiers() == Qt::ControlModifier;
  const bool plain = (event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
  if (plain && (event->key() == Qt::Key_PageDown || event->key() == Qt::Key_Space)) return Turn(1);
  if (plain && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_Backspace)) return Turn(-1);
  if (event->key() == Qt::Key_Home && (plain || with_control)) return GoTo(0);
  if (event->key() == Qt::Key_End && (plain || with_control)) {
    return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
  }
  QPdfView::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) return QPdfView::wheelEvent(event);
  if (event->angleDelta().y() != 0) Zoom(event->angleDelta().y() > 0 ? 1 : -1);
  event->accept();
}

}  // namespace tavlo::viewer
