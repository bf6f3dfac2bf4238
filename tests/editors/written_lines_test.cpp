// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// What each dialog writes, on the screen: a line, an axis, what an operator does, and the line after OK.
#include "editors/written_lines.h"

#include <set>

namespace tavlo::testing {
namespace {

/// How a line is confirmed: at once, or after Enter has taken the entry.
const std::function<void(LineBench&)> kConfirms[] = {
    [](LineBench& d) { d.Click("OK"); }, [](LineBench& d) { d.Press(Qt::Key_O, Qt::AltModifier); },
    [](LineBench& d) {
      const bool in_text = qobject_cast<PromptBox*>(d.dialog.focusWidget()) != nullptr;
      if (!in_text) d.Press(Qt::Key_Return);
      EXPECT_TRUE(d.dialog.isVisible());
      d.Click("OK");
    }};

std::vector<Row> AllRows() {
  std::vector<Row> rows = RowsOfMoves();
  std::ranges::move(RowsOfOthers(), std::back_inserter(rows));
  return rows;
}

TEST(WrittenLines, AreThoseThatTheOperatorMeantHoweverTheyAreConfirmed) {
  for (const Row& row : AllRows()) {
    for (const auto& confirm : kConfirms) {
      const Instruction before = LineOf(row.type, row.before);
      LineBench d(row.type, row.model, row.units, before);
      const bool written = d.While([&] {
        for (const Act& act : row.acts) d.Do(act);
        confirm(d);
      });
      EXPECT_TRUE(written) << row.what;
      Instruction wanted = before;
      row.written(wanted);
      EXPECT_TRUE(d.program.Prog[0] == wanted) << row.what << ", way " << &confirm - kConfirms;
      EXPECT_TRUE(d.boxes.shown.empty()) << row.what;
    }
  }
}

TEST(WrittenLines, HaveARowForEachDialog) {
  std::set<std::string_view> tried;
  for (const Row& row : AllRows()) tried.insert(FormOf(row.type)->name);
  for (int type = 0; type < kTypes; ++type) {
    const FormRow* form = FormOf(type);
    EXPECT_TRUE(form == nullptr || tried.contains(form->name)) << type;
  }
}

TEST(WrittenLines, StayAsTheyWereInADialogThatIsConfirmedAtOnce) {
  for (int type = 0; type < kTypes; ++type) {
    if (FormOf(type) == nullptr || type == MMImenu) continue;
    for (const Units units : {Steps, Inches}) {
      const Instruction before = LineOf(type, [](Instruction& line) { line.InMask = 1; });
      LineBench d(type, 1, units, before);
      EXPECT_TRUE(d.While([&] { d.Click("OK"); }));
      EXPECT_TRUE(d.program.Prog[0] == before) << FormOf(type)->name << " of type " << type;
    }
  }
}

struct Refusal {
  const char* what;
  int type;
  Units units;
  Change before;
  std::vector<Act> acts;
  /// Nothing where the caret alone tells.
  const char* title;
  const char* text;
  /// Where the caret goes.
  const char* entry;
};

void GetsDistance(Instruction& line) {
  line.SubType = GetDistance;
}
void GetsSpeed(Instruction& line) {
  line.SubType = GetSpeed;
}
void GetsCount(Instruction& line) {
  line.SubType = GetCount;
}

const std::vector<Refusal>& Refusals() {
  static const std::vector<Refusal> refusals = {
      {"a wait for no input",
       WII,
       Steps,
       AsItIs,
       {},
       "Wait Input",
       "You must select at least one input to be high or low.",
       nullptr},
      {"a test of no input",
       III,
       Steps,
       AsItIs,
       {},
       "If Input",
       "You must select at least one input to be high or low.",
       nullptr},
      {"a home sensor that the drive lacks",
       SH,
       Steps,
       [](Instruction& line) { line.IONum = 7; },
       {},
       "Error",
       "Please select an input for the home sensor.",
       nullptr},
      {"a menu without a key",
       MMI,
       Steps,
       [](Instruction& line) { line.MenuKey = {}; },
       {{"MMIfunction(6)"}},
       "Tavlo Composer",
       "You must check at least one key in the Branch Table of an MMI Menu instruction",
       "Check1(1)"},
      {"a lower limit too far",
       MMI,
       Inches,
       GetsDistance,
       {{"lowerlimit", "1600.5"}, {"upperlimit", "1600"}},
       "Too large",
       "The lower limit for distance must not be greater than 1600 inch.",
       "lowerlimit"},
      {"a lower limit below 0",
       MMI,
       Inches,
       GetsDistance,
       {{"lowerlimit", "-1"}},
       "Too small",
       "The lower limit for distance must not be less than 0 inch.",
       "lowerlimit"},
      {"an upper limit too far",
       MMI,
       Inches,
       GetsDistance,
       {{"upperlimit", "1E300"}},
       "Too large",
       "The upper limit for distance must not be greater than 1600 inch.",
       "upperlimit"},
      {"an upper limit of less than a step",
       MMI,
       Inches,
       GetsDistance,
       {{"upperlimit", "0"}},
       "Too small",
       "The upper limit for distance must not be less than 0.0001 inch.",
       "upperlimit"},
      {"a lower limit too fast",
       MMI,
       Inches,
       GetsSpeed,
       {{"lowerlimit", "101"}, {"upperlimit", "100"}},
       "Too large",
       "The lower limit for speed must not be greater than 100 inch/sec.",
       "lowerlimit"},
      {"a lower limit too slow",
       MMI,
       Inches,
       GetsSpeed,
       {{"lowerlimit", "0.04"}},
       "Too small",
       "The lower limit for speed must not be less than 0.05 inch/sec.",
       "lowerlimit"},
      {"an upper limit too fast",
       MMI,
       Inches,
       GetsSpeed,
       {{"upperlimit", "100.1"}},
       "Too large",
       "The upper limit for speed must not be greater than 100 inch/sec.",
       "upperlimit"},
      {"an upper limit too slow",
       MMI,
       Inches,
       GetsSpeed,
       {{"upperlimit", "none"}},
       "Too small",
       "The upper limit for speed must not be less than 0.05 inch/sec.",
       "upperlimit"},
      {"too high a count",
       MMI,
       Steps,
       GetsCount,
       {{"upperlimit", "65536"}},
       "Too large",
       "The upper limit for repeat counts must not be greater than 65535.",
       "upperlimit"},
      {"too high a count to begin with",
       MMI,
       Steps,
       GetsCount,
       {{"lowerlimit", "70000"}},
       "Too large",
       "The lower limit for repeat counts must not be greater than 65535.",
       "lowerlimit"},
      {"no count at all", MMI, Steps, GetsCount, {{"lowerlimit", "0.9"}}, nullptr, nullptr, "lowerlimit"},
      {"limits in the wrong order",
       MMI,
       Steps,
       GetsCount,
       {{"lowerlimit", "9"}, {"upperlimit", "8"}},
       "Too small",
       "The upper limit must not be less than the lower limit.",
       "upperlimit"},
  };
  return refusals;
}

TEST(RefusedLines, AreToldInTheirWordsAndTheDialogStays) {
  for (const Refusal& row : Refusals()) {
    const Instruction before = LineOf(row.type, row.before);
    LineBench d(row.type, 20, row.units, before);
    d.While([&] {
      for (const Act& act : row.acts) d.Do(act);
      d.Click("OK");
      EXPECT_TRUE(d.dialog.isVisible()) << row.what;
      EXPECT_TRUE(row.entry == nullptr || d.Focus() == QLatin1String(row.entry)) << row.what;
    });
    EXPECT_FALSE(d.closed_by_itself) << row.what;
    EXPECT_TRUE(d.program.Prog[0] == before) << row.what;
    ASSERT_EQ(d.boxes.shown.size(), row.text == nullptr ? 0U : 1U) << row.what;
    if (row.text == nullptr) continue;
    EXPECT_EQ(d.boxes.shown[0].text, row.text);
    EXPECT_EQ(d.boxes.shown[0].title, row.title) << row.what;
  }
}

TEST(RefusedLines, AreAlsoPromptsForWhichThePoolHasNoRoom) {
  const Instruction before = LineOf(MMI, AsItIs);
  LineBench d(MMI, 1, Steps, before);
  // With its own end and that of the pool one byte is left over for a text.
  d.program.Prog[1].Type = MMI;
  d.program.Prog[1].Text = std::string(1532, 'x');
  d.While([&] {
    d.Do({"MMItext", "ab"});
    d.Click("OK");
    EXPECT_TRUE(d.dialog.isVisible());
    EXPECT_EQ(d.Focus(), QStringLiteral("MMItext"));
    d.Do({"MMItext", "a"});
    d.Click("OK");
  });
  EXPECT_TRUE(d.closed_by_itself);
  ASSERT_EQ(d.boxes.shown.size(), 1U);
  EXPECT_EQ(d.boxes.shown[0].title, "Strings too long");
  EXPECT_EQ(d.boxes.shown[0].text,
            "You have too many MMI prompts in your program.  You must shorten the text in other MMI prompts "
            "to make "
            "room for this one.");
}

}  // namespace
}  // namespace tavlo::testing
