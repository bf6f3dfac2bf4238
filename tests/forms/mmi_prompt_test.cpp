// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/prompt_bench.h"

namespace tavlo::testing {
namespace {

TEST(MMIprompt, OpeningAndConfirmingChangesNothingWhateverItsFunction) {
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    PromptBench d;
    Instruction line = FullLine(sub_type);
    // Counts are whole.
    if (sub_type == GetCount) line.UpperFrac = line.LowerFrac = 0;
    d.Line(5) = line;
    d.Open(5);
    EXPECT_EQ(d.Function(), sub_type);
    EXPECT_TRUE(d.OK()) << sub_type;
    EXPECT_EQ(d.Line(5), line) << sub_type;
  }
}

TEST(MMIprompt, AFreshLineIsConfirmedWhateverItsFunction) {
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    PromptBench d(sub_type);
    const Instruction before = d.Line();
    EXPECT_TRUE(d.OK()) << sub_type;
    EXPECT_EQ(d.Line(), before) << sub_type;
  }
}

TEST(MMIprompt, ShowsWhatItsFunctionNeeds) {
  const std::vector<std::string> parts = {
      "ReservedDataEntry", "framemmivar",  "varname",  "lowerlimit",      "lblLL", "upperlimit", "lblUL",
      "FrameDrive",        "framelinenum", "FrameJog", "FrameBranchTable"};
  const std::vector<std::string> of_an_axis = {
      "ReservedDataEntry", "framemmivar", "varname",   "lowerlimit", "lblLL",
      "upperlimit",        "lblUL",       "FrameDrive"};
  const std::vector<std::string> count = {"ReservedDataEntry", "framemmivar", "varname", "lowerlimit",
                                          "upperlimit"};
  const std::vector<std::vector<std::string>> seen = {
      of_an_axis, of_an_axis, count, {}, {"FrameJog"}, {"framelinenum"}, {"FrameBranchTable"}};
  PromptBench d;
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    d.Click(PromptBench::Function(sub_type));
    EXPECT_EQ(d.Seen(parts), seen[static_cast<std::size_t>(sub_type)]) << sub_type;
    EXPECT_EQ(d.form.Controls().Find("MMItext").control, d.form.First().control);
    EXPECT_EQ(d.Picture("MMIdisplay").lines_for_text, sub_type <= GetCount ? 3 : 4);
  }
}

TEST(MMIprompt, AFunctionThatDoesNotExistOpensAsDisplayOnly) {
  for (const int sub_type : {-1, 7, 32767}) {
    PromptBench d(sub_type);
    EXPECT_EQ(d.Function(), DisplayOnly);
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().SubType, DisplayOnly);
  }
}

TEST(MMIprompt, AMenuOfTheHubIsWrittenAsAPrompt) {
  PromptBench d(Menu);
  d.Line().Type = MMImenu;
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Type, MMI);
  EXPECT_EQ(d.Line().SubType, Menu);
}

TEST(MMIprompt, StoresTheTextAsTheDisplayShowsItAndOpensItAsTyped) {
  PromptBench d;
  d.Type("MMItext", "word1 word2 word3 word4 of \"line\" 2");
  EXPECT_EQ(d.Picture("MMIdisplay").lines,
            (std::vector<std::string>{"word1 word2 word3   ", "word4 of 'line' 2"}))
      << "at once";
  EXPECT_EQ(d.Line().Text, "");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text, "word1 word2 word3   word4 of 'line' 2");
  EXPECT_TRUE(d.Line().Wrap1);
  d.Open();
  EXPECT_EQ(d.Text("MMItext"), "word1 word2 word3 word4 of 'line' 2");
}

TEST(MMIprompt, ATextThatIsTypedAsItWasKeepsTheRecordsOwn) {
  PromptBench d;
  d.Line() = FullLine(DisplayOnly);
  const Instruction before = d.Line();
  d.Open();
  const std::string shown = d.Text("MMItext");
  d.Type("MMItext", shown + "x");
  d.Type("MMItext", shown);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(), before);
}

TEST(MMIprompt, ShowsNoMoreOfATextFromAFileThanThePoolCouldHoldAndKeepsItAll) {
  PromptBench d(DisplayOnly);
  d.Line().Text = std::string(10u << 20, 'x');
  d.Open();
  EXPECT_EQ(d.Text("MMItext").size(), 1536U);
  EXPECT_EQ(d.Picture("MMIdisplay").lines.size(), 4U);
  EXPECT_EQ(d.Caption("lblLeftOver"), "The last 10485680 characters do not fit");
  EXPECT_FALSE(d.OK()) << "the pool has no room for it";
  EXPECT_EQ(d.Line().Text.size(), 10u << 20);
  d.Type("MMItext", d.Text("MMItext").substr(0, 90));
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text, std::string(80, 'x'));
}

TEST(MMIprompt, TellsWhatDoesNotFit) {
  PromptBench d(WaitEnter);
  d.Type("MMItext", "1\n2\n3\n4");
  EXPECT_EQ(d.Caption("lblLeftOver"), "");
  d.Type("MMItext", "1\n2\n3\n4\n5");
  EXPECT_EQ(d.Caption("lblLeftOver"), "The last character does not fit");
  d.Click(PromptBench::Function(GetCount));
  EXPECT_EQ(d.Caption("lblLeftOver"), "The last 3 characters do not fit");
  EXPECT_EQ(d.Picture("MMIdisplay").lines.size(), 3U);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text.size(), 60U);
}

TEST(MMIprompt, ATextOfFourLinesIsCutWhenItsFunctionComesToTakeANumber) {
  PromptBench d;
  d.Line().Text = std::string(80, 'x');
  d.Open();
  d.Click(PromptBench::Function(GetDistance));
  EXPECT_EQ(d.Caption("lblLeftOver"), "The last 20 characters do not fit");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text, std::string(60, 'x'));
  // One that came so from the hub stays while nobody changes it.
  d.Line().Text = std::string(80, 'x');
  d.Open();
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text.size(), 80U);
}

TEST(MMIprompt, AMenuWithoutAKeyIsRefused) {
  PromptBench d(Menu);
  d.Line().MenuKey = {true};  // there is no key 0
  const Instruction before = d.Line();
  d.Open();
  d.Type("MMItext", "word1 word2 word3 word4");
  EXPECT_FALSE(d.OK());
  EXPECT_EQ(d.boxes.shown,
            (std::vector<ShownBox>{
                {.text = "You must check at least one key in the Branch Table of an MMI Menu instruction"}}));
  EXPECT_EQ(d.form.Caret()->name, "Check1(1)");
  EXPECT_EQ(d.Line(), before);
  d.Click("Check1(8)");
  EXPECT_TRUE(d.OK());
  EXPECT_TRUE(d.Line().MenuKey[8]);
  d.Open();
  d.Click("Check1(8)");
  d.Click(PromptBench::Function(DisplayOnly));
  EXPECT_TRUE(d.OK()) << "only a menu needs a key";
}

TEST(MMIprompt, ATextForWhichThePoolHasNoRoomIsRefused) {
  PromptBench d(Menu);
  d.Line(150).Type = MMI;
  d.Line(150).Text = std::string(1520, 'x');
  d.Open();
  d.Type("MMItext", std::string(14, 'y'));
  EXPECT_FALSE(d.OK()) << "1521 + 15 + 1 bytes";
  EXPECT_EQ(
      d.boxes.shown,
      (std::vector<ShownBox>{{.text = "You have too many MMI prompts in your program.  You must shorten "
                                      "the text in other MMI prompts to make room for this one.",
                              .title = "Strings too long"}}));
  EXPECT_EQ(d.form.Caret()->name, "MMItext");
  EXPECT_EQ(d.Line().Text, "");
  d.Type("MMItext", std::string(13, 'y'));
  EXPECT_TRUE(d.OK()) << "1536 bytes";
  EXPECT_EQ(d.Line().Text.size(), 13U);
}

TEST(MMIprompt, AsksForAKeyThenForRoomThenForLimits) {
  PromptBench d(Menu);
  d.Line().MenuKey = {};
  d.Line(150).Type = MMI;
  d.Line(150).Text = std::string(1535, 'x');
  d.Open();
  d.Enter("upperlimit", "-1");
  EXPECT_FALSE(d.OK());
  d.Click(PromptBench::Function(GetDistance));
  EXPECT_FALSE(d.OK());
  d.Line(150).Text.clear();
  EXPECT_FALSE(d.OK());
  ASSERT_EQ(d.boxes.shown.size(), 3U);
  EXPECT_EQ(d.boxes.shown[0].title, kApplicationTitle);
  EXPECT_EQ(d.boxes.shown[1].title, "Strings too long");
  EXPECT_EQ(d.boxes.shown[2].title, "Too small");
}

TEST(MMIprompt, CancelGivesTheLineBackAsItWasARefusedOkIncluded) {
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    PromptBench d;
    d.Line(5) = FullLine(sub_type);
    const Instruction before = d.Line(5);
    d.Open(5);
    d.Type("MMItext", "word1 word2 word3 word4");
    d.Click(PromptBench::Function(GetDistance));
    d.Enter("lowerlimit", "-1");
    d.Choose("DriveLR", 0);
    d.Enter("Addr(3)", "77");
    EXPECT_FALSE(d.OK());
    d.form.Cancel();
    EXPECT_EQ(d.Line(5), before) << sub_type;
  }
}

TEST(MMIprompt, TheGaugeCountsWhatIsStoredAndWarnsWhenThePoolGetsFull) {
  const struct {
    std::size_t bytes;
    int percent;
    Gauge::Level level;
  } rows[] = {{3, 0, Gauge::Level::Green},      {1382, 89, Gauge::Level::Green},
              {1383, 90, Gauge::Level::Yellow}, {1456, 94, Gauge::Level::Yellow},
              {1457, 94, Gauge::Level::Red},    {1536, 100, Gauge::Level::Red},
              {5000, 100, Gauge::Level::Red}};
  for (const auto& row : rows) {
    PromptBench d;
    d.Line(150).Type = MMI;
    d.Line(150).Text = std::string(row.bytes - 3, 'x');
    d.Open();
    EXPECT_EQ(d.Bar("PoolGauge").percent, row.percent) << row.bytes;
    EXPECT_EQ(d.Bar("PoolGauge").level, row.level) << row.bytes;
    d.Type("MMItext", std::string(80, 'y'));
    EXPECT_EQ(d.Bar("PoolGauge").percent, row.percent) << "not the text under edit";
  }
}

TEST(MMIprompt, TheTableBranchesToLinesOneToTwoHundred) {
  const struct {
    const char* typed;
    std::int16_t stored;
  } rows[] = {{"1", 0}, {"200", 199}, {"0", 0}, {"201", 199}, {"-7", 0}, {"", 0}, {"x", 0}, {"2.5", 1}};
  for (int key = 1; key <= 8; ++key) {
    const std::string box = "Addr(" + std::to_string(key) + ")";
    for (const auto& row : rows) {
      PromptBench d(Menu);
      EXPECT_EQ(d.Text(box), std::to_string(10 * key));
      d.Enter(box, row.typed);
      EXPECT_EQ(d.Text(box), std::to_string(row.stored + 1)) << row.typed;
      EXPECT_TRUE(d.OK());
      for (int other = 1; other <= 8; ++other) {
        EXPECT_EQ(d.Line().MenuLine[static_cast<std::size_t>(other)],
                  other == key ? row.stored : 10 * other - 1);
      }
    }
  }
}

TEST(MMIprompt, ATargetThatIsNoLineIsShownAsTheFirstThatIsNotItself) {
  PromptBench d(Menu);
  d.Line().MenuLine[4] = d.Line().LineNum = 1000;
  d.Open();
  EXPECT_EQ(d.Text("Addr(4)"), "2");
  EXPECT_EQ(d.Text("linenum"), "2");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().MenuLine[4], 1);
  EXPECT_EQ(d.Line().LineNum, 1);
}

TEST(MMIprompt, WritesWhatItsControlsHold) {
  PromptBench d(BranchYesNo);
  d.Enter("linenum", "42");
  d.Choose("varname", 17);
  d.Choose("Drive", 6);
  d.Click("Check1(1)");
  d.Click("Check1(8)");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().LineNum, 41);
  EXPECT_EQ(d.Line().DistVar, 17) << "whatever the function";
  EXPECT_EQ(d.Line().Drive, 6);
  EXPECT_EQ(d.Line().MenuKey,
            (std::array<bool, 9>{false, false, true, true, true, false, false, false, true}));
}

TEST(MMIprompt, OnAHubQuadItHasFourAxes) {
  PromptBench d;
  d.program.HubIndex = HubQuad;
  d.Line().Drive = 6;
  d.Line().JogLRDrive = 4;
  d.Line().JogUDDrive = 3;
  d.Open();
  for (const char* list : {"Drive", "DriveLR", "DriveUD"}) EXPECT_EQ(d.List(list).list.size(), 4U) << list;
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Drive, 0);
  EXPECT_EQ(d.Line().JogLRDrive, 0);
  EXPECT_EQ(d.Line().JogUDDrive, 3);
}

}  // namespace
}  // namespace tavlo::testing
