// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavlo::hubsim {

/// What the hub can be told to do wrong. The meaning of each stands in `kFailures`.
enum class Failure : std::uint8_t {
  None,
  SilentF,
  LateF,
  SilentLine,
  LateLine,
  WrongLine,
  NoiseLine,
  SilentSystem,
  NoiseSystem,
  SilentPool,
  NoisePool,
  NoSum,
  WrongSum,
  ShortSum,
  LongSum,
  LateSum,
  SilentC,
  OneByteC,
  LateC,
  UnknownModel,
  SilentD,
  ShortD,
  UnknownDrive,
  MissingDrive,
  SilentR,
  ShortR,
  GarbledR,
  SilentE,
  LateE,
  NoiseE,
  SilentReset,
  SilentU,
  ShortU,
  WrongU,
  SilentRun,
  CutRun,
  StallRun,
  Hasty,
  DropByte,
  FlipByte,
  Unplug,
  UnplugTx,
};

/// Answers of the hub that a failure can spoil.
enum class Reply : std::uint8_t {
  None,
  Start,      ///< "Y" to "F"
  Line,       ///< "Y" to a line, numbered from 1
  System,     ///< "Y" to a 32-byte block of the axis settings, numbered from 1
  Pool,       ///< "Y" to a block of the pool, numbered from 1
  Sum,        ///< the sum, to "K"
  Identity,   ///< to "C"
  Drives,     ///< to "D"
  Revisions,  ///< to "R" of a hub that is not halted
  Reset,      ///< "Y" to "R" of a halted hub
  Execute,    ///< to "E"
  Upload,     ///< to "U"
};

/// How an answer is spoiled. N is the number given with the mode.
enum class Spoil : std::uint8_t {
  Nothing,
  Silence,
  Late,       ///< comes `kLateSeconds` after its time
  OneByte,    ///< only the first byte comes
  LastGone,   ///< the last byte is missing
  OneMore,    ///< one byte too many
  LastWrong,  ///< the last byte has a bit turned
  Other,      ///< another byte in place of the answer
  Glued,      ///< a spurious byte in the same write, after the answer
  FirstN,     ///< only the first N bytes come
  Model16,    ///< the model byte is 16
  Strange,    ///< axis N reports an identity that no list knows
  Missing,    ///< axis N reports that nothing answers there
  Letters,    ///< axis N answers letters where digits belong
};

inline constexpr double kLateSeconds = 1.3;
/// How long a stall lasts: shorter than the silence after which a PC takes the hub for stopped.
inline constexpr double kStallSeconds = 0.02;

enum class Parameter : std::uint8_t { None, Count };

struct FailureRow {
  Failure mode;
  std::string_view name;
  Parameter parameter;
  Reply reply;
  Spoil spoil;
  std::string_view meaning;
};

inline constexpr std::array<FailureRow, 42> kFailures{{
    {Failure::None, "none", Parameter::None, Reply::None, Spoil::Nothing, "nothing fails"},
    {Failure::SilentF, "silent-f", Parameter::None, Reply::Start, Spoil::Silence,
     "no answer to the start of a download"},
    {Failure::LateF, "late-f", Parameter::None, Reply::Start, Spoil::Late,
     "the answer to the start of a download comes after 1.3 s"},
    {Failure::SilentLine, "silent-line", Parameter::Count, Reply::Line, Spoil::Silence,
     "no answer to line N (1..200) of a download"},
    {Failure::LateLine, "late-line", Parameter::Count, Reply::Line, Spoil::Late,
     "the answer to line N comes after 1.3 s"},
    {Failure::WrongLine, "wrong-line", Parameter::Count, Reply::Line, Spoil::Other,
     "another byte than Y answers line N"},
    {Failure::NoiseLine, "noise-line", Parameter::Count, Reply::Line, Spoil::Glued,
     "a spurious byte is glued to the Y of line N"},
    {Failure::SilentSystem, "silent-system", Parameter::Count, Reply::System, Spoil::Silence,
     "no answer to block N (1..8) of the system settings"},
    {Failure::NoiseSystem, "noise-system", Parameter::Count, Reply::System, Spoil::Glued,
     "a spurious byte is glued to the Y of block N of the system settings"},
    {Failure::SilentPool, "silent-pool", Parameter::Count, Reply::Pool, Spoil::Silence,
     "no answer to block N (from 1) of the string pool"},
    {Failure::NoisePool, "noise-pool", Parameter::Count, Reply::Pool, Spoil::Glued,
     "a spurious byte is glued to the Y of block N of the string pool"},
    {Failure::NoSum, "no-sum", Parameter::None, Reply::Sum, Spoil::Silence,
     "no answer to the question for the sum"},
    {Failure::WrongSum, "wrong-sum", Parameter::None, Reply::Sum, Spoil::LastWrong,
     "the sum is wrong by one bit"},
    {Failure::ShortSum, "short-sum", Parameter::None, Reply::Sum, Spoil::OneByte,
     "only the first byte of the sum comes"},
    {Failure::LongSum, "long-sum", Parameter::None, Reply::Sum, Spoil::OneMore,
     "three bytes answer the question for the sum"},
    {Failure::LateSum, "late-sum", Parameter::None, Reply::Sum, Spoil::Late, "the sum comes after 1.3 s"},
    {Failure::SilentC, "silent-c", Parameter::None, Reply::Identity, Spoil::Silence,
     "no answer to the question who it is"},
    {Failure::OneByteC, "one-byte-c", Parameter::None, Reply::Identity, Spoil::OneByte,
     "only the revision byte of the identity comes"},
    {Failure::LateC, "late-c", Parameter::None, Reply::Identity, Spoil::Late,
     "the identity comes after 1.3 s"},
    {Failure::UnknownModel, "unknown-model", Parameter::None, Reply::Identity, Spoil::Model16,
     "the identity (and the greeting) names model 16, which is no hub"},
    {Failure::SilentD, "silent-d", Parameter::None, Reply::Drives, Spoil::Silence,
     "no answer to the question for the drives"},
    {Failure::ShortD, "short-d", Parameter::None, Reply::Drives, Spoil::LastGone,
     "the last byte of the drive list is missing"},
    {Failure::UnknownDrive, "unknown-drive", Parameter::Count, Reply::Drives, Spoil::Strange,
     "the drive of axis N (1..8) reports an identity that no list knows"},
    {Failure::MissingDrive, "missing-drive", Parameter::Count, Reply::Drives, Spoil::Missing,
     "the drive of axis N (1..8) does not answer the hub"},
    {Failure::SilentR, "silent-r", Parameter::None, Reply::Revisions, Spoil::Silence,
     "no answer to the question for the drives' revisions"},
    {Failure::ShortR, "short-r", Parameter::None, Reply::Revisions, Spoil::LastGone,
     "the last byte of the revisions is missing"},
    {Failure::GarbledR, "garbled-r", Parameter::Count, Reply::Revisions, Spoil::Letters,
     "letters stand in place of the revision of axis N (1..8)"},
    {Failure::SilentE, "silent-e", Parameter::None, Reply::Execute, Spoil::Silence,
     "no answer to the execute command"},
    {Failure::LateE, "late-e", Parameter::None, Reply::Execute, Spoil::Late,
     "the answer to the execute command comes after 1.3 s"},
    {Failure::NoiseE, "noise-e", Parameter::None, Reply::Execute, Spoil::Glued,
     "a spurious byte is glued to the answer to the execute command"},
    {Failure::SilentReset, "silent-reset", Parameter::None, Reply::Reset, Spoil::Silence,
     "no answer to a reset"},
    {Failure::SilentU, "silent-u", Parameter::None, Reply::Upload, Spoil::Silence,
     "no answer to the upload command"},
    {Failure::ShortU, "short-u", Parameter::Count, Reply::Upload, Spoil::FirstN,
     "an upload stops after N bytes"},
    {Failure::WrongU, "wrong-u", Parameter::None, Reply::Upload, Spoil::LastWrong,
     "the sum behind an upload is wrong by one bit"},
    {Failure::SilentRun, "silent-run", Parameter::Count, Reply::None, Spoil::Nothing,
     "a running program falls silent after N messages"},
    {Failure::CutRun, "cut-run", Parameter::Count, Reply::None, Spoil::Nothing,
     "a running program falls silent behind byte N of what it tells"},
    {Failure::StallRun, "stall-run", Parameter::Count, Reply::None, Spoil::Nothing,
     "the hub stalls for 20 ms behind byte N of what a running program tells"},
    {Failure::Hasty, "hasty", Parameter::Count, Reply::None, Spoil::Nothing,
     "a running program goes on without its acknowledgements, every N ms at most"},
    {Failure::DropByte, "drop", Parameter::Count, Reply::None, Spoil::Nothing,
     "byte N from the PC is lost on the way"},
    {Failure::FlipByte, "flip", Parameter::Count, Reply::None, Spoil::Nothing,
     "byte N from the PC arrives with its lowest bit turned"},
    {Failure::Unplug, "unplug", Parameter::Count, Reply::None, Spoil::Nothing,
     "the cable comes off after byte N from the PC"},
    {Failure::UnplugTx, "unplug-tx", Parameter::Count, Reply::None, Spoil::Nothing,
     "the cable comes off after byte N to the PC"},
}};

constexpr bool FailuresInOrder() {
  for (std::size_t i = 0; i < kFailures.size(); ++i) {
    if (static_cast<std::size_t>(kFailures[i].mode) != i) return false;
  }
  return true;
}
static_assert(FailuresInOrder(), "the table is indexed by the mode");

/// One mode and its number, which counts from 1 and is 1 if none is given.
struct FailurePlan {
  Failure mode = Failure::None;
  int at = 1;
};

[[nodiscard]] constexpr const FailureRow& RowOf(Failure mode) {
  return kFailures[static_cast<std::size_t>(mode)];
}

/// Reads "MODE" or "MODE:N", N a whole number from 1. Empty for an unknown mode, for any other N, and for an
/// N after a mode that takes none.
[[nodiscard]] std::optional<FailurePlan> ParseFailure(std::string_view text);

/// What becomes of one answer.
struct SpoiledReply {
  std::string bytes;
  double delay_s = 0;
};

/// Returns what `plan` lets out of `bytes`, which are answer number `index` (from 1) of their kind. Empty
/// bytes are silence.
[[nodiscard]] SpoiledReply SpoilReply(const FailurePlan& plan, Reply reply, std::int64_t index,
                                      std::string bytes);

}  // namespace tavlo::hubsim
