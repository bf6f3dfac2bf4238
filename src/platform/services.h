// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/outcome.h"

namespace tavlo {

/// The title of a box without a title of its own.
inline constexpr std::string_view kApplicationTitle = "Tavlo Composer";

/// `OKWithoutPort` is an OK that goes on looking for a port, with a second button, "Without a port", that
/// gives the search up.
enum class Buttons { OK, OKCancel, YesNo, OKWithoutPort, RestoreDiscard };
enum class Icon { None, Stop, Question, Exclamation };
enum class Answer { OK, Cancel, Yes, No, WithoutPort, Restore, Discard };

/// The answer that loses no work and moves no machine: that of Enter, of Escape and of the box's close
/// button.
[[nodiscard]] Answer HarmlessAnswer(Buttons buttons);

/// What a box reports, for a program that acts on it. Text and title are for the operator only.
enum class Tells : std::uint8_t {
  Other,
  HubSilent,
  DrivesRefused,
  LimitHit,
  StopButton,
  StackOverflow,
  StackUnderflow,
  DriveDisabled,
};

/// A message box.
struct Box {
  std::string text;
  std::string title{kApplicationTitle};
  Buttons buttons = Buttons::OK;
  Icon icon = Icon::None;
  /// The box does not follow from anything that the operator did, so it may come while the operator is
  /// typing.
  bool by_itself = false;
  Tells tells = Tells::Other;
  /// The program line 0..199 that the box is about.
  std::optional<int> line = {};
  bool operator==(const Box&) const = default;
};

/// The modal message boxes. A box runs a nested event loop, so receive events may be delivered while
/// it is up.
class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  /// Shows the box and returns the operator's answer. If a box with the same text and title is still up, it
  /// is not shown again and its harmless answer is returned at once.
  Answer MsgBox(Box box);

  /// Called with the line that a box is about, before the box is shown. May be empty.
  std::function<void(int line)> GoToLine;

 protected:
  virtual Answer Show(const Box& box) = 0;

 private:
  friend class ComeByThemselves;

  std::vector<Box> standing_;
  int by_themselves_ = 0;
};

/// While one lives, boxes count as coming by themselves. Used around the code that handles bytes from the hub
/// or the loss of a port.
class ComeByThemselves {
 public:
  explicit ComeByThemselves(MessageBoxes& boxes) : boxes_(boxes) { ++boxes_.by_themselves_; }
  ~ComeByThemselves() { --boxes_.by_themselves_; }
  ComeByThemselves(const ComeByThemselves&) = delete;
  ComeByThemselves& operator=(const ComeByThemselves&) = delete;

 private:
  MessageBoxes& boxes_;
};

/// One entry of a file dialog's filter list, such as {"Tavlo Files", "*.TVH"}.
struct FileFilter {
  std::string_view name;
  std::string_view pattern;
};

struct FileDialogSetup {
  std::vector<FileFilter> filters;
  std::string_view default_extension;
  /// The path that the dialog proposes; empty if none.
  std::string present = {};
};

class FileDialogs {
 public:
  virtual ~FileDialogs() = default;
  /// Both return nothing if the operator cancelled. SaveFileName() asks before an existing file is replaced.
  virtual std::optional<std::string> SaveFileName(const FileDialogSetup& setup) = 0;
  virtual std::optional<std::string> OpenFileName(const FileDialogSetup& setup) = 0;
};

/// Files as the program handlers need them.
class FileStore {
 public:
  virtual ~FileStore() = default;
  /// Replaces the whole file or leaves the old one: the bytes are written beside it, synced, and renamed.
  virtual Outcome Replace(const std::string& path, std::string_view bytes) = 0;
  /// Returns at most `limit` bytes of the file; nothing if it cannot be opened or read.
  [[nodiscard]] virtual std::optional<std::string> Read(const std::string& path, std::size_t limit) = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  /// Seconds since midnight; jumps back by 86400 at midnight.
  [[nodiscard]] virtual double Timer() = 0;
};

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  /// Gives the event loop a turn and returns.
  virtual void Yield() = 0;
  /// Gives the event loop turns until `seconds` have passed, sleeping between events.
  virtual void WaitSecs(double seconds) = 0;
};

/// The application under which this program's settings are kept.
inline constexpr std::string_view kSettingsApplication = "Tavlo Hub Composer";

/// Texts kept between sessions, keyed by application, section and key.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  [[nodiscard]] virtual std::string Get(std::string_view application, std::string_view section,
                                        std::string_view key, std::string_view fallback) = 0;
  virtual void Save(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view value) = 0;
};

/// A small window with a gauge from 0 to 200, shown while a transfer runs (`downbox`, `upbox`).
class ProgressForm {
 public:
  virtual ~ProgressForm() = default;
  virtual void Show() = 0;
  virtual void Hide() = 0;
  /// Moves the gauge and repaints it at once, without a turn of the event loop.
  virtual void Gauge(double value) = 0;
  /// Says what is being sent now, and how many bytes of the whole transfer have been sent. The desktop needs
  /// only the gauge; the command line shows the phase and the time left.
  virtual void Phase(std::string_view name, int bytes_done, int bytes_total) = 0;
};

/// A small window that says that a file is being read (`Loading`).
class LoadingForm {
 public:
  virtual ~LoadingForm() = default;
  virtual void Show() = 0;
  virtual void Hide() = 0;
};

class Beeper {
 public:
  virtual ~Beeper() = default;
  virtual void Beep() = 0;
};

}  // namespace tavlo
