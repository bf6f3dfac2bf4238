// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/input_labels.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tavlo::testing {
namespace {

using Texts = std::vector<std::string>;

/// Captions, or what stands before the rows, of the inputs that are offered at these places.
Texts Offered(const Program& program, int axis, InputsOf dialog, int first, std::string Input::*text) {
  const auto inputs = LabelInputs(program, axis, dialog);
  Texts texts;
  for (int place = first; place < first + kMainInputs; ++place) {
    const Input& input = inputs[static_cast<std::size_t>(place)];
    if (input.offered) texts.push_back(input.*text);
    // There is no gap among them.
    EXPECT_TRUE(!input.offered || static_cast<int>(texts.size()) == place - first + 1);
  }
  return texts;
}

Program OfModel(int model, int limit_kind = 2) {
  Program program;
  InitHardware(program.Axis);
  program.Axis.DriveModel[1] = static_cast<std::int16_t>(model);
  program.Axis.LimitKind[1] = static_cast<std::int16_t>(limit_kind);
  return program;
}

struct Group {
  std::vector<int> models;
  Texts main;
  Texts rows;
  Texts further;
  Texts home;
  /// What a move to a sensor is offered of the further block.
  Texts sensors;
};

const Texts kPlain = {"1", "2", "3", "4", "5/cwjog", "6/ccwjog", "7/cwlim", "8/ccwlim"};
const Texts kPlainHome = {"1", "2", "3", "4", "5/cwjog", "6/ccwjog"};
const Texts kFour = {"1", "2", "3", "4"};
const Texts kNetX = {"X0/index", "X1/cwjog", "X2/ccwjog", "X3", "X4", "X5", "X6/ccwlim", "X7/cwlim"};
const Texts kLimitX = {"X0/index", "X1", "X2", "X3", "X4", "X5", "X6/ccwlim", "X7/cwlim"};
const Texts kOxX = {"X0/index", "X1", "X2", "X3", "X4", "X5", "X6", "X7"};

const std::vector<Group>& Groups() {
  static const std::vector<Group> groups = {
      {{10, 12, 14, 15, 16, 18, 26, 28},
       {"X1/cwjog", "X2/ccwjog", "X3", "X4", "X5", "X6/ccwlim", "X7/cwlim"},
       {"1/cwjog", "2/ccwjog", "3", "4", "5", "6/ccwlim", "7/cwlim"},
       {},
       {"X1/cwjog", "X2/ccwjog", "X3", "X4", "X5", "X6/ccwlim"},
       {}},
      {{20, 21, 22, 23, 24, 25, 27, 29},
       {"1", "2", "3", "4", "5", "6", "7", "8"},
       {"1", "2", "3", "4", "5", "6", "7", "8"},
       kNetX,
       {"1", "2", "3", "4", "5", "6"},
       kNetX},
      {{17, 30},
       {"1", "2", "3", "4", "5/cwjog", "6/ccwjog", "7", "8"},
       {"1", "2", "3", "4", "5/cwjog", "6/ccwjog", "7", "8"},
       kLimitX,
       kPlainHome,
       kLimitX},
      {{11, 13}, kPlain, kPlain, kOxX, kPlainHome, kOxX},
      {{36, 37, 40, 41, 44, 45, 46, 47}, kFour, kFour, {}, kFour, {}},
      {{8, 9, 48, 49, 50}, kPlain, kPlain, {}, kPlainHome, {"X0/index"}},
      {{0, 1, 2, 3, 4, 5, 6, 7, 19, 31, 32, 33, 34, 35, 38, 39, 42, 43}, kPlain, kPlain, {}, kPlainHome, {}}};
  return groups;
}

TEST(InputLabels, EachModelHasItsOwn) {
  std::map<int, int> seen;
  for (const Group& group : Groups()) {
    for (const int model : group.models) {
      SCOPED_TRACE(model);
      ++seen[model];
      const Program program = OfModel(model);
      for (const InputsOf dialog : {InputsOf::Tests, InputsOf::Sensors}) {
        EXPECT_EQ(Offered(program, 1, dialog, 0, &Input::caption), group.main);
        EXPECT_EQ(Offered(program, 1, dialog, 0, &Input::row), group.rows);
      }
      EXPECT_EQ(Offered(program, 1, InputsOf::Home, 0, &Input::caption), group.home);
      EXPECT_EQ(Offered(program, 1, InputsOf::Tests, kMainInputs, &Input::caption), group.further);
      EXPECT_EQ(Offered(program, 1, InputsOf::Tests, kMainInputs, &Input::row), group.further);
      EXPECT_EQ(Offered(program, 1, InputsOf::Sensors, kMainInputs, &Input::caption), group.sensors);
      EXPECT_EQ(Offered(program, 1, InputsOf::Home, kMainInputs, &Input::caption), group.sensors);
      EXPECT_EQ(ExtIO(model), !group.further.empty());
    }
  }
  for (int model = 0; model <= 50; ++model) EXPECT_EQ(seen[model], 1) << model;
  EXPECT_EQ(Offered(OfModel(51), 1, InputsOf::Tests, 0, &Input::caption), kPlain);
  EXPECT_EQ(Offered(OfModel(1), 77, InputsOf::Tests, 0, &Input::caption), kPlain) << "an axis from a file";
}

TEST(InputLabels, AllThatAreOfferedMayBeChosenButLimitsInUse) {
  for (const Group& group : Groups()) {
    for (const int model : group.models) {
      for (const int kind : {0, 1, 2}) {
        for (const InputsOf dialog : {InputsOf::Tests, InputsOf::Sensors, InputsOf::Home}) {
          for (const Input& input : LabelInputs(OfModel(model, kind), 1, dialog)) {
            const bool limit = input.caption.ends_with("lim");
            EXPECT_EQ(input.valid, input.offered && (kind == 2 || !limit))
                << model << ", limits " << kind << ", " << input.caption;
          }
        }
      }
    }
  }
}

TEST(InputLabels, TheHubQuadHasFourOfItsOwnWhateverItsSlotHolds) {
  for (const int model : {0, 10, 20, 30, 36, 48}) {
    Program program = OfModel(1, 0);
    program.HubIndex = HubQuad;
    program.Axis.DriveModel[4] = static_cast<std::int16_t>(model);
    EXPECT_EQ(Offered(program, 4, InputsOf::Tests, 0, &Input::caption), kFour) << model;
    EXPECT_EQ(Offered(program, 4, InputsOf::Tests, kMainInputs, &Input::caption), Texts{}) << model;
    EXPECT_FALSE(HasJogInputs(program, 4));
    EXPECT_TRUE(HasJogInputs(program, 1));
    program.HubIndex = HubOcto;
    EXPECT_NE(Offered(program, 4, InputsOf::Tests, 0, &Input::caption), model == 36 ? Texts{} : kFour);
  }
}

TEST(InputLabels, JogsAreOfferedWhereTheDriveHasMoreThanFourInputs) {
  for (int model = 0; model <= 50; ++model) {
    EXPECT_EQ(HasJogInputs(OfModel(model), 1), !FourInputModel(model)) << model;
  }
}

TEST(InputLabels, ARecordCountsTheFurtherBlockFrom128) {
  EXPECT_EQ(InputNumber(0), 0);
  EXPECT_EQ(InputNumber(7), 7);
  EXPECT_EQ(InputNumber(8), 128);
  EXPECT_EQ(InputNumber(15), 135);
}

}  // namespace
}  // namespace tavlo::testing
