// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/freeing.h"

#include "hubsim/terminal/value_entry.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

std::string NameOf(int axis, int input) {
  const std::string number =
      input >= hubsim::kFirstXInput ? "X" + Joined(input - hubsim::kFirstXInput) : Joined(input + 1);
  return "axis " + Joined(axis + 1) + " input " + number;
}

std::string TextOf(const hubsim::InputRef& input, hubsim::Condition condition) {
  if (!input.input) return std::string(kNothing);
  const std::string name = NameOf(input.axis, *input.input);
  switch (condition) {
    case hubsim::Condition::High: return name + " high";
    case hubsim::Condition::Low: return name + " low";
    case hubsim::Condition::RisingEdge: return name + " high after low";
    case hubsim::Condition::FallingEdge: return name + " low after high";
  }
  return name;
}

/// All of the inputs as they are named, or one that is not.
std::string TextOf(const hubsim::InputPattern& pattern) {
  const int mask = pattern.mask | pattern.drive_mask << hubsim::kFirstXInput;
  const int states = pattern.states | pattern.drive_states << hubsim::kFirstXInput;
  std::string text;
  for (int input = 0; input < hubsim::kInputCount; ++input) {
    if ((mask >> input & 1) == 0) continue;
    const bool high = ((states >> input & 1) != 0) == pattern.all;
    if (!text.empty()) text += pattern.all ? " and " : " or ";
    text += NameOf(pattern.axis, input) + (high ? " high" : " low");
  }
  return text.empty() ? std::string(kNothing) : text;
}

struct Freeing {
  std::string operator()(const hubsim::MoveStatement& move) const {
    return move.sensor ? TextOf(move.sensor->input, move.sensor->condition) : std::string();
  }
  std::string operator()(const hubsim::WaitInputStatement& wait) const {
    return TextOf(wait.input, wait.condition);
  }
  std::string operator()(const hubsim::IfInputStatement& branch) const {
    return TextOf(branch.input, branch.condition);
  }
  std::string operator()(const hubsim::WaitInputsStatement& wait) const { return TextOf(wait.pattern); }
  std::string operator()(const hubsim::IfInputsStatement& branch) const { return TextOf(branch.pattern); }
  std::string operator()(const hubsim::ValueStatement& prompt) const {
    return "type a number from " + hubsim::FormatFixed4(prompt.lower) + " to " +
           hubsim::FormatFixed4(prompt.upper);
  }
  std::string operator()(const hubsim::EnterStatement& /*prompt*/) const { return "key enter"; }
  std::string operator()(const hubsim::YesNoStatement& /*prompt*/) const { return "key yes or key no"; }
  std::string operator()(const hubsim::MenuStatement& menu) const {
    std::string text;
    for (std::size_t key = 0; key < menu.lines.size(); ++key) {
      if (!menu.lines[key]) continue;
      text += (text.empty() ? "key " : " or key ") + Joined(static_cast<int>(key) + 1);
    }
    return text.empty() ? "key enter" : text;
  }
  std::string operator()(const hubsim::FollowKnobStatement& knob) const {
    return knob.until_enter ? "key enter" : TextOf(knob.input, knob.condition);
  }
  template <class Other>
  std::string operator()(const Other& /*line*/) const {
    return {};
  }
};

}  // namespace

std::string FreedBy(const hubsim::Statement& statement) {
  return std::visit(Freeing(), statement);
}

hubsim::Statement StatementOf(hubsim::MemoryView memory, int line, int firmware) {
  const auto at = static_cast<std::size_t>(line) * hubsim::kSlotSize;
  return hubsim::ReadStatement(memory.subspan(at).first<hubsim::kSlotSize>(),
                               static_cast<std::uint8_t>(firmware));
}

}  // namespace tavlo::cli
