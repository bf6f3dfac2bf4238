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

/// The name of a file that stands for standard input, or for standard output.
[[nodiscard]] inline bool IsStandard(std::string_view path) {
  return path == "-";
}

/// Who answers the questions of the checks and the halts.
enum class AnswerBy { Operator, Yes, No };

/// The operator's side of a command: results on one stream, everything else on the other.
class Console {
 public:
  explicit Console(Environment& environment) : environment_(environment) {}

  /// From now on a question takes whole lines from this terminal, and gives it its keys back afterwards.
  void ReadLinesOn(KeyTerminal& keys) { keys_ = &keys; }

  /// One row of the result, in UTF-8. Leaves at once, for whoever reads along.
  void Result(std::string_view row);
  /// The row of a result that tells which device the Comm stood for.
  void ResultPort(const OpenedPort& opened);
  /// A result that is no text, as it stands.
  void Bytes(std::string_view bytes);
  /// False once a result could not be written.
  [[nodiscard]] bool ResultsArrive() const { return environment_.out.good(); }
  /// Something is kept for a reader who has stopped taking.
  [[nodiscard]] bool OutputWaits() const {
    return environment_.outlet != nullptr && environment_.outlet->Waits();
  }
  /// Sends of it what leaves at once.
  void SendOn() {
    if (OutputWaits()) environment_.outlet->SendOn();
  }

  /// Standard input to its end, but no more than so many bytes; empty if there is none. Waits for it.
  [[nodiscard]] std::string ReadInput(std::size_t limit);

  /// A message in the operator's exact words.
  void Message(std::string_view text);
  /// What this program itself has to say of what went wrong.
  void Note(std::string_view text);
  /// What it has to say besides, which --quiet keeps back.
  void Inform(std::string_view text);
  /// A line that the next message or status replaces. Shown on a terminal only; empty takes it away.
  void Status(std::string_view text);
  [[nodiscard]] bool ShowsStatus() const { return environment_.err_is_terminal && !environment_.quiet; }
  void Beep();

  /// Shows the question and gets its answer. Where nobody can be asked the answer is the cautious one, No
  /// or Cancel, and is told.
  [[nodiscard]] Answer Ask(std::string_view question, Buttons buttons, AnswerBy by);

 private:
  void Say(std::string_view text);
  [[nodiscard]] Answer AskOperator(std::string_view question, Buttons buttons);

  Environment& environment_;
  KeyTerminal* keys_ = nullptr;
  bool status_shown_ = false;
};

}  // namespace tavlo::cli
