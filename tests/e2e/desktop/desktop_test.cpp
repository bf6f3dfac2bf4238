// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The real main window and the real port class against the real simulated hub over its pty. The operator is
// Qt's own event injection.
#include "desktop_session.h"
#include "link/drive_check.h"
#include "model/program_file.h"
#include "programs.h"

namespace tavlo::testing {
namespace {

TEST(Desktop, TheMainJobIsDoneAnExampleIsLoadedDownloadedAndRunAndItsLinesLightUp) {
  HubProcess hub({"--speedup", "5"});
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("cut-to-length.TVH");
  EXPECT_TRUE(session.Main().windowTitle().endsWith("cut-to-length.TVH"));
  EXPECT_EQ(session.State().shown.rows[0].desc, "Feed 120 mm, cut, repeat 5");
  session.Click("Download");
  EXPECT_TRUE(session.boxes.Shown().empty());
  EXPECT_EQ(session.State().link.DriveVersion, "1.38");

  bool yellow = false;
  WhileRunning([&] {
    yellow = WaitFor([&] { return session.State().shown.rows[4].state == RowState::Executing; });
    PressStop();
  });
  session.Click("execbutton");
  EXPECT_TRUE(yellow);
  EXPECT_EQ(RunWindowShown(), nullptr);
  EXPECT_TRUE(std::ranges::all_of(session.State().shown.rows,
                                  [](const Row& row) { return row.state == RowState::Normal; }));
  EXPECT_TRUE(session.boxes.Shown().empty());
}

TEST(Desktop, EveryExampleGoesIntoItsHub) {
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    const bool quad = example.program.HubIndex == HubQuad;
    HubProcess hub({"--model", quad ? "quad" : "octo"});
    ASSERT_TRUE(hub.Ready());
    Session session(hub.Link());
    session.LoadExample(std::string(example.file_name).c_str());
    session.Click("Download");
    EXPECT_TRUE(session.boxes.Shown().empty());
    EXPECT_EQ(session.State().program.HubIndex, example.program.HubIndex);
    EXPECT_FALSE(session.State().Changed);
  }
}

TEST(Desktop, WhatWasDownloadedComesBackByAnUpload) {
  HubProcess hub;
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("nested-repeats.TVH");
  std::vector<std::string> texts;
  for (const Row& row : session.State().shown.rows) texts.push_back(row.desc);
  session.Click("Download");
  session.boxes.setNextAnswer(Answer::OK);
  session.Click("BtnClear");
  EXPECT_EQ(session.State().shown.rows[1].desc, "");
  session.Click("Upload");
  EXPECT_EQ(session.boxes.Shown().size(), 1u) << "only the question of Clear";
  for (int line = 0; line < kLines; ++line) {
    // The hub's memory does not carry where an If Moving goes.
    if (session.State().program.Prog[line].Type != IM) {
      EXPECT_EQ(session.State().shown.rows[line].desc, texts[line]) << line + 1;
    }
  }
}

struct DownloadFailure {
  const char* mode;
  const char* message;
};

const DownloadFailure kDownloadFailures[] = {
    {"silent-c",
     "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Do you have "
     "the right comm port selected?  Perhaps cycling power will help."},
    {"one-byte-c",
     "The Tavlo Hub is not communicating.  Is it connected to the right port and turned on?  Do you have "
     "the right comm port selected?  Perhaps cycling power will help."},
    {"silent-f",
     "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and "
     "turned on?"},
    {"silent-line:7",
     "The Tavlo Hub has stopped responding during transfer of program line 7. Is it connected and "
     "turned on?"},
    {"noise-line:9",
     "The Tavlo Hub has stopped responding during transfer of program line 9. Is it connected and "
     "turned on?"},
    {"silent-system:3", "The Tavlo Hub has stopped responding during system info transfer."},
    {"silent-pool:1", "The Tavlo Hub has stopped responding during string pool transfer."},
    {"no-sum", "The Tavlo Hub did not provide a checksum.  There may be a problem with the download."},
    {"short-sum", "The Tavlo Hub did not provide a checksum.  There may be a problem with the download."},
    {"wrong-sum",
     "Your program did not download correctly.  Make sure the cable connections are secure, less than 50 "
     "feet long, and that you are not working around electrical noise, such as a welder, a high powered "
     "motor or big relays."},
};

TEST(Desktop, EachFailureOfADownloadIsToldInItsWordsAndTheWindowLivesOn) {
  for (const auto& failure : kDownloadFailures) {
    SCOPED_TRACE(failure.mode);
    HubProcess hub({"--fail", failure.mode});
    ASSERT_TRUE(hub.Ready());
    Session session(hub.Link());
    session.LoadExample("nested-repeats.TVH");
    session.boxes.setNextAnswer(Answer::OK);
    session.Click("Download");
    ASSERT_EQ(session.boxes.Shown().size(), 1u);
    EXPECT_EQ(session.boxes.Shown().front().text, failure.message);
    EXPECT_FALSE(session.State().link.Busy);
    EXPECT_EQ(session.State().shown.rows[1].desc, "Repeat 3 times");
  }
}

struct ExecuteFailure {
  const char* mode;
  const char* title;
  const char* message;
  Answer answer;
};

const ExecuteFailure kExecuteFailures[] = {
    {"silent-d", "Tavlo Composer",
     "The Tavlo Hub is not responding to the D command.  Is it connected to the right port and turned on?",
     Answer::OK},
    {"missing-drive:1", "Missing drive",
     "The drive connected to port 1 is not responding.  You must have a drive on port 1.", Answer::OK},
    {"missing-drive:3", "Missing drive",
     "The drive connected to port 3 is not responding.  If you don't plan to use a drive on port 3 then "
     "change the "
     "model of drive 3 to \"none\", and download.",
     Answer::OK},
    {"unknown-drive:2", "Wrong drive",
     "The drive connected to port 2 is a unknown type.  Your program expects drive 2 to be a Oskel-C.  Do "
     "you want to "
     "run anyway?",
     Answer::No},
    {"silent-e", "Tavlo Composer",
     "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
     "turned on?",
     Answer::OK},
    {"noise-e", "Tavlo Composer",
     "The Tavlo Hub is not responding to the execute (E) command.  Is it connected to the right port and "
     "turned on?",
     Answer::OK},
};

TEST(Desktop, EachFailureOfAnExecuteIsToldInItsWordsAndNothingRuns) {
  for (const auto& failure : kExecuteFailures) {
    SCOPED_TRACE(failure.mode);
    HubProcess hub({"--fail", failure.mode});
    ASSERT_TRUE(hub.Ready());
    Session session(hub.Link());
    session.LoadExample("nested-repeats.TVH");
    session.Click("Download");
    ASSERT_TRUE(session.boxes.Shown().empty());
    session.boxes.setNextAnswer(failure.answer);
    session.Click("execbutton");
    ASSERT_EQ(session.boxes.Shown().size(), 1u);
    EXPECT_EQ(session.boxes.Shown().front().text, failure.message);
    EXPECT_EQ(session.boxes.Shown().front().title, failure.title);
    EXPECT_EQ(RunWindowShown(), nullptr);
  }
}

TEST(Desktop, AModelThatNobodyKnowsIsToldLeavesTheListAsItIsAndIsSentNothing) {
  HubProcess hub({"--fail", "unknown-model"});
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("nested-repeats.TVH");
  session.boxes.setNextAnswer(Answer::OK);
  session.Click("Download");
  ASSERT_EQ(session.boxes.Shown().size(), 1U);
  EXPECT_EQ(session.boxes.Shown()[0].text, "Unknown device detected on comm port.");
  EXPECT_EQ(session.State().program.HubIndex, HubOcto);
  EXPECT_EQ(session.State().link.DriveVersion, "?");
}

TEST(Desktop, ALimitAFaultAndTheStopButtonEndTheRunAndAreTold) {
  HubProcess hub;
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("cut-to-length.TVH");
  session.Click("Download");
  for (const auto& [command, title] : {std::pair{"limit 1", "LIMIT"}, std::pair{"stop", "STOP"}}) {
    SCOPED_TRACE(command);
    session.boxes.setNextAnswer(Answer::Yes);
    WhileRunning([&, line = QByteArray(command)] {
      WaitFor([&] { return session.State().shown.rows[4].state == RowState::Executing; });
      hub.Command(line);
    });
    session.Click("execbutton");
    ASSERT_FALSE(session.boxes.Shown().empty());
    EXPECT_EQ(session.boxes.Shown().back().title, title);
    EXPECT_EQ(RunWindowShown(), nullptr);
  }
}

TEST(Desktop, AHubThatIsGoneInMidRunIsToldOnceAndTheProgramStaysEditable) {
  HubProcess hub;
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("cut-to-length.TVH");
  session.Click("Download");
  WhileRunning([&] {
    WaitFor([&] { return session.State().shown.rows[4].state == RowState::Executing; });
    session.boxes.setNextAnswer(Answer::OK);
    hub.Kill();
  });
  session.Click("execbutton");
  ASSERT_TRUE(WaitFor([&] { return !session.boxes.Shown().empty(); }));
  QTest::qWait(300);
  EXPECT_EQ(session.boxes.Shown().size(), 1u);
  EXPECT_EQ(session.boxes.Shown().front().title, "Communication Error");
  EXPECT_EQ(session.State().shown.rows[0].desc, "Feed 120 mm, cut, repeat 5");
  EXPECT_FALSE(session.State().link.OptCom.has_value());
  session.boxes.setNextAnswer(Answer::OK);
  session.Click("OptCom1");
  EXPECT_EQ(session.boxes.Shown().back().text, "COM port 2 is not available.");
}

TEST(Desktop, AHubThatRestartsInMidRunClosesTheRunWindow) {
  HubProcess hub;
  ASSERT_TRUE(hub.Ready());
  Session session(hub.Link());
  session.LoadExample("cut-to-length.TVH");
  session.Click("Download");
  WhileRunning([&] {
    WaitFor([&] { return session.State().shown.rows[4].state == RowState::Executing; });
    hub.Command("greet");
  });
  session.Click("execbutton");
  EXPECT_EQ(RunWindowShown(), nullptr);
  EXPECT_TRUE(session.boxes.Shown().empty());
}

}  // namespace
}  // namespace tavlo::testing

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
