// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/console.h"

#include <algorithm>

#include "cli/console/standard_input.h"
#include "platform/encoding.h"

namespace tavlo::cli {
namespace {

/// The two answers of a question, as they read.
struct Choice {
  Answer yes;
  std::string_view yes_text;
  Answer no;
  std::string_view no_text;
};
constexpr Choice kYesNo{Answer::Yes, "Yes", Answer::No, "No"};
constexpr Choice kOKCancel{Answer::OK, "OK", Answer::Cancel, "Cancel"};

constexpr std::string_view kEraseLine = "\r\x1b[K";

bool StartsWith(std::string_view typed, char letter) {
  const std::size_t first = typed.find_first_not_of(" \t");
  return first != std::string_view::npos && (typed[first] | 0x20) == letter;
}

bool IsBlank(std::string_view typed) {
  return typed.find_first_not_of(" \t\r") == std::string_view::npos;
}

}  // namespace

void Console::Result(std::string_view row) {
  environment_.out << row << '\n' << std::flush;
}

void Console::ResultPort(const OpenedPort& opened) {
  if (!opened.Text().empty()) Result("Port: " + ShownMessage(opened.Text()));
}

/// In pieces: what cannot be sent at once is moved up after each piece that can.
void Console::Bytes(std::string_view bytes) {
  constexpr std::size_t kPiece = 1U << 16U;
  for (; !bytes.empty() && ResultsArrive(); bytes.remove_prefix(std::min(kPiece, bytes.size()))) {
    environment_.out << bytes.substr(0, kPiece) << std::flush;
  }
}

std::string Console::ReadInput(std::size_t limit) {
  return environment_.feed != nullptr ? ReadToEnd(*environment_.feed, limit) : std::string();
}

void Console::Message(std::string_view text) {
  environment_.failures.push_back(ShownMessage(text));
  Status("");
  environment_.err << ShownMessage(text) << '\n' << std::flush;
}

void Console::Note(std::string_view text) {
  environment_.failures.push_back(ShownMessage(text));
  Say(text);
}

void Console::Inform(std::string_view text) {
  if (!environment_.quiet) Say(text);
}

void Console::Say(std::string_view text) {
  Status("");
  environment_.err << "tavlo: " << ShownMessage(text) << '\n' << std::flush;
}

void Console::Status(std::string_view text) {
  if (!ShowsStatus() || (text.empty() && !status_shown_)) return;
  environment_.err << kEraseLine << text << std::flush;
  status_shown_ = !text.empty();
}

void Console::Beep() {
  if (environment_.err_is_terminal) environment_.err << '\a' << std::flush;
}

Answer Console::Ask(std::string_view question, Buttons buttons, AnswerBy by) {
  if (HarmlessAnswer(buttons) == Answer::OK) {
    Message(question);
    return Answer::OK;
  }
  const Choice& choice = buttons == Buttons::YesNo ? kYesNo : kOKCancel;
  switch (by) {
    case AnswerBy::Yes:
      Message(question);
      Say("answered " + std::string(choice.yes_text) + " (--yes)");
      return choice.yes;
    case AnswerBy::No:
      Message(question);
      Say("answered " + std::string(choice.no_text) + " (--no)");
      return choice.no;
    case AnswerBy::Operator: break;
  }
  if (environment_.read_line) return AskOperator(question, buttons);
  Message(question);
  Say("answered " + std::string(choice.no_text) + " because there is nobody to ask; --yes answers " +
      std::string(choice.yes_text));
  return choice.no;
}

Answer Console::AskOperator(std::string_view question, Buttons buttons) {
  const Choice& choice = buttons == Buttons::YesNo ? kYesNo : kOKCancel;
  const char yes_letter = buttons == Buttons::YesNo ? 'y' : 'o';
  const char no_letter = buttons == Buttons::YesNo ? 'n' : 'c';
  const std::string keys = buttons == Buttons::YesNo ? " [y/N] " : " [o/C] ";
  environment_.failures.push_back(ShownMessage(question));
  Status("");
  // The terminal changes hands before the question is seen: an answer may follow at once.
  std::optional<LineTerminal> lines;
  if (keys_ != nullptr) lines.emplace(*keys_);
  for (;;) {
    environment_.err << ShownMessage(question) << keys << std::flush;
    const auto typed = environment_.read_line();
    if (typed && StartsWith(*typed, yes_letter)) return choice.yes;
    if (!typed || IsBlank(*typed) || StartsWith(*typed, no_letter)) return choice.no;
  }
}

}  // namespace tavlo::cli
