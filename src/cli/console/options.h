// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/console.h"
#include "cli/console/environment.h"

namespace CLI {
class App;
}

namespace tavlo::cli {

// The options of the commands, one function each. Only the file that defines them includes the parser's own
// header, which takes longer to compile than all else here.

// For each file that is read or written, "-" stands for standard input or output. An option for an output has
// a name.

void AddFile(CLI::App& app, std::string& path, bool required);
/// `OLD`, a program file of either kind and of any version.
void AddOldFile(CLI::App& app, std::string& path);
/// A program file that the command writes. The name must be that of a program file, because a file with any
/// other name is read as one of the earlier programmer.
void AddNewFile(CLI::App& app, const std::string& option, std::string& path);
/// An image of the hub's memory that the command reads.
void AddImageToRead(CLI::App& app, std::string& path);
/// An image that the command writes on request.
void AddImageToWrite(CLI::App& app, std::string& path);
/// Another file that the command reads if it is told one.
void AddInput(CLI::App& app, const std::string& option, std::string& path, const std::string& description);
/// Another output that the command writes if it is asked to.
void AddOutput(CLI::App& app, const std::string& option, std::string& path, const std::string& description);
void AddJson(CLI::App& app, bool& json);
/// The number of a program line, LINE, from 1 to 200.
void AddLine(CLI::App& app, int& line);
/// One of a few words.
void AddChoice(CLI::App& app, const std::string& option, std::string& choice,
               const std::vector<std::string>& words, const std::string& description);
void AddFlag(CLI::App& app, const std::string& option, bool& on, const std::string& description);
/// A text that must be of a kind. `complaint` returns what is wrong with it; an empty text if nothing is.
void AddChecked(CLI::App& app, const std::string& option, std::string& text, const std::string& type,
                const std::string& description, std::function<std::string(const std::string&)> complaint);
/// A flag that has a meaning only if FILE is given too.
void AddFlagOfFile(CLI::App& app, const std::string& option, bool& on, const std::string& description);

/// `--port`, `--timeout` and `--trace`.
struct LineOptions {
  std::string port;
  std::optional<double> timeout;
  bool trace = false;

  [[nodiscard]] PortName Name() const;
};
void AddLineOptions(CLI::App& app, LineOptions& options);

/// `--no-stop`, for an operator who knows that nothing is waiting at the hub.
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

/// Accepts 1 to 8, and anything that can be a device. Returns nothing for any other number and for the empty
/// text.
[[nodiscard]] std::optional<PortName> ParsePort(std::string_view text);
/// Whether the name has the extension of a program file, in upper or lower case.
[[nodiscard]] bool IsProgramName(std::string_view path);
/// Converts "1.00" to "3.55" into the revision byte. Returns nothing for any other text.
[[nodiscard]] std::optional<int> ParseFirmware(std::string_view text);

}  // namespace tavlo::cli
