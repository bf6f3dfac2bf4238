// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/pick_prog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>
#include <string_view>

#include "model/instruction.h"
#include "qt/gui/shown_text.h"
#include "session/rows.h"
#include "widgets/icon_images.h"
#include "widgets/ringed_button.h"

namespace tavlo {
namespace {

struct KindButton {
  int type;
  const char* name;
  const char* caption;
};
/// Down one column after the other: moves, waits and outputs, the way of the program, the rest.
constexpr std::array kButtons = {
    KindButton{FL, "BtnFL", "Feed to Length"},
    KindButton{FLSO, "BtnFLSO", "Feed & Set Output"},
    KindButton{FR, "BtnFR", "Feed & Return"},
    KindButton{FP, "BtnFP", "Feed to Position"},
    KindButton{SS, "BtnSS", "Start/Stop Motion"},
    KindButton{FS, "BtnFS", "Feed to Sensor"},
    KindButton{FSR, "BtnFSR", "Feed to Sensor & Return"},
    KindButton{SH, "BtnSH", "Seek Home"},
    KindButton{SP, "BtnSP", "Set Position"},
    KindButton{WT, "BtnWT", "Wait Time"},
    KindButton{WI, "BtnWI", "Wait Input"},
    KindButton{II, "BtnII", "If Input"},
    KindButton{IM, "BtnIM", "If Moving"},
    KindButton{SO, "BtnSO", "Set Output"},
    KindButton{CC, "BtnCC", "Change Current"},
    KindButton{MMI, "BtnMMI", "MMI Prompt"},
    KindButton{LP, "BtnLP", "Learn Position"},
    KindButton{CM, "BtnCM", "Comment"},
    KindButton{GT, "BtnGT", "Go To"},
    KindButton{CL, "BtnCL", "Call"},
    KindButton{RT, "BtnReturn", "Return"},
    KindButton{RP, "BtnRP", "Repeat"},
    KindButton{ER, "BtnER", "End Repeat"},
    KindButton{RL, "BtnRL", "Reset Loop"},
    KindButton{NO, "BtnNO", "None"},
};
constexpr int kRows = 9;
constexpr int kImageSize = 24;

}  // namespace

PickProg::PickProg(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("PickProg"));
  setWindowTitle(QStringLiteral("Pick an Instruction"));
  auto* grid = new QGridLayout;
  int place = 0;
  for (const KindButton& kind : kButtons) {
    auto* button = new RingedButton(kImageSize, this);
    button->setObjectName(QLatin1String(kind.name));
    button->setText(QString::fromLatin1(kind.caption).replace(QLatin1Char('&'), QStringLiteral("&&")));
    button->setAccessibleName(QString::fromLatin1(kind.caption));
    button->setIcon(LineIcon(IconFor(kind.type, IconSet::Normal)));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this,
            [this, kind] { Press({.what = Picked::What::Kind, .type = kind.type}); });
    grid->addWidget(button, place % kRows, place / kRows);
    ++place;
  }
  auto* row = new QHBoxLayout;
  const auto add = [&](const QString& caption, const char* name) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
  };
  connect(add(QStringLiteral("&Insert line"), "BtnInsert"), &QPushButton::clicked, this,
          [this] { Press({.what = Picked::What::Insert}); });
  connect(add(QStringLiteral("&Delete line"), "BtnDelete"), &QPushButton::clicked, this,
          [this] { Press({.what = Picked::What::Delete}); });
  row->addStretch(1);
  connect(add(QStringLiteral("Cancel"), "BtnCancel"), &QPushButton::clicked, this, &QDialog::reject);
  auto* column = new QVBoxLayout(this);
  column->addLayout(grid);
  column->addLayout(row);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

void PickProg::Press(const Picked& picked) {
  // A question may stand over the picker by now, and its answer closes both.
  if (act_ && act_(picked)) accept();
}

void PickProg::Run(const std::function<bool(const Picked&)>& act) {
  act_ = act;
  // Wherever the last pick was made.
  findChild<QToolButton*>(QLatin1String(kButtons.front().name))->setFocus();
  exec();
  act_ = nullptr;
}

}  // namespace tavlo
