// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks_prompt.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "editors/form_grid.h"
#include "forms/branch_table.h"
#include "forms/prompt_text.h"
#include "model/wire.h"
#include "widgets/display_picture.h"
#include "widgets/kept_place.h"
#include "widgets/level_gauge.h"
#include "widgets/prompt_box.h"

namespace tavlo {
namespace {

constexpr int kColumns = kPromptColumns;

/// A remark in the room that its group has beside something. It asks for none itself, so that the dialog
/// keeps its size.
QLabel* Remark(const char* name, Qt::Alignment where, QWidget* inside) {
  auto* label = Named(new QLabel(inside), name);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | where);
  label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  KeepPlace(label);
  return label;
}

QGroupBox* MakeText(QWidget* body) {
  auto* frame = new QGroupBox(QStringLiteral("&Text"), body);
  auto* text = Named(new PromptBox(kColumns, frame), "MMItext");
  text->setAccessibleName(QStringLiteral("Text"));
  auto* row = new QHBoxLayout(frame);
  row->addWidget(text, 0, Qt::AlignLeft | Qt::AlignTop);
  row->addWidget(Remark("ReservedDataEntry", Qt::AlignBottom, frame), 1);
  // What follows stays where it is when the box is a line shorter.
  row->addStrut(text->HintFor(kPromptLines).height());
  return frame;
}

QGroupBox* MakeDisplay(QWidget* body) {
  auto* frame = new QGroupBox(QStringLiteral("On the display"), body);
  auto* picture = Named(new DisplayPicture(kColumns, kPromptLines, frame), "MMIdisplay");
  picture->setAccessibleName(QStringLiteral("On the display"));
  auto* row = new QHBoxLayout(frame);
  row->addWidget(picture, 0, Qt::AlignLeft | Qt::AlignTop);
  row->addWidget(Remark("lblLeftOver", Qt::AlignTop, frame), 1);
  return frame;
}

QHBoxLayout* MakeGauge(QWidget* body) {
  auto* gauge = Named(new LevelGauge(body), "PoolGauge");
  const QString caption = QStringLiteral("Texts of all prompts in the hub");
  gauge->setAccessibleName(caption);
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel(caption, body));
  row->addWidget(gauge);
  row->addStretch(1);
  return row;
}

void AddFunctions(QWidget* inside) {
  FormGrid grid(inside);
  grid.AddOptionColumn(QStringLiteral("Function"),
                       {{"MMIfunction(0)", QStringLiteral("Display text && get distance")},
                        {"MMIfunction(1)", QStringLiteral("Display text && get speed")},
                        {"MMIfunction(2)", QStringLiteral("Display text && get repeat count")},
                        {"MMIfunction(3)", QStringLiteral("Display text only")},
                        {"MMIfunction(4)", QStringLiteral("Display text && wait for enter")},
                        {"MMIfunction(5)", QStringLiteral("Display text, wait for yes/no && branch on yes")},
                        {"MMIfunction(6)", QStringLiteral("MMI Menu - branch on number keys")}});
}

std::function<void()> AddNumber(QWidget* frame) {
  FormGrid grid(frame);
  grid.AddList("lblvarname", QStringLiteral("Save data as"), "varname");
  grid.AddEntry(QStringLiteral("&Lower limit"), {.text = "lowerlimit", .unit = "lblLL"});
  grid.AddEntry(QStringLiteral("&Upper limit"), {.text = "upperlimit", .unit = "lblUL"});
  FormGrid axis = grid.AddFrame(QStringLiteral("In the units of"), "FrameDrive");
  axis.AddList(QStringLiteral("A&xis"), "Drive");
  return grid.Aligned({axis});
}

std::function<void()> AddTarget(QWidget* frame) {
  FormGrid grid(frame);
  grid.AddNumber(QStringLiteral("Line #"), "linenum", "Spin1", "linetext");
  return grid.Aligned({});
}

std::function<void()> AddTable(QWidget* frame) {
  FormGrid grid(frame);
  for (int key = 1; key <= BranchTable::kKeys; ++key) {
    const std::string check_box = Element("Check1", key);
    const std::string number = Element("Addr", key);
    const std::string line_text = Element("AddrText", key);
    grid.AddCheckedNumber(QStringLiteral(" If user presses %1, branch to line").arg(key),
                          {.check_box = check_box.c_str(),
                           .number = number.c_str(),
                           .line_text = line_text.c_str(),
                           .spoken = QStringLiteral("Line for key %1").arg(key)});
  }
  return grid.Aligned({});
}

std::function<void()> AddJogging(QWidget* frame) {
  FormGrid grid(frame);
  grid.AddCheckBox(QStringLiteral(" Allow jogging on left/right arrow keys"), "ChkJogLR");
  grid.AddList(QStringLiteral("Axis"), "DriveLR", QStringLiteral("Left/right axis"));
  grid.AddEntry(
      QStringLiteral("Speed"),
      {.text = "TxtLRJogSpeed", .unit = "LRSpeedUnit", .spoken = QStringLiteral("Left/right speed")});
  grid.AddEntry(
      QStringLiteral("Acceleration"),
      {.text = "TxtLRJogAccel", .unit = "LRAccelUnit", .spoken = QStringLiteral("Left/right acceleration")});
  grid.AddCheckBox(QStringLiteral(" Allow jogging on up/down arrow keys"), "ChkJogUD");
  grid.AddList(QStringLiteral("Axis"), "DriveUD", QStringLiteral("Up/down axis"));
  grid.AddEntry(QStringLiteral("Speed"),
                {.text = "TxtUDJogSpeed", .unit = "UDSpeedUnit", .spoken = QStringLiteral("Up/down speed")});
  grid.AddEntry(
      QStringLiteral("Acceleration"),
      {.text = "TxtUDJogAccel", .unit = "UDAccelUnit", .spoken = QStringLiteral("Up/down acceleration")});
  return grid.Aligned({});
}

/// What a function needs besides its text.
struct Block {
  const char* heading;
  const char* name;
  std::function<void()> (*fill)(QWidget* frame);
};
constexpr Block kBlocks[] = {{"Number", "framemmivar", AddNumber},
                             {"Branch on yes", "framelinenum", AddTarget},
                             {"Branch Table", "FrameBranchTable", AddTable},
                             {"MMI Jogging", "FrameJog", AddJogging}};

}  // namespace

std::function<void()> LookOfMMIprompt(QWidget* body) {
  auto* grid = new QGridLayout(body);
  grid->addWidget(MakeText(body), 0, 0);
  grid->addWidget(MakeDisplay(body), 0, 1);
  grid->addLayout(MakeGauge(body), 1, 0, 1, 2);
  auto* functions = new QWidget(body);
  AddFunctions(functions);
  functions->layout()->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(functions, 2, 0, Qt::AlignTop);
  std::vector<std::function<void()>> aligns;
  for (const Block& block : kBlocks) {
    auto* frame = Named(new QGroupBox(QLatin1String(block.heading), body), block.name);
    KeepPlace(frame);
    aligns.push_back(block.fill(frame));
    // One in the place of the other: never two of them are seen.
    grid->addWidget(frame, 2, 1, Qt::AlignTop);
  }
  return [aligns] {
    for (const auto& align : aligns) align();
  };
}

std::function<void()> LookOfComment(QWidget* body) {
  FormGrid grid(body);
  grid.AddEntry(QStringLiteral("&Comment"),
                {.text = "commenttext",
                 .unit_caption = QStringLiteral("at most %1 characters").arg(kLongestComment),
                 .digits = kLongestComment});
  return grid.Aligned({});
}

}  // namespace tavlo
