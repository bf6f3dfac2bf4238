// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/console/console.h"
#include "cli/console/environment.h"

namespace CLI {
class App;
}

namespace tavlo::cli {

// The options of the commands, each added by its function: the parser's own header, which takes longer to
// read than all else here, is included where they are made and nowhere else.

// Of each file that is read or written "-" is standard input or output; an output has a name.

void AddFile(CLI::App& app, std::string& path, bool required);
/// A program file that the command writes. Its name must be that of one, or it would be read as an old file.
void AddNewFile(CLI::App& app, const std::string& option, std::string& path);
/// An image of the hub's memory that the command reads.
void AddImageToRead(CLI::App& app, std::string& path);
/// One that it writes if it is asked to.
void AddImageToWrite(CLI::App& app, std::string& path);
void AddJson(CLI::App& app, bool& json);
void AddFlag(CLI::App& app, const std::string& option, bool& on, const std::string& description);
/// A flag that has a meaning only where FILE is given too.
void AddFlagOfFile(CLI::App& app, const std::string& option, bool& on, const std::string& description);

/// `--port`, `--timeout` and `--trace`.
struct LineOptions {
  std::string port;
  std::optional<double> timeout;
  bool trace = false;

  [[nodiscard]] PortName Name() const;
};
void AddLineOptions(CLI::App& app, LineOptions& options);

/// `--no-stop`, for who knows that nothing waits at the hub.
void AddNoStop(CLI::App& app, bool& no_stop);

/// `--yes` and `--no`.
struct AnswerOptions {
  bool yes = false;
  bool no = false;

  [[nodiscard]] AnswerBy By() const {
    if (yes) return AnswerBy::Yes;
    return no ? AnswerBy::No : AnswerBy::Operator;
  }
};
void AddAnswerOptions(CLI::App& app, AnswerOptions& options);

/// A duration: 0 or more.
void AddSeconds(CLI::App& app, const std::string& option, std::optional<double>& seconds,
                const std::string& description);

/// `--firmware`, as its revision byte: hundredths above 1.00.
void AddFirmware(CLI::App& app, int& revision_byte);

/// 1 to 8, or anything that can be a device; nothing for another number and the empty text.
[[nodiscard]] std::optional<PortName> ParsePort(std::string_view text);
/// The name ends as that of a program file, in capitals or not.
[[nodiscard]] bool IsProgramName(std::string_view path);
/// "1.00" to "3.55" to its revision byte.
[[nodiscard]] std::optional<int> ParseFirmware(std::string_view text);

}  // namespace tavlo::cli
