// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/console/environment.h"
#include "cli/console/key_terminal.h"
#include "platform/services.h"

namespace tavlo::cli {

/// Whether this name of a file stands for standard input or standard output.
[[nodiscard]] inline bool IsStandard(std::string_view path) {
  return path == "-";
}

/// Who answers the questions of the checks and of the halts.
enum class AnswerBy { Operator, Yes, No };

/// The operator's side of a command: results on one stream, everything else on the other.
class Console {
 public:
  explicit Console(Environment& environment) : environment_(environment) {}

  /// From now on, a question switches this terminal to whole lines, and back to single keys afterwards.
  void ReadLinesOn(KeyTerminal& keys) { keys_ = &keys; }

  /// Prints one row of the result, in UTF-8. It is sent at once, for a reader who follows along.
  void Result(std::string_view row);
  /// Prints the row of a result that says which device the Comm stood for.
  void ResultPort(const OpenedPort& opened);
  /// Writes a result that is not text, unchanged.
  void Bytes(std::string_view bytes);
  /// False once a result could not be written.
  [[nodiscard]] bool ResultsArrive() const { return environment_.out.good(); }
  /// Whether output is kept for a reader who has stopped reading.
  [[nodiscard]] bool OutputWaits() const {
    return environment_.outlet != nullptr && environment_.outlet->Waits();
  }
  /// Seconds between two looks at such a reader.
  static constexpr double kReaderLook = 0.05;
  /// Sends as much of the kept output as the reader takes at once.
  void SendOn() {
    if (OutputWaits()) environment_.outlet->SendOn();
  }

  /// Returns standard input up to its end, but at most `limit` bytes; empty if there is no standard input.
  /// Blocks until it has ended.
  [[nodiscard]] std::string ReadInput(std::size_t limit);

  /// Prints a message in the exact words of the desktop program.
  void Message(std::string_view text);
  /// Prints what this program itself says about a failure.
  void Note(std::string_view text);
  /// Prints other remarks of this program. --quiet suppresses them.
  void Inform(std::string_view text);
  /// Shows a line that the next message or status replaces; an empty text removes it. Only on a terminal.
  void Status(std::string_view text);
  [[nodiscard]] bool ShowsStatus() const { return environment_.err_is_terminal && !environment_.quiet; }
  void Beep();

  /// Shows the question and returns its answer. If there is nobody to ask, the answer is the cautious one, No
  /// or Cancel, and this is printed.
  [[nodiscard]] Answer Ask(std::string_view question, Buttons buttons, AnswerBy by);

 private:
  void Say(std::string_view text);
  [[nodiscard]] Answer AskOperator(std::string_view question, Buttons buttons);

  Environment& environment_;
  KeyTerminal* keys_ = nullptr;
  bool status_shown_ = false;
};

}  // namespace tavlo::cli
