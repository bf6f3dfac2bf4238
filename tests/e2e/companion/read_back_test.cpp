// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "programs.h"
#include "road.h"

namespace tavlo::testing {
namespace {

class ReadBack : public CompanionRoad {
 protected:
  [[nodiscard]] QString Copy() const { return folder_.filePath("copy.TVH"); }
  [[nodiscard]] QByteArray Image(const QString& file) const {
    const QString image = folder_.filePath("image");
    EXPECT_EQ(Tavlo({"compile", file, "-o", image}), (Ended{0, "", ""}));
    QFile bytes(image);
    EXPECT_TRUE(bytes.open(QIODevice::ReadOnly));
    return bytes.readAll();
  }
  Ended Verify() { return Tavlo({"verify", File(), "--port", hub->Link()}); }
};

TEST_F(ReadBack, WhatWasDownloadedComesBackToTheByte) {
  StartHub();
  program = examples::ExamplePrograms().front().program;
  ASSERT_EQ(Download().code, 0);
  const Ended ended = Tavlo({"upload", Copy(), "--port", hub->Link()});
  EXPECT_EQ(ended.code, 0);
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(ended.out.substr(0, 9), "Uploaded ");
  EXPECT_TRUE(ended.out.ends_with(" lines from the Tavlo Hub-Octo, firmware 1.38, to " +
                                  Copy().toStdString() + "\n"));
  EXPECT_TRUE(Image(Copy()) == Image(File()));
  EXPECT_EQ(Tavlo({"show", Copy()}), Tavlo({"show", File()}));
}

TEST_F(ReadBack, AtThePaceOfTheWireItComesBackTheSame) {
  StartHub({"--pace"});
  program = examples::ExamplePrograms().front().program;
  ASSERT_EQ(Download().code, 0);
  ASSERT_EQ(Tavlo({"upload", Copy(), "--port", hub->Link()}).code, 0);
  EXPECT_TRUE(Image(Copy()) == Image(File()));
}

TEST_F(ReadBack, AHubThatHoldsTheProgramIsVerifiedAndOneThatDoesNotIsTold) {
  StartHub();
  Line(1).Type = GT;
  ASSERT_EQ(Download().code, 0);
  EXPECT_EQ(Verify(), (Ended{0, "The hub holds this program\n", ""}));
  Line(1).LineNum = 4;
  program.Axis.AxisName[1] = "Lift";
  EXPECT_EQ(Verify(), (Ended{7,
                             "The hub holds another program: 1 line and 1 setting differ\n"
                             "Line 1\n"
                             "  file  Go to line 5\n"
                             "  hub   Go to line 1\n"
                             "Axis 2 axis name: file Lift, hub Axis 2\n",
                             ""}));
  EXPECT_TRUE(HubGotLast("SCCU"));
}

TEST_F(ReadBack, ARunningProgramIsStoppedBeforeItIsRead) {
  StartHub();
  LongMove();
  ASSERT_EQ(Download().code, 0);
  TavloProcess run({"run", "--port", hub->Link()});
  ASSERT_TRUE(run.Says("the program runs"));
  ASSERT_TRUE(HubGotLast("I"));
  run.Signal(SIGKILL);
  static_cast<void>(run.Wait());
  EXPECT_EQ(Verify(), (Ended{0, "The hub holds this program\n", ""}));
}

TEST_F(ReadBack, AnImageBecomesAProgramFile) {
  Line(1).Type = GT;
  Line(1).LineNum = 4;
  ASSERT_EQ(Image(File()).size(), 8192);
  EXPECT_EQ(Tavlo({"decode", folder_.filePath("image"), "-o", Copy()}), (Ended{0, "", ""}));
  EXPECT_EQ(Tavlo({"show", Copy()}), (Ended{0, "1\tGo to line 5\n", ""}));
}

class UploadFailure : public ReadBack, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(UploadFailure, IsToldByItsExitCodeAndWritesNothing) {
  StartHub({"--fail", GetParam().mode});
  const Ended ended = Tavlo({"upload", Copy(), "--port", hub->Link()});
  EXPECT_EQ(ended.code, GetParam().code);
  EXPECT_EQ(ended.out, "");
  EXPECT_TRUE(ended.err.starts_with(GetParam().message)) << ended.err;
  EXPECT_FALSE(QFile::exists(Copy()));
}

INSTANTIATE_TEST_SUITE_P(
    EveryMode, UploadFailure,
    ::testing::Values(FailureCase{"silent-u", 6, "The Tavlo Hub stopped responding after 0 chars.  "},
                      FailureCase{"short-u:5000", 6, "The Tavlo Hub stopped responding after 5000 chars.  "},
                      FailureCase{"wrong-u", 7, "Your program did not upload correctly.  "},
                      FailureCase{"silent-c", 6,
                                  kGivesTime + "Communication Error: The Tavlo Hub is not communicating.  "},
                      FailureCase{"unplug-tx:1000", 5, "tavlo: the port has gone; check the cable"}),
    NameOfMode);

}  // namespace
}  // namespace tavlo::testing
