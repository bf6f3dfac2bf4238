// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/led_panel.h"

#include <QGridLayout>
#include <QPainter>
#include <algorithm>

#include "qt/gui/shown_text.h"
#include "widgets/contrast.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr int kLightSize = 18;
constexpr int kCaptionWidth = 24;
constexpr int kLampGap = 8;
constexpr int kTitleGap = 6;
/// A little more than a state must have: the panel is tinted by some styles.
constexpr double kLightContrast = kTextContrast + 0.5;

struct RowTitle {
  std::string_view title;
  std::string_view object_name;
};
/// By `LedRow`.
constexpr std::array<RowTitle, kLedRows.size()> kTitles = {{
    {"Inputs", "INlo"},
    {"Inputs X", "INX"},
    {"Outputs", "OUTlo"},
    {"Outputs Y", "OUTY"},
}};

constexpr QRgb kGreen = qRgb(0, 168, 64);
constexpr QRgb kRed = qRgb(216, 24, 24);

std::size_t Index(LedRow row) {
  return static_cast<std::size_t>(row);
}

void PaintUnknown(QPainter& painter, const QRectF& face, const QColor& ink) {
  painter.setPen(QPen(ink, 1, Qt::DotLine));
  painter.drawEllipse(face);
  painter.setPen(ink);
  QFont font = painter.font();
  font.setPixelSize(static_cast<int>(face.height() * 4 / 5));
  font.setBold(true);
  painter.setFont(font);
  painter.drawText(face, Qt::AlignCenter, QStringLiteral("?"));
}

QPolygonF Diamond(const QRectF& face) {
  const QPointF middle = face.center();
  return {{QPointF(middle.x(), face.top()), QPointF(face.right(), middle.y()),
           QPointF(middle.x(), face.bottom()), QPointF(face.left(), middle.y())}};
}

}  // namespace

LedLight::LedLight(QWidget* parent) : QLabel(parent) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LedLight::sizeHint() const {
  const int side = ByFont(fontMetrics(), kLightSize);
  return {side, side};
}

void LedLight::Show(Led led, const QString& name) {
  if (led == led_ && name == accessibleName()) return;
  led_ = led;
  setAccessibleName(name);
  setToolTip(name);
  update();
}

// What is off shows the ground through it, so that on a dark ground too only what is on is bright.
void LedLight::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF face = QRectF(rect()).adjusted(2, 2, -2, -2);
  const QColor ground = palette().color(QPalette::Window);
  if (led_ == Led::Unknown) return PaintUnknown(painter, face, palette().color(QPalette::WindowText));
  const bool limit = led_ == Led::Red || led_ == Led::RedOff;
  const bool on = led_ == Led::Red || led_ == Led::Green;
  const QColor ink = StandOut(QColor(limit ? kRed : kGreen), ground, kLightContrast);
  painter.setPen(QPen(ink, 1.5));
  if (on) painter.setBrush(ink);
  if (limit) {
    painter.drawPolygon(Diamond(QRectF(rect()).adjusted(1, 1, -1, -1)));
  } else {
    painter.drawEllipse(face);
  }
}

LedPanel::LedPanel(QWidget* parent) : QGroupBox(QStringLiteral("Input/Output Status"), parent) {
  setObjectName(QStringLiteral("LedPanel"));
  auto* grid = new QGridLayout(this);
  grid->setHorizontalSpacing(kLampGap);
  grid->setVerticalSpacing(1);
  auto* axis_title = new QLabel(QStringLiteral("Axis"), this);
  axis_title->setObjectName(QStringLiteral("lblDriveIn"));
  grid->addWidget(axis_title, 0, 0);
  for (int axis = 0; axis < kAxes; ++axis) {
    auto* heading = new QLabel(this);
    heading->setObjectName(QStringLiteral("Label2_%1").arg(axis));
    headings_.push_back(heading);
    grid->addWidget(heading, 0, 2 + axis, Qt::AlignCenter);
  }
  int line = 1;
  for (const LedRow row : kLedRows) {
    const std::size_t index = Index(row);
    titles_[index] = new QLabel(FromText(kTitles[index].title), this);
    titles_[index]->setContentsMargins(0, kTitleGap, 0, 0);
    grid->addWidget(titles_[index], line++, 0, 1, 2);
    for (int bit = 0; bit < LedsOf(row); ++bit, ++line) {
      auto* caption = new QLabel(FromText(LedCaption(row, bit)), this);
      caption->setMinimumWidth(kCaptionWidth);
      captions_[index].push_back(caption);
      grid->addWidget(caption, line, 1, Qt::AlignRight | Qt::AlignVCenter);
      for (int axis = 0; axis < kAxes; ++axis) {
        auto* light = new LedLight(this);
        light->setObjectName(
            QStringLiteral("%1_%2").arg(FromText(kTitles[index].object_name)).arg(axis * LedsOf(row) + bit));
        lights_[index][axis].push_back(light);
        grid->addWidget(light, line, 2 + axis, Qt::AlignCenter);
      }
    }
  }
  // A column without a light is as wide as the others.
  for (int axis = 0; axis < kAxes; ++axis) {
    grid->setColumnMinimumWidth(2 + axis, ByFont(fontMetrics(), kLightSize));
  }
  grid->setRowStretch(line, 1);
  grid->setColumnStretch(2 + kAxes, 1);
}

LedLight* LedPanel::Light(LedRow row, int axis, int bit) const {
  return lights_[Index(row)][axis][bit];
}

void LedPanel::Arrange(const Program& program) {
  for (int axis = 0; axis < kAxes; ++axis) {
    headings_[axis]->setVisible(axis < PanelColumns(program));
    headings_[axis]->setText(FromText(ColumnCaption(program, axis)));
  }
  for (const LedRow row : kLedRows) {
    bool any = false;
    for (int bit = 0; bit < LedsOf(row); ++bit) {
      bool some_axis = false;
      for (int axis = 0; axis < kAxes; ++axis) {
        const bool shown = ShowsLed(program, row, axis, bit);
        LedLight* light = Light(row, axis, bit);
        light->setVisible(shown);
        // The fifth column is an axis or the hub, so that its lights are named afresh.
        light->setAccessibleName({});
        some_axis = some_axis || shown;
      }
      captions_[Index(row)][bit]->setVisible(some_axis);
      any = any || some_axis;
    }
    titles_[Index(row)]->setVisible(any);
  }
}

void LedPanel::ShowAxis(const Source& source, int axis) {
  for (const LedRow row : kLedRows) {
    for (int bit = 0; bit < LedsOf(row); ++bit) {
      const Led led = source.run.panel.At(row, axis, bit);
      LedLight* light = Light(row, axis, bit);
      if (light->Shown() == led && !light->accessibleName().isEmpty()) continue;
      light->Show(led, FromText(LedName(source.program, row, axis, bit, led)));
    }
  }
}

}  // namespace tavlo
