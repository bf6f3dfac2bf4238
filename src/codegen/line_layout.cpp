// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/line_layout.h"

#include <array>

namespace tavlo {
namespace {

using I = Instruction;

constexpr LayoutItem kFlags{.op = Op::Flags, .what = "the flag byte"};
constexpr LayoutItem kAxis{.op = Op::Byte, .what = "the axis", .number = &I::Drive};
constexpr LayoutItem kSpeed{.op = Op::Speed,
                            .what = "the speed",
                            .single = &I::Speed,
                            .is_mmi = &I::SpeedIsMMI,
                            .variable = &I::SpeedVar};
constexpr LayoutItem kPlainSpeed{.op = Op::Speed, .what = "the speed", .single = &I::Speed};
constexpr LayoutItem kSpeed2{.op = Op::Speed,
                             .what = "the second speed",
                             .single = &I::Speed2,
                             .is_mmi = &I::Speed2IsMMI,
                             .variable = &I::Speed2Var};
constexpr LayoutItem kRetSpeed{.op = Op::Speed, .what = "the return speed", .single = &I::RetSpeed};
constexpr LayoutItem kAccel{.op = Op::Word, .what = "the acceleration", .whole = &I::Accel};
constexpr LayoutItem kDecel{.op = Op::Word, .what = "the deceleration", .whole = &I::Decel};
constexpr LayoutItem kDist{.op = Op::Dist,
                           .what = "the distance",
                           .whole = &I::Dist,
                           .is_mmi = &I::DistIsMMI,
                           .variable = &I::DistVar};
constexpr LayoutItem kPlainDist{.op = Op::Dist, .what = "the distance", .whole = &I::Dist};
constexpr LayoutItem kDist2{.op = Op::Dist,
                            .what = "the second distance",
                            .whole = &I::Dist2,
                            .is_mmi = &I::Dist2IsMMI,
                            .variable = &I::Dist2Var};
constexpr LayoutItem kSafetyDist{.op = Op::Dist, .what = "the safety distance", .whole = &I::SafetyDist};
constexpr LayoutItem kTime{.op = Op::Word, .what = "the time", .whole = &I::Time};
constexpr LayoutItem kTarget{.op = Op::Byte, .what = "the line it refers to", .number = &I::LineNum};
constexpr LayoutItem kIONum{.op = Op::Byte, .what = "the input or output number", .number = &I::IONum};
constexpr LayoutItem kSensor{.op = Op::Sensor, .what = "the input number", .number = &I::IONum};
constexpr LayoutItem kState{.op = Op::Byte, .what = "the state", .number = &I::State};
constexpr LayoutItem kDir{.op = Op::Byte, .what = "the direction", .number = &I::Dir};
constexpr LayoutItem kDistVar{.op = Op::Byte, .what = "the variable", .number = &I::DistVar};
constexpr LayoutItem kLoopIndex{.op = Op::Byte, .what = "the loop number", .number = &I::LoopIndex};
constexpr LayoutItem kSubType{.op = Op::Byte, .what = "the sub-type", .number = &I::SubType};
constexpr LayoutItem kMask{.op = Op::Byte, .what = "the input mask", .number = &I::InMask};
constexpr LayoutItem kInStates{.op = Op::InStates, .what = "the input levels", .number = &I::InState};
constexpr LayoutItem kMode{.op = Op::Mode};
constexpr LayoutItem kDriveInputs{.op = Op::DriveInputs, .what = "the drive inputs"};
constexpr LayoutItem kPoolOffset{.op = Op::PoolOffset};

// The variable flags, common to all feeds.
constexpr FlagBit kDirBit{.value = 1, .number = &I::Dir};
constexpr FlagBit kDistBit{.value = 2, .flag = &I::DistIsMMI};
constexpr FlagBit kSpeedBit{.value = 4, .flag = &I::SpeedIsMMI};
constexpr std::array kFeedFlags = {kDirBit, kDistBit, kSpeedBit};
// FLSO writes the flag of a second speed that it does not have: a line left over from FLCS keeps it.
constexpr std::array kTwoStepFlags = {kDirBit, kDistBit, kSpeedBit,
                                      FlagBit{.value = 16, .flag = &I::Dist2IsMMI},
                                      FlagBit{.value = 32, .flag = &I::Speed2IsMMI}};
constexpr std::array kStartStopFlags = {kDirBit, kSpeedBit, FlagBit{.value = 16, .number = &I::SubType}};
constexpr std::array kRepeatFlags = {FlagBit{.value = 8, .flag = &I::CountIsMMI},
                                     FlagBit{.value = 128, .flag = &I::SpeedIsMMI},
                                     FlagBit{.value = 64, .number = &I::Dir}};
constexpr std::array kJogFlags = {FlagBit{.value = 1, .flag = &I::JogOn}};
constexpr std::array kMotorFlags = {FlagBit{.value = 1, .flag = &I::MotorOn}};
constexpr std::array kMenuTextFlags = {
    FlagBit{.value = 1, .flag = &I::Wrap1},  FlagBit{.value = 2, .flag = &I::Blank1},
    FlagBit{.value = 4, .flag = &I::Wrap2},  FlagBit{.value = 8, .flag = &I::Blank2},
    FlagBit{.value = 16, .flag = &I::Wrap3}, FlagBit{.value = 32, .flag = &I::Blank3}};
// All other texts leave the third line's two flags on the computer.
constexpr std::array kTextFlags = {kMenuTextFlags[0], kMenuTextFlags[1], kMenuTextFlags[2],
                                   kMenuTextFlags[3]};

constexpr std::array kFeedItems = {kFlags, kSpeed, kAccel, kDecel, kDist, kAxis};
constexpr std::array kFeedReturnItems = {kFlags, kSpeed, kAccel, kDecel, kDist, kRetSpeed, kTime, kAxis};
constexpr std::array kFeedSenseItems = {kFlags, kSpeed, kAccel, kDecel, kDist, kSensor, kState, kAxis};
constexpr std::array kFeedSafeItems = {kFlags,  kSpeed, kAccel,      kDecel,  kDist,
                                       kSensor, kState, kSafetyDist, kTarget, kAxis};
constexpr std::array kFeedSenseReturnItems = {kFlags,  kSpeed, kAccel,    kDecel, kDist,
                                              kSensor, kState, kRetSpeed, kTime,  kAxis};
constexpr std::array kFeedSetOutItems = {
    kFlags, kSpeed, kAccel,
    kDecel, kDist,  kDist2,
    kIONum, kState, LayoutItem{.op = Op::PulseByte, .what = "the pulse", .whole = &I::Time},
    kAxis};
constexpr std::array kFeedChangeItems = {kFlags, kSpeed, kAccel, kDecel, kDist, kDist2, kSpeed2, kAxis};
constexpr std::array kStartStopItems = {kFlags, kSpeed, kAccel, kAxis};
constexpr std::array kSeekHomeItems = {kDir, kPlainSpeed, kAccel, kDecel, kSensor, kState, kAxis};

constexpr std::array kWaitTimeItems = {kTime};
constexpr std::array kTargetItems = {kTarget};
constexpr std::array kIfMovingItems = {kTarget, kAxis};
constexpr std::array kLearnItems = {kDistVar, kAxis};
constexpr std::array kEndRepeatItems = {kTarget, kLoopIndex};
constexpr std::array kResetLoopItems = {kTarget,
                                        LayoutItem{.op = Op::LoopOfTarget, .what = "the loop number"}};
constexpr std::array kSetPosnItems = {kDir, kPlainDist, kAxis};
constexpr std::array kRepeatItems = {kFlags,
                                     LayoutItem{.op = Op::Word,
                                                .what = "the repeat count",
                                                .whole = &I::Count,
                                                .is_mmi = &I::CountIsMMI,
                                                .variable = &I::DistVar},
                                     kLoopIndex};
constexpr std::array kSetOutputItems = {
    kIONum, kState, LayoutItem{.op = Op::PulseTicks, .what = "the pulse", .whole = &I::Time}, kAxis};
constexpr std::array kIfInputItems = {LayoutItem{.op = Op::RotatedInput, .what = "the input number"}, kState,
                                      kTarget, kAxis};
constexpr std::array kWaitInputItems = {
    kIONum,
    kState,
    kFlags,
    LayoutItem{.op = Op::Speed, .what = "the jog speed", .single = &I::JogSpeed},
    LayoutItem{.op = Op::Word, .what = "the jog acceleration", .whole = &I::JogAccel},
    kAxis};
constexpr std::array kMultiIfItems = {kInStates, kMask, kTarget, kMode, kAxis, kDriveInputs};
constexpr std::array kMultiWaitItems = {kInStates, kMask, kMode, kAxis, kDriveInputs};
constexpr std::array kMotorItems = {
    kFlags, LayoutItem{.op = Op::RoundedAmps, .what = "the current", .single = &I::Current},
    LayoutItem{.op = Op::Byte, .what = "the idle option", .number = &I::IdlePct}, kAxis};
constexpr std::array kCurrentItems = {
    LayoutItem{.op = Op::WholeAmps, .what = "the current", .single = &I::Current},
    LayoutItem{.op = Op::CentiAmps, .what = "the current", .single = &I::Current}, kAxis};
constexpr std::array kCommentItems = {LayoutItem{.op = Op::CommentText}};

constexpr std::array kDisplayItems = {kSubType, kPoolOffset, kFlags};
constexpr std::array kValueItems = {
    kSubType,
    kPoolOffset,
    kFlags,
    kDistVar,
    LayoutItem{.op = Op::Dist, .what = "the lower limit", .whole = &I::LowerInt},
    LayoutItem{.op = Op::RawWord, .what = "the lower limit's fraction", .whole = &I::LowerFrac},
    LayoutItem{.op = Op::Dist, .what = "the upper limit", .whole = &I::UpperInt},
    LayoutItem{.op = Op::RawWord, .what = "the upper limit's fraction", .whole = &I::UpperFrac},
    kAxis};
constexpr std::array kPauseItems = {
    kSubType,
    kPoolOffset,
    kFlags,
    LayoutItem{
        .op = Op::JogAxis, .what = "the left/right axis", .number = &I::JogLRDrive, .enabled = &I::JogLR},
    LayoutItem{.op = Op::Speed, .what = "the left/right jog speed", .single = &I::JogLRSpeed},
    LayoutItem{.op = Op::Word, .what = "the left/right jog acceleration", .whole = &I::JogLRAccel},
    LayoutItem{.op = Op::JogAxis, .what = "the up/down axis", .number = &I::JogUDDrive, .enabled = &I::JogUD},
    LayoutItem{.op = Op::Speed, .what = "the up/down jog speed", .single = &I::JogUDSpeed},
    LayoutItem{.op = Op::Word, .what = "the up/down jog acceleration", .whole = &I::JogUDAccel}};
constexpr std::array kBranchItems = {kSubType, kPoolOffset, kFlags, kTarget};
constexpr std::array kMenuItems = {kPoolOffset, LayoutItem{.op = Op::KeyMask},
                                   LayoutItem{.op = Op::KeyTargets, .what = "a menu target"}, kFlags};

constexpr LayoutItem kKnobRatio{.op = Op::LowByte, .what = "the knob ratio", .whole = &I::Dist};
constexpr std::array kKnobItems = {kIONum, kState, kKnobRatio, kAxis};
// The ratio stands between the two bytes of the offset, as in no other line.
constexpr std::array kKnobTextItems = {kFlags, LayoutItem{.op = Op::PoolHigh}, kKnobRatio,
                                       LayoutItem{.op = Op::PoolLow}, LayoutItem{.op = Op::PoolHead}};

// By type code; MMI and FE stand here in their first form.
constexpr auto kLayouts = std::to_array<LineLayout>({
    {kFeedItems, kFeedFlags},             // FL
    {kFeedReturnItems, kFeedFlags},       // FR
    {kFeedSenseItems, kFeedFlags},        // FS
    {kFeedSenseReturnItems, kFeedFlags},  // FSR
    {kWaitTimeItems},                     // WT
    {kWaitInputItems, kJogFlags},         // WI
    {kTargetItems},                       // GT
    {kRepeatItems, kRepeatFlags},         // RP
    {kEndRepeatItems},                    // ER
    {kSetOutputItems},                    // SO
    {kIfInputItems},                      // II
    {},                                   // NO
    {kSeekHomeItems},                     // SH
    {kCommentItems},                      // CM
    {kValueItems, kTextFlags},            // MMI
    {kFeedItems, kFeedFlags},             // FP
    {kMotorItems, kMotorFlags},           // ED
    {kSetPosnItems},                      // SP
    {kKnobItems},                         // FE
    {kCurrentItems},                      // CC
    {kMultiIfItems},                      // III
    {kFeedSetOutItems, kTwoStepFlags},    // FLSO
    {kFeedChangeItems, kTwoStepFlags},    // FLCS
    {kMultiWaitItems},                    // WII
    {kFeedSafeItems, kFeedFlags},         // FSS
    {kResetLoopItems},                    // RL
    {kValueItems, kTextFlags},            // MMI by its hub code
    {kLearnItems},                        // LP
    {kTargetItems},                       // CL
    {},                                   // RT
    {kIfMovingItems},                     // IM
    {kStartStopItems, kStartStopFlags},   // SS
});
static_assert(kLayouts.size() == kTypes, "each kind of line has a layout");

constexpr LineLayout kDisplay{kDisplayItems, kTextFlags};
constexpr LineLayout kPause{kPauseItems, kTextFlags};
constexpr LineLayout kBranch{kBranchItems, kTextFlags};
constexpr LineLayout kMenu{kMenuItems, kMenuTextFlags};
constexpr LineLayout kKnobText{kKnobTextItems, kTextFlags};

}  // namespace

const LineLayout* LayoutOf(const Instruction& line) {
  if (line.Type < 0 || line.Type >= kTypes) return nullptr;
  if (line.Type == FE && line.CountIsMMI) return &kKnobText;
  if (line.Type == MMI || line.Type == MMImenu) {
    if (line.SubType == DisplayOnly) return &kDisplay;
    if (line.SubType == WaitEnter) return &kPause;
    if (line.SubType == BranchYesNo) return &kBranch;
    if (line.SubType == Menu) return &kMenu;
  }
  return &kLayouts[line.Type];
}

}  // namespace tavlo
