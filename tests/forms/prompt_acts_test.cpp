// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <random>

#include "forms/prompt_bench.h"
#include "motion/units.h"

namespace tavlo::testing {
namespace {

/// What is wrong with a record that the dialog wrote; empty if nothing is.
std::string OutOfRange(const Program& program, const Instruction& line) {
  std::string wrong;
  const auto expect = [&](bool in_range, const char* what) {
    if (!in_range) wrong += std::string(what) + " ";
  };
  const auto is_axis = [](int axis) { return axis >= 0 && axis < 8; };
  expect(line.Type == MMI && line.SubType >= GetDistance && line.SubType <= Menu, "kind");
  expect(line.Text.size() <= (line.SubType <= GetCount ? 60U : 80U), "Text");
  expect(line.Text.find_first_of("\"\r\n") == std::string::npos, "letters of Text");
  expect(is_axis(line.Drive) && is_axis(line.JogLRDrive) && is_axis(line.JogUDDrive), "axes");
  expect(line.DistVar >= 0 && line.DistVar < kMMIVariables, "DistVar");
  expect(line.LineNum >= 0 && line.LineNum < kLines, "LineNum");
  for (std::size_t i = 1; i <= 8; ++i) expect(line.MenuLine[i] >= 0 && line.MenuLine[i] < kLines, "MenuLine");
  const std::pair<int, double> speeds[] = {{line.JogLRDrive, line.JogLRSpeed},
                                           {line.JogUDDrive, line.JogUDSpeed}};
  for (const auto& [axis, rev_s] : speeds) {
    expect(rev_s >= static_cast<float>(MinSpeed(program, axis)) && rev_s <= MaxSpeed(program, axis), "speed");
  }
  expect(line.JogLRAccel >= MinAccel(program, line.JogLRDrive) && line.JogLRAccel <= kMaxAccel, "JogLRAccel");
  expect(line.JogUDAccel >= MinAccel(program, line.JogUDDrive) && line.JogUDAccel <= kMaxAccel, "JogUDAccel");
  for (const std::int32_t part : {line.LowerFrac, line.UpperFrac}) expect(part >= 0 && part <= 10000, "Frac");
  if (line.SubType == GetCount) {
    expect(line.LowerInt >= 1 && line.UpperInt <= 32767 && line.LowerInt <= line.UpperInt, "count");
  }
  return wrong;
}

/// An act on any of the controls.
void ActAtRandom(PromptBench& d, std::mt19937& random) {
  static const std::vector<std::string> texts = {
      "",       "abc",          "1E300",
      "-1E300", "-0",           std::string(400, '9'),
      "2,5",    "a\r\nb \"c\"", "12",
      "0.5",    "-3",           "1E999",
      "200",    "40 ",          "a longer text with words of every length and more"};
  const auto& rows = d.form.Controls().Rows();
  const Bound& bound = rows[random() % rows.size()];
  const std::string& text = texts[random() % texts.size()];
  if (std::holds_alternative<TextBox*>(bound.control) || std::holds_alternative<TextArea*>(bound.control)) {
    d.Type(bound.name, text);
    if (random() % 2 == 0 && std::holds_alternative<TextBox*>(bound.control)) d.Enter(bound.name, text);
  } else if (std::holds_alternative<CheckBox*>(bound.control) ||
             std::holds_alternative<OptionButton*>(bound.control)) {
    d.Click(bound.name);
  } else if (std::holds_alternative<ListBox*>(bound.control)) {
    d.Choose(bound.name, static_cast<int>(random() % 60) - 5);
  } else if (std::holds_alternative<SpinButton*>(bound.control)) {
    d.Spin(bound.name, random() % 2 == 0 ? 1 : -1);
  }
}

TEST(MMIprompt, WhateverIsTypedAndClickedTheRecordIsInRangeAndACancelledOneAsItWas) {
  constexpr unsigned kSeed = 20260525;
  std::mt19937 random(kSeed);
  PromptBench d;
  int written = 0;
  for (int i = 0; i < 2000; ++i) {
    SCOPED_TRACE("seed " + std::to_string(kSeed) + ", dialog " + std::to_string(i));
    if (i % 50 == 0) d.Line() = FullLine(i % 7);
    const Instruction before = d.Line();
    d.Open();
    for (unsigned acts = random() % 12; acts > 0; --acts) ActAtRandom(d, random);
    if (i % 3 != 0 && d.OK()) {
      ++written;
      ASSERT_EQ(OutOfRange(d.program, d.Line()), "");
      continue;
    }
    d.form.Cancel();
    ASSERT_EQ(d.Line(), before);
  }
  EXPECT_GT(written, 500);
}

}  // namespace
}  // namespace tavlo::testing
