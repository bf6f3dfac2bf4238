// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Programs go to the hub and come back: the bytes they compile to then are the bytes they compiled to before,
// except where a named exception says otherwise.
#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <random>
#include <set>

#include "codegen/decode.h"
#include "codegen/decode_exceptions.h"
#include "codegen/generated_program.h"
#include "model/kinds.h"
#include "programs.h"

namespace tavlo {
namespace {

using testing::Hex;
using testing::NewProgram;
using testing::ProgramGenerator;

using Met = std::set<DecodeException>;

bool IsPrompt(const Instruction& line) {
  return line.Type == MMI;
}

bool IsKnobText(const Instruction& line) {
  return line.Type == FE && line.CountIsMMI;
}

/// The exception that a line falls under by what it says. A line may fall under one and still come back.
std::optional<DecodeException> ExceptionOf(const Instruction& line) {
  switch (line.Type) {
    case FLSO:
    case FLCS:
      if (line.Dist2IsMMI || line.Speed2IsMMI) return DecodeException::SecondOperandFlags;
      return std::nullopt;
    case ED: return DecodeException::MotorCurrent;
    case IM: return DecodeException::NothingRead;
    case FE: return DecodeException::KnobHead;
    case CM:
      if (line.Text.size() == 27) return DecodeException::CommentTail;
      return std::nullopt;
    case SO:
      if (line.Time <= 3) return DecodeException::ShortPulse;
      return std::nullopt;
    case CC: return DecodeException::CutHundredths;
    default: return std::nullopt;
  }
}

/// The bytes of a line without the two that say where its text stands in the pool.
std::string WithoutOffset(const Instruction& line, std::string bytes) {
  if (IsPrompt(line)) bytes.erase(line.SubType == Menu ? 1 : 2, 2);
  return bytes;
}

class RoundTrip {
 public:
  explicit RoundTrip(const Program& program) : sent_(program) {
    first_ = CompileProgram(sent_);
    read_.HubVersion = sent_.HubVersion;
    read_.HubIndex = sent_.HubIndex;
    read_.MMIused = sent_.MMIused;
    DecodeImage(read_, ImageOf(first_));
    second_ = CompileProgram(read_);
  }

  /// Fails the test for any difference without a name. Gives the names.
  Met Differences() {
    for (int line = 0; line < kLines; ++line) CompareLine(line);
    CompareSystem();
    if (!texts_lost_) {
      EXPECT_EQ(Hex(second_.pool), Hex(first_.pool));
    }
    return met_;
  }

 private:
  void CompareLine(int index) {
    const Instruction& line = sent_.Prog[index];
    texts_lost_ = texts_lost_ || (IsKnobText(line) && line.Text.size() > 10);
    std::string before = first_.lines[index];
    std::string after = second_.lines[index];
    if (texts_lost_) {
      before = WithoutOffset(line, before);
      after = WithoutOffset(line, after);
    }
    if (IsPrompt(line)) {
      EXPECT_EQ(read_.Prog[index].Text, line.Text) << "line " << index + 1;
    }
    if (before == after) return;
    const auto exception = ExceptionOf(line);
    ASSERT_TRUE(exception) << "line " << index + 1 << ", " << Mnemonic(line.Type) << ": " << Hex(before)
                           << " became " << Hex(after);
    EXPECT_TRUE(AppliesTo(*exception, first_.lines[index][0] & 63)) << RowOf(*exception).name;
    met_.insert(*exception);
  }

  void CompareSystem() {
    const AxisConfig fresh = NewProgram().Axis;
    for (std::size_t axis = 0; axis < kAxes; ++axis) {
      std::string before = first_.system.substr(axis * 32, 32);
      std::string after = second_.system.substr(axis * 32, 32);
      if (sent_.Axis.StepResCode[axis] != fresh.StepResCode[axis] && before != after) {
        met_.insert(DecodeException::StepResolution);
        before.erase(24, 3);
        after.erase(24, 3);
      }
      EXPECT_EQ(Hex(after), Hex(before)) << "axis " << axis + 1;
    }
  }

  Program sent_;
  Program read_ = NewProgram();
  CompiledProgram first_;
  CompiledProgram second_;
  Met met_;
  bool texts_lost_ = false;
};

void List(const char* what, const Met& met) {
  std::cout << what << " met these exceptions:";
  for (const DecodeException exception : met) std::cout << ' ' << RowOf(exception).name << ';';
  std::cout << '\n';
}

TEST(RoundTrip, EveryExampleComesBackButForTheNamedExceptions) {
  Met met;
  for (const auto& example : examples::ExamplePrograms()) {
    SCOPED_TRACE(example.file_name);
    for (const float firmware : {1.05F, 1.08F, 1.09F, 1.38F}) {
      Program program = example.program;
      program.HubVersion = firmware;
      met.merge(RoundTrip(program).Differences());
    }
  }
  List("The examples", met);
}

TEST(RoundTrip, AThousandGeneratedProgramsComeBackButForTheNamedExceptions) {
  Met met;
  int compiled = 0;
  for (std::uint32_t seed = 1; seed <= 1000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const Program program = ProgramGenerator(seed).Make();
    try {
      met.merge(RoundTrip(program).Differences());
      ++compiled;
    } catch (const EncodeError& error) {
      ADD_FAILURE() << error.what();
    }
    if (::testing::Test::HasFailure()) break;
  }
  EXPECT_EQ(compiled, 1000);
  EXPECT_EQ(met, (Met{DecodeException::SecondOperandFlags, DecodeException::NothingRead,
                      DecodeException::MotorCurrent, DecodeException::KnobHead, DecodeException::CommentTail,
                      DecodeException::ShortPulse, DecodeException::CutHundredths,
                      DecodeException::StepResolution}));
  List("1000 generated programs", met);
}

/// Random bytes, in turn all of them, only in the lines, and with first bytes that name real types.
std::string RandomImage(std::mt19937& engine, int kind) {
  std::string image(kImageBytes, '\0');
  for (char& c : image) c = static_cast<char>(engine() % 256);
  if (kind == 0) return image;
  for (std::size_t line = 0; line < kLines; ++line) {
    char& first = image[line * kSlotBytes];
    first = static_cast<char>((first & 0xC0) + static_cast<int>(engine() % kTypes));
    // A pulse that can be read, so that the image is.
    if (kind == 2 && (first & 63) == SO) image[line * kSlotBytes + 3] &= 0x3F;
  }
  return image;
}

TEST(RoundTrip, RandomImagesAreReadOrRefusedAndNothingElse) {
  std::mt19937 engine(20260101);
  int read = 0;
  int refused = 0;
  for (int i = 0; i < 600; ++i) {
    Program program = NewProgram();
    program.HubVersion = 1.38F;
    const Program before = program;
    try {
      DecodeImage(program, RandomImage(engine, i % 3));
      ++read;
      for (int line = 0; line < kLines; ++line) {
        EXPECT_GE(program.Prog[line].Type, 0);
        EXPECT_LE(program.Prog[line].Type, 63);
        EXPECT_LE(program.Prog[line].Text.size(), static_cast<std::size_t>(kPoolBytes));
      }
    } catch (const DecodeError&) {
      ++refused;
      EXPECT_TRUE(program.Prog == before.Prog);
    }
  }
  EXPECT_GE(read, 200) << "the third kind can always be read";
  EXPECT_GT(refused, 0);
}

TEST(RoundTrip, WhatWasReadFromARandomImageCompilesOrIsRefused) {
  std::mt19937 engine(7);
  for (int i = 0; i < 60; ++i) {
    Program program = NewProgram();
    program.HubVersion = 1.38F;
    DecodeImage(program, RandomImage(engine, 2));
    StringPool pool;
    for (int line = 0; line < kLines; ++line) {
      try {
        EXPECT_FALSE(Compile(program, line, pool).empty());
      } catch (const EncodeError& error) {
        EXPECT_STRNE(error.what(), "");
      }
    }
  }
}

}  // namespace
}  // namespace tavlo
