// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/environment.h"
#include "cli/console/exit_code.h"

namespace CLI {
class App;
}

namespace tavlo::cli {

/// A sub-command: what it is called, what it takes, what it does.
class Command {
 public:
  virtual ~Command() = default;
  [[nodiscard]] virtual std::string_view Name() const = 0;
  [[nodiscard]] virtual std::string_view Description() const = 0;
  virtual void AddOptions(CLI::App& app) = 0;
  /// Whether it prints events as they happen. Such a command can end even if its reader has stopped reading.
  [[nodiscard]] virtual bool PrintsEvents() const { return false; }
  /// Runs with the options that have been parsed. May throw Interrupted.
  [[nodiscard]] virtual ExitCode Execute(Environment& environment) = 0;
};

[[nodiscard]] std::unique_ptr<Command> MakeShowCommand();
[[nodiscard]] std::unique_ptr<Command> MakeListCommand();
[[nodiscard]] std::unique_ptr<Command> MakeProfileCommand();
[[nodiscard]] std::unique_ptr<Command> MakeCompileCommand();
[[nodiscard]] std::unique_ptr<Command> MakeCheckCommand();
[[nodiscard]] std::unique_ptr<Command> MakeDownloadCommand();
[[nodiscard]] std::unique_ptr<Command> MakeUploadCommand();
[[nodiscard]] std::unique_ptr<Command> MakeDecodeCommand();
[[nodiscard]] std::unique_ptr<Command> MakeConvertCommand();
[[nodiscard]] std::unique_ptr<Command> MakeVerifyCommand();
[[nodiscard]] std::unique_ptr<Command> MakeRunCommand();
[[nodiscard]] std::unique_ptr<Command> MakeSimulateCommand();
[[nodiscard]] std::unique_ptr<Command> MakeTerminalCommand();
[[nodiscard]] std::unique_ptr<Command> MakeIdentifyCommand();
[[nodiscard]] std::unique_ptr<Command> MakeStopCommand();
[[nodiscard]] std::unique_ptr<Command> MakePortsCommand();

}  // namespace tavlo::cli
