// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/input_script.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tavlo::cli {
namespace {

/// A cue and its steps, as short as they can be told.
std::string TextOf(const Cue& cue) {
  std::ostringstream text;
  switch (cue.at) {
    case CueAt::Time: text << "at " << cue.seconds; break;
    case CueAt::EachWait: text << "when " << cue.line; break;
    case CueAt::OneWait: text << "once " << cue.line; break;
  }
  for (const Step& step : cue.steps) {
    const Act& act = step.act;
    text << " +" << step.delay << ' ';
    switch (act.doing) {
      case Doing::Input: text << "input " << act.axis << ' ' << act.input << (act.high ? " 1" : " 0"); break;
      case Doing::Limit: text << "limit " << act.axis; break;
      case Doing::Fault: text << "fault " << act.axis << ' ' << act.code; break;
      case Doing::Wheel: text << "wheel " << act.axis << ' ' << act.counts; break;
      case Doing::StopButton: text << "stop"; break;
      case Doing::Keys: text << "keys " << act.keys; break;
    }
  }
  return text.str();
}

TEST(Script, ReadsEachKindOfRow) {
  struct Row {
    std::string_view written;
    std::string_view read;
  };
  const std::vector<Row> rows = {
      {"at 2.5 axis 1 input 3 low", "at 2.5 +0 input 0 2 0"},
      {"at 0 axis 8 input X7 high", "at 0 +0 input 7 15 1"},
      {"at 1 axis 2 input x0 low for 0.5", "at 1 +0 input 1 8 0 +0.5 input 1 8 1"},
      {"at 4 axis 2 limit", "at 4 +0 limit 1"},
      {"at 4 axis 1 fault 3", "at 4 +0 fault 0 3"},
      {"at 4 axis 1 fault overtemp", "at 4 +0 fault 0 8"},
      {"at 4 axis 3 wheel -40", "at 4 +0 wheel 2 -40"},
      {"at 6 stop", "at 6 +0 stop"},
      {"at 6 key enter", "at 6 +0 keys \r"},
      {"at 6 key 2", "at 6 +0 keys 2"},
      {"at 6 key yes no . up down left right bksp", "at 6 +0 keys +-.ABCD\b"},
      {"at 6 type 12.5", "at 6 +0 keys 12.5\r"},
      {"at 6 type -3", "at 6 +0 keys -3\r"},
      {"when line 12 axis 1 input 3 low", "when 11 +0 input 0 2 0"},
      {"when line 200 after 0.25 key no", "when 199 +0.25 keys -"},
      {"once line 1 type 7", "once 0 +0 keys 7\r"},
      {"\t once  line 1\ttype 7 \r", "once 0 +0 keys 7\r"},
      {"once line 1 type 7# the seventh", "once 0 +0 keys 7\r"},
      {"at 1 axis 1 input 1 low\nafter 0.5 stop\nafter 2 axis 1 limit",
       "at 1 +0 input 0 0 0 +0.5 stop +2.5 limit 0"},
      {"at 1 axis 1 input 1 low for 3\nafter 1 stop", "at 1 +0 input 0 0 0 +3 input 0 0 1 +4 stop"},
  };
  for (const Row& row : rows) {
    std::vector<ScriptError> errors;
    const InputScript script = ReadInputScript(row.written, errors);
    ASSERT_TRUE(errors.empty()) << row.written << ": " << errors.front().message;
    ASSERT_EQ(script.cues.size(), 1U) << row.written;
    EXPECT_EQ(TextOf(script.cues.front()), row.read) << row.written;
  }
}

TEST(Script, BlankRowsAndCommentsAreNothing) {
  std::vector<ScriptError> errors;
  EXPECT_TRUE(ReadInputScript("\n  \n# at 1 stop\n\t# x\n\r\n", errors).cues.empty());
  EXPECT_TRUE(ReadInputScript("", errors).cues.empty());
  EXPECT_TRUE(errors.empty());
}

TEST(Script, AnActKnowsItsRowAndReadsAsItIsWritten) {
  std::vector<ScriptError> errors;
  const InputScript script =
      ReadInputScript("# first\n\nat 1  axis 1  input 3 low for 2\nat 2 type 5", errors);
  ASSERT_EQ(script.cues.size(), 2U);
  EXPECT_EQ(script.cues[0].steps[0].act.text, "axis 1 input 3 low");
  EXPECT_EQ(script.cues[0].steps[1].act.text, "axis 1 input 3 high");
  EXPECT_EQ(script.cues[0].steps[1].act.row, 3);
  EXPECT_EQ(script.cues[1].steps[0].act.text, "type 5");
  EXPECT_EQ(script.cues[1].steps[0].act.row, 4);
}

TEST(Script, ABadRowIsRefusedWithWhatWasExpected) {
  constexpr const char* kKeys = "expected a key: 0 to 9, ., yes, no, enter, bksp, up, down, left or right";
  struct Row {
    std::string_view written;
    std::string message;
  };
  const std::vector<Row> rows = {
      {"2.5 axis 1 input 3 low", "expected at, when, once or after, not '2.5'"},
      {"after 1 stop", "expected a row before it, which it follows, not '1'"},
      {"at", "expected seconds, 0 or more"},
      {"at soon stop", "expected seconds, 0 or more, not 'soon'"},
      {"at -1 stop", "expected seconds, 0 or more, not '-1'"},
      {"at nan stop", "expected seconds, 0 or more, not 'nan'"},
      {"at inf stop", "expected seconds, 0 or more, not 'inf'"},
      {"at 1e10 stop", "expected seconds, 0 or more, not '1e10'"},
      {"at 1", "expected axis, key, type or stop"},
      {"at 1 drive 1", "expected axis, key, type or stop, not 'drive'"},
      {"at 1 stop now", "expected nothing more, not 'now'"},
      {"when 12 stop", "expected line, not '12'"},
      {"when line 0 stop", "expected a line from 1 to 200, not '0'"},
      {"when line 201 stop", "expected a line from 1 to 200, not '201'"},
      {"when line 1.5 stop", "expected a line from 1 to 200, not '1.5'"},
      {"when line 99999999999 stop", "expected a line from 1 to 200, not '99999999999'"},
      {"when line 1 after stop", "expected seconds, 0 or more, not 'stop'"},
      {"at 1 axis 9 limit", "expected an axis from 1 to 8, not '9'"},
      {"at 1 axis 1", "expected input, limit, fault or wheel"},
      {"at 1 axis 1 inputs 1 low", "expected input, limit, fault or wheel, not 'inputs'"},
      {"at 1 axis 1 input 9 low", "expected an input: 1 to 8, or X0 to X7, not '9'"},
      {"at 1 axis 1 input 1", "expected high or low"},
      {"at 1 axis 1 input 1 on", "expected high or low, not 'on'"},
      {"at 1 axis 1 input 1 low for", "expected seconds, 0 or more"},
      {"at 1 axis 1 fault 16384", "expected a fault's code from 0 to 16383, or its name, not '16384'"},
      {"at 1 axis 1 wheel 10001", "expected counts from -10000 to 10000, not '10001'"},
      {"at 1 key", kKeys},
      {"at 1 key menu", std::string(kKeys) + ", not 'menu'"},
      {"at 1 key pause", std::string(kKeys) + ", not 'pause'"},
      {"at 1 key 12", std::string(kKeys) + ", not '12'"},
      {"at 1 type", "expected a number as it is typed on the keypad"},
      {"at 1 type yes", "expected a number as it is typed on the keypad, not 'yes'"},
      {"at 1 type 5 6", "expected nothing more, not '6'"},
  };
  for (const Row& row : rows) {
    std::vector<ScriptError> errors;
    const InputScript script = ReadInputScript(row.written, errors);
    EXPECT_TRUE(script.cues.empty()) << row.written;
    ASSERT_EQ(errors.size(), 1U) << row.written;
    EXPECT_EQ(errors.front().row, 1) << row.written;
    EXPECT_EQ(errors.front().message, row.message) << row.written;
  }
}

TEST(Script, EveryBadRowIsTold) {
  std::vector<ScriptError> errors;
  const InputScript script = ReadInputScript("at 1 stop\nat x stop\n\nonce\nat 2 stop", errors);
  EXPECT_EQ(script.cues.size(), 2U);
  ASSERT_EQ(errors.size(), 2U);
  EXPECT_EQ(errors[0].row, 2);
  EXPECT_EQ(errors[1].row, 4);
}

TEST(Script, AnyBytesAreReadToTheirEnd) {
  std::string bytes;
  for (int i = 0; i < 3000; ++i) bytes += static_cast<char>(i * 7919 >> 3);
  std::vector<ScriptError> errors;
  EXPECT_TRUE(ReadInputScript(bytes, errors).cues.empty());
  EXPECT_FALSE(errors.empty());
  errors.clear();
  EXPECT_TRUE(ReadInputScript("at 1 " + std::string(100000, 'x'), errors).cues.empty());
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_LT(errors.front().message.size(), 100U);
}

}  // namespace
}  // namespace tavlo::cli
