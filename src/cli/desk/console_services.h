// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/console/console.h"
#include "cli/console/environment.h"
#include "platform/services.h"
#include "session/views.h"

namespace tavlo::cli {

/// Message boxes as rows of the console. The title comes first, unless it is the application's.
class ConsoleBoxes : public MessageBoxes {
 public:
  ConsoleBoxes(Console& console, AnswerBy by) : console_(console), by_(by) {}

  /// The boxes so far, oldest first.
  [[nodiscard]] const std::vector<Box>& Shown() const { return shown_; }

 protected:
  Answer Show(const Box& box) override;

 private:
  Console& console_;
  AnswerBy by_;
  std::vector<Box> shown_;
};

class ConsoleBeeper : public Beeper {
 public:
  explicit ConsoleBeeper(Console& console) : console_(console) {}
  void Beep() override { console_.Beep(); }

 private:
  Console& console_;
};

// What a command has no use for.

class NoSettings : public SettingsStore {
 public:
  [[nodiscard]] std::string Get(std::string_view, std::string_view, std::string_view,
                                std::string_view fallback) override {
    return std::string(fallback);
  }
  void Save(std::string_view, std::string_view, std::string_view, std::string_view) override {}
};

class NoDialogs : public FileDialogs {
 public:
  std::optional<std::string> SaveFileName(const FileDialogSetup&) override { return std::nullopt; }
  std::optional<std::string> OpenFileName(const FileDialogSetup&) override { return std::nullopt; }
};

class NoLoading : public LoadingForm {
 public:
  void Show() override {}
  void Hide() override {}
};

class NoProgramView : public ProgramView {
 public:
  void RowChanged(int) override {}
  void AllRowsChanged() override {}
  void ArrowsChanged() override {}
  void DrivesChanged() override {}
  void HubChanged() override {}
  void LimitChanged() override {}
  void CaptionChanged() override {}
  void AutoScroll(int) override {}
  void GoTo(int) override {}
  void ProgCounter(std::optional<int>) override {}
  void StopChanged() override {}
  void SomethingHappened() override {}
  void Note(std::string_view) override {}
};

class NoRunView : public RunView {
 public:
  [[nodiscard]] RunWindow Active() const override { return RunWindow::None; }
  void ShowModal(RunWindow) override {}
  void Hide() override {}
  void StatusChanged(int) override {}
  void ControlsChanged() override {}
  void TextLinesChanged() override {}
  void ShowServoFault(const ServoFaultPanel&) override {}
};

/// The line of a command that needs none: nothing ever arrives and no time passes.
class NoLine : public HubLine, private SerialPort, private Clock, private EventLoop {
 public:
  [[nodiscard]] SerialPort& Port() override { return *this; }
  [[nodiscard]] Clock& Time() override { return *this; }
  [[nodiscard]] EventLoop& Loop() override { return *this; }
  void Wait(double, const Feed*) override {}
  [[nodiscard]] bool IsInterrupted() const override { return false; }

 private:
  void CommPort(int) override {}
  [[nodiscard]] int CommPort() const override { return 0; }
  void Settings(std::string_view) override {}
  Outcome PortOpen(bool) override { return Outcome::Failed("there is no line"); }
  [[nodiscard]] bool PortOpen() const override { return false; }
  void RThreshold(int) override {}
  [[nodiscard]] int RThreshold() const override { return 0; }
  void ParityReplace(std::string_view) override {}
  [[nodiscard]] int InBufferCount() override { return 0; }
  [[nodiscard]] std::string Input() override { return {}; }
  void Output(std::string_view) override {}
  void WaitForInput(double) override {}
  [[nodiscard]] int CommEvent() const override { return 0; }
  [[nodiscard]] double Timer() override { return 0; }
  void Yield() override {}
  void WaitSecs(double) override {}
};

}  // namespace tavlo::cli
