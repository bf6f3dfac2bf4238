// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/pick_prog.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <map>

#include "editors/form_grid.h"
#include "model/instruction.h"
#include "session/rows.h"
#include "widgets/icon_images.h"
#include "widgets/ringed_button.h"
#include "widgets/takes_input.h"

namespace tavlo {
namespace {

struct GroupRow {
  const char* heading;
  int column;
};
enum Group { Move, WaitAndTest, OutputAndDrive, Operator, BranchAndRepeat, Other };
/// From left to right, and down each column.
constexpr std::array kGroups = {
    GroupRow{"Move", 0},     GroupRow{"Wait and test", 1},     GroupRow{"Output and drive", 1},
    GroupRow{"Operator", 1}, GroupRow{"Branch and repeat", 2}, GroupRow{"Other", 2}};

struct KindButton {
  int type;
  const char* name;
  const char* caption;
  Group group;
  const char* what_it_does;
};
constexpr std::array kButtons = {
    KindButton{FL, "BtnFL", "Feed to Length", Move, "Move an axis by a distance"},
    KindButton{FLSO, "BtnFLSO", "Feed & Set Output", Move, "Move by a distance and set an output on the way"},
    KindButton{FR, "BtnFR", "Feed & Return", Move, "Move by a distance, wait, and come back"},
    KindButton{FP, "BtnFP", "Feed to Position", Move, "Move to an absolute position"},
    KindButton{SS, "BtnSS", "Start/Stop Motion", Move, "Start an axis that turns on by itself, or stop it"},
    KindButton{FS, "BtnFS", "Feed to Sensor", Move, "Move until an input is met, and a distance beyond it"},
    KindButton{FSR, "BtnFSR", "Feed to Sensor & Return", Move,
               "Move until an input is met, wait, and come back"},
    KindButton{SH, "BtnSH", "Seek Home", Move, "Look for the home sensor"},
    KindButton{SP, "BtnSP", "Set Position", Move, "Say which position an axis is at, without a move"},
    KindButton{WT, "BtnWT", "Wait Time", WaitAndTest, "Wait for a time"},
    KindButton{WI, "BtnWI", "Wait Input", WaitAndTest, "Wait for one input or several"},
    KindButton{II, "BtnII", "If Input", WaitAndTest, "Go to a line if an input, or several, are met"},
    KindButton{IM, "BtnIM", "If Moving", WaitAndTest, "Go to a line while an axis moves"},
    KindButton{SO, "BtnSO", "Set Output", OutputAndDrive, "Switch an output, for good or for a pulse"},
    KindButton{CC, "BtnCC", "Change Current", OutputAndDrive,
               "Change the current of a motor, or switch it off and on"},
    KindButton{MMI, "BtnMMI", "MMI Prompt", Operator, "Show a text and take what the operator answers"},
    KindButton{LP, "BtnLP", "Learn Position", Operator, "Keep the position of an axis in a variable"},
    KindButton{GT, "BtnGT", "Go To", BranchAndRepeat, "Go on at another line"},
    KindButton{CL, "BtnCL", "Call", BranchAndRepeat, "Run a subroutine and come back"},
    KindButton{RT, "BtnReturn", "Return", BranchAndRepeat, "End a subroutine"},
    KindButton{RP, "BtnRP", "Repeat", BranchAndRepeat, "Begin lines that are run several times"},
    KindButton{ER, "BtnER", "End Repeat", BranchAndRepeat, "End the lines of the Repeat above"},
    KindButton{RL, "BtnRL", "Reset Loop", BranchAndRepeat, "Let a Repeat count from the beginning again"},
    KindButton{CM, "BtnCM", "Comment", Other, "Write a note, which the hub passes by"},
    KindButton{NO, "BtnNO", "None", Other, "Empty the line"},
};
constexpr int kImageSize = 24;
/// Letters that are farther apart begin anew.
constexpr int kPauseMs = 1000;

QString LettersOf(const QString& caption) {
  QString letters;
  std::copy_if(caption.begin(), caption.end(), std::back_inserter(letters),
               [](QChar c) { return c.isLetter(); });
  return letters;
}

bool BeginsWith(const KindButton& kind, const QString& letters) {
  return LettersOf(QLatin1String(kind.caption)).startsWith(letters, Qt::CaseInsensitive);
}

QToolButton* MakeKind(const KindButton& kind, QWidget* parent) {
  auto* button = new RingedButton(kImageSize, parent);
  button->setObjectName(QLatin1String(kind.name));
  button->setText(QString::fromLatin1(kind.caption).replace(QLatin1Char('&'), QStringLiteral("&&")));
  button->setAccessibleName(QString::fromLatin1(kind.caption));
  button->setToolTip(QString::fromLatin1(kind.what_it_does));
  button->setAccessibleDescription(button->toolTip());
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  button->setFocusPolicy(Qt::StrongFocus);
  return button;
}

}  // namespace

PickProg::PickProg(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("PickProg"));
  auto* kinds = new QHBoxLayout;
  AddKinds(*kinds);
  auto* column = new QVBoxLayout(this);
  column->addLayout(kinds);
  column->addLayout(MakeButtons());
  column->setSizeConstraint(QLayout::SetFixedSize);
  DrawImages();
}

void PickProg::AddKinds(QHBoxLayout& columns) {
  std::map<int, QVBoxLayout*> groups;
  for (int i = 0; i < static_cast<int>(kGroups.size()); ++i) {
    const GroupRow& row = kGroups[i];
    while (columns.count() <= row.column) columns.addLayout(new QVBoxLayout);
    auto* frame = new QGroupBox(QLatin1String(row.heading), this);
    groups[i] = new QVBoxLayout(frame);
    columns.itemAt(row.column)->layout()->addWidget(frame);
  }
  for (const KindButton& kind : kButtons) {
    QToolButton* button = MakeKind(kind, this);
    connect(button, &QToolButton::clicked, this,
            [this, kind] { Press({.what = Picked::What::Kind, .type = kind.type}); });
    groups[kind.group]->addWidget(button);
  }
  // The last group of a column reaches as far down as those beside it.
  for (const auto& [group, layout] : groups) layout->addStretch(1);
  for (int i = 0; i < columns.count(); ++i) {
    auto* column = static_cast<QVBoxLayout*>(columns.itemAt(i)->layout());
    column->setStretch(column->count() - 1, 1);
  }
}

QHBoxLayout* PickProg::MakeButtons() {
  auto* row = new QHBoxLayout;
  const auto add = [&](const QString& caption, const char* name) {
    QPushButton* button = MakeButton(caption, name, this);
    row->addWidget(button);
    return button;
  };
  connect(add(QStringLiteral("&Insert line"), "BtnInsert"), &QPushButton::clicked, this,
          [this] { Press({.what = Picked::What::Insert}); });
  connect(add(QStringLiteral("&Delete line"), "BtnDelete"), &QPushButton::clicked, this,
          [this] { Press({.what = Picked::What::Delete}); });
  row->addStretch(1);
  connect(add(QStringLiteral("Cancel"), "BtnCancel"), &QPushButton::clicked, this, [this] {
    if (TakesInput(*this)) reject();
  });
  return row;
}

void PickProg::DrawImages() {
  const QColor ink = palette().color(QPalette::ButtonText);
  for (const KindButton& kind : kButtons) {
    auto* button = findChild<QToolButton*>(QLatin1String(kind.name));
    button->setIcon(GlyphIcon(IconFor(kind.type, IconSet::Normal), ink));
  }
}

void PickProg::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) DrawImages();
  QDialog::changeEvent(event);
}

void PickProg::keyPressEvent(QKeyEvent* event) {
  const bool plain = (event->modifiers() & ~Qt::ShiftModifier) == 0;
  if (plain && event->text().size() == 1 && event->text().front().isLetter()) {
    GoToKind(event->text().front().toLower());
    return;
  }
  QDialog::keyPressEvent(event);
}

void PickProg::GoToKind(QChar letter) {
  if (!since_letter_.isValid() || since_letter_.elapsed() > kPauseMs) typed_.clear();
  since_letter_.start();
  // The same letter again goes on to the next kind that begins with it.
  if (typed_ != letter) typed_ += letter;
  const QString focus = focusWidget() != nullptr ? focusWidget()->objectName() : QString();
  const auto at_focus = std::ranges::find_if(
      kButtons, [&focus](const KindButton& kind) { return focus == QLatin1String(kind.name); });
  const std::size_t from = at_focus == kButtons.end() ? kButtons.size() - 1 : at_focus - kButtons.begin();
  // Further letters may mean the kind to which the first ones went.
  const std::size_t first = typed_.size() > 1 ? 0 : 1;
  for (std::size_t i = first; i < kButtons.size() + first; ++i) {
    const KindButton& kind = kButtons[(from + i) % kButtons.size()];
    if (BeginsWith(kind, typed_)) return findChild<QToolButton*>(QLatin1String(kind.name))->setFocus();
  }
}

void PickProg::Press(const Picked& picked) {
  // A screen reader can press what lies under a question.
  if (!TakesInput(*this)) return;
  // A question may stand over the picker by now, and its answer closes both.
  if (act_ && act_(picked)) accept();
}

void PickProg::Run(int line, const std::function<bool(const Picked&)>& act) {
  setWindowTitle(QStringLiteral("Program Line %1").arg(line + 1));
  act_ = act;
  typed_.clear();
  // Wherever the last pick was made.
  findChild<QToolButton*>(QLatin1String(kButtons.front().name))->setFocus();
  exec();
  act_ = nullptr;
}

}  // namespace tavlo
