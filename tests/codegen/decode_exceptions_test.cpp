// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/decode_exceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "codegen/decode.h"
#include "codegen/one_line.h"

namespace tavlo {
namespace {

using testing::Bytes;
using testing::Hex;
using testing::NewProgram;

/// What becomes of a line that goes to the hub and comes back into a record with the defaults.
struct Trip {
  Trip(int type, const std::function<void(Instruction&)>& fill) {
    sent.Type = static_cast<std::int16_t>(type);
    fill(sent);
    Program program = NewProgram();
    program.HubVersion = 1.38F;
    program.Prog[0] = sent;
    StringPool pool;
    bytes = Compile(program, 0, pool);
    std::string slot = bytes;
    slot.resize(kSlotBytes, '\0');
    program.Prog[0] = NewProgram().Prog[0];
    Decode(program, 0, slot, pool.Pool + '\0');
    back = program.Prog[0];
    pool = StringPool();
    bytes_again = Compile(program, 0, pool);
  }

  Instruction sent = NewProgram().Prog[0];
  Instruction back;
  std::string bytes;
  std::string bytes_again;
};

TEST(DecodeExceptions, EachHasANameOfItsOwnAndAReason) {
  std::set<std::string_view> names;
  for (const DecodeExceptionRow& row : kDecodeExceptions) {
    EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_GT(row.reason.size(), 20U) << row.name;
    EXPECT_EQ(row.types.empty(), row.which == DecodeException::StepResolution) << row.name;
  }
}

TEST(DecodeExceptions, SecondOperandFlagsASecondDistanceFromAVariableComesBackAsASecondSpeedFromOne) {
  for (const int type : {FLSO, FLCS}) {
    const Trip trip(type, [](Instruction& l) { l.Dist2IsMMI = true, l.Dist2Var = 5; });
    EXPECT_FALSE(trip.back.Dist2IsMMI);
    EXPECT_TRUE(trip.back.Speed2IsMMI);
    EXPECT_EQ(trip.back.Dist2, 5 * 65536);
    EXPECT_EQ(trip.back.Dist2Var, 1) << "kept";
  }
}

TEST(DecodeExceptions, SecondOperandFlagsASecondSpeedFromAVariableComesBackWithNeither) {
  for (const int type : {FLSO, FLCS}) {
    const Trip trip(type, [](Instruction& l) { l.Speed2IsMMI = true, l.Speed2Var = 27; });
    EXPECT_FALSE(trip.back.Dist2IsMMI);
    EXPECT_FALSE(trip.back.Speed2IsMMI);
  }
  const Trip change(FLCS, [](Instruction& l) { l.Speed2IsMMI = true, l.Speed2Var = 27; });
  EXPECT_EQ(change.back.Speed2, static_cast<float>(27 * 256 / 40.0));
}

TEST(DecodeExceptions, SetOutVariableIsTheLastByteOfTheFirstDistanceAndOfAChangeOfSpeedItsOwn) {
  const auto variable = [](int type) {
    Program program = NewProgram();
    Decode(program, 0, Bytes({type, 8, 0, 1, 0, 1, 0, 1, 1, 2, 33, 44, 0, 0, 1, 2, 3, 4}), {});
    EXPECT_TRUE(program.Prog[0].Dist2IsMMI);
    EXPECT_EQ(program.Prog[0].Dist2, 10000) << "kept";
    return program.Prog[0].Dist2Var;
  };
  EXPECT_EQ(variable(FLSO), 33);
  EXPECT_EQ(variable(FLCS), 44);
}

TEST(DecodeExceptions, NothingReadLeavesIfMovingAndEndRepeatWithWhatTheyHeld) {
  const Trip moving(IM, [](Instruction& l) { l.LineNum = 12, l.Drive = 3; });
  EXPECT_EQ(moving.back.LineNum, 0);
  EXPECT_EQ(moving.back.Drive, 0);
  const Trip end(ER, [](Instruction& l) { l.LineNum = 12, l.LoopIndex = 3; });
  EXPECT_EQ(end.back.LineNum, 0);
  EXPECT_EQ(end.back.LoopIndex, 0);
}

TEST(DecodeExceptions, LoopNumbersAreNotReadButCountedAfresh) {
  EXPECT_EQ(Trip(RP, [](Instruction& l) { l.LoopIndex = 3; }).back.LoopIndex, 0);
  Program program = NewProgram();
  Program read = NewProgram();
  for (const int line : {1, 2}) program.Prog[line].Type = RP;
  for (const int line : {4, 5}) program.Prog[line].Type = ER;
  program.Prog[1].Proceed = true;
  program.Prog[6].Type = RL;
  program.Prog[6].LineNum = 2;
  DecodeImage(read, ImageOf(CompileProgram(program)));
  EXPECT_EQ(read.Prog[2].LoopIndex, 1);
  EXPECT_EQ(read.Prog[4].LineNum, 2);
  EXPECT_EQ(read.Prog[5].LineNum, 1);
  EXPECT_EQ(read.Prog[5].LoopIndex, 0);
  EXPECT_TRUE(read.Prog[5].Proceed);
}

TEST(DecodeExceptions, MotorByteIsOnAtOneOnly) {
  for (int byte = 0; byte < 256; ++byte) {
    Program program = NewProgram();
    Decode(program, 0, Bytes({ED, byte, 3, 2, 1}), {});
    EXPECT_EQ(program.Prog[0].MotorOn, byte == 1) << byte;
  }
}

TEST(DecodeExceptions, MotorCurrentAndIdleOptionAreTheRecordsOwn) {
  const Trip trip(ED, [](Instruction& l) { l.Current = 3.0F, l.IdlePct = 2, l.Drive = 5; });
  EXPECT_EQ(trip.back.Current, 1.0F);
  EXPECT_EQ(trip.back.IdlePct, 0);
  EXPECT_EQ(trip.back.Drive, 5);
}

TEST(DecodeExceptions, KnobHeadLeavesTheAxis) {
  const Trip trip(FE, [](Instruction& l) { l.IONum = 2, l.State = 3, l.Dist = 9, l.Drive = 5; });
  EXPECT_EQ(trip.back.Drive, 0);
  EXPECT_EQ(Hex(trip.bytes), "1202030905");
  EXPECT_EQ(Hex(trip.bytes_again), "1202030900");
}

TEST(DecodeExceptions, KnobHeadReadsALineWithATextInThePlainForm) {
  const Trip trip(FE, [](Instruction& l) {
    l.CountIsMMI = true, l.Text = "a text that is long", l.Dist = 9, l.Wrap1 = l.Blank2 = true;
  });
  EXPECT_TRUE(trip.back.Proceed);
  EXPECT_EQ(trip.back.IONum, 9) << "its flags";
  EXPECT_EQ(trip.back.State, 0) << "the high byte of its offset";
  EXPECT_EQ(trip.back.Dist, 9);
  EXPECT_EQ(trip.back.Text, "");
  EXPECT_FALSE(trip.back.CountIsMMI);
}

TEST(DecodeExceptions, KnobHeadReadsThePlainFormEvenOntoARecordThatHasAText) {
  Program program = NewProgram();
  program.Prog[0].CountIsMMI = true;
  Decode(program, 0, Bytes({FE, 1, 2, 3, 4}), {});
  EXPECT_EQ(program.Prog[0].IONum, 1);
  EXPECT_EQ(program.Prog[0].State, 2);
  EXPECT_EQ(program.Prog[0].Dist, 3);
  EXPECT_TRUE(program.Prog[0].CountIsMMI);
}

TEST(DecodeExceptions, MenuCodeTurnsIntoAPromptsAndAPromptThatClaimsToBeAMenuIsReadAsAValue) {
  const Trip trip(MMI,
                  [](Instruction& l) { l.SubType = Menu, l.Wrap3 = l.Blank3 = true, l.MenuLine[8] = 12; });
  EXPECT_EQ(trip.bytes[0], 26);
  EXPECT_EQ(trip.back.Type, MMI);
  EXPECT_EQ(trip.back.SubType, Menu);
  EXPECT_EQ(trip.back.MenuLine[8], 12);
  EXPECT_TRUE(trip.back.Wrap3 && trip.back.Blank3);
  Program program = NewProgram();
  Decode(program, 0, Bytes({MMI, 6, 0, 0, 0, 25, 0, 0, 1, 0, 2, 0, 0, 3, 0, 4, 5}), {});
  EXPECT_EQ(program.Prog[0].SubType, Menu);
  EXPECT_EQ(program.Prog[0].DistVar, 25);
  EXPECT_EQ(program.Prog[0].UpperFrac, 4);
  EXPECT_EQ(program.Prog[0].Drive, 5);
  EXPECT_EQ(program.Prog[0].MenuLine, NewProgram().Prog[0].MenuLine);
}

TEST(DecodeExceptions, PromptFlagsOfTheThirdLineAreClearedByAPromptAndKeptByPauseAndBranch) {
  for (int sub_type = GetDistance; sub_type <= BranchYesNo; ++sub_type) {
    for (const int flags : {0x00, 0x0f, 0x30, 0xff}) {
      Program program = NewProgram();
      program.Prog[0].Wrap3 = program.Prog[0].Blank3 = true;
      Decode(program, 0, Bytes({MMI, sub_type, 0, 0, flags}), {});
      const bool keeps = sub_type == WaitEnter || sub_type == BranchYesNo;
      EXPECT_EQ(program.Prog[0].Wrap3, keeps) << sub_type << ' ' << flags;
      EXPECT_EQ(program.Prog[0].Blank3, keeps) << sub_type << ' ' << flags;
    }
  }
  const Trip trip(MMI, [](Instruction& l) { l.Wrap3 = l.Blank3 = true; });
  EXPECT_FALSE(trip.back.Wrap3 || trip.back.Blank3) << "lost";
}

TEST(DecodeExceptions, BranchFlagsAreSetThoughABranchUsesNeither) {
  for (int sub_type = GetDistance; sub_type <= Menu; ++sub_type) {
    const Trip trip(MMI, [&](Instruction& l) { l.SubType = static_cast<std::int16_t>(sub_type); });
    EXPECT_EQ(trip.back.CountIsMMI, sub_type == BranchYesNo) << sub_type;
    EXPECT_EQ(trip.back.SpeedIsMMI, sub_type == BranchYesNo) << sub_type;
  }
}

TEST(DecodeExceptions, WholeSubTypeTakesAllBitsFromSixteenUp) {
  Program program = NewProgram();
  Decode(program, 0, Bytes({SS, 255, 0, 1, 0, 1, 0}), {});
  EXPECT_EQ(program.Prog[0].SubType, 15);
  EXPECT_EQ(program.Prog[0].Dir, 1);
}

TEST(DecodeExceptions, PulseOverflowFailsInsteadOfGivingAPulse) {
  EXPECT_EQ(Trip(SO, [](Instruction& l) { l.Time = 2559; }).back.Time, 2559);
  EXPECT_THROW(Trip(SO, [](Instruction& l) { l.Time = 2570; }), DecodeError);
}

TEST(DecodeExceptions, CommentTailLosesFourCharactersOfTwentySevenAndNoneOfTwentySix) {
  const std::string text = "abcdefghijklmnopqrstuvwxyz1";
  const Trip whole(CM, [&](Instruction& l) { l.Text = text; });
  EXPECT_EQ(whole.back.Text, text.substr(4) + std::string(4, '\0'));
  const Trip shorter(CM, [&](Instruction& l) { l.Text = text.substr(1); });
  EXPECT_EQ(shorter.back.Text, text.substr(1));
}

TEST(DecodeExceptions, ShortPulseComesBackAsFour) {
  for (int ms = 0; ms <= 500; ++ms) {
    const Trip trip(SO, [&](Instruction& l) { l.Time = ms; });
    EXPECT_EQ(trip.back.Time, ms <= 3 ? 4 : ms);
    EXPECT_EQ(trip.bytes == trip.bytes_again, ms > 3) << ms;
  }
}

TEST(DecodeExceptions, CutHundredthsMakeOnePointThreeOnePointTwoNine) {
  const Trip trip(CC, [](Instruction& l) { l.Current = 1.3F; });
  EXPECT_EQ(trip.back.Current, 1.29F);
  EXPECT_EQ(Hex(trip.bytes), "13011d00");
  EXPECT_EQ(Hex(trip.bytes_again), "13011c00");
}

TEST(DecodeExceptions, WrappedZeroGoesOutAsOneTheNextTime) {
  const Trip trip(FL, [](Instruction& l) { l.Speed = 1638.4F; });
  EXPECT_EQ(trip.back.Speed, 0.0F);
  EXPECT_EQ(Hex(trip.bytes.substr(2, 2)), "0000");
  EXPECT_EQ(Hex(trip.bytes_again.substr(2, 2)), "0001");
}

TEST(DecodeExceptions, ZerosOfSpeedRateTimeAndCountComeBackAsOne) {
  const Trip move(FR,
                  [](Instruction& l) { l.Speed = l.RetSpeed = 0, l.Accel = l.Decel = l.Time = l.Dist = 0; });
  EXPECT_EQ(move.back.Speed, 0.025F);
  EXPECT_EQ(move.back.RetSpeed, 0.025F);
  EXPECT_EQ(move.back.Accel, 1);
  EXPECT_EQ(move.back.Decel, 1);
  EXPECT_EQ(move.back.Time, 1);
  EXPECT_EQ(move.back.Dist, 0);
  EXPECT_EQ(Trip(RP, [](Instruction& l) { l.Count = 0; }).back.Count, 1);
  EXPECT_EQ(Trip(FL, [](Instruction& l) { l.Speed = 1.01F; }).back.Speed, 1.0F) << "to 1/40 rev/s";
}

}  // namespace
}  // namespace tavlo
