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
  kNone,
  kSilentF,
  kLateF,
  kSilentLine,
  kLateLine,
  kWrongLine,
  kNoiseLine,
  kSilentSystem,
  kNoiseSystem,
  kSilentPool,
  kNoisePool,
  kNoSum,
  kWrongSum,
  kShortSum,
  kLongSum,
  kLateSum,
  kSilentC,
  kOneByteC,
  kLateC,
  kUnknownModel,
  kSilentD,
  kShortD,
  kUnknownDrive,
  kMissingDrive,
  kSilentR,
  kShortR,
  kGarbledR,
  kSilentE,
  kLateE,
  kNoiseE,
  kSilentReset,
  kSilentU,
  kShortU,
  kWrongU,
  kSilentRun,
  kCutRun,
  kStallRun,
  kHasty,
  kDropByte,
  kFlipByte,
  kUnplug,
  kUnplugTx,
};

/// Answers of the hub that a failure can spoil.
enum class Reply : std::uint8_t {
  kNone,
  kStart,      ///< "Y" to "F"
  kLine,       ///< "Y" to a line, numbered from 1
  kSystem,     ///< "Y" to a 32-byte block of the axis settings, numbered from 1
  kPool,       ///< "Y" to a block of the pool, numbered from 1
  kSum,        ///< the sum, to "K"
  kIdentity,   ///< to "C"
  kDrives,     ///< to "D"
  kRevisions,  ///< to "R" of a hub that is not halted
  kReset,      ///< "Y" to "R" of a halted hub
  kExecute,    ///< to "E"
  kUpload,     ///< to "U"
};

/// How an answer is spoiled. N is the number given with the mode.
enum class Spoil : std::uint8_t {
  kNothing,
  kSilence,
  kLate,       ///< comes `kLateSeconds` after its time
  kOneByte,    ///< only the first byte comes
  kLastGone,   ///< the last byte is missing
  kOneMore,    ///< one byte too many
  kLastWrong,  ///< the last byte has a bit turned
  kOther,      ///< another byte in place of the answer
  kGlued,      ///< a spurious byte in the same write, behind the answer
  kFirstN,     ///< only the first N bytes come
  kModel16,    ///< the model byte is 16
  kStrange,    ///< axis N reports an identity that no list knows
  kMissing,    ///< axis N reports that nothing answers there
  kLetters,    ///< axis N answers letters where digits belong
};

inline constexpr double kLateSeconds = 1.3;
/// How long a hub stalls that stalls: shorter than the silence that tells a PC that a hub has stopped.
inline constexpr double kStallSeconds = 0.02;

enum class Parameter : std::uint8_t { kNone, kCount };

struct FailureRow {
  Failure mode;
  std::string_view name;
  Parameter parameter;
  Reply reply;
  Spoil spoil;
  std::string_view meaning;
};

inline constexpr std::array<FailureRow, 42> kFailures{{
    {Failure::kNone, "none", Parameter::kNone, Reply::kNone, Spoil::kNothing, "nothing fails"},
    {Failure::kSilentF, "silent-f", Parameter::kNone, Reply::kStart, Spoil::kSilence,
     "no answer to the start of a download"},
    {Failure::kLateF, "late-f", Parameter::kNone, Reply::kStart, Spoil::kLate,
     "the answer to the start of a download comes after 1.3 s"},
    {Failure::kSilentLine, "silent-line", Parameter::kCount, Reply::kLine, Spoil::kSilence,
     "no answer to line N (1..200) of a download"},
    {Failure::kLateLine, "late-line", Parameter::kCount, Reply::kLine, Spoil::kLate,
     "the answer to line N comes after 1.3 s"},
    {Failure::kWrongLine, "wrong-line", Parameter::kCount, Reply::kLine, Spoil::kOther,
     "another byte than Y answers line N"},
    {Failure::kNoiseLine, "noise-line", Parameter::kCount, Reply::kLine, Spoil::kGlued,
     "a spurious byte is glued to the Y of line N"},
    {Failure::kSilentSystem, "silent-system", Parameter::kCount, Reply::kSystem, Spoil::kSilence,
     "no answer to block N (1..8) of the system settings"},
    {Failure::kNoiseSystem, "noise-system", Parameter::kCount, Reply::kSystem, Spoil::kGlued,
     "a spurious byte is glued to the Y of block N of the system settings"},
    {Failure::kSilentPool, "silent-pool", Parameter::kCount, Reply::kPool, Spoil::kSilence,
     "no answer to block N (from 1) of the string pool"},
    {Failure::kNoisePool, "noise-pool", Parameter::kCount, Reply::kPool, Spoil::kGlued,
     "a spurious byte is glued to the Y of block N of the string pool"},
    {Failure::kNoSum, "no-sum", Parameter::kNone, Reply::kSum, Spoil::kSilence,
     "no answer to the question for the sum"},
    {Failure::kWrongSum, "wrong-sum", Parameter::kNone, Reply::kSum, Spoil::kLastWrong,
     "the sum is wrong by one bit"},
    {Failure::kShortSum, "short-sum", Parameter::kNone, Reply::kSum, Spoil::kOneByte,
     "only the first byte of the sum comes"},
    {Failure::kLongSum, "long-sum", Parameter::kNone, Reply::kSum, Spoil::kOneMore,
     "three bytes answer the question for the sum"},
    {Failure::kLateSum, "late-sum", Parameter::kNone, Reply::kSum, Spoil::kLate, "the sum comes after 1.3 s"},
    {Failure::kSilentC, "silent-c", Parameter::kNone, Reply::kIdentity, Spoil::kSilence,
     "no answer to the question who it is"},
    {Failure::kOneByteC, "one-byte-c", Parameter::kNone, Reply::kIdentity, Spoil::kOneByte,
     "only the revision byte of the identity comes"},
    {Failure::kLateC, "late-c", Parameter::kNone, Reply::kIdentity, Spoil::kLate,
     "the identity comes after 1.3 s"},
    {Failure::kUnknownModel, "unknown-model", Parameter::kNone, Reply::kIdentity, Spoil::kModel16,
     "the identity (and the greeting) names model 16, which is no hub"},
    {Failure::kSilentD, "silent-d", Parameter::kNone, Reply::kDrives, Spoil::kSilence,
     "no answer to the question for the drives"},
    {Failure::kShortD, "short-d", Parameter::kNone, Reply::kDrives, Spoil::kLastGone,
     "the last byte of the drive list is missing"},
    {Failure::kUnknownDrive, "unknown-drive", Parameter::kCount, Reply::kDrives, Spoil::kStrange,
     "the drive of axis N (1..8) reports an identity that no list knows"},
    {Failure::kMissingDrive, "missing-drive", Parameter::kCount, Reply::kDrives, Spoil::kMissing,
     "the drive of axis N (1..8) does not answer the hub"},
    {Failure::kSilentR, "silent-r", Parameter::kNone, Reply::kRevisions, Spoil::kSilence,
     "no answer to the question for the drives' revisions"},
    {Failure::kShortR, "short-r", Parameter::kNone, Reply::kRevisions, Spoil::kLastGone,
     "the last byte of the revisions is missing"},
    {Failure::kGarbledR, "garbled-r", Parameter::kCount, Reply::kRevisions, Spoil::kLetters,
     "letters stand in place of the revision of axis N (1..8)"},
    {Failure::kSilentE, "silent-e", Parameter::kNone, Reply::kExecute, Spoil::kSilence,
     "no answer to the execute command"},
    {Failure::kLateE, "late-e", Parameter::kNone, Reply::kExecute, Spoil::kLate,
     "the answer to the execute command comes after 1.3 s"},
    {Failure::kNoiseE, "noise-e", Parameter::kNone, Reply::kExecute, Spoil::kGlued,
     "a spurious byte is glued to the answer to the execute command"},
    {Failure::kSilentReset, "silent-reset", Parameter::kNone, Reply::kReset, Spoil::kSilence,
     "no answer to a reset"},
    {Failure::kSilentU, "silent-u", Parameter::kNone, Reply::kUpload, Spoil::kSilence,
     "no answer to the upload command"},
    {Failure::kShortU, "short-u", Parameter::kCount, Reply::kUpload, Spoil::kFirstN,
     "an upload stops after N bytes"},
    {Failure::kWrongU, "wrong-u", Parameter::kNone, Reply::kUpload, Spoil::kLastWrong,
     "the sum behind an upload is wrong by one bit"},
    {Failure::kSilentRun, "silent-run", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "a running program falls silent after N messages"},
    {Failure::kCutRun, "cut-run", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "a running program falls silent behind byte N of what it tells"},
    {Failure::kStallRun, "stall-run", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "the hub stalls for 20 ms behind byte N of what a running program tells"},
    {Failure::kHasty, "hasty", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "a running program goes on without its acknowledgements, every N ms at most"},
    {Failure::kDropByte, "drop", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "byte N from the PC is lost on the way"},
    {Failure::kFlipByte, "flip", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "byte N from the PC arrives with its lowest bit turned"},
    {Failure::kUnplug, "unplug", Parameter::kCount, Reply::kNone, Spoil::kNothing,
     "the cable comes off after byte N from the PC"},
    {Failure::kUnplugTx, "unplug-tx", Parameter::kCount, Reply::kNone, Spoil::kNothing,
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
  Failure mode = Failure::kNone;
  int at = 1;
};

[[nodiscard]] constexpr const FailureRow& RowOf(Failure mode) {
  return kFailures[static_cast<std::size_t>(mode)];
}

/// Reads "MODE" or "MODE:N", N a whole number from 1. Empty for an unknown mode, for an N that is anything
/// else, and for an N behind a mode that takes none.
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
