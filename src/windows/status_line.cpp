// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/status_line.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPolygonF>
#include <QTimer>
#include <algorithm>
#include <string>
#include <utility>

#include "link/held_program.h"
#include "qt/gui/shown_text.h"
#include "session/happened.h"
#include "widgets/rule.h"

namespace tavlo {
namespace {

/// For the three fields: what matters most stands at the beginning of each, and the port changes least.
constexpr int kLeastOfHub = 16;
constexpr int kLeastOfPort = 10;
constexpr int kLeastOfEvent = 18;
constexpr int kEdge = 4;
constexpr int kFieldGap = 4;
/// The ground and the ink of a warning are its own, whatever the palette is.
constexpr QRgb kWarningGround = qRgb(255, 221, 87);
constexpr QRgb kWarningInk = qRgb(0, 0, 0);

/// A triangle with an exclamation mark of whole dots.
void PaintMark(QPainter& painter, const QRectF& place) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(kWarningInk));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawPolygon(
      QPolygonF{{QPointF(place.center().x(), place.top()), place.bottomRight(), place.bottomLeft()}});
  painter.setRenderHint(QPainter::Antialiasing, false);
  const double thick = std::max(2.0, place.width() / 8);
  const double left = place.center().x() - thick / 2;
  const QColor ground(kWarningGround);
  painter.fillRect(QRectF(left, place.top() + place.height() * 0.36, thick, place.height() * 0.3), ground);
  painter.fillRect(QRectF(left, place.top() + place.height() * 0.76, thick, thick), ground);
}

}  // namespace

StatusLabel::StatusLabel(const char* name, const QString& about, int least_characters, QWidget* parent)
    : QLabel(parent), about_(about), least_characters_(least_characters) {
  setObjectName(QLatin1String(name));
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void StatusLabel::Show(const StatusField& field) {
  const QString text = FromMessage(field.text);
  const QString more = FromMessage(field.more);
  setToolTip((more.isEmpty() ? text : text + QLatin1Char('\n') + more)
                 .toHtmlEscaped()
                 .replace(QLatin1Char('\n'), QLatin1String("<br>")));
  setAccessibleDescription(more.isEmpty() ? about_ : about_ + QStringLiteral(": ") + more);
  if (text == this->text() && field.warning == warning_) return;
  warning_ = field.warning;
  QFont font = parentWidget()->font();
  font.setBold(warning_);
  setFont(font);
  // The text of a label is its name, whose change the label reports to a screen reader.
  setText(text);
  emit Spoken(text);
  updateGeometry();
}

int StatusLabel::Height() const {
  return fontMetrics().height() + 2 * kEdge;
}

int StatusLabel::Beside() const {
  return 2 * kEdge + (warning_ ? fontMetrics().height() + kFieldGap : 0);
}

void StatusLabel::GiveWay(bool gives_way) {
  if (std::exchange(gives_way_, gives_way) != gives_way) updateGeometry();
}

// One more than it measures: what fits exactly would be elided for a fraction of a dot.
QSize StatusLabel::sizeHint() const {
  if (gives_way_) return minimumSizeHint();
  return {fontMetrics().horizontalAdvance(text()) + 1 + Beside(), Height()};
}

QSize StatusLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * least_characters_, Height()};
}

void StatusLabel::PaintWarning(QPainter& painter) const {
  painter.fillRect(rect(), QColor(kWarningGround));
  painter.setPen(QColor(kWarningInk));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  const int side = fontMetrics().height();
  PaintMark(painter, QRectF(kEdge, (height() - side) / 2.0, side, side).adjusted(1, 1, -1, -2));
}

void StatusLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (warning_) PaintWarning(painter);
  painter.setPen(warning_ ? QColor(kWarningInk) : palette().color(foregroundRole()));
  const QRect place = rect().adjusted(Beside() - kEdge, 0, -kEdge, 0);
  painter.drawText(place, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, place.width()));
}

StatusLine::StatusLine(CommDevices& comms, QWidget* parent)
    : QWidget(parent),
      comms_(comms),
      hub_(new StatusLabel("HubField", QStringLiteral("Program in the hub"), kLeastOfHub, this)),
      port_(new StatusLabel("PortField", QStringLiteral("Port"), kLeastOfPort, this)),
      event_(new StatusLabel("EventField", QStringLiteral("Last event"), kLeastOfEvent, this)) {
  setObjectName(QStringLiteral("StatusLine"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kFieldGap);
  row->addWidget(hub_);
  row->addWidget(new Rule(QFrame::VLine, this));
  row->addWidget(port_);
  row->addWidget(new Rule(QFrame::VLine, this));
  row->addWidget(event_, 1);
}

void StatusLine::ShowSoon() {
  if (!std::exchange(show_due_, true)) QTimer::singleShot(0, this, &StatusLine::Show);
}

void StatusLine::CompareSoon() {
  compare_due_ = true;
  ShowSoon();
}

void StatusLine::Show() {
  show_due_ = false;
  if (desk_ == nullptr) return;
  const Source& source = desk_->source;
  if (std::exchange(compare_due_, false)) holds_ = HubHolds(source.program, source.link.held);
  std::string device = desk_->Comm1.Device();
  if (device.empty() && source.link.ComNum != 0) device = comms_.Look(source.link.ComNum).device;
  const StatusField held = HubField(source, holds_);
  hub_->Show(held);
  // A warning matters more than where the port is.
  for (StatusLabel* other : {port_, event_}) other->GiveWay(held.warning);
  static_cast<QHBoxLayout*>(layout())->setStretchFactor(port_, held.warning ? 1 : 0);
  port_->Show(PortField(source, desk_->Comm1.PortOpen(), device));
  event_->Show(EventField(source));
}

void StatusLine::TellDevice(int number, const QString& device, bool there) {
  if (desk_ == nullptr) return;
  // The loss of the port in use has a box of its own.
  const LinkState& link = desk_->source.link;
  if (!there && (number == link.ComNum || number == link.gone)) return;
  Happened(*desk_, ToPath(device) + (there ? " has appeared" : " has gone") + " (Comm " +
                       std::to_string(number) + ")");
}

}  // namespace tavlo
