// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/console.h"

#include <gtest/gtest.h>

#include <deque>
#include <sstream>

#include "cli/desk/console_services.h"

namespace tavlo::testing {
namespace {

using cli::AnswerBy;

class ConsoleQuestions : public ::testing::Test {
 protected:
  Answer Ask(Buttons buttons, AnswerBy by, std::deque<std::string> typed = {}, bool terminal = false) {
    err.str("");
    cli::Environment environment{out, err, terminal, nullptr, nullptr};
    if (terminal) {
      environment.read_line = [typed]() mutable -> std::optional<std::string> {
        if (typed.empty()) return std::nullopt;
        const std::string line = typed.front();
        typed.pop_front();
        return line;
      };
    }
    cli::Console console(environment);
    return cli::ConsoleBoxes(console, by).MsgBox({.text = "Go?", .title = "Title", .buttons = buttons});
  }

  std::ostringstream out;
  std::ostringstream err;
};

TEST_F(ConsoleQuestions, OptionsAnswerAndSaySo) {
  EXPECT_EQ(Ask(Buttons::YesNo, AnswerBy::Yes), Answer::Yes);
  EXPECT_EQ(err.str(), "Title: Go?\ntavlo: answered Yes (--yes)\n");
  EXPECT_EQ(Ask(Buttons::YesNo, AnswerBy::No), Answer::No);
  EXPECT_EQ(err.str(), "Title: Go?\ntavlo: answered No (--no)\n");
  EXPECT_EQ(Ask(Buttons::OKCancel, AnswerBy::Yes), Answer::OK);
  EXPECT_EQ(Ask(Buttons::OKCancel, AnswerBy::No), Answer::Cancel);
  EXPECT_EQ(err.str(), "Title: Go?\ntavlo: answered Cancel (--no)\n");
}

TEST_F(ConsoleQuestions, WithNobodyToAskTheAnswerIsTheCautiousOne) {
  EXPECT_EQ(Ask(Buttons::YesNo, AnswerBy::Operator), Answer::No);
  EXPECT_EQ(err.str(), "Title: Go?\ntavlo: answered No because there is nobody to ask; --yes answers Yes\n");
  EXPECT_EQ(Ask(Buttons::OKCancel, AnswerBy::Operator), Answer::Cancel);
  EXPECT_EQ(err.str(),
            "Title: Go?\ntavlo: answered Cancel because there is nobody to ask; --yes answers OK\n");
}

TEST_F(ConsoleQuestions, TheOperatorAnswersByALetterAndIsAskedAgainForAnyOther) {
  const auto ask = [this](Buttons buttons, std::deque<std::string> typed) {
    return Ask(buttons, AnswerBy::Operator, std::move(typed), true);
  };
  EXPECT_EQ(ask(Buttons::YesNo, {"y"}), Answer::Yes);
  EXPECT_EQ(ask(Buttons::YesNo, {"  Yes"}), Answer::Yes);
  EXPECT_EQ(ask(Buttons::YesNo, {"n"}), Answer::No);
  EXPECT_EQ(ask(Buttons::YesNo, {""}), Answer::No);
  EXPECT_EQ(ask(Buttons::YesNo, {}), Answer::No);
  EXPECT_EQ(ask(Buttons::OKCancel, {"ok"}), Answer::OK);
  EXPECT_EQ(ask(Buttons::OKCancel, {"c"}), Answer::Cancel);
  EXPECT_EQ(ask(Buttons::YesNo, {"what", "y"}), Answer::Yes);
  EXPECT_EQ(err.str(), "Title: Go? [y/N] Title: Go? [y/N] ");
}

TEST_F(ConsoleQuestions, ABoxWithOneButtonIsOnlyTold) {
  EXPECT_EQ(Ask(Buttons::OK, AnswerBy::No), Answer::OK);
  EXPECT_EQ(err.str(), "Title: Go?\n");
}

TEST(ConsoleBoxes, TheTitleStandsInFrontUnlessItIsTheApplicationsOrEmpty) {
  std::ostringstream out;
  std::ostringstream err;
  cli::Environment environment{out, err, false, nullptr, nullptr};
  cli::Console console(environment);
  cli::ConsoleBoxes boxes(console, AnswerBy::No);
  boxes.MsgBox({.text = "one"});
  boxes.MsgBox({.text = "two", .title = ""});
  boxes.MsgBox({.text = "three", .title = "Missing drive"});
  EXPECT_EQ(err.str(), "one\ntwo\nMissing drive: three\n");
  EXPECT_EQ(boxes.Shown().back().title, "Missing drive");
}

TEST(ConsoleStatus, ShowsOnATerminalOnlyAndGivesWayToAMessage) {
  for (const bool terminal : {false, true}) {
    std::ostringstream out;
    std::ostringstream err;
    cli::Environment environment{out, err, terminal, nullptr, nullptr};
    cli::Console console(environment);
    console.Status("half way");
    console.Beep();
    console.Message("stopped");
    console.Status("");
    EXPECT_EQ(err.str(), terminal ? "\r\x1b[Khalf way\a\r\x1b[Kstopped\n" : "stopped\n");
  }
}

}  // namespace
}  // namespace tavlo::testing
