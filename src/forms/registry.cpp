// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/registry.h"

#include <algorithm>
#include <array>

#include "forms/change_current.h"
#include "forms/comment.h"
#include "forms/feed_length.h"
#include "forms/feed_posn.h"
#include "forms/feed_return.h"
#include "forms/feed_sense.h"
#include "forms/feed_sense_ret.h"
#include "forms/feed_set_out.h"
#include "forms/go_to_box.h"
#include "forms/if_input.h"
#include "forms/if_moving.h"
#include "forms/learn_pos.h"
#include "forms/line_target.h"
#include "forms/mmi_prompt.h"
#include "forms/repeat.h"
#include "forms/seek_home.h"
#include "forms/set_output.h"
#include "forms/set_posn.h"
#include "forms/start_stop.h"
#include "forms/wait_input.h"
#include "forms/wait_time.h"

namespace tavlo {
namespace {

template <class Which>
std::unique_ptr<Form> Make() {
  return std::make_unique<Which>();
}

template <std::int16_t type>
std::unique_ptr<Form> MakeLineTarget() {
  return std::make_unique<LineTarget>(type);
}

constexpr FormRow kFeedLength = {"FeedLength", "Feed to Length", "FL.pdf", Make<FeedLength>};
constexpr FormRow kWaitTime = {"WaitTime", "Wait Time", "WT.pdf", Make<WaitTime>};
constexpr FormRow kGoToBox = {"GoToBox", "Go To", "GT.pdf", Make<GoToBox>};

constexpr FormRow kFeedReturn = {"FeedReturn", "Feed & Return", "FR.pdf", Make<FeedReturn>};
constexpr FormRow kFeedPosn = {"FeedPosn", "Feed to Position", "FP.pdf", Make<FeedPosn>};
constexpr FormRow kStartStop = {"StartStop", "Start/Stop Motion", "SM.pdf", Make<StartStop>};
constexpr FormRow kCallDialog = {"CallDialog", "Call", "Call.pdf", MakeLineTarget<CL>};
constexpr FormRow kResetLoop = {"ResetLoop", "Reset Loop", "RL.pdf", MakeLineTarget<RL>};
constexpr FormRow kIfMoving = {"IfMoving", "If Moving", "IM.pdf", Make<IfMoving>};
constexpr FormRow kLearnPos = {"LearnPos", "Learn Position", "LP.pdf", Make<LearnPos>};
constexpr FormRow kSetPosn = {"SetPosn", "Set Position", "SP.pdf", Make<SetPosn>};
constexpr FormRow kRepeat = {"Repeat", "Repeat", "RP.pdf", Make<Repeat>};
constexpr FormRow kFeedSetOut = {"FeedSetOut", "Feed to Length & Set Output", "FLSO.pdf", Make<FeedSetOut>};
constexpr FormRow kSetOutput = {"SetOutput", "Set Output", "SO.pdf", Make<SetOutput>};
constexpr FormRow kChangeCurrent = {"ChangeCurrent", "Change Current", "CC.pdf", Make<ChangeCurrent>};
constexpr FormRow kMMIprompt = {"MMIprompt", "MMI Prompt", "MMI.pdf", Make<MMIprompt>};
constexpr FormRow kComment = {"comment", "Comment", "CM.pdf", Make<comment>};
constexpr FormRow kFeedSense = {"FeedSense", "Feed to Sensor", "FS.pdf", Make<FeedSense>};
constexpr FormRow kFeedSenseRet = {"FeedSenseRet", "Feed to Sensor & Return", "FSR.pdf", Make<FeedSenseRet>};
constexpr FormRow kSeekHome = {"SeekHome", "Seek Home", "SH.pdf", Make<SeekHome>};
constexpr FormRow kWaitInput = {"WaitInput", "Wait Input", "WI.pdf", Make<WaitInput>};
constexpr FormRow kIfInput = {"IfInput", "If Input", "II.pdf", Make<IfInput>};

struct KindForm {
  int type;
  const FormRow& form;
};
constexpr std::array kForms = {
    KindForm{FL, kFeedLength},     KindForm{FLCS, kFeedLength},  KindForm{WT, kWaitTime},
    KindForm{GT, kGoToBox},        KindForm{FR, kFeedReturn},    KindForm{FP, kFeedPosn},
    KindForm{SS, kStartStop},      KindForm{CL, kCallDialog},    KindForm{RL, kResetLoop},
    KindForm{IM, kIfMoving},       KindForm{LP, kLearnPos},      KindForm{SP, kSetPosn},
    KindForm{RP, kRepeat},         KindForm{FLSO, kFeedSetOut},  KindForm{SO, kSetOutput},
    KindForm{CC, kChangeCurrent},  KindForm{ED, kChangeCurrent}, KindForm{MMI, kMMIprompt},
    KindForm{MMImenu, kMMIprompt}, KindForm{CM, kComment},       KindForm{FS, kFeedSense},
    KindForm{FSS, kFeedSense},     KindForm{FSR, kFeedSenseRet}, KindForm{SH, kSeekHome},
    KindForm{WI, kWaitInput},      KindForm{WII, kWaitInput},    KindForm{II, kIfInput},
    KindForm{III, kIfInput},
};

}  // namespace

const FormRow* FormOf(int type) {
  const auto* const found = std::ranges::find(kForms, type, &KindForm::type);
  return found == kForms.end() ? nullptr : &found->form;
}

}  // namespace tavlo
