// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/help.h"

#include <gtest/gtest.h>

#include "support/fake_boxes.h"
#include "support/fake_help.h"

namespace tavlo::testing {
namespace {

TEST(OpenHelp, ShowsTheDocument) {
  FakeHelp help;
  FakeBoxes boxes;
  help.OpenHelp("FL.pdf", boxes);
  EXPECT_EQ(help.shown, std::vector<std::string>{"FL.pdf"});
  EXPECT_TRUE(boxes.shown.empty());
}

TEST(OpenHelp, TellsTheErrorOfAViewerThatDoesNotStartAndAsksItForNothing) {
  FakeHelp help;
  help.error = 53;
  FakeBoxes boxes;
  help.OpenHelp("FL.pdf", boxes);
  EXPECT_EQ(boxes.shown,
            std::vector<Box>({{.text = "Error 53", .title = "Cannot launch help", .icon = Icon::Stop}}));
  EXPECT_TRUE(help.shown.empty());
}

TEST(OpenHelp, TellsOfADocumentThatTheViewerCannotShow) {
  FakeHelp help;
  help.has_documents = false;
  FakeBoxes boxes;
  help.OpenHelp("FL.pdf", boxes);
  EXPECT_EQ(boxes.shown, std::vector<Box>({{.text = "Cannot set help index"}}));
}

}  // namespace
}  // namespace tavlo::testing
