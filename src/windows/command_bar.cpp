// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/command_bar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QToolButton>
#include <array>
#include <optional>

#include "qt/gui/shown_text.h"
#include "widgets/icon_images.h"
#include "widgets/ringed_button.h"
#include "widgets/rule.h"
#include "widgets/takes_input.h"
#include "windows/shortcuts.h"

namespace tavlo {
namespace {

enum class Group { Program, Hub, Machine };

struct Command {
  /// The button's object name.
  std::string_view name;
  std::string_view caption;
  std::string_view drawing;
  std::string_view tool_tip;
  Group group;
  /// What its keys are called; none if it has no key.
  std::optional<Act> act = {};
};
constexpr std::array<Command, 10> kCommands = {{
    {"Load", "L&oad", "load", "Open a program file", Group::Program, Act::Load},
    {"Save", "&Save", "save", "Save the program to a file", Group::Program, Act::Save},
    {"PrintButton", "&Print", "print", "Print a listing of the program", Group::Program, Act::Print},
    {"BtnClear", "&Clear", "clear", "Clear the entire program", Group::Program},
    {"Download", "&Download", "download", "Send the program to the hub and prove the transfer", Group::Hub,
     Act::Download},
    {"Upload", "&Upload", "upload", "Read the program back from the hub", Group::Hub, Act::Upload},
    {"execbutton", "&Execute", "execute", "Run the program that the hub holds and watch it", Group::Hub,
     Act::Execute},
    {"ChangeRes", "Hard&ware", "hardware", "Set up drives, currents, units and limit switches",
     Group::Machine},
    {"Help", "&Help", "help", "Open the manual", Group::Machine, Act::Help},
    {"Quit", "&Quit", "quit", "Leave Tavlo Composer", Group::Machine},
}};

constexpr int kImageSize = 20;
constexpr int kGroupGap = 6;

/// What it does, and by which keys; Save has two.
QString ToolTip(const Command& command) {
  const QString text = FromText(command.tool_tip);
  if (!command.act) return text;
  const QString keys = KeyOf(*command.act);
  if (*command.act != Act::Save) return QStringLiteral("%1 (%2)").arg(text, keys);
  return QStringLiteral("%1 (%2; to its present file: %3)").arg(text, keys, KeyOf(Act::SaveToFile));
}

QToolButton* MakeButton(const Command& command, QWidget* parent) {
  auto* button = new RingedButton(kImageSize, parent);
  button->setObjectName(FromText(command.name));
  button->setText(FromText(command.caption));
  button->setToolTip(ToolTip(command));
  button->setAccessibleDescription(button->toolTip());
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setAutoRaise(true);
  button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  return button;
}

}  // namespace

CommandBar::CommandBar(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  std::optional<Group> group;
  for (const Command& command : kCommands) {
    if (group && *group != command.group) {
      row->addSpacing(kGroupGap);
      row->addWidget(new Rule(QFrame::VLine, this));
      row->addSpacing(kGroupGap);
    }
    group = command.group;
    row->addWidget(MakeButton(command, this));
  }
  row->addStretch(1);
  DrawImages();
  Measure();
}

void CommandBar::ShowCaptions(bool shown) {
  captions_shown_ = shown;
  for (const Command& command : kCommands) {
    Button(command.name)->setToolButtonStyle(shown ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
  }
}

void CommandBar::Measure() {
  const auto size_when = [this](bool captions) {
    ShowCaptions(captions);
    layout()->invalidate();
    return layout()->sizeHint();
  };
  without_captions_ = size_when(false);
  with_captions_ = size_when(true);
  ShowCaptions(width() >= with_captions_.width());
  updateGeometry();
}

int CommandBar::Height() const {
  return (captions_shown_ ? with_captions_ : without_captions_).height();
}

QSize CommandBar::sizeHint() const {
  return {with_captions_.width(), Height()};
}

QSize CommandBar::minimumSizeHint() const {
  return {without_captions_.width(), Height()};
}

QToolButton* CommandBar::Button(std::string_view name) const {
  return findChild<QToolButton*>(FromText(name), Qt::FindDirectChildrenOnly);
}

void CommandBar::OnClick(std::string_view button, std::function<void()> command) {
  connect(Button(button), &QToolButton::clicked, this, [this, run = std::move(command)] {
    if (TakesInput(*this)) run();
  });
}

void CommandBar::SetMenu(std::string_view button, QMenu* menu) {
  Button(button)->setMenu(menu);
  Button(button)->setPopupMode(QToolButton::MenuButtonPopup);
  Measure();
}

void CommandBar::DrawImages() {
  const QColor ink = palette().color(QPalette::Active, QPalette::ButtonText);
  const QColor disabled_ink = palette().color(QPalette::Disabled, QPalette::ButtonText);
  for (const Command& command : kCommands) {
    Button(command.name)->setIcon(CommandIcon(command.drawing, ink, disabled_ink));
  }
}

void CommandBar::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) DrawImages();
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Measure();
  QWidget::changeEvent(event);
}

void CommandBar::resizeEvent(QResizeEvent* event) {
  const bool room = width() >= with_captions_.width();
  if (room != captions_shown_) {
    ShowCaptions(room);
    updateGeometry();
  }
  QWidget::resizeEvent(event);
}

}  // namespace tavlo
