// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hubsim/machine/axis.h"
#include "hubsim/machine/drive_bay.h"
#include "hubsim/options.h"
#include "hubsim/program/memory.h"
#include "hubsim/running/flow.h"
#include "hubsim/running/program_clock.h"
#include "hubsim/running/runner.h"
#include "hubsim/terminal/display.h"
#include "hubsim/wire/download.h"
#include "hubsim/wire/outbox.h"
#include "hubsim/wire/reporter.h"
#include "hubsim/wire/wire_faults.h"

namespace tavlo::hubsim {

/// A hand wheel turns by this many counts at once at most.
inline constexpr int kMostKnobCounts = 10000;

enum class HubState : std::uint8_t {
  Idle,
  Downloading,
  Passthrough,  ///< what comes goes to the drives
  Running,
  Paused,  ///< a line under way goes on
  Ended,   ///< the program came to its end
  Halted,
};

/// One axis as it is at a moment. A set bit of an input or output is high, which is the inactive state.
struct AxisView {
  double position_steps = 0;
  double speed_steps_s = 0;
  double steps_per_rev = 0;
  bool moving = false;
  std::optional<int> seeking;  ///< the line whose move goes on until its sensor is seen
  bool motor_on = false;
  double amps = 0;
  std::uint8_t inputs = 0xFF;    ///< inputs 1..8
  std::uint8_t x_inputs = 0xFF;  ///< X0..X7
  std::uint8_t outputs = 0x7F;   ///< outputs 1..4, then Y1..Y3
};

/// The hub at the other end of the wire: bytes and times in, bytes out. It does no I/O, reads no clock and
/// starts no thread. Times are seconds of any epoch and do not run backwards (an earlier one counts as the
/// last). Lines and axes are 0-based. A call with an axis, input or code out of range does nothing and
/// returns false.
class Hub {
 public:
  explicit Hub(HubOptions options);
  Hub(const Hub&) = delete;
  Hub& operator=(const Hub&) = delete;

  /// Takes bytes from the PC. Lost while the hub is unplugged.
  void Receive(std::string_view bytes, double now);
  /// Lets time pass. One call does a bounded amount of work; if more is due, `NextEvent` lies in the past
  /// afterwards.
  void Advance(double now);
  /// When `Advance` has something to do next; empty when only bytes or an input change anything.
  [[nodiscard]] std::optional<double> NextEvent() const;
  /// Bytes for the PC, made since the last call.
  [[nodiscard]] std::string TakeOutput();

  /// `input` is 0..7 for the inputs 1..8 and 8..15 for X0..X7. False only for what is out of range.
  bool SetInput(int axis, int input, bool high, double now);
  /// Turns the hand wheel of an axis, at most `kMostKnobCounts` either way. Returns false unless a line
  /// follows it.
  bool TurnKnob(int axis, int counts, double now);
  /// A limit switch of an axis closes. Returns false if that changes nothing: the axis has no drive or does
  /// not use its limit switches; or no program runs and nothing still moves after one; or a limit only stops
  /// the axis, which stands already.
  bool HitLimit(int axis, double now);
  /// The drive of an axis reports faults. `code` is 0..16383, one bit a fault. Returns false if the axis has
  /// no drive.
  bool Fail(int axis, int code, double now);
  /// The stop button of a drive is pressed. Returns false unless a program runs, or has ended and left
  /// something moving.
  bool PressStop(double now);
  /// Power off and on: the memory stays, everything else is new, the greeting goes out.
  void PowerUp(double now);
  /// The cable comes off; the program runs on. False if it is off already.
  bool Unplug();
  /// False if the cable is on.
  bool Replug();
  [[nodiscard]] bool Unplugged() const { return unplugged_; }
  /// Sends bytes of the caller's choice as if they were the hub's own. False if the cable is off.
  bool Say(std::string_view bytes);
  /// Replaces the failure mode; numbers count from here on.
  void SetFailure(const FailurePlan& plan);

  [[nodiscard]] const HubOptions& Options() const { return options_; }
  [[nodiscard]] MemoryView MemoryImage() const { return memory_.Bytes(); }
  [[nodiscard]] HubState State() const;
  /// The line under way.
  [[nodiscard]] std::optional<int> RunningLine() const { return runner_.Line(); }
  [[nodiscard]] int AxisCount() const { return bay_.AxisCount(); }
  /// Model code of the drive on an axis (0..7), 0 for none.
  [[nodiscard]] int PluggedModel(int axis) const { return bay_.PluggedModel(axis); }
  [[nodiscard]] AxisView Axis(int axis) const;
  /// The speed of an axis from the present on to `until`, as points between which it changes evenly, as long
  /// as nothing happens: `until` is not behind `NextEvent`. Empty for an axis out of range.
  [[nodiscard]] std::vector<SpeedPoint> Course(int axis, double until) const;
  [[nodiscard]] int Variable(int number) const { return runner_.GetMachine().Variable(number); }
  /// The operator terminal's display as the hub believes it: four rows of at most 20 printable characters.
  [[nodiscard]] const DisplayLines& Display() const { return display_.Lines(); }
  [[nodiscard]] int CallDepth() const { return runner_.GetFlow().Depth(); }
  /// The calls and loops that are open.
  [[nodiscard]] const Flow& OpenFlow() const { return runner_.GetFlow(); }
  /// The program was started for the operator terminal and has been neither stopped nor halted.
  [[nodiscard]] bool TerminalRun() const { return runner_.TerminalRun(); }
  /// What the program stands still for.
  [[nodiscard]] WaitsFor Waits() const { return runner_.Waits(); }

 private:
  void SetTime(double now);
  [[nodiscard]] double ProgramNow() const;
  void RunDue(double when);
  void Pass(double when);
  [[nodiscard]] bool GoesOnUnasked() const;
  void TakeByte(std::uint8_t byte);
  void TakeCommand(char command);
  void TakeRunCommand(char command);
  void TakeDownloadByte(std::uint8_t byte);
  void TakePassthroughByte(char byte);
  void Greet();
  [[nodiscard]] bool IsKey(char byte) const;
  void Answer(Reply reply, std::string bytes, std::int64_t index = 1);
  void StartDownload();
  [[nodiscard]] bool TakeGreetingAnswer(char byte);
  void OpenPassthrough();
  void AnswerRevisionsOrReset();
  [[nodiscard]] std::string Identity() const;
  [[nodiscard]] std::string Upload() const;
  void CheckCable();

  HubOptions options_;
  Memory memory_;
  Outbox outbox_;
  DriveBay bay_;
  Reporter reporter_;
  TerminalDisplay display_;
  Runner runner_;
  ProgramClock clock_;
  WireFaults wire_faults_;

  bool timed_ = false;
  double now_ = 0;
  bool unplugged_ = false;
  std::optional<Download> download_;
  double last_byte_ = 0;
  std::optional<std::uint16_t> sum_;  ///< of the last whole download
  bool passthrough_ = false;
  std::string passthrough_line_;
  bool star_ = false;            ///< the next "0" belongs to a "*"
  std::size_t zeros_taken_ = 2;  ///< of the terminal's answer to a greeting
  int resets_left_ = 0;
  double next_status_ = 0;
  double next_unasked_ = 0;
};

}  // namespace tavlo::hubsim
