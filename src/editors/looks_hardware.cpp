// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks_hardware.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>

#include "editors/form_grid.h"
#include "forms/control_form.h"
#include "model/axis_config.h"
#include "widgets/entry_box.h"
#include "widgets/kept_place.h"

namespace tavlo {
namespace {

enum HardwareColumn {
  AxisColumn,
  ModelColumn,
  FoundColumn,
  NameColumn,
  StepsColumn,
  CurrentColumn,
  LimitsColumn,
  UserUnitColumn,
  PitchColumn
};

struct Heading {
  int column;
  const char* text;
};
constexpr std::array kHeadings = {
    Heading{ModelColumn, "Drive model"},  Heading{FoundColumn, "Found"},
    Heading{NameColumn, "Axis name"},     Heading{StepsColumn, "Steps/rev"},
    Heading{CurrentColumn, "Current, A"}, Heading{LimitsColumn, "Limit switches"},
    Heading{UserUnitColumn, "User unit"}, Heading{PitchColumn, "Steps/unit"},
};

struct Cell {
  enum What { Text, List, Box, Press };
  const char* name;
  What what;
  int column;
  /// How it is read out, behind the number of the axis.
  const char* spoken;
  /// Of a box.
  int digits = 0;
  const char* tool_tip = "";
};
// Cells of one column stand in one place; one of them is seen.
constexpr std::array kCells = {
    Cell{"LblAxis", Cell::Text, AxisColumn, ""},
    Cell{"ModelList", Cell::List, ModelColumn, "drive model"},
    Cell{"lblDriveModel", Cell::Text, FoundColumn, "drive found"},
    Cell{"TxtAxisName", Cell::Box, NameColumn, "name", 13, "Enter up to 8 characters"},
    Cell{"SPR", Cell::List, StepsColumn, "steps per revolution"},
    Cell{"SPR100", Cell::List, StepsColumn, "steps per revolution"},
    Cell{"SPRtext", Cell::Box, StepsColumn, "steps per revolution", 6, "1 to 65535"},
    Cell{"TxtCurrent", Cell::Box, CurrentColumn, "current in amperes", 6},
    Cell{"lblCurrent", Cell::Press, CurrentColumn, "currents"},
    Cell{"Limits", Cell::List, LimitsColumn, "limit switches"},
    Cell{"TxtUUname", Cell::Box, UserUnitColumn, "user unit", 7, "Enter up to 4 characters"},
    Cell{"TxtUUpitch", Cell::Box, PitchColumn, "steps per unit", 9, "1 to 16000000"},
};

QWidget* Make(const Cell& cell, QWidget* body) {
  switch (cell.what) {
    case Cell::Text: return new QLabel(body);
    case Cell::Box: return new EntryBox(cell.digits, body);
    case Cell::Press: {
      auto* button = new QPushButton(body);
      button->setAutoDefault(false);
      return button;
    }
    case Cell::List: break;
  }
  auto* list = new QComboBox(body);
  list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  return list;
}

QGridLayout* AddRows(QWidget* body) {
  auto* grid = new QGridLayout;
  for (const Heading& heading : kHeadings) {
    auto* label = new QLabel(QLatin1String(heading.text), body);
    if (heading.column == FoundColumn) label->setObjectName(QStringLiteral("LblFound"));
    grid->addWidget(label, 0, heading.column);
  }
  for (int axis = 0; axis < kAxes; ++axis) {
    for (const Cell& cell : kCells) {
      QWidget* widget = Make(cell, body);
      widget->setObjectName(QString::fromStdString(Element(cell.name, axis)));
      widget->setToolTip(QLatin1String(cell.tool_tip));
      if (*cell.spoken != 0) {
        widget->setAccessibleName(
            QStringLiteral("Axis %1, %2").arg(axis + 1).arg(QLatin1String(cell.spoken)));
      }
      grid->addWidget(widget, axis + 1, cell.column);
    }
  }
  return grid;
}

QGroupBox* MakeOptions(const QString& heading, std::initializer_list<FormGrid::Option> options,
                       QWidget* body) {
  auto* frame = new QGroupBox(heading, body);
  auto* row = new QHBoxLayout(frame);
  for (const FormGrid::Option& option : options) row->addWidget(FormGrid::MakeOption(option, frame));
  return frame;
}

/// Whether axes share their settings, and the way to the drives that are plugged in.
QHBoxLayout* MakeChoices(QWidget* body) {
  auto* row = new QHBoxLayout;
  row->addWidget(MakeOptions(
      QStringLiteral("Limit switches"),
      {{"SameLimits", QStringLiteral("&Same for all axes")}, {"DiffLimits", QStringLiteral("&Different")}},
      body));
  row->addWidget(MakeOptions(
      QStringLiteral("User units"),
      {{"SameUnits", QStringLiteral("Sa&me for all axes")}, {"DiffUnits", QStringLiteral("Diffe&rent")}},
      body));
  row->addStretch(1);
  QPushButton* scan = MakeButton(QStringLiteral("Sc&an drives"), "Scan", body);
  scan->setToolTip(
      QStringLiteral("Ask the hub which drives are plugged in. A program that runs is stopped."));
  row->addWidget(scan, 0, Qt::AlignBottom);
  return row;
}

QGroupBox* MakeScanPanel(QWidget* body) {
  auto* panel = Named(new QGroupBox(QStringLiteral("Drives found"), body), "ScanPanel");
  auto* row = new QHBoxLayout(panel);
  row->addWidget(new QLabel(QStringLiteral("Hub firmware"), panel));
  row->addWidget(Named(new QLabel(panel), "LblHubVersion"));
  row->addStretch(1);
  QPushButton* copy = MakeButton(QStringLiteral("Cop&y to the list"), "Copy2List", panel);
  copy->setToolTip(
      QStringLiteral("Choose the models that were found. An axis whose drive is unknown keeps its own."));
  row->addWidget(copy);
  row->addWidget(MakeButton(QStringLiteral("Clos&e"), "OKscan", panel));
  return panel;
}

struct Amperes {
  const char* label;
  const char* text;
  const char* slider;
};

QGroupBox* MakeCurrents(const char* name, std::initializer_list<Amperes> rows, const FormGrid::Option& take,
                        const FormGrid::Option& leave, QWidget* body) {
  auto* panel = Named(new QGroupBox(QStringLiteral("Currents of the axis that is lit"), body), name);
  auto* column = new QVBoxLayout(panel);
  auto* entries = new QWidget(panel);
  FormGrid grid(entries);
  for (const Amperes& row : rows) {
    grid.AddEntry(QLatin1String(row.label),
                  {.text = row.text, .unit_caption = QStringLiteral("A"), .slider = row.slider, .digits = 6});
  }
  column->addWidget(entries);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(MakeButton(take.caption, take.name, panel));
  buttons->addWidget(MakeButton(leave.caption, leave.name, panel));
  column->addLayout(buttons);
  return panel;
}

/// What an axis hides keeps its place, so that nothing jumps; an axis that the hub does not have takes none,
/// nor does what no scan has found.
void Align(const QWidget& body) {
  const auto find = [&](const std::string& name) {
    return body.findChild<QWidget*>(QString::fromStdString(name));
  };
  const bool scanned = !find("ScanPanel")->isHidden();
  for (int axis = 0; axis < kAxes; ++axis) {
    const bool exists = !find(Element("LblAxis", axis))->isHidden();
    for (const Cell& cell : kCells) {
      KeepPlace(find(Element(cell.name, axis)), exists && (cell.column != FoundColumn || scanned));
    }
  }
}

}  // namespace

std::function<void()> LookOfHardware(QWidget* body) {
  auto* column = new QVBoxLayout(body);
  column->addLayout(AddRows(body));
  column->addLayout(MakeChoices(body));
  column->addWidget(MakeScanPanel(body));
  column->addWidget(MakeCurrents(
      "CurrentPanel", {{"&Continuous, rms", "Acont", "SliderAcont"}, {"&Peak, rms", "Apeak", "SliderApeak"}},
      {"OKcrnt", QStringLiteral("Set c&urrents")}, {"CancelCrnt", QStringLiteral("Lea&ve them")}, body));
  column->addWidget(MakeCurrents("STMCurrentPanel",
                                 {{"Ru&nning", "TxtRun", "SliderRun"},
                                  {"Acceleratin&g", "TxtAccel", "SliderAccel"},
                                  {"&Idle", "TxtIdle", "SliderIdle"}},
                                 {"OKSTM", QStringLiteral("Set curren&ts")},
                                 {"CancelSTM", QStringLiteral("&Leave them")}, body));
  return [body] { Align(*body); };
}

}  // namespace tavlo
