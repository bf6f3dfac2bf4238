// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/axis_table.h"

#include <QGridLayout>
#include <QLabel>
#include <QToolButton>
#include <cmath>
#include <string>
#include <vector>

#include "hubsim/panel/dial.h"
#include "hubsim/panel/drive_names.h"
#include "hubsim/panel/lamp.h"
#include "hubsim/panel/shown_text.h"
#include "hubsim/program/io.h"

namespace tavlo::hubsim {
namespace {

enum Column {
  NameColumn,
  DriveColumn,
  DialColumn,
  PositionColumn,
  SpeedColumn,
  MotorColumn,
  InputsColumn,
  OutputsColumn,
  LimitColumn,
  FaultColumn,
  RestColumn
};

constexpr int kQuadAxes = 4;

/// The widest numbers that a label makes room for.
const QString kWideDrive = QStringLiteral("unknown type");
const QString kWidePosition = QStringLiteral("-00000000");
const QString kWideSpeed = QStringLiteral("-000.00");

std::vector<QString> Names(const QString& owner, const QString& what, const QString& own_letter, int count,
                           int first_own, int own_base) {
  std::vector<QString> names;
  for (int i = 0; i < count; ++i) {
    const QString name =
        i < first_own ? QString::number(i + 1) : own_letter + QString::number(i - first_own + own_base);
    names.push_back(owner.isEmpty() ? name : owner + QLatin1Char(' ') + what + QLatin1Char(' ') + name);
  }
  return names;
}

std::vector<QString> InputNames(const QString& owner, int count) {
  return Names(owner, QStringLiteral("input"), QStringLiteral("X"), count, kFirstXInput, 0);
}

std::vector<QString> OutputNames(const QString& owner, int count) {
  return Names(owner, QStringLiteral("output"), QStringLiteral("Y"), count, kFirstYOutput, 1);
}

QLabel* MakeNumber(const QString& widest, const QString& description, QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(widest));
  label->setAccessibleDescription(description);
  return label;
}

/// Setting a text anew lays the window out again, so only what changed is set.
void SetText(QLabel* label, const QString& text) {
  if (label->text() != text) label->setText(text);
}

QString SpeedText(const AxisView& view) {
  const double speed = view.steps_per_rev > 0 ? view.speed_steps_s / view.steps_per_rev : 0;
  // A crawl would otherwise show as -0.00.
  return QString::number(std::abs(speed) < 0.005 ? 0.0 : speed, 'f', 2);
}

}  // namespace

AxisTable::AxisTable(HubModel model, QWidget* parent)
    : QWidget(parent), grid_(new QGridLayout(this)), axes_(model == HubModel::Quad ? kQuadAxes : kAxisCount) {
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setHorizontalSpacing(7);
  grid_->setVerticalSpacing(2);
  AddCaptions();
  for (int axis = 0; axis < axes_; ++axis) AddAxis(axis);
  if (model == HubModel::Quad) AddHubBlock();
  // The columns stay together however wide the window is.
  grid_->setColumnStretch(RestColumn, 1);
}

void AxisTable::AddCaptions() {
  const auto add = [this](Column column, const char* text, Qt::Alignment side) {
    grid_->addWidget(new QLabel(QLatin1String(text), this), 0, column, side);
  };
  add(NameColumn, "Axis", Qt::AlignLeft);
  add(DriveColumn, "Drive", Qt::AlignLeft);
  add(DialColumn, "Shaft", Qt::AlignHCenter);
  add(PositionColumn, "Steps", Qt::AlignRight);
  add(SpeedColumn, "rev/s", Qt::AlignRight);
  add(MotorColumn, "Motor", Qt::AlignLeft);
  grid_->addWidget(new QLabel(QStringLiteral("Inputs (click)"), this), 0, InputsColumn, Qt::AlignHCenter);
  grid_->addWidget(new QLabel(QStringLiteral("Outputs"), this), 0, OutputsColumn, Qt::AlignHCenter);
  grid_->addWidget(LampRow::MakeCaptions(InputNames({}, kInputCount), kFirstXInput, this), 1, InputsColumn);
  grid_->addWidget(LampRow::MakeCaptions(OutputNames({}, kOutputCount), kFirstYOutput, this), 1,
                   OutputsColumn);
}

void AxisTable::AddAxis(int axis) {
  const QString name = QStringLiteral("axis %1").arg(axis + 1);
  Row& row = rows_[static_cast<std::size_t>(axis)];
  row.drive = new QLabel(this);
  row.drive->setAccessibleDescription(QStringLiteral("drive model on ") + name);
  row.drive->setMinimumWidth(row.drive->fontMetrics().horizontalAdvance(kWideDrive));
  row.dial = new Dial(name, this);
  row.position = MakeNumber(kWidePosition, QStringLiteral("position of %1 in steps").arg(name), this);
  row.speed = MakeNumber(kWideSpeed, QStringLiteral("speed of %1 in revolutions a second").arg(name), this);
  row.motor = new QLabel(this);
  row.motor->setAccessibleDescription(QStringLiteral("motor of ") + name);
  row.inputs = new LampRow(InputNames(name, kInputCount), kFirstXInput, LampRow::Use::Click, this);
  row.inputs->setObjectName(QStringLiteral("inputs%1").arg(axis));
  connect(row.inputs, &LampRow::Clicked, this,
          [this, axis](int input, bool high) { emit InputClicked(axis, input, high); });
  row.outputs = new LampRow(OutputNames(name, kOutputCount), kFirstYOutput, LampRow::Use::Show, this);
  row.outputs->setObjectName(QStringLiteral("outputs%1").arg(axis));

  const int line = axis + 2;
  grid_->addWidget(new QLabel(QString::number(axis + 1), this), line, NameColumn);
  grid_->addWidget(row.drive, line, DriveColumn);
  grid_->addWidget(row.dial, line, DialColumn, Qt::AlignCenter);
  grid_->addWidget(row.position, line, PositionColumn);
  grid_->addWidget(row.speed, line, SpeedColumn);
  grid_->addWidget(row.motor, line, MotorColumn);
  grid_->addWidget(row.inputs, line, InputsColumn);
  grid_->addWidget(row.outputs, line, OutputsColumn);
  grid_->addWidget(MakeButton(QStringLiteral("Limit"), "limit", axis, &AxisTable::LimitClicked), line,
                   LimitColumn);
  grid_->addWidget(MakeButton(QStringLiteral("Fault..."), "fault", axis, &AxisTable::FaultClicked), line,
                   FaultColumn);
}

/// The block has neither X inputs nor Y outputs.
void AxisTable::AddHubBlock() {
  const QString name = QStringLiteral("hub");
  Row& row = rows_[static_cast<std::size_t>(axes_)];
  row.inputs = new LampRow(InputNames(name, kFirstXInput), kFirstXInput, LampRow::Use::Click, this);
  row.inputs->setObjectName(QStringLiteral("inputs%1").arg(axes_));
  connect(row.inputs, &LampRow::Clicked, this,
          [this](int input, bool high) { emit InputClicked(axes_, input, high); });
  row.outputs = new LampRow(OutputNames(name, kFirstYOutput), kFirstYOutput, LampRow::Use::Show, this);
  row.outputs->setObjectName(QStringLiteral("outputs%1").arg(axes_));
  const int line = axes_ + 2;
  grid_->addWidget(new QLabel(QStringLiteral("Hub"), this), line, NameColumn);
  grid_->addWidget(row.inputs, line, InputsColumn, Qt::AlignLeft);
  grid_->addWidget(row.outputs, line, OutputsColumn, Qt::AlignLeft);
}

QWidget* AxisTable::MakeButton(const QString& text, const char* name, int axis,
                               void (AxisTable::*clicked)(int)) {
  auto* button = new QToolButton(this);
  button->setText(text);
  button->setFocusPolicy(Qt::StrongFocus);
  button->setObjectName(QLatin1String(name) + QString::number(axis));
  button->setAccessibleName(QLatin1String(name) + QStringLiteral(" of axis %1").arg(axis + 1));
  connect(button, &QToolButton::clicked, this, [this, axis, clicked] { emit(this->*clicked)(axis); });
  return button;
}

void AxisTable::Show(const Hub& hub) {
  for (int axis = 0; axis < kAxisCount; ++axis) {
    const Row& row = rows_[static_cast<std::size_t>(axis)];
    if (row.inputs == nullptr) continue;
    const AxisView view = hub.Axis(axis);
    row.inputs->Show(view.inputs | static_cast<unsigned>(view.x_inputs) << kFirstXInput);
    row.outputs->Show(view.outputs);
    if (row.drive != nullptr) ShowAxis(row, view, hub.PluggedModel(axis));
  }
}

void AxisTable::ShowAxis(const Row& row, const AxisView& view, int model) {
  const QString drive = ShownText(DriveName(model));
  if (row.drive->text() != drive) {
    row.drive->setText(drive);
    row.drive->setToolTip(QStringLiteral("Model code %1").arg(model));
  }
  row.dial->Show(view.steps_per_rev > 0 ? view.position_steps / view.steps_per_rev : 0, view.motor_on);
  SetText(row.position, QString::number(std::llround(view.position_steps)));
  SetText(row.speed, SpeedText(view));
  SetText(row.motor, view.motor_on ? QStringLiteral("on") : QStringLiteral("off"));
}

}  // namespace tavlo::hubsim
