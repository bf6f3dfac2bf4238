// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>

#include "hubsim/machine/drive_bay.h"
#include "hubsim/machine/machine.h"
#include "hubsim/program/axis_settings.h"
#include "hubsim/program/memory.h"
#include "hubsim/program/statement.h"
#include "hubsim/running/flow.h"
#include "hubsim/running/line_runner.h"
#include "hubsim/terminal/display.h"
#include "hubsim/wire/reporter.h"

namespace tavlo::hubsim {

enum class RunState : std::uint8_t {
  Idle,
  Running,  ///< paused or not
  Ended,    ///< came to its end; motion that it started may go on
  Halted,
};

/// Steps through the program in the memory: reports each line before it runs, waits for the PC's
/// acknowledgement, lets it run, and reports its end. All times are machine seconds.
class Runner {
 public:
  Runner(const Memory& memory, const DriveBay& bay, Reporter& reporter, TerminalDisplay& display,
         std::uint8_t firmware)
      : memory_(memory), bay_(bay), reporter_(reporter), display_(display), firmware_(firmware) {}

  /// From the first line, whatever ran before. `terminal`: somebody sits at the operator terminal.
  void Start(bool terminal, double now);
  /// Brakes all motion and forgets the run; no more of it is reported. Ends a halt too.
  void Stop(double now);
  /// Takes effect at the next line; a line under way and motion go on.
  void Pause(double now);
  void Resume(double now);
  /// Runs one line of a paused program. If a line is still under way, its rest is the step.
  void Step(double now);
  /// Goes to the first line; a paused program stays paused.
  void Rewind(double now);
  /// The PC acknowledges a line event.
  void Acknowledge(double now);
  /// Stops all motion at once, releases the outputs and forgets the run. Positions and variables stay.
  void Reset(double now);
  /// Makes everything as it is after power-up, except the levels of the inputs.
  void PowerUp(double now);

  /// Returns false if it changes nothing: the axis has no drive or does not use its limit switches; or no
  /// program runs and nothing still moves after one; or a limit only stops the axis, which stands already.
  bool HitLimit(int axis, double now);
  /// Returns false unless a program runs, or has ended and left something moving.
  bool PressStop(double now);
  /// Returns false if the axis has no drive.
  bool Fail(int axis, int code, double now);
  void SetInput(int axis, int input, bool high, double now);
  /// A key of the operator terminal. Ignored unless a line waits for it.
  void PressKey(char key, double now);
  /// Returns false unless a line follows the axis's hand wheel.
  bool TurnKnob(int axis, int counts, double now);

  [[nodiscard]] RunState State() const { return state_; }
  [[nodiscard]] bool Paused() const { return paused_; }
  /// Started for the operator terminal, and neither stopped nor halted since.
  [[nodiscard]] bool TerminalRun() const { return terminal_; }
  [[nodiscard]] WaitsFor Waits() const;
  /// The line under way; empty between lines.
  [[nodiscard]] std::optional<int> Line() const;
  [[nodiscard]] const Machine& GetMachine() const { return machine_; }
  [[nodiscard]] const Flow& GetFlow() const { return flow_; }

  [[nodiscard]] std::optional<double> NextEvent() const;
  void Advance(double now);
  /// Reports inputs and outputs of all drives.
  void ReportAllStatus();

 private:
  enum class Phase : std::uint8_t {
    Between,     ///< the next line is to be taken up
    Held,        ///< paused in front of the next line
    Started,     ///< reported, not yet acknowledged
    Gated,       ///< acknowledged, waits for moves before it runs
    Executing,   ///< runs
    Concurrent,  ///< its move goes on beside the program; not yet acknowledged
  };

  void Pump(double now);
  [[nodiscard]] bool Progress(double now);
  void BeginLine();
  void SkipSilentLines();
  void Execute(double now);
  [[nodiscard]] bool LineOver(double now);
  [[nodiscard]] bool InteractionOver(double now);
  void FinishLine();
  void GoOn();
  void End();
  void HaltProgram(const Halt& halt, double now);
  void JumpTo(int line, double now);
  void Release(int axis);
  void HandleEnd(const MoveEnd& end);
  void ReportStatus(int axis);
  void HideMarker();
  void Forget();
  [[nodiscard]] bool Active() const { return state_ == RunState::Running || state_ == RunState::Ended; }
  [[nodiscard]] bool UnderWay() const {
    return state_ == RunState::Running || (state_ == RunState::Ended && machine_.AnythingMoves());
  }
  [[nodiscard]] bool LineUnderWay() const { return phase_ != Phase::Between && phase_ != Phase::Held; }
  [[nodiscard]] LineContext Context(double now);

  const Memory& memory_;
  const DriveBay& bay_;
  Reporter& reporter_;
  TerminalDisplay& display_;
  std::uint8_t firmware_;

  Machine machine_;
  Flow flow_;
  HubSettings settings_;
  RunState state_ = RunState::Idle;
  Phase phase_ = Phase::Between;
  bool terminal_ = false;
  bool paused_ = false;
  bool stepping_ = false;
  bool marker_shown_ = false;
  int line_ = 0;
  Statement statement_;
  LineOutcome outcome_;
  std::optional<int> jump_;
  int owed_acknowledgements_ = 0;
};

}  // namespace tavlo::hubsim
