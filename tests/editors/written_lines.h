// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <vector>

#include "editors/dialog_bench.h"
#include "model/instruction.h"
#include "widgets/mnemonics.h"

namespace tavlo::testing {

/// A box and what is typed over it, a list and the index of the entry, a slider and its position, or a button
/// that is clicked.
struct Act {
  const char* control;
  const char* what = "";
};

using Change = void (*)(Instruction& line);

/// An axis of 20000 steps a revolution: without units of its own, or in inches of half a revolution each.
enum Units { Steps, Inches };

struct Row {
  const char* what;
  int type;
  int model;
  Units units;
  Change before;
  std::vector<Act> acts;
  Change written;
};

inline void AsItIs(Instruction&) {}

/// The line of a new program, of this type, with this change.
inline Instruction LineOf(int type, Change change) {
  Program program;
  InitProg(program);
  program.Prog[0].Type = static_cast<std::int16_t>(type);
  change(program.Prog[0]);
  return program.Prog[0];
}

struct LineBench : DialogBench {
  LineBench(int kind, int model, Units units, const Instruction& line) : DialogBench(kind) {
    program.Axis.DriveModel[0] = static_cast<std::int16_t>(model);
    program.Axis.UseUnits[0] = units == Inches;
    program.Axis.UnitName[0] = "inch";
    program.Axis.StepsPerUnit[0] = 10000;
    program.Prog[0] = line;
  }

  void Do(const Act& act) {
    auto& widget = Find<QWidget>(act.control);
    if (auto* list = qobject_cast<QComboBox*>(&widget)) {
      list->setFocus();
      Press(Qt::Key_Home);
      for (int i = QString::fromLatin1(act.what).toInt(); i > 0; --i) Press(Qt::Key_Down);
    } else if (auto* slider = qobject_cast<QSlider*>(&widget)) {
      slider->setSliderPosition(QString::fromLatin1(act.what).toInt());
    } else if (qobject_cast<QAbstractButton*>(&widget) != nullptr) {
      Click(act.control);
    } else {
      widget.setFocus();
      Press(Qt::Key_A, Qt::ControlModifier);
      if (*act.what == '\0') Press(Qt::Key_Delete);
      Type(QString::fromLatin1(act.what));
    }
  }

  Mnemonics mnemonics;
};

/// What there is to be written in each dialog: at least one row for each.
[[nodiscard]] std::vector<Row> RowsOfMoves();
[[nodiscard]] std::vector<Row> RowsOfOthers();

}  // namespace tavlo::testing
