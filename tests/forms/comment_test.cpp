// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/comment.h"

#include "forms/form_bench.h"

namespace tavlo::testing {
namespace {

using CommentBench = FormBench<comment>;

TEST(Comment, IsHeldToWhatALineOfTheHubHoldsAndToWhatAFileCanQuote) {
  const struct {
    const char* typed;
    const char* stored;
  } rows[] = {{"", ""},
              {" cut ", " cut "},
              {"123456789012345678901234567", "123456789012345678901234567"},
              {"1234567890123456789012345678", "123456789012345678901234567"},
              {"say \"stop\"", "say 'stop'"},
              {"two\nlines", "two lines"},
              {"two\r\nlines", "two lines"},
              {"two\rlines", "two lines"},
              {"\n\r\n\r", "   "},
              {"caf\xe9 100 %", "caf\xe9 100 %"}};
  for (const auto& row : rows) {
    CommentBench d;
    d.Open();
    d.Enter("commenttext", row.typed);
    EXPECT_EQ(d.Text("commenttext"), row.stored) << row.typed;
    EXPECT_TRUE(d.OK());
    EXPECT_EQ(d.Line().Text, row.stored) << row.typed;
    EXPECT_EQ(d.Line().Type, CM);
  }
}

TEST(Comment, IsCleanedAtOkWhileItsBoxStillHasTheFocus) {
  CommentBench d;
  d.Open();
  d.Type("commenttext", "\"1234567890123456789012345678");
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line().Text, "'12345678901234567890123456");
}

TEST(Comment, ThatNobodyEditsStaysHoweverLongItIs) {
  CommentBench d;
  d.Line(3) = {.Type = CM, .Dist = 4, .Text = "longer than \"twenty-seven\" characters"};
  const Instruction before = d.Line(3);
  d.Open(3);
  EXPECT_EQ(d.Text("commenttext"), before.Text);
  EXPECT_TRUE(d.OK());
  EXPECT_EQ(d.Line(3), before);
}

TEST(Comment, CancelGivesTheLineBackAsItWas) {
  CommentBench d;
  d.Line() = {.Type = CM, .Text = "before"};
  const Instruction before = d.Line();
  d.Open();
  d.Enter("commenttext", "after");
  d.form.Cancel();
  EXPECT_EQ(d.Line(), before);
}

}  // namespace
}  // namespace tavlo::testing
