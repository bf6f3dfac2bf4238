// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/hub_controls.h"

#include <QComboBox>
#include <QFont>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>
#include <limits>

#include "hubsim/display.h"
#include "hubsim/failure.h"
#include "hubsim/panel/hub_words.h"
#include "hubsim/panel/shown_text.h"

namespace tavlo::hubsim {
namespace {

constexpr int kDisplayMargin = 6;
constexpr int kMeaningLines = 2;
constexpr qreal kStateScale = 1.3;

QPushButton* MakeButton(const char* text, const char* name, QWidget* parent) {
  auto* button = new QPushButton(QLatin1String(text), parent);
  button->setObjectName(QLatin1String(name));
  return button;
}

}  // namespace

HubControls::HubControls(QWidget* parent) : QWidget(parent), state_(new QLabel(this)) {
  state_->setObjectName(QStringLiteral("state"));
  state_->setTextFormat(Qt::PlainText);
  state_->setAccessibleDescription(QStringLiteral("What the hub does"));
  QFont font = state_->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * kStateScale);
  state_->setFont(font);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(state_);
  column->addWidget(MakeButtons());
  column->addWidget(MakeFailure());
  column->addWidget(MakeDisplay(), 0, Qt::AlignHCenter);
  column->addStretch(1);
}

QWidget* HubControls::MakeButtons() {
  auto* row = new QWidget(this);
  auto* stop = MakeButton("&Stop", "btnStop", row);
  stop->setToolTip(QStringLiteral("The stop button on a drive"));
  auto* power = MakeButton("Po&wer cycle", "btnPower", row);
  power->setToolTip(QStringLiteral("Power off and on: the memory stays, and the hub greets"));
  cable_ = MakeButton("&Unplug cable", "btnCable", row);
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QPushButton* button : {stop, power, cable_}) layout->addWidget(button);
  connect(stop, &QPushButton::clicked, this, &HubControls::StopClicked);
  connect(power, &QPushButton::clicked, this, &HubControls::PowerClicked);
  connect(cable_, &QPushButton::clicked, this, &HubControls::CableClicked);
  return row;
}

QWidget* HubControls::MakeFailure() {
  auto* group = new QGroupBox(QStringLiteral("What goes wrong"), this);
  mode_ = new QComboBox(group);
  mode_->setObjectName(QStringLiteral("failure"));
  mode_->setAccessibleDescription(QStringLiteral("Failure mode"));
  for (const FailureRow& row : kFailures) {
    mode_->addItem(ShownText(row.name));
    mode_->setItemData(mode_->count() - 1, ShownText(row.meaning), Qt::ToolTipRole);
  }
  number_ = new QSpinBox(group);
  number_->setObjectName(QStringLiteral("failureNumber"));
  number_->setRange(1, std::numeric_limits<int>::max());
  number_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000000000")));
  // Each digit typed would otherwise be a mode of its own and count anew.
  number_->setKeyboardTracking(false);
  auto* caption = new QLabel(QStringLiteral("&N"), group);
  caption->setBuddy(number_);
  meaning_ = new QLabel(group);
  meaning_->setObjectName(QStringLiteral("failureMeaning"));
  meaning_->setTextFormat(Qt::PlainText);
  meaning_->setWordWrap(true);
  meaning_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  meaning_->setMinimumHeight(kMeaningLines * fontMetrics().lineSpacing());
  auto* row = new QHBoxLayout;
  row->addWidget(mode_, 1);
  row->addWidget(caption);
  row->addWidget(number_);
  auto* column = new QVBoxLayout(group);
  column->addLayout(row);
  column->addWidget(meaning_);
  connect(mode_, &QComboBox::activated, this, &HubControls::Choose);
  connect(number_, &QSpinBox::valueChanged, this, &HubControls::Choose);
  return group;
}

QWidget* HubControls::MakeDisplay() {
  display_ = new QLabel(this);
  display_->setObjectName(QStringLiteral("display"));
  display_->setTextFormat(Qt::PlainText);
  display_->setAccessibleDescription(QStringLiteral("Display of the operator terminal"));
  display_->setToolTip(QStringLiteral("Display of the operator terminal"));
  display_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  display_->setMargin(kDisplayMargin);
  display_->setFrameStyle(static_cast<int>(QFrame::Panel) | QFrame::Sunken);
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  display_->setFont(fixed);
  const QFontMetrics metrics(fixed);
  const int edge = 2 * (kDisplayMargin + display_->frameWidth());
  display_->setFixedSize(metrics.horizontalAdvance(QString(kDisplayColumns, QLatin1Char('M'))) + edge,
                         kDisplayRows * metrics.lineSpacing() + edge);
  QPalette colours = display_->palette();
  colours.setColor(QPalette::Window, QColor(20, 40, 30));
  colours.setColor(QPalette::WindowText, QColor(190, 255, 200));
  display_->setPalette(colours);
  display_->setAutoFillBackground(true);
  return display_;
}

void HubControls::Choose() {
  const FailureRow& row = kFailures[static_cast<std::size_t>(mode_->currentIndex())];
  emit FailureChosen({row.mode, row.parameter == Parameter::kCount ? number_->value() : 1});
}

void HubControls::Show(const Hub& hub) {
  const QString state = ShownText(StateWords(hub.State(), hub.RunningLine()));
  if (state_->text() != state) state_->setText(state);
  if (unplugged_ != hub.Unplugged()) {
    unplugged_ = hub.Unplugged();
    cable_->setText(*unplugged_ ? QStringLiteral("&Replug cable") : QStringLiteral("&Unplug cable"));
  }
  QStringList rows;
  for (const std::string& row : hub.Display()) rows += ShownText(row);
  const QString display = rows.join(QLatin1Char('\n'));
  if (display_->text() != display) display_->setText(display);
  const FailurePlan& plan = hub.Options().failure;
  if (!plan_ || plan_->mode != plan.mode || plan_->at != plan.at) ShowFailure(plan);
}

void HubControls::ShowFailure(const FailurePlan& plan) {
  plan_ = plan;
  const FailureRow& row = RowOf(plan.mode);
  const QSignalBlocker quiet_mode(mode_);
  const QSignalBlocker quiet_number(number_);
  mode_->setCurrentIndex(static_cast<int>(plan.mode));
  number_->setEnabled(row.parameter == Parameter::kCount);
  number_->setValue(plan.at);
  meaning_->setText(ShownText(row.meaning));
}

}  // namespace tavlo::hubsim
