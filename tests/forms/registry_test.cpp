// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "model/kinds.h"

namespace tavlo::testing {
namespace {

TEST(Forms, EachKindHasItsDialog) {
  const struct {
    int type;
    std::string_view name;
    std::string_view title;
    std::string_view help;
  } rows[] = {{FL, "FeedLength", "Feed to Length", "FL.pdf"},
              {FLCS, "FeedLength", "Feed to Length", "FL.pdf"},
              {WT, "WaitTime", "Wait Time", "WT.pdf"},
              {GT, "GoToBox", "Go To", "GT.pdf"},
              {FR, "FeedReturn", "Feed & Return", "FR.pdf"},
              {FP, "FeedPosn", "Feed to Position", "FP.pdf"},
              {SS, "StartStop", "Start/Stop Motion", "SM.pdf"},
              {CL, "CallDialog", "Call", "Call.pdf"},
              {RL, "ResetLoop", "Reset Loop", "RL.pdf"},
              {IM, "IfMoving", "If Moving", "IM.pdf"},
              {LP, "LearnPos", "Learn Position", "LP.pdf"},
              {SP, "SetPosn", "Set Position", "SP.pdf"},
              {RP, "Repeat", "Repeat", "RP.pdf"},
              {FLSO, "FeedSetOut", "Feed to Length & Set Output", "FLSO.pdf"},
              {SO, "SetOutput", "Set Output", "SO.pdf"},
              {CC, "ChangeCurrent", "Change Current", "CC.pdf"},
              {ED, "ChangeCurrent", "Change Current", "CC.pdf"},
              {MMI, "MMIprompt", "MMI Prompt", "MMI.pdf"},
              {MMImenu, "MMIprompt", "MMI Prompt", "MMI.pdf"},
              {CM, "comment", "Comment", "CM.pdf"},
              {FS, "FeedSense", "Feed to Sensor", "FS.pdf"},
              {FSS, "FeedSense", "Feed to Sensor", "FS.pdf"},
              {FSR, "FeedSenseRet", "Feed to Sensor & Return", "FSR.pdf"},
              {SH, "SeekHome", "Seek Home", "SH.pdf"},
              {WI, "WaitInput", "Wait Input", "WI.pdf"},
              {WII, "WaitInput", "Wait Input", "WI.pdf"},
              {II, "IfInput", "If Input", "II.pdf"},
              {III, "IfInput", "If Input", "II.pdf"}};
  for (const auto& row : rows) {
    const FormRow* form = FormOf(row.type);
    ASSERT_NE(form, nullptr) << row.type;
    EXPECT_EQ(form->name, row.name);
    EXPECT_EQ(form->title, row.title);
    EXPECT_EQ(form->help, row.help);
    EXPECT_NE(form->make(), nullptr);
  }
  for (const int type : {int{ER}, int{NO}, int{RT}, int{FE}, -1, kTypes, 32767}) {
    EXPECT_EQ(FormOf(type), nullptr) << type;
  }
}

TEST(Forms, EachKindHasADialogOrIsKnownToNeedNone) {
  // The kinds that are their whole line, and the knob, which comes from a file or a hub alone.
  constexpr Type kWithoutDialog[] = {ER, NO, RT, FE};
  for (const Kind& kind : kKinds) {
    const bool has_dialog = FormOf(kind.type) != nullptr;
    const bool needs_none = std::ranges::find(kWithoutDialog, kind.type) != std::end(kWithoutDialog);
    EXPECT_NE(has_dialog, needs_none)
        << "The kind " << kind.mnemonic << " (" << kind.type << ") has "
        << (has_dialog ? "a dialog and stands among those without one."
                       : "no row in forms/registry.cpp and does not stand among the kinds without a dialog.");
  }
}

TEST(Forms, NoTwoControlsOfADialogBearTheSameName) {
  for (int type = 0; type < kTypes; ++type) {
    const FormRow* row = FormOf(type);
    if (row == nullptr) continue;
    const auto form = row->make();
    std::set<std::string> names;
    for (const Bound& bound : form->Controls().Rows()) {
      EXPECT_TRUE(names.insert(bound.name).second) << row->name << ": " << bound.name;
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
