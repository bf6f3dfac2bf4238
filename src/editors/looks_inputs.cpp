// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks_inputs.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>
#include <array>
#include <span>

#include "editors/form_grid.h"
#include "editors/look_rows.h"
#include "widgets/font_size.h"
#include "widgets/kept_place.h"

namespace tavlo {
namespace {

constexpr std::array<const char*, 8> kMain = {"OptIn(0)", "OptIn(1)", "OptIn(2)", "OptIn(3)",
                                              "OptIn(4)", "OptIn(5)", "OptIn(6)", "OptIn(7)"};
constexpr std::array<const char*, 8> kFurther = {"OptIn(128)", "OptIn(129)", "OptIn(130)", "OptIn(131)",
                                                 "OptIn(132)", "OptIn(133)", "OptIn(134)", "OptIn(135)"};
constexpr std::size_t kMainOfHome = 6;
/// The sentence of as many inputs as there are.
constexpr int kLinesOfSentence = 3;
/// The column between the rows of the main inputs and those of the further block.
constexpr int kBetween = 4;
constexpr int kGap = 12;

using Names = std::span<const char* const>;

/// The options of the inputs: the main ones, and those of the further block beneath. Returns the frame that
/// they stand in.
QWidget* AddInputs(FormGrid& grid, const QString& heading, Names main) {
  QWidget* box = grid.AddBox(heading);
  auto* rows = new QVBoxLayout(box);
  for (const Names& names : {main, Names(kFurther)}) {
    auto* row = new QHBoxLayout;
    for (const char* name : names) {
      auto* option = FormGrid::MakeOption({name}, box);
      KeepPlace(option);
      row->addWidget(option);
    }
    row->addStretch(1);
    rows->addLayout(row);
  }
  return box;
}

/// The same on the dialogs of moves, which may end on the index of an encoder.
void AddSensor(FormGrid& grid, const QString& heading, Names main) {
  QWidget* box = AddInputs(grid, heading, main);
  auto* rows = static_cast<QVBoxLayout*>(box->layout());
  auto* servo_only = Named(new QLabel(box), "lblservo");
  KeepPlace(servo_only);
  static_cast<QHBoxLayout*>(rows->itemAt(1)->layout())->insertWidget(1, servo_only);
  rows->addWidget(new QLabel(QStringLiteral("X0 is the encoder index (use condition \"high\")"), box));
  grid.AddOptions(QStringLiteral("Condition"), {{"OptState(0)", QStringLiteral("High (open)")},
                                                {"OptState(1)", QStringLiteral("Low (closed)")},
                                                {"OptState(2)", QStringLiteral("Rising Edge")},
                                                {"OptState(3)", QStringLiteral("Falling Edge")}});
}

void AddLengthBehindSensor(FormGrid& grid) {
  AddLength(grid);
  grid.AddValue(QStringLiteral("Minimum Distance based on speed and decel rate"), "deceldist",
                "deceldistunit");
  AddSensor(grid, QStringLiteral("Sensor"), kMain);
}

/// One row of several inputs. The place counts from 0.
void AddRow(QGridLayout& rows, QWidget* frame, int place) {
  const bool is_main = place < static_cast<int>(kMain.size());
  const int number = place % static_cast<int>(kMain.size());
  const int column = is_main ? 0 : kBetween + 1;
  auto* label = new QLabel(frame);
  label->setObjectName(QStringLiteral("LblInputNo(%1)").arg(place));
  rows.addWidget(label, number, column);
  auto* one_of = new QButtonGroup(frame);
  const QString input =
      is_main ? QStringLiteral("Input %1").arg(number + 1) : QStringLiteral("X%1").arg(number);
  const QString levels[] = {QStringLiteral("High"), QStringLiteral("Low"), QStringLiteral("Don't care")};
  for (int level = 0; level < 3; ++level) {
    auto* option = new QRadioButton(levels[level], frame);
    option->setObjectName(QStringLiteral("OptSum%1(%2)").arg(place + 1).arg(level));
    option->setAccessibleName(input + QStringLiteral(", ") + levels[level]);
    one_of->addButton(option);
    rows.addWidget(option, number, column + 1 + level);
  }
}

QWidget* MakeRows(QWidget* body) {
  auto* frame = Named(new QGroupBox(QStringLiteral("Multiple Inputs"), body), "FrameSum");
  auto* column = new QVBoxLayout(frame);
  auto* rows = new QGridLayout;
  for (int place = 0; place < static_cast<int>(kMain.size() + kFurther.size()); ++place) {
    AddRow(*rows, frame, place);
  }
  rows->setColumnMinimumWidth(kBetween, ByFont(frame->fontMetrics(), kGap));
  column->addLayout(rows);
  auto* logic = new QHBoxLayout;
  auto* one_of = new QButtonGroup(frame);
  for (const FormGrid::Option& option : {FormGrid::Option{"OptAND", QStringLiteral("All of th&em (AND)")},
                                         FormGrid::Option{"OptOR", QStringLiteral("Any of &them (OR)")}}) {
    auto* button = FormGrid::MakeOption(option, frame);
    one_of->addButton(button);
    logic->addWidget(button);
  }
  logic->addStretch(1);
  column->addLayout(logic);
  auto* sentence = Named(new QLabel(frame), "LogicDesc");
  sentence->setWordWrap(true);
  sentence->setAlignment(Qt::AlignTop);
  sentence->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  sentence->setFixedHeight(kLinesOfSentence * sentence->fontMetrics().lineSpacing());
  column->addWidget(sentence);
  column->addStretch(1);
  return frame;
}

/// A dialog with the rows of several inputs at its right side. Returns the rows at its left.
FormGrid LeftOfRows(QWidget* body) {
  auto* panes = new QHBoxLayout(body);
  auto* left = new QWidget(body);
  panes->addWidget(left, 0, Qt::AlignTop);
  panes->addWidget(MakeRows(body));
  FormGrid grid(left);
  // The margins are those of the panes.
  left->layout()->setContentsMargins({});
  return grid;
}

void AddMode(FormGrid& grid) {
  AddAxis(grid);
  grid.AddOptions(QStringLiteral("Mode"), {{"OptSingle", QStringLiteral("&Single input")},
                                           {"OptSum", QStringLiteral("&Multiple Inputs")}});
  static_cast<void>(AddInputs(grid, QStringLiteral("Input"), kMain));
  grid.AddOptions(QStringLiteral("Condition"), {{"OptState(0)", QStringLiteral("Hi&gh (open)")},
                                                {"OptState(1)", QStringLiteral("Lo&w (closed)")},
                                                {"OptState(2)", QStringLiteral("&Rising Edge")},
                                                {"OptState(3)", QStringLiteral("&Falling Edge")}});
}

}  // namespace

std::function<void()> LookOfFeedSense(QWidget* body) {
  FormGrid grid(body);
  AddLengthBehindSensor(grid);
  grid.AddCheckBox(
      QStringLiteral("&If distance exceeds safety limit before sensor is found, stop motor and goto line"),
      "ChkSafety");
  grid.AddEntry(QStringLiteral("Sa&fety Distance"), {.text = "SafetyDist", .unit = "sfdistunit"});
  grid.AddNumber(QStringLiteral("Safety li&ne"), "SafetyLine", "Spin1", "SafetyLineText");
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfFeedSenseRet(QWidget* body) {
  FormGrid grid(body);
  AddLengthBehindSensor(grid);
  AddReturn(grid);
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfSeekHome(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  grid.AddEntry(QStringLiteral("&Speed"), {.text = "SpeedText", .unit = "speedunit", .slider = "SpeedBar"});
  AddAccel(grid);
  AddDecel(grid);
  AddDirection(grid);
  grid.AddValue("LblClearance", "deceldist", "deceldistunit");
  AddSensor(grid, QStringLiteral("Find the Home Sensor"), std::span(kMain).first(kMainOfHome));
  AddExecution(grid);
  return grid.Aligned({});
}

std::function<void()> LookOfWaitInput(QWidget* body) {
  FormGrid grid = LeftOfRows(body);
  AddMode(grid);
  FormGrid jog = grid.AddFrame(QStringLiteral("Activate Jog Inputs"), "FrameJog");
  jog.AddOptions(QString(), {{"cw", QStringLiteral("&Yes")}, {"ccw", QStringLiteral("&No")}});
  jog.AddEntry(QStringLiteral("S&peed"), {.text = "SpeedText", .unit = "speedunit"});
  jog.AddEntry(QStringLiteral("&Acceleration"), {.text = "AccelText", .unit = "accelunit"});
  jog.AddNote("lbljog");
  return grid.Aligned({jog});
}

std::function<void()> LookOfIfInput(QWidget* body) {
  FormGrid grid = LeftOfRows(body);
  AddMode(grid);
  AddTarget(grid);
  return grid.Aligned({});
}

}  // namespace tavlo
