// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavlo {

inline constexpr int kLines = 200;

/// The kind of instruction on a line. The record keeps it as a plain integer, to which the enumerators
/// convert, because a file or an image may hold any value.
enum Type : std::int16_t {
  FL = 0,
  FR,
  FS,
  FSR,
  WT,
  WI,
  GT,
  RP,
  ER,
  SO,
  II,
  NO,
  SH,
  CM,
  MMI,
  FP,
  ED,
  SP,
  FE,
  CC,
  III,
  FLSO,
  FLCS,
  WII,
  FSS,
  RL,
  /// The hub's code for the menu prompt. A record holds MMI with MMISub::Menu instead.
  MMImenu,
  LP,
  CL,
  RT,
  IM,
  SS,
};
inline constexpr int kTypes = 32;

/// `SubType` of an MMI line.
enum MMISub : std::int16_t { GetDistance = 0, GetSpeed, GetCount, DisplayOnly, WaitEnter, BranchYesNo, Menu };

/// `SubType` of an SS line.
enum SSSub : std::int16_t { StopAll = 0, ChangeSpeed, StopAxis, StartAxis };

/// Input numbers from this one on are a drive's own eight inputs.
inline constexpr int kFirstDriveInput = 128;

/// The `LineNum` of an End Repeat that closes no Repeat.
inline constexpr std::int16_t kNoRepeat = 1000;

/// One program line of any kind. Each kind uses the fields that it needs and leaves the others alone, so that
/// a line whose kind is changed and changed back has lost nothing.
///
/// Distances are in steps, speeds in rev/s, accelerations in rev/s/s. Line references are 0-based. Values
/// that come from outside may be anything that the field can hold.
struct Instruction {
  std::int16_t Type = NO;
  std::int32_t Dist = 0;
  std::int32_t Dist2 = 0;
  std::int32_t SafetyDist = 0;
  float Speed = 0;
  float Speed2 = 0;
  float RetSpeed = 0;
  /// 0 clockwise or a position >= 0, 1 counter-clockwise or a position < 0. RP: 1 counts up.
  std::int16_t Dir = 0;
  std::int32_t Accel = 0;
  std::int32_t Decel = 0;
  /// Input: 0 high, 1 low, 2 rising edge, 3 falling edge. Output: 0 high, 1 low, 2 high pulse, 3 low pulse.
  std::int16_t State = 0;
  /// WT, FR, FSR: hundredths of a second. SO, FLSO: milliseconds.
  std::int32_t Time = 0;
  std::int16_t LineNum = 0;
  std::int16_t IONum = 0;
  std::int32_t Count = 0;
  /// Single bytes, each the code point 0..255.
  std::string Text = {};
  std::int16_t SubType = 0;
  std::int32_t Reserved1 = 0;
  std::int32_t UpperInt = 0;
  /// In ten-thousandths; so is `LowerFrac`.
  std::int32_t UpperFrac = 0;
  std::int32_t LowerInt = 0;
  std::int32_t LowerFrac = 0;
  std::int16_t DistVar = 0;
  std::int16_t SpeedVar = 0;
  std::int16_t Dist2Var = 0;
  std::int16_t Speed2Var = 0;
  bool DistIsMMI = false;
  bool SpeedIsMMI = false;
  bool Dist2IsMMI = false;
  bool Speed2IsMMI = false;
  bool CountIsMMI = false;
  bool Blank1 = false;
  bool Wrap1 = false;
  bool Blank2 = false;
  bool Wrap2 = false;
  bool Blank3 = false;
  bool Wrap3 = false;
  bool Reserved2 = false;
  bool Reserved3 = false;
  /// The levels that an input test wants, a set bit meaning high, and the mask of the inputs that it tests.
  std::int16_t InState = 0;
  std::int16_t InMask = 0;
  /// The same for a drive's own inputs; in no file.
  std::int16_t DrvState = 0;
  std::int16_t DrvMask = 0;
  bool WaitAND = false;
  bool MotorOn = false;
  float Current = 0;
  std::int16_t IdlePct = 0;
  /// For the keys 1..8. Element 0 is stored but not used.
  std::array<std::int16_t, 9> MenuLine{};
  std::array<bool, 9> MenuKey{};
  std::int16_t Drive = 0;
  std::int16_t JogLRDrive = 0;
  std::int16_t JogUDDrive = 0;
  bool Proceed = false;
  float JogSpeed = 0;
  float JogLRSpeed = 0;
  float JogUDSpeed = 0;
  std::int32_t JogAccel = 0;
  std::int32_t JogLRAccel = 0;
  std::int32_t JogUDAccel = 0;
  bool JogOn = false;
  bool JogLR = false;
  bool JogUD = false;
  /// RP, ER: ordinal of the loop, written by `ScanLoops`; in no file.
  std::int16_t LoopIndex = 0;
  bool WaitThis = false;
  /// Gains of a drive's control loop, its currents in amperes rms, and which of them the line changes.
  /// `Tuning` alone edits them; in no file and on no wire.
  std::int32_t KP = 0;
  std::int32_t KI = 0;
  std::int32_t KD = 0;
  std::int32_t KAFF = 0;
  std::int32_t KV = 0;
  std::int32_t KVFF = 0;
  float Acont = 0;
  float Apeak = 0;
  bool ChangesKP = false;
  bool ChangesKI = false;
  bool ChangesKD = false;
  bool ChangesKAFF = false;
  bool ChangesKV = false;
  bool ChangesKVFF = false;
  bool ChangesAcont = false;
  bool ChangesApeak = false;

  bool operator==(const Instruction&) const = default;
};

inline constexpr int kMMIVariables = 50;

/// Returns the name of a hub variable, "Dist1" .. "Count15"; empty outside 0..49.
[[nodiscard]] std::string MMIVarName(int variable);

/// Returns what a prompt of `SubType` 0, 1, 2 asks for: "distance", "speed", "repeat count".
[[nodiscard]] std::string_view MMIVarKind(int sub_type);

}  // namespace tavlo
