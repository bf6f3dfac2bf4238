// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <tuple>

#include "model/every_field.h"
#include "model/hand_file.h"
#include "model/legacy_import.h"
#include "model/program_file.h"
#include "oskel_writer.h"

namespace tavlo::testing {
namespace {

using examples::kOskelRevisions;
using examples::OskelRevision;
using examples::OskelSettings;

std::vector<std::string> ValuesOf(const Instruction& line) {
  std::vector<std::string> values;
  ForEachField(line, [&](const auto& value) { values.push_back(Items(value)); });
  return values;
}

void ExpectSameProgram(const Program& program, const Program& expected) {
  for (int line = 0; line < kLines; ++line) {
    if (program.Prog[line] == expected.Prog[line]) continue;
    EXPECT_EQ(ValuesOf(program.Prog[line]), ValuesOf(expected.Prog[line]))
        << "line " << line << ", type " << expected.Prog[line].Type;
  }
  EXPECT_TRUE(program.Axis == expected.Axis);
  EXPECT_EQ(program.HubIndex, expected.HubIndex);
  EXPECT_EQ(program.LimitList, expected.LimitList);
  EXPECT_EQ(program.LimitBranch, expected.LimitBranch);
  EXPECT_EQ(program.HubVersion, expected.HubVersion);
}

// Files of the Composer.

constexpr std::tuple kInNoFile = {
    &Instruction::Reserved1,   &Instruction::Reserved2, &Instruction::DrvMask,     &Instruction::DrvState,
    &Instruction::LoopIndex,   &Instruction::KP,        &Instruction::KI,          &Instruction::KD,
    &Instruction::KAFF,        &Instruction::KV,        &Instruction::KVFF,        &Instruction::Acont,
    &Instruction::Apeak,       &Instruction::ChangesKP, &Instruction::ChangesKI,   &Instruction::ChangesKD,
    &Instruction::ChangesKAFF, &Instruction::ChangesKV, &Instruction::ChangesKVFF, &Instruction::ChangesAcont,
    &Instruction::ChangesApeak};

/// What a file of the revision brings into a program.
void TakeLine(const HubRevision& revision, const Instruction& from, Instruction& to) {
  const Instruction before = to;
  to = from;
  std::apply([&](auto... field) { ((to.*field = before.*field), ...); }, kInNoFile);
  if (revision.menu_items < 9) {
    to.MenuLine[8] = before.MenuLine[8];
    to.MenuKey[8] = before.MenuKey[8];
  }
  if (revision.last_items < 2) {
    to.JogLRDrive = before.JogLRDrive;
    to.JogUDDrive = before.JogUDDrive;
    to.WaitThis = before.WaitThis;
  } else if (revision.last_items < 3) {
    to.WaitThis = false;
  }
}

Program AfterHubFile(const HubRevision& revision, const Program& file, Program before) {
  const AxisConfig axes = before.Axis;
  for (int line = 0; line < kLines; ++line) TakeLine(revision, file.Prog[line], before.Prog[line]);
  before.Axis = file.Axis;
  before.Axis.SameSpare = axes.SameSpare;
  before.Axis.RunCurrent = axes.RunCurrent;
  before.Axis.AccelCurrent = axes.AccelCurrent;
  before.Axis.IdleCurrent = axes.IdleCurrent;
  if (!revision.axis_currents) {
    before.Axis.ContCurrent = axes.ContCurrent;
    before.Axis.PeakCurrent = axes.PeakCurrent;
  }
  if (!revision.same_record) {
    before.Axis.SameUnits = axes.SameUnits;
    before.Axis.SameLimits = axes.SameLimits;
  }
  before.HubIndex = file.HubIndex;
  before.LimitList = file.LimitList;
  before.LimitBranch = file.LimitBranch;
  return before;
}

TEST(OlderFiles, OfEachVersionOfTheComposerBringTheFieldsThatTheyHaveAndNoOther) {
  for (const HubRevision& revision : kHubRevisions) {
    SCOPED_TRACE(revision.version);
    for (const int sign : {1, -1}) {
      const Program file = ProgramOfDifferentValues(sign);
      const Program before = ProgramOfDifferentValues(-sign);
      HandFile hand = HandFileOf(file);
      hand.As(revision);
      const std::string body = hand.Body();
      Program program = before;
      ItemReader items(body);
      EXPECT_TRUE(LoadHubProg(items, ParseRevision(revision.version), program));
      EXPECT_TRUE(items.AtEnd());
      Program expected = AfterHubFile(revision, file, before);
      for (Instruction& line : expected.Prog) {
        // Shorter pulses are lengthened as they are read.
        if (line.Type == SO || line.Type == FLSO) line.Time = std::max(line.Time, 5);
      }
      ExpectSameProgram(program, expected);
    }
  }
}

TEST(OlderFiles, TheWriterOfTheTestsWritesTheNewestAsTheProgramDoes) {
  const Program program = ProgramOfDifferentValues(1);
  HandFile hand = HandFileOf(program);
  EXPECT_EQ("1.29.1\r\n" + hand.Body(), WriteHubProg(program, 0));
}

// Files of the earlier programmer.

void TakePrompt(const OskelRevision& revision, const Instruction& from, Instruction& to) {
  to.LineNum = from.LineNum;
  to.SubType = from.SubType;
  to.Reserved1 = from.Reserved1;
  to.UpperInt = from.UpperInt;
  to.UpperFrac = from.UpperFrac;
  to.LowerInt = from.LowerInt;
  to.LowerFrac = from.LowerFrac;
  to.DistVar = from.DistVar;
  to.Text = from.Text;
  if (revision.hundred_lines) {
    to.Wrap1 = from.Wrap1;
    to.Blank1 = from.Blank1;
    to.Wrap2 = from.Wrap2;
    to.Blank2 = from.Blank2;
  }
  if (revision.second_operands) to.Reserved2 = from.Reserved2;
  if (revision.menus) {
    to.Wrap3 = from.Wrap3;
    to.Blank3 = from.Blank3;
    for (int key = 1; key <= 8; ++key) {
      to.MenuLine[key] = from.MenuLine[key];
      to.MenuKey[key] = from.MenuKey[key];
    }
  }
  if (revision.prompt_direction) to.Dir = from.Dir;
}

void TakeMove(const OskelRevision& revision, const Instruction& from, Instruction& to) {
  to.Dist = from.Dist;
  to.Speed = from.Speed;
  to.Accel = from.Accel;
  to.Decel = from.Decel;
  to.Dir = from.Dir;
  to.SafetyDist = from.SafetyDist;
  to.RetSpeed = from.RetSpeed;
  to.IONum = from.IONum;
  to.LineNum = from.LineNum;
  to.State = from.State;
  to.Time = from.Time;
  to.Count = from.Count;
  if (!revision.hundred_lines) {
    to.DistIsMMI = to.SpeedIsMMI = to.CountIsMMI = false;
    return;
  }
  to.DistVar = from.DistVar;
  to.SpeedVar = from.SpeedVar;
  to.DistIsMMI = from.DistIsMMI;
  to.SpeedIsMMI = from.SpeedIsMMI;
  to.CountIsMMI = from.CountIsMMI;
  to.Wrap1 = from.Wrap1;
  to.Blank1 = from.Blank1;
  to.Wrap2 = from.Wrap2;
  to.Blank2 = from.Blank2;
  to.Text = from.Text;
  if (revision.second_operands) {
    to.Dist2 = from.Dist2;
    to.Speed2 = from.Speed2;
    to.Dist2Var = from.Dist2Var;
    to.Speed2Var = from.Speed2Var;
    to.Dist2IsMMI = from.Dist2IsMMI;
    to.Speed2IsMMI = from.Speed2IsMMI;
    to.InMask = from.InMask;
    to.InState = from.InState;
    to.Reserved3 = from.Reserved3;
    to.WaitAND = from.WaitAND;
  }
  if (to.Type == CC) {
    to.Current = static_cast<float>(from.Time);
    to.IdlePct = static_cast<std::int16_t>(from.Count);
  }
}

void TakeOldLine(const OskelRevision& revision, const OskelSettings& settings, const Instruction& from,
                 Instruction& to) {
  to.Type = from.Type;
  if (from.Type == CM) {
    to.Text = from.Text;
  } else if (from.Type == MMI) {
    TakePrompt(revision, from, to);
  } else {
    TakeMove(revision, from, to);
  }
  if (to.Type == SO || to.Type == FLSO) to.Time = std::max(to.Time, 5);
  if (to.Type == FE) {
    to.Type = CM;
    to.Text = "Deleted Hand Wheel instruction";
  }
  if (!revision.hundred_lines) to.Proceed = false;
  to.Drive = 0;
  to.JogSpeed = settings.jog_speed;
  to.JogAccel = settings.jog_accel;
}

Program AfterOldFile(const OskelRevision& revision, const Program& file, const OskelSettings& settings,
                     Program before) {
  const int count = revision.hundred_lines ? 100 : 29;
  for (int line = 0; line < count; ++line) {
    TakeOldLine(revision, settings, file.Prog[line], before.Prog[line]);
  }
  for (int line = count; line < kLines; ++line) before.Prog[line].Type = NO;
  AxisConfig& axes = before.Axis;
  const float most = MaxCurrent(revision.hundred_lines ? settings.drive_code : 5);
  axes.DriveCurrent[0] = static_cast<float>(static_cast<double>(settings.current) / 255 * most);
  axes.IdleCode[0] = 0;
  axes.LimitKind[0] = static_cast<std::int16_t>(settings.resolution / 128);
  axes.StepResCode[0] = static_cast<std::int16_t>(settings.resolution % 16);
  if (revision.units) {
    axes.StepsPerUnit[0] = settings.steps_per_unit;
    axes.UnitName[0] = settings.unit_name;
  }
  if (revision.second_operands) axes.StepsPerRev[0] = settings.steps_per_rev;
  return before;
}

TEST(OlderFiles, OfEachVersionOfTheEarlierProgrammerBringTheFieldsThatTheyHaveAndNoOther) {
  const OskelSettings settings = {.drive_code = 3,
                                  .current = 51,
                                  .idle_byte = 100,
                                  .resolution = 128 + 11,
                                  .jog_speed = 1.75F,
                                  .jog_accel = 345,
                                  .steps_per_unit = 12345,
                                  .unit_name = "inch",
                                  .use_units = false,
                                  .steps_per_rev = 54321};
  for (const OskelRevision& revision : kOskelRevisions) {
    SCOPED_TRACE(revision.version);
    for (const int sign : {1, -1}) {
      const Program file = ProgramOfDifferentValues(sign);
      const Program before = ProgramOfDifferentValues(-sign);
      const std::string text = WriteOskelProg(revision, file, settings);
      Program program = before;
      ItemReader items(text);
      std::string version;
      items.Read(version);
      EXPECT_EQ(version, revision.version);
      EXPECT_TRUE(LoadOskelProg(items, ParseRevision(version), program));
      EXPECT_TRUE(items.AtEnd());
      ExpectSameProgram(program, AfterOldFile(revision, file, settings, before));
    }
  }
}

TEST(OlderFiles, TheSettingsOfAnOldFileThatIsDamagedStayAsTheyWereRead) {
  const OskelSettings settings = {.drive_code = 3, .current = 255, .resolution = 128 + 11};
  Program program = ProgramOfDifferentValues(1);
  std::string text = WriteOskelProg(kOskelRevisions.back(), program, settings);
  text.replace(text.find("\r\n0,"), 4, "\r\nx,");
  ItemReader items(text);
  std::string version;
  items.Read(version);
  EXPECT_FALSE(LoadOskelProg(items, ParseRevision(version), program));
  EXPECT_EQ(program.Axis.StepResCode[0], 128 + 11) << "not split into resolution and limit switch";
  EXPECT_EQ(program.Axis.LimitKind[0], ProgramOfDifferentValues(1).Axis.LimitKind[0]);
  EXPECT_EQ(program.Axis.DriveCurrent[0], 5.5F) << "scaled and held to the model all the same";
  EXPECT_EQ(program.Axis.StepsPerRev[0], settings.steps_per_rev);
  EXPECT_EQ(program.Prog[5].Drive, ProgramOfDifferentValues(1).Prog[5].Drive);
  for (int line = 0; line < kLines; ++line) EXPECT_EQ(program.Prog[line].Type, NO);
}

}  // namespace
}  // namespace tavlo::testing
