// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/stopwatch.h"
#include "session/source.h"

namespace tavlo {

/// What an event of a run tells.
enum class RunEventKind : std::uint8_t {
  LineStarted,
  LineGoesOn,  ///< its move goes on while later lines run
  LineFinished,
  ProgramCounter,
  StepDone,
  State,   ///< what is on at an axis when that is told for the first time
  Input,   ///< has changed
  Output,  ///< has changed
  Display,
  Key,
  Control,
  LimitHit,
  StopButton,
  StackOverflow,
  StackUnderflow,
  DriveDisabled,
  DriveFault,
  DriveLost,
  WrongDrive,
  OldFirmware,
  HubSwitchedOn,
  OtherMessage,
  End,
};

struct RunEvent {
  RunEventKind kind = RunEventKind::OtherMessage;
  /// Line and axis, 0-based; -1 for none. A line may lie beyond those that there are: the hub named it.
  std::int16_t line = -1;
  std::int8_t axis = -1;
  /// The light of an Input or Output, and what it shows now.
  LedRow row = LedRow::INlo;
  std::int8_t bit = 0;
  Led led = Led::Unknown;
  /// The code of a DriveFault.
  std::int32_t code = 0;
  /// Milliseconds since the run began.
  std::int64_t ms = 0;
  /// In UTF-8.
  std::string text = {};
};

/// The log of a run: everything that the hub said and the operator did, with its time, from the command that
/// starts the program until its window is gone. A new run takes the place of the last one.
///
/// It is bounded: at most `kMostEvents` events, and `kMostText` bytes of their texts. The oldest go first,
/// and are counted.
class RunLog {
 public:
  static constexpr std::size_t kMostEvents = 50000;
  static constexpr std::size_t kMostText = 1U << 20;

  explicit RunLog(Clock& clock) : watch_(clock) {}

  /// The program is about to be started. `source` must outlive the run.
  void Begin(const Source& source);
  /// Gives the event the present time. Ignored if no run is open, as all that follows is.
  void Add(RunEvent event);
  /// A character for the display has come and has not been shown yet. What the display shows is one event for
  /// each text: it ends at the next event, or when nothing has come for `kTextRest`.
  void TextComes();
  /// A status of an axis has been shown: adds what is on, where that was not known, else what has changed.
  void ShowLights(int axis, std::span<const LedRow> rows);
  /// The run is over. The first reason of a run counts. What the hub still says is added behind it.
  void End(std::string_view why);
  /// The run's window is gone: nothing is added any more.
  void Close();
  /// Ends the text of the display if it rests, so that readers see it. Must be called at least every twelve
  /// hours if nothing else is, for the clock restarts at midnight.
  void Settle();

  [[nodiscard]] bool Open() const { return source_ != nullptr; }
  /// Counts the runs from 1; 0 before the first one.
  [[nodiscard]] int Run() const { return run_; }
  /// What the program is called that the desktop shows; empty if the one that runs is not known.
  [[nodiscard]] const std::string& ProgramName() const { return program_name_; }
  [[nodiscard]] std::time_t Began() const { return began_; }
  /// Events are numbered from 0. These are the first one that is still held, and the one behind the last.
  [[nodiscard]] std::uint64_t First() const { return first_; }
  [[nodiscard]] std::uint64_t Last() const { return last_; }
  /// Returns an event of that range.
  [[nodiscard]] const RunEvent& At(std::uint64_t number) const { return events_[number % kMostEvents]; }
  /// The time of the newest event that is not held any more.
  [[nodiscard]] std::int64_t LostUntil() const { return lost_until_; }
  /// Returns the text of a line when the run began, in UTF-8; empty if the program is not known.
  [[nodiscard]] std::string_view LineText(int line) const;
  /// Returns "1" to "8", or "Hub".
  [[nodiscard]] std::string AxisName(int axis) const;

  /// The program that runs is the one that the source holds, so that its lines have their texts.
  bool program_known = true;
  /// Called when a run has begun, and when it has been closed. May be empty.
  std::function<void()> OnBegin;
  std::function<void()> OnClose;
  /// The time of day.
  std::function<std::time_t()> wall = [] { return std::time(nullptr); };

  /// Seconds.
  static constexpr double kTextRest = 0.05;

 private:
  [[nodiscard]] std::int64_t Now();
  void Append(RunEvent event);
  void DropOldest();
  void EndText();

  Stopwatch watch_;
  const Source* source_ = nullptr;
  int run_ = 0;
  std::time_t began_ = 0;
  std::string program_name_;
  std::vector<std::string> line_texts_;
  bool hub_quad_ = false;

  std::vector<RunEvent> events_;
  std::uint64_t first_ = 0;
  std::uint64_t last_ = 0;
  std::size_t text_bytes_ = 0;
  std::int64_t lost_until_ = 0;

  bool ended_ = false;
  bool text_pending_ = false;
  std::int64_t text_ms_ = 0;
  /// What the lights of each row and axis showed last; empty if nothing has been told.
  std::array<std::array<std::vector<Led>, kAxes>, kLedRows.size()> lights_;
};

}  // namespace tavlo
