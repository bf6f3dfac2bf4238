// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/profile_graph.h"

#include <QLabel>
#include <QPainter>
#include <QScreen>

#include "qt/gui/shown_text.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr QSize kSize(420, 280);
/// Where the text is large and the screen is not, the rows beside it need the rest.
constexpr double kShareOfScreen = 0.4;
/// Between a label and the grid.
constexpr int kGraphGap = 3;

QLabel* MakeLabel(const QString& name, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->hide();
  return label;
}

void MoveTo(QLabel& label, double left, double top) {
  label.adjustSize();
  label.move(qRound(left), qRound(top));
  label.show();
}

}  // namespace

ProfileGraph::ProfileGraph(QWidget* parent)
    : QWidget(parent),
      x_caption_(MakeLabel(QStringLiteral("graphXlabel"), this)),
      y_caption_(MakeLabel(QStringLiteral("graphYlabel"), this)),
      high_(MakeLabel(QStringLiteral("lblHigh"), this)),
      low_(MakeLabel(QStringLiteral("lblLow"), this)) {
  setAccessibleName(QStringLiteral("Velocity profile"));
  for (std::size_t i = 0; i < kTicks; ++i) {
    x_labels_[i] = MakeLabel(QStringLiteral("Xlabel(%1)").arg(i), this);
    y_labels_[i] = MakeLabel(QStringLiteral("Ylabel(%1)").arg(i), this);
  }
  high_->setText(QStringLiteral("High"));
  low_->setText(QStringLiteral("Low"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize ProfileGraph::sizeHint() const {
  const QSize wanted(ByFont(fontMetrics(), kSize.width()), ByFont(fontMetrics(), kSize.height()));
  return wanted.boundedTo(screen()->availableSize() * kShareOfScreen);
}

void ProfileGraph::Show(const Series& curve, const std::optional<Series>& trace, const QString& x_caption,
                        const QString& y_caption) {
  curve_ = curve;
  trace_ = trace;
  x_caption_->setText(x_caption);
  // Letter under letter, as the blanks between them ask for.
  y_caption_->setText(QString(y_caption).replace(QLatin1Char(' '), QLatin1Char('\n')));
  y_caption_->setAlignment(Qt::AlignHCenter);
  LayOut();
}

void ProfileGraph::LayOut() {
  graph_ = GraphDraw(
      curve_, trace_,
      {static_cast<double>(width()), static_cast<double>(height()), static_cast<double>(kGraphGap)});
  PlaceTicks();
  update();
}

void ProfileGraph::PlaceTicks() {
  const bool drawn = !graph_.grid.empty();
  for (std::size_t i = 0; i < kTicks; ++i) {
    x_labels_[i]->setVisible(i < graph_.x_labels.size());
    y_labels_[i]->setVisible(i < graph_.y_labels.size());
    if (i < graph_.x_labels.size()) {
      const TickLabel& tick = graph_.x_labels[i];
      x_labels_[i]->setText(FromText(tick.caption));
      MoveTo(*x_labels_[i], tick.at.x - x_labels_[i]->sizeHint().width() / 2.0, tick.at.y);
    }
    if (i < graph_.y_labels.size()) {
      const TickLabel& tick = graph_.y_labels[i];
      y_labels_[i]->setText(FromText(tick.caption));
      const QSize size = y_labels_[i]->sizeHint();
      MoveTo(*y_labels_[i], tick.at.x - size.width(), tick.at.y - size.height() / 2.0);
    }
  }
  for (QLabel* label : {x_caption_, y_caption_}) label->setVisible(drawn);
  high_->setVisible(graph_.high_and_low.has_value());
  low_->setVisible(graph_.high_and_low.has_value());
  if (!drawn) return;
  MoveTo(*x_caption_, (width() - x_caption_->sizeHint().width()) / 2.0,
         height() - x_caption_->sizeHint().height());
  MoveTo(*y_caption_, 0, (height() - y_caption_->sizeHint().height()) / 2.0);
  if (!graph_.high_and_low) return;
  const auto [high, low] = *graph_.high_and_low;
  MoveTo(*high_, high.x - high_->sizeHint().width(), high.y - high_->sizeHint().height() / 2.0);
  MoveTo(*low_, low.x - low_->sizeHint().width(), low.y - low_->sizeHint().height() / 2.0);
}

void ProfileGraph::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOut();
}

void ProfileGraph::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const auto draw = [&painter](const std::vector<Line>& lines, const QColor& ink) {
    for (const Line& line : lines) {
      painter.setPen(QPen(ink, line.pen));
      painter.drawLine(QPointF(line.from.x, line.from.y), QPointF(line.to.x, line.to.y));
    }
  };
  // The grid steps back behind the curve.
  QColor grid = palette().color(QPalette::WindowText);
  grid.setAlphaF(0.35F);
  draw(graph_.grid, grid);
  draw(graph_.output_grid, grid);
  draw(graph_.curve, palette().color(QPalette::WindowText));
  draw(graph_.output, palette().color(QPalette::WindowText));
}

}  // namespace tavlo
