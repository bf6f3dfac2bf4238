// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/side_panels.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "commands/hub_choices.h"
#include "qt/gui/shown_text.h"
#include "session/source.h"
#include "widgets/kept_place.h"

namespace tavlo {
namespace {

constexpr int kPortRows = kPorts / 2;
constexpr std::array<std::string_view, 3> kLimitActions = {"halt program", "branch to line number",
                                                           "continue program"};

/// Sets the least width of the summary: all of this can be read without a cut.
const QString kWideDrive = QStringLiteral("Gantry XPelmar-H-ae10.0A");
const QString kWideCurrent = QStringLiteral("10.0A");
constexpr int kDriveGap = 10;

QLabel* Caption(const QString& text, QWidget* buddy, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  return label;
}

QComboBox* MakeList(const char* name, QWidget* parent) {
  auto* list = new QComboBox(parent);
  list->setObjectName(QLatin1String(name));
  list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  return list;
}

QFormLayout* MakeForm() {
  auto* form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  form->setHorizontalSpacing(10);
  form->setVerticalSpacing(6);
  return form;
}

/// Whether the operator turns to the choice of port. Where the system does not report devices that come and
/// go, this is the moment to look for them.
bool OperatorLooks(QEvent::Type type) {
  return type == QEvent::Show || type == QEvent::Enter || type == QEvent::FocusIn ||
         type == QEvent::ToolTip || type == QEvent::WindowActivate;
}

}  // namespace

HubPanel::HubPanel(CommDevices& comms, QWidget* parent)
    : QGroupBox(QStringLiteral("Hub"), parent),
      comms_(comms),
      model_list_(MakeList("ModelList", this)),
      drive_version_(new QLabel(this)),
      opt_com_(new QButtonGroup(this)) {
  drive_version_->setObjectName(QStringLiteral("DriveVersion"));
  drive_version_->setAccessibleDescription(QStringLiteral("Firmware of the hub"));
  for (const HubModelRow& model : kHubModels) model_list_->addItem(FromText(model.name));
  auto* form = MakeForm();
  form->addRow(Caption(QStringLiteral("&Model"), model_list_, this), model_list_);
  form->addRow(new QLabel(QStringLiteral("Firmware"), this), drive_version_);
  auto* ports = new QGridLayout;
  ports->setVerticalSpacing(2);
  for (int i = 0; i < kPorts; ++i) {
    options_[i] = new CommOption(i, this);
    options_[i]->installEventFilter(this);
    opt_com_->addButton(options_[i], i);
    ports->addWidget(options_[i], i % kPortRows, i / kPortRows);
  }
  auto* column = new QVBoxLayout(this);
  column->addLayout(form);
  column->addLayout(ports);
  connect(model_list_, &QComboBox::currentIndexChanged, this, &HubPanel::ModelChosen);
  connect(opt_com_, &QButtonGroup::idClicked, this, &HubPanel::PortChosen);
  comms_.OnChange = [this] { LookAgain(); };
  LookAgain();
}

HubPanel::~HubPanel() {
  comms_.OnChange = nullptr;
}

void HubPanel::LookAgain() {
  for (int i = 0; i < kPorts; ++i) {
    CommDevice now = comms_.Look(i + 1);
    options_[i]->Show(now);
    const std::optional<CommDevice> before = std::exchange(seen_[i], std::move(now));
    const CommDevice& device = seen_[i]->there ? *seen_[i] : before.value_or(*seen_[i]);
    if (before && before->there != seen_[i]->there) {
      emit DeviceChanged(i + 1, FromPath(device.device), seen_[i]->there);
    }
  }
}

bool HubPanel::event(QEvent* event) {
  if (OperatorLooks(event->type())) LookAgain();
  return QGroupBox::event(event);
}

bool HubPanel::eventFilter(QObject* watched, QEvent* event) {
  if (OperatorLooks(event->type())) LookAgain();
  return QGroupBox::eventFilter(watched, event);
}

void HubPanel::Show(const Source& source) {
  const QSignalBlocker quiet(model_list_);
  model_list_->setCurrentIndex(source.program.HubIndex);
  drive_version_->setText(FromText(source.link.DriveVersion));
  // An exclusive group would keep the last button on when none is to be.
  opt_com_->setExclusive(false);
  for (int i = 0; i < kPorts; ++i) opt_com_->button(i)->setChecked(source.link.OptCom == i);
  opt_com_->setExclusive(true);
}

DriveLabel::DriveLabel(int axis, QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("LblDriveDesc%1").arg(axis));
  setTextFormat(Qt::PlainText);
  KeepPlace(this);
}

void DriveLabel::Show(const DriveDesc& desc) {
  columns_ = {InOneLine(desc.name), FromText(desc.model), FromText(desc.current)};
  const QString whole =
      QStringList{columns_.name, columns_.model, columns_.current}.join(QStringLiteral("  ")).trimmed();
  setText(whole);
  setToolTip(whole.toHtmlEscaped());
  // An axis that the hub does not have is nothing to be read out.
  setVisible(!whole.isEmpty());
}

// One more than it measures: what fits exactly would be elided for a fraction of a dot.
int DriveLabel::NameWidth() const {
  return fontMetrics().horizontalAdvance(columns_.name) + 1;
}

void DriveLabel::SetNameColumn(int width) {
  name_column_ = width;
  update();
}

QSize DriveLabel::sizeHint() const {
  return {fontMetrics().horizontalAdvance(kWideDrive) + 2 * kDriveGap, fontMetrics().height() + 2};
}

QSize DriveLabel::minimumSizeHint() const {
  return sizeHint();
}

void DriveLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  const int current = fontMetrics().horizontalAdvance(kWideCurrent);
  const int name = std::min(name_column_, width() / 2);
  const QRect name_place(0, 0, name, height());
  const QRect model_place(name + kDriveGap, 0, width() - name - current - 2 * kDriveGap, height());
  const QRect current_place(width() - current, 0, current, height());
  const auto draw = [&](const QRect& place, Qt::Alignment side, const QString& text) {
    painter.drawText(place, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
  };
  draw(name_place, Qt::AlignLeft, columns_.name);
  draw(model_place, Qt::AlignLeft, columns_.model);
  draw(current_place, Qt::AlignRight, columns_.current);
}

DrivesPanel::DrivesPanel(QWidget* parent) : QGroupBox(QStringLiteral("Drives"), parent) {
  setToolTip(QStringLiteral("Click on a row to set up the drives"));
  auto* column = new QVBoxLayout(this);
  column->setSpacing(2);
  for (int axis = 0; axis < kAxes; ++axis) {
    rows_[axis] = new DriveLabel(axis, this);
    column->addWidget(rows_[axis]);
  }
}

// The rows leave their clicks to the panel.
void DrivesPanel::mouseReleaseEvent(QMouseEvent* event) {
  const auto* row = qobject_cast<DriveLabel*>(childAt(event->position().toPoint()));
  if (event->button() == Qt::LeftButton && row != nullptr) emit Clicked();
}

void DrivesPanel::Show(const Program& program) {
  int name_column = 0;
  for (int axis = 0; axis < kAxes; ++axis) {
    rows_[axis]->Show(DriveDescOf(program, axis));
    name_column = std::max(name_column, rows_[axis]->NameWidth());
  }
  for (DriveLabel* row : rows_) row->SetNameColumn(name_column);
}

LimitsPanel::LimitsPanel(QWidget* parent)
    : QGroupBox(QStringLiteral("Limits"), parent),
      limit_list_(MakeList("LimitList", this)),
      limit_branch_(new QLineEdit(this)) {
  for (const std::string_view action : kLimitActions) limit_list_->addItem(FromText(action));
  limit_list_->setToolTip(QStringLiteral("What the hub does when an axis hits a limit switch"));
  limit_branch_->setObjectName(QStringLiteral("LimitBranch"));
  limit_branch_->setToolTip(QStringLiteral("Program line that the hub goes on with"));
  limit_branch_->installEventFilter(this);
  auto* form = MakeForm();
  form->addRow(Caption(QStringLiteral("&Action"), limit_list_, this), limit_list_);
  form->addRow(Caption(QStringLiteral("L&ine"), limit_branch_, this), limit_branch_);
  setLayout(form);
  connect(limit_list_, &QComboBox::currentIndexChanged, this, &LimitsPanel::ActionChosen);
  connect(limit_branch_, &QLineEdit::editingFinished, this,
          [this] { emit BranchEntered(limit_branch_->text()); });
}

LimitsPanel::~LimitsPanel() {
  limit_branch_->disconnect(this);
}

void LimitsPanel::Show(const Program& program) {
  const QSignalBlocker quiet(limit_list_);
  limit_list_->setCurrentIndex(program.LimitList);
  limit_branch_->setText(FromText(LimitBranchText(program)));
  const bool branches = program.LimitList == BranchToLine;
  limit_branch_->setEnabled(branches);
  const Colour back = BackgroundOf(branches ? RowState::LimitTarget : RowState::Normal);
  QPalette palette = limit_branch_->palette();
  palette.setColor(QPalette::Base, QColor(back.red, back.green, back.blue));
  palette.setColor(QPalette::Text, Qt::black);
  palette.setColor(QPalette::Disabled, QPalette::Text, QColor(110, 110, 110));
  limit_branch_->setPalette(palette);
}

void LimitsPanel::Commit() {
  if (limit_branch_->hasFocus()) emit BranchEntered(limit_branch_->text());
}

bool LimitsPanel::eventFilter(QObject* watched, QEvent* event) {
  // A click sets the cursor after the focus has come, so the text is selected once that is done.
  if (watched == limit_branch_ && event->type() == QEvent::FocusIn) {
    QTimer::singleShot(0, limit_branch_, &QLineEdit::selectAll);
  }
  return QGroupBox::eventFilter(watched, event);
}

}  // namespace tavlo
