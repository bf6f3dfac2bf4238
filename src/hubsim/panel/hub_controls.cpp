// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/hub_controls.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QEvent>
#include <QFont>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "hubsim/panel/hub_words.h"
#include "hubsim/panel/look.h"
#include "hubsim/panel/shown_text.h"
#include "hubsim/terminal/display.h"
#include "hubsim/wire/failure.h"

namespace tavlo::hubsim {
namespace {

constexpr int kDisplayMargin = 6;
constexpr int kMeaningLines = 2;
/// Of a failure mode, in the closed list.
constexpr int kModeLetters = 24;
constexpr int kListMargin = 30;
constexpr int kTextMargin = 4;
constexpr qreal kStateScale = 1.3;

/// Closed, it ends in an ellipsis what it has no room for.
class ShortBox : public QComboBox {
 public:
  using QComboBox::QComboBox;

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const int room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this).width();
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room - kTextMargin);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
  }
};

/// Keeps the wheel from turning what it only passes over.
class WheelGuard : public QObject {
 public:
  using QObject::QObject;
  void Guard(QWidget* control) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

/// The list is as wide as its longest sentence, and the closed box is not.
QComboBox* MakeModes(QWidget* parent) {
  auto* modes = new ShortBox(parent);
  modes->setObjectName(QStringLiteral("failure"));
  modes->setAccessibleDescription(QStringLiteral("Failure mode"));
  int widest = 0;
  for (const FailureRow& row : kFailures) {
    const QString words = ShownText(FailureWords(row));
    modes->addItem(words);
    modes->setItemData(modes->count() - 1, ShownText(row.name), Qt::ToolTipRole);
    widest = std::max(widest, modes->fontMetrics().horizontalAdvance(words));
  }
  modes->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  modes->setMinimumContentsLength(kModeLetters);
  modes->view()->setMinimumWidth(widest + kListMargin);
  return modes;
}

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
  auto* terminal = new QGroupBox(QStringLiteral("Operator terminal"), this);
  auto* centred = new QVBoxLayout(terminal);
  centred->addWidget(MakeDisplay(), 0, Qt::AlignHCenter);
  column->addWidget(terminal);
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
  mode_ = MakeModes(group);
  number_ = new QSpinBox(group);
  number_->setObjectName(QStringLiteral("failureNumber"));
  number_->setRange(1, std::numeric_limits<int>::max());
  number_->setMaximumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000000000000")));
  // Each digit typed would otherwise be a mode of its own and count anew.
  number_->setKeyboardTracking(false);
  auto* guard = new WheelGuard(group);
  for (QWidget* control : {static_cast<QWidget*>(mode_), static_cast<QWidget*>(number_)})
    guard->Guard(control);
  auto* caption = new QLabel(QStringLiteral("&N"), group);
  caption->setBuddy(number_);
  meaning_ = new QLabel(group);
  meaning_->setObjectName(QStringLiteral("failureMeaning"));
  meaning_->setTextFormat(Qt::PlainText);
  meaning_->setWordWrap(true);
  meaning_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  meaning_->setMinimumHeight(kMeaningLines * fontMetrics().lineSpacing());
  option_ = new QLabel(group);
  option_->setObjectName(QStringLiteral("failureOption"));
  option_->setTextFormat(Qt::PlainText);
  option_->setToolTip(QStringLiteral("The same on the command line"));
  auto* row = new QHBoxLayout;
  row->addWidget(caption);
  row->addWidget(number_);
  row->addWidget(option_, 1, Qt::AlignRight);
  auto* column = new QVBoxLayout(group);
  column->addWidget(mode_);
  column->addWidget(meaning_);
  column->addLayout(row);
  connect(mode_, &QComboBox::activated, this, &HubControls::Choose);
  connect(number_, &QSpinBox::valueChanged, this, &HubControls::Choose);
  return group;
}

QWidget* HubControls::MakeDisplay() {
  display_ = new QLabel(this);
  display_->setObjectName(QStringLiteral("display"));
  display_->setTextFormat(Qt::PlainText);
  display_->setAccessibleDescription(QStringLiteral("Display of the operator terminal"));
  display_->setToolTip(QStringLiteral(
      "The display of the operator terminal, as the hub believes it to be: four rows of 20 letters"));
  display_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  display_->setMargin(kDisplayMargin);
  display_->setFrameStyle(static_cast<int>(QFrame::Panel) | QFrame::Sunken);
  const QFont fixed = FixedFont(font());
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
  emit FailureChosen({row.mode, row.parameter == Parameter::Count ? number_->value() : 1});
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
  number_->setEnabled(row.parameter == Parameter::Count);
  number_->setValue(plan.at);
  meaning_->setText(ShownText(FailureWords(row)));
  const QString number = row.parameter == Parameter::Count ? QStringLiteral(":%1").arg(plan.at) : QString();
  option_->setText(QStringLiteral("--fail ") + ShownText(row.name) + number);
}

}  // namespace tavlo::hubsim
