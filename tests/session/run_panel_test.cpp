// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_panel.h"

#include <gtest/gtest.h>

#include <set>

#include "support/fake_desk.h"

namespace tavlo {
namespace {

using testing::FakeDesk;

// The families by their codes, written down apart from the tests of the code under test.
using Models = std::set<int>;
const Models kPlain = {10, 12, 16, 26};
const Models kProg = {14, 15, 18, 28};
const Models kOx = {11, 13, 17, 30};
const Models kPlainNet = {20, 22, 24, 27};
const Models kProgNet = {21, 23, 25, 29};
const Models kPelmar = {26, 27, 28, 29, 30, 31, 32, 33, 34, 35};
const Models kZenuAC = {16, 17, 18, 24, 25};
const Models kZenuDCOx = {11, 13};
const Models kZenu = {10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 21, 22, 23};
const Models kFourInputs = {36, 37, 40, 41, 44, 45, 46, 47};
const Models kFourOutputs = {11, 13, 17, 19, 20, 21, 22, 23, 24, 25, 27, 29, 30, 38, 39, 42, 43, 48, 49, 50};

template <class... More>
bool In(int model, const More&... families) {
  return ((families.count(model) != 0) || ...);
}

bool Cut(int model) {
  return In(model, kPlain, kProg);
}

constexpr int kModels = 51;
constexpr int kNotUsed = 2;
constexpr float kOld = 1.52F;
constexpr float kNew = 1.53F;
constexpr int kAllOff = 255;

/// What a bit shows: on where it is clear.
Led Light(int bits, int bit, bool red) {
  const bool on = (bits >> bit & 1) == 0;
  if (red) return on ? Led::Red : Led::RedOff;
  return on ? Led::Green : Led::GreenOff;
}

/// One axis with a drive; its lights show something that no status paints.
struct Panel : FakeDesk {
  Panel(int axis, int model, int limit_kind = 0, float revision = kNew) : axis_(axis) {
    source.program.Axis.DriveModel.fill(0);
    source.program.Axis.DriveModel[axis] = static_cast<std::int16_t>(model);
    source.program.Axis.LimitKind[axis] = static_cast<std::int16_t>(limit_kind);
    source.link.DriveRev.fill(0);
    source.link.DriveRev[axis] = revision;
    run.active = RunWindow::ExecStatus;
    for (int a = 0; a < kAxes; ++a) {
      source.run.panel.INlo[a].fill(kUntouched);
      source.run.panel.INX[a].fill(kUntouched);
      source.run.panel.OUTlo[a].fill(kUntouched);
      source.run.panel.OUTY[a].fill(kUntouched);
    }
  }
  [[nodiscard]] Led At(LedRow row, int bit) const { return source.run.panel.At(row, axis_, bit); }
  /// Nothing but this axis has been painted.
  [[nodiscard]] bool OthersUntouched() const {
    for (int a = 0; a < kAxes; ++a) {
      if (a == axis_) continue;
      for (const LedRow row : kLedRows) {
        for (int bit = 0; bit < LedsOf(row); ++bit) {
          if (source.run.panel.At(row, a, bit) != kUntouched) return false;
        }
      }
    }
    return true;
  }
  static constexpr Led kUntouched = static_cast<Led>(99);

 private:
  int axis_;
};

/// Values that tell every bit from every other.
constexpr std::array kPatterns = {0, 255, 1, 2, 4, 8, 16, 32, 64, 128, 0x55, 0xAA};

TEST(RedLED, IsABitOfALimitSwitchOfADriveThatHasThemThere) {
  for (int model = 0; model <= kModels; ++model) {
    for (int kind = 0; kind <= kNotUsed; ++kind) {
      const Panel d(3, model, kind);
      for (int bit = 0; bit < kMainInputs; ++bit) {
        const bool red =
            (bit == 6 || bit == 7) && !In(model, kZenuAC) && kind != kNotUsed && !In(model, kPelmar);
        EXPECT_EQ(RedLED(d.source.program, bit, 3), red) << model << ' ' << kind << ' ' << bit;
      }
    }
  }
}

TEST(ShowStatus, PaintsTheInputsOfEveryModel) {
  for (int model = 0; model <= kModels; ++model) {
    for (int kind = 0; kind <= kNotUsed; ++kind) {
      for (const int inputs : kPatterns) {
        Panel d(5, model, kind);
        ShowStatus(d.desk.lights(), 5, inputs, kAllOff);
        for (int bit = 0; bit < kMainInputs; ++bit) {
          const Led light = Light(inputs, bit, RedLED(d.source.program, bit, 5));
          const bool has_x = bit < kXInputs;
          EXPECT_EQ(d.At(LedRow::INlo, bit), Cut(model) ? Panel::kUntouched : light) << model << ' ' << bit;
          if (has_x) {
            EXPECT_EQ(d.At(LedRow::INX, bit), Cut(model) ? light : Panel::kUntouched) << model << ' ' << bit;
          }
        }
        EXPECT_TRUE(d.OthersUntouched());
        EXPECT_EQ(d.run.statuses, std::vector<int>{5});
        EXPECT_TRUE(d.port.sent.empty());
      }
    }
  }
}

/// Checks the outputs of an axis after a status with this value.
void ExpectOutputs(const Panel& d, int model, float revision, int outputs) {
  for (int bit = 0; bit < kMainOutputs; ++bit) {
    EXPECT_EQ(d.At(LedRow::OUTlo, bit), Cut(model) ? Panel::kUntouched : Light(outputs, bit, false))
        << model << ' ' << bit;
  }
  for (int bit = 0; bit < kYOutputs; ++bit) {
    Led expected = Panel::kUntouched;
    if (Cut(model)) {
      expected = Light(outputs, bit, false);
    } else if (In(model, kOx, kPlainNet, kProgNet)) {
      const bool reports = In(model, kPelmar) || revision >= kNew;
      expected = reports ? Light(outputs, bit + kMainOutputs, false) : Led::Unknown;
    }
    EXPECT_EQ(d.At(LedRow::OUTY, bit), expected) << model << ' ' << revision << ' ' << bit;
  }
}

TEST(ShowStatus, PaintsTheOutputsOfEveryModel) {
  for (int model = 0; model <= kModels; ++model) {
    for (const float revision : {kOld, kNew, 1.89F}) {
      for (const int outputs : kPatterns) {
        Panel d(0, model, 0, revision);
        ShowStatus(d.desk.lights(), 0, kAllOff, outputs);
        ExpectOutputs(d, model, revision, outputs);
      }
    }
  }
}

TEST(ShowOutStatus, PaintsTheSameOutputsAndNoInput) {
  for (int model = 0; model <= kModels; ++model) {
    for (const float revision : {kOld, kNew}) {
      for (const int outputs : kPatterns) {
        Panel d(7, model, 0, revision);
        ShowOutStatus(d.desk.lights(), 7, outputs);
        ExpectOutputs(d, model, revision, outputs);
        for (int bit = 0; bit < kMainInputs; ++bit) EXPECT_EQ(d.At(LedRow::INlo, bit), Panel::kUntouched);
        for (int bit = 0; bit < kXInputs; ++bit) EXPECT_EQ(d.At(LedRow::INX, bit), Panel::kUntouched);
        EXPECT_TRUE(d.OthersUntouched());
        EXPECT_EQ(d.run.statuses, std::vector<int>{7});
      }
    }
  }
}

TEST(ShowXStatus, PaintsTheXInputsOfEveryModelThatReportsThem) {
  for (int model = 0; model <= kModels; ++model) {
    for (int kind = 0; kind <= kNotUsed; ++kind) {
      for (const float revision : {kOld, kNew}) {
        for (const int inputs : kPatterns) {
          Panel d(2, model, kind, revision);
          ShowXStatus(d.desk.lights(), 2, inputs);
          const bool reports = Cut(model) || In(model, kPelmar) || revision >= kNew;
          for (int bit = 0; bit < kXInputs; ++bit) {
            const bool red = (bit == 5 || bit == 6) && kind != kNotUsed && !In(model, kZenuDCOx);
            EXPECT_EQ(d.At(LedRow::INX, bit), reports ? Light(inputs, bit, red) : Led::Unknown)
                << model << ' ' << kind << ' ' << revision << ' ' << bit;
          }
          for (int bit = 0; bit < kMainInputs; ++bit) EXPECT_EQ(d.At(LedRow::INlo, bit), Panel::kUntouched);
          for (int bit = 0; bit < kYOutputs; ++bit) EXPECT_EQ(d.At(LedRow::OUTY, bit), Panel::kUntouched);
          EXPECT_TRUE(d.OthersUntouched());
          EXPECT_EQ(d.run.statuses, std::vector<int>{2});
        }
      }
    }
  }
}

TEST(ShowXStatus, ADriveBelow153ThatIsNotPlainOrProgIsUnknownOnAllXInputs) {
  Panel d(1, 11, 0, kOld);
  ShowXStatus(d.desk.lights(), 1, 0);
  for (int bit = 0; bit < kXInputs; ++bit) EXPECT_EQ(d.At(LedRow::INX, bit), Led::Unknown) << bit;
}

TEST(ShowXStatus, APelmarDriveIsNeverUnknown) {
  for (const int model : kPelmar) {
    Panel d(1, model, 0, 0);
    ShowXStatus(d.desk.lights(), 1, 0);
    for (int bit = 0; bit < kXInputs; ++bit) EXPECT_NE(d.At(LedRow::INX, bit), Led::Unknown) << model;
  }
}

TEST(ShowStatus, AllBitsSetShowsAllLightsOff) {
  for (int model = 0; model <= kModels; ++model) {
    Panel d(0, model);
    ShowStatus(d.desk.lights(), 0, kAllOff, kAllOff);
    for (const LedRow row : kLedRows) {
      for (int bit = 0; bit < LedsOf(row); ++bit) {
        EXPECT_NE(d.At(row, bit), Led::Green) << model;
        EXPECT_NE(d.At(row, bit), Led::Red) << model;
      }
    }
  }
}

TEST(ShowStatus, LimitSwitchesThatAreNotUsedAreGreen) {
  Panel d(0, 1, kNotUsed);
  ShowStatus(d.desk.lights(), 0, 0, kAllOff);
  EXPECT_EQ(d.At(LedRow::INlo, 6), Led::Green);
  EXPECT_EQ(d.At(LedRow::INlo, 7), Led::Green);
  ShowStatus(d.desk.lights(), 0, kAllOff, kAllOff);
  EXPECT_EQ(d.At(LedRow::INlo, 6), Led::GreenOff);
  EXPECT_EQ(d.At(LedRow::INlo, 7), Led::GreenOff);
}

TEST(MakeLimitsRed, StandsOnTheMainInputsOrOnTheLastXInputs) {
  for (const std::int16_t hub : {HubOcto, HubQuad}) {
    for (int model = 0; model <= kModels; ++model) {
      for (int kind = 0; kind <= kNotUsed; ++kind) {
        Panel d(0, 0);
        d.source.program.HubIndex = hub;
        d.source.program.Axis.DriveModel.fill(static_cast<std::int16_t>(model));
        d.source.program.Axis.LimitKind.fill(static_cast<std::int16_t>(kind));
        MakeLimitsRed(d.source.run.panel, d.source.program);
        const bool among_x = In(model, kPlain, kZenuAC, kProg, kProgNet, kPlainNet, kPelmar);
        for (int axis = 0; axis < kAxes; ++axis) {
          const bool drive = axis < (hub == HubQuad ? 4 : 8);
          for (int bit = 0; bit < kMainInputs; ++bit) {
            const bool red = drive && !among_x && bit >= 6;
            EXPECT_EQ(d.source.run.panel.INlo[axis][bit], red ? Led::RedOff : Led::GreenOff) << model;
          }
          for (int bit = 0; bit < kXInputs; ++bit) {
            const bool red = drive && among_x && bit >= 5;
            EXPECT_EQ(d.source.run.panel.INX[axis][bit], red ? Led::RedOff : Led::GreenOff) << model;
          }
          for (const Led led : d.source.run.panel.OUTlo[axis]) EXPECT_EQ(led, Led::GreenOff);
          for (const Led led : d.source.run.panel.OUTY[axis]) EXPECT_EQ(led, Led::GreenOff);
        }
      }
    }
  }
}

/// The lights of a drive's column, apart from the Hub Quad's own.
bool Expected(LedRow row, int model, int bit) {
  switch (row) {
    case LedRow::INlo:
      if (In(model, kFourInputs)) return bit < 3;
      return model != 0 && !Cut(model);
    case LedRow::INX:
    case LedRow::OUTY: return In(model, kZenu, kPelmar);
    case LedRow::OUTlo: return model != 0 && !Cut(model) && (bit < 3 || In(model, kFourOutputs));
  }
  return false;
}

TEST(ShowsLed, FollowsTheModelOfTheColumn) {
  for (const std::int16_t hub : {HubOcto, HubQuad}) {
    for (int model = 0; model < kModels; ++model) {
      Panel d(0, 0);
      d.source.program.HubIndex = hub;
      d.source.program.Axis.DriveModel.fill(static_cast<std::int16_t>(model));
      for (int axis = 0; axis < (hub == HubQuad ? 4 : 8); ++axis) {
        for (const LedRow row : kLedRows) {
          for (int bit = 0; bit < LedsOf(row); ++bit) {
            EXPECT_EQ(ShowsLed(d.source.program, row, axis, bit), Expected(row, model, bit))
                << model << ' ' << axis << ' ' << bit;
          }
        }
      }
    }
  }
}

TEST(ShowsLed, TheFifthColumnOfTheHubQuadIsTheHubsOwnAndNoneStandsBehindIt) {
  for (int model = 0; model < kModels; ++model) {
    Panel d(0, 0);
    d.source.program.HubIndex = HubQuad;
    d.source.program.Axis.DriveModel.fill(static_cast<std::int16_t>(model));
    const Program& program = d.source.program;
    for (int bit = 0; bit < kMainInputs; ++bit) {
      EXPECT_EQ(ShowsLed(program, LedRow::INlo, kHubQuadIO, bit), bit < 4) << model;
    }
    for (int bit = 0; bit < kMainOutputs; ++bit) {
      EXPECT_TRUE(ShowsLed(program, LedRow::OUTlo, kHubQuadIO, bit)) << model;
    }
    EXPECT_FALSE(ShowsLed(program, LedRow::INX, kHubQuadIO, 0)) << model;
    EXPECT_FALSE(ShowsLed(program, LedRow::OUTY, kHubQuadIO, 0)) << model;
    for (int axis = 5; axis < kAxes; ++axis) {
      for (const LedRow row : kLedRows) EXPECT_FALSE(ShowsLed(program, row, axis, 0)) << model;
    }
  }
}

TEST(ShowsLed, NoLightStandsOutsideThePanel) {
  Panel d(0, 0);
  d.source.program.Axis.DriveModel.fill(11);
  for (const LedRow row : kLedRows) {
    EXPECT_TRUE(ShowsLed(d.source.program, row, 7, LedsOf(row) - 1));
    EXPECT_FALSE(ShowsLed(d.source.program, row, 7, LedsOf(row)));
    EXPECT_FALSE(ShowsLed(d.source.program, row, 7, -1));
    EXPECT_FALSE(ShowsLed(d.source.program, row, 8, 0));
    EXPECT_FALSE(ShowsLed(d.source.program, row, -1, 0));
  }
}

TEST(HubColumn, ShowsTheHubsOwnInputsAndOutputsWhateverModelIsLeftInItsSlot) {
  for (int model = 0; model <= kModels; ++model) {
    for (int kind = 0; kind <= kNotUsed; ++kind) {
      Panel d(kHubQuadIO, model, kind);
      d.source.program.HubIndex = HubQuad;
      for (int bit = 0; bit < 4; ++bit) {
        const int only_this = kAllOff & ~(1 << bit);
        ShowStatus(d.desk.lights(), kHubQuadIO, only_this, only_this);
        for (int i = 0; i < 4; ++i) {
          EXPECT_EQ(d.At(LedRow::INlo, i), Light(only_this, i, false)) << model << ' ' << i;
          EXPECT_EQ(d.At(LedRow::OUTlo, i), Light(only_this, i, false)) << model << ' ' << i;
        }
        ShowOutStatus(d.desk.lights(), kHubQuadIO, ~only_this);
        for (int i = 0; i < 4; ++i) EXPECT_EQ(d.At(LedRow::OUTlo, i), Light(~only_this, i, false)) << model;
      }
      for (int bit = 0; bit < kMainInputs; ++bit)
        EXPECT_FALSE(RedLED(d.source.program, bit, kHubQuadIO)) << model << ' ' << bit;
    }
  }
}

TEST(PanelColumns, OneForEachAxisOrForFourAndTheHub) {
  FakeDesk d;
  EXPECT_EQ(PanelColumns(d.source.program), 8);
  EXPECT_EQ(ColumnCaption(d.source.program, 0), "1");
  EXPECT_EQ(ColumnCaption(d.source.program, 4), "5");
  EXPECT_EQ(ColumnCaption(d.source.program, 7), "8");
  d.source.program.HubIndex = HubQuad;
  EXPECT_EQ(PanelColumns(d.source.program), 5);
  EXPECT_EQ(ColumnCaption(d.source.program, 3), "4");
  EXPECT_EQ(ColumnCaption(d.source.program, 4), "Hub");
}

TEST(LedCaption, IsTheNumberWithTheLettersOfTheFurtherOnes) {
  EXPECT_EQ(LedCaption(LedRow::INlo, 0), "1");
  EXPECT_EQ(LedCaption(LedRow::INlo, 7), "8");
  EXPECT_EQ(LedCaption(LedRow::INX, 6), "X7");
  EXPECT_EQ(LedCaption(LedRow::OUTlo, 3), "4");
  EXPECT_EQ(LedCaption(LedRow::OUTY, 1), "Y2");
}

TEST(LedName, SaysWhatTheLightIsAndShows) {
  FakeDesk d;
  const Program& program = d.source.program;
  EXPECT_EQ(LedName(program, LedRow::INlo, 2, 1, Led::Green), "axis 3 input 2: on");
  EXPECT_EQ(LedName(program, LedRow::INlo, 0, 0, Led::GreenOff), "axis 1 input 1: off");
  EXPECT_EQ(LedName(program, LedRow::INX, 7, 2, Led::Unknown), "axis 8 input X3: unknown");
  EXPECT_EQ(LedName(program, LedRow::OUTlo, 4, 3, Led::Green), "axis 5 output 4: on");
  EXPECT_EQ(LedName(program, LedRow::OUTY, 1, 1, Led::Unknown), "axis 2 output Y2: unknown");
  EXPECT_EQ(LedName(program, LedRow::INlo, 2, 6, Led::Red), "axis 3 input 7 (limit): on");
  EXPECT_EQ(LedName(program, LedRow::INX, 2, 6, Led::RedOff), "axis 3 input X7 (limit): off");
  d.source.program.HubIndex = HubQuad;
  EXPECT_EQ(LedName(program, LedRow::INlo, 4, 3, Led::Green), "hub input 4: on");
  EXPECT_EQ(LedName(program, LedRow::OUTlo, 4, 0, Led::GreenOff), "hub output 1: off");
}

TEST(RunPanel, OfANewSessionShowsNothingOnAndNoRun) {
  const Source source;
  EXPECT_FALSE(source.run.panel.Running);
  EXPECT_EQ(source.run.panel.Play, Picture::PlayGray);
  for (const LedRow row : kLedRows) {
    for (int axis = 0; axis < kAxes; ++axis) {
      for (int bit = 0; bit < LedsOf(row); ++bit)
        EXPECT_EQ(source.run.panel.At(row, axis, bit), Led::GreenOff);
    }
  }
}

}  // namespace
}  // namespace tavlo
