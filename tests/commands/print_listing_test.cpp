// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/print_listing.h"

#include <gtest/gtest.h>

#include "support/fake_desk.h"
#include "support/fake_printer.h"

namespace tavlo::testing {
namespace {

struct PrintListingTo : ::testing::Test {
  PrintListingTo() { desk.desk.printer = &printer; }

  /// All texts of what was printed last, a row each.
  [[nodiscard]] std::string Printed() const {
    std::string text;
    for (const PaperBlock& block : printer.printed.back().blocks) {
      for (const PaperRow& row : block)
        text += row.number + (row.number.empty() ? "" : " ") + row.text + "\n";
    }
    return text;
  }

  FakeDesk desk;
  FakePrinter printer;
};

TEST_F(PrintListingTo, APrinterPrintsTheWholeListing) {
  desk.Line(4).Type = GT;
  PrintListing(desk.desk);
  EXPECT_EQ(printer.asked, 1);
  ASSERT_EQ(printer.printed.size(), 1U);
  EXPECT_EQ(printer.printed[0].title, "Tavlo Hub Program Listing");
  EXPECT_TRUE(Printed().starts_with("Tavlo Hub Program Listing\n\nBrakken Drives, Inc.\n")) << Printed();
  EXPECT_NE(Printed().find("Axis 7(Axis 7):  Zenu-D"), std::string::npos) << Printed();
  EXPECT_TRUE(Printed().ends_with("5 Go To Line 1 \n")) << Printed();
  EXPECT_TRUE(desk.boxes.shown.empty());
}

TEST_F(PrintListingTo, TheFileOfTheLastLoadOrSaveIsNamed) {
  PrintListing(desk.desk);
  EXPECT_EQ(printer.printed.back().file_name, "untitled");
  EXPECT_NE(Printed().find("Filename:  untitled\n"), std::string::npos);
  desk.source.file_name = "/home/a/schr\xC3\xA4g.TVH";
  PrintListing(desk.desk);
  EXPECT_EQ(printer.printed.back().file_name, "/home/a/schr\xC3\xA4g.TVH");
  EXPECT_NE(Printed().find("Filename:  /home/a/schr\xC3\xA4g.TVH\n"), std::string::npos);
}

TEST_F(PrintListingTo, ACancelledDialogPrintsNothing) {
  printer.chosen = false;
  PrintListing(desk.desk);
  EXPECT_EQ(printer.asked, 1);
  EXPECT_TRUE(printer.printed.empty());
  EXPECT_TRUE(desk.boxes.shown.empty());
}

TEST_F(PrintListingTo, WhatIsPrintedIsTheProgramAfterTheDialog) {
  printer.on_ask = [this] { desk.Line(0).Type = RT; };
  PrintListing(desk.desk);
  EXPECT_TRUE(Printed().ends_with("1 Return from subroutine\n")) << Printed();
}

TEST_F(PrintListingTo, APrinterThatFailsIsToldPlainly) {
  printer.failure = "No space left on device";
  PrintListing(desk.desk);
  ASSERT_EQ(desk.boxes.shown.size(), 1U);
  EXPECT_EQ(desk.boxes.shown[0], (Box{.text = "The listing could not be printed: No space left on device",
                                      .title = "Print",
                                      .icon = Icon::Exclamation}));
}

TEST_F(PrintListingTo, PrintingChangesNothing) {
  desk.Line(0).Type = RP;
  const auto before = desk.source.program.Prog;
  PrintListing(desk.desk);
  EXPECT_TRUE(desk.source.program.Prog == before);
  EXPECT_FALSE(desk.source.Changed);
}

TEST_F(PrintListingTo, WithoutAPrinterNothingHappens) {
  desk.desk.printer = nullptr;
  PrintListing(desk.desk);
  EXPECT_TRUE(desk.boxes.shown.empty());
}

}  // namespace
}  // namespace tavlo::testing
