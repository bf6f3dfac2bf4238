// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "platform/services.h"

namespace tavlo {
namespace {

/// Boxes answered by the test, which may do more while one stands.
class Recorded : public MessageBoxes {
 public:
  std::vector<Box> shown;
  std::function<void()> meanwhile;

 protected:
  Answer Show(const Box& box) override {
    shown.push_back(box);
    if (const auto act = std::exchange(meanwhile, nullptr)) act();
    return box.buttons == Buttons::YesNo ? Answer::Yes : Answer::OK;
  }
};

TEST(HarmlessAnswers, CostNoWorkAndMoveNoMachine) {
  EXPECT_EQ(HarmlessAnswer(Buttons::OK), Answer::OK);
  EXPECT_EQ(HarmlessAnswer(Buttons::OKCancel), Answer::Cancel);
  EXPECT_EQ(HarmlessAnswer(Buttons::YesNo), Answer::No);
  EXPECT_EQ(HarmlessAnswer(Buttons::OKWithoutPort), Answer::OK);
  EXPECT_EQ(HarmlessAnswer(Buttons::RestoreDiscard), Answer::Restore);
}

TEST(ABoxThatSpeaksOfALine, HasTheWindowGoThereBeforeItComesUp) {
  Recorded boxes;
  boxes.MsgBox({.text = "nobody goes anywhere", .line = 3});
  std::vector<std::pair<int, std::size_t>> gone_to;
  boxes.GoToLine = [&](int line) { gone_to.emplace_back(line, boxes.shown.size()); };
  boxes.MsgBox({.text = "of no line"});
  EXPECT_TRUE(gone_to.empty());
  boxes.MsgBox({.text = "of a line", .line = 41});
  EXPECT_EQ(gone_to, (std::vector<std::pair<int, std::size_t>>{{41, 2}}));
}

TEST(ABoxThatStands, IsNotOpenedASecondTimeAndTheSecondIsAnsweredWithoutHarm) {
  struct Case {
    Buttons buttons;
    Answer answer;
  };
  for (const Case& row : {Case{Buttons::OK, Answer::OK}, Case{Buttons::OKCancel, Answer::Cancel},
                          Case{Buttons::YesNo, Answer::No}, Case{Buttons::OKWithoutPort, Answer::OK},
                          Case{Buttons::RestoreDiscard, Answer::Restore}}) {
    Recorded boxes;
    const Box box{.text = "text", .title = "title", .buttons = row.buttons};
    boxes.meanwhile = [&] { EXPECT_EQ(boxes.MsgBox(box), row.answer); };
    boxes.MsgBox(box);
    EXPECT_EQ(boxes.shown.size(), 1U);
  }
}

TEST(ABoxThatStands, IsFoundUnderAnother) {
  Recorded boxes;
  boxes.meanwhile = [&] {
    boxes.meanwhile = [&] { boxes.MsgBox({.text = "first"}); };
    boxes.MsgBox({.text = "second"});
  };
  boxes.MsgBox({.text = "first"});
  EXPECT_EQ(boxes.shown.size(), 2U);
}

TEST(ABoxThatStands, LeavesThoseOfAnotherTextOrTitleAlone) {
  Recorded boxes;
  boxes.meanwhile = [&] {
    boxes.MsgBox({.text = "other", .title = "title"});
    boxes.MsgBox({.text = "text", .title = "other"});
  };
  boxes.MsgBox({.text = "text", .title = "title"});
  EXPECT_EQ(boxes.shown.size(), 3U);
}

TEST(ABoxThatStands, CanComeAgainOnceItIsAnswered) {
  Recorded boxes;
  EXPECT_EQ(boxes.MsgBox({.text = "text", .buttons = Buttons::YesNo}), Answer::Yes);
  EXPECT_EQ(boxes.MsgBox({.text = "text", .buttons = Buttons::YesNo}), Answer::Yes);
  EXPECT_EQ(boxes.shown.size(), 2U);
}

TEST(BoxesThatComeByThemselves, AreThoseOfWhatTheOperatorDidNotDo) {
  Recorded boxes;
  boxes.MsgBox({.text = "before"});
  {
    const ComeByThemselves received(boxes);
    boxes.MsgBox({.text = "of the hub"});
    { const ComeByThemselves within(boxes); }
    boxes.MsgBox({.text = "still of the hub"});
  }
  boxes.MsgBox({.text = "after"});
  std::vector<bool> by_itself;
  for (const Box& box : boxes.shown) by_itself.push_back(box.by_itself);
  EXPECT_EQ(by_itself, (std::vector{false, true, true, false}));
}

}  // namespace
}  // namespace tavlo
