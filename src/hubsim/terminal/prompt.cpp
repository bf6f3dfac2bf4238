// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/prompt.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "hubsim/terminal/keys.h"
#include "hubsim/terminal/value_entry.h"

namespace tavlo::hubsim {
namespace {

constexpr char kYesKey = '+';
constexpr char kNoKey = '-';
/// The variables that hold positions; the only numbers that a sign belongs to.
constexpr int kFirstPositionVariable = 15;
constexpr int kLastPositionVariable = 24;

/// What a variable counts for one of the units that the operator types.
double HubUnits(const ValueStatement& prompt, const Machine& machine) {
  const bool known = prompt.units_axis < kAxisCount;
  const AxisSettings settings = known ? machine.Settings(prompt.units_axis) : AxisSettings{};
  const bool has_units = settings.steps_per_unit > 0;
  switch (prompt.kind) {
    case ValueKind::Distance: return has_units ? settings.steps_per_unit : 1;
    // The factor is rounded on the PC, so the quotient that it comes from would give other speeds.
    case ValueKind::Speed: return has_units ? settings.speed_factor : kSpeedUnitsPerRev;
    case ValueKind::Count: break;
  }
  return 1;
}

ValueEntry::Rules RulesOf(const ValueStatement& prompt) {
  const bool position = prompt.variable >= kFirstPositionVariable && prompt.variable <= kLastPositionVariable;
  return {prompt.kind != ValueKind::Count, prompt.kind == ValueKind::Distance && position};
}

class ValueWait : public Interaction {
 public:
  ValueWait(const ValueStatement& prompt, int line, Machine& machine, TerminalDisplay& display)
      : prompt_(prompt),
        machine_(machine),
        display_(display),
        next_(line + 1),
        hub_units_(HubUnits(prompt, machine)),
        entry_(RulesOf(prompt)) {
    if (KeptValueFits()) display_.WriteRow(kEntryRow, FormatFixed4(KeptValue()));
  }

  [[nodiscard]] WaitsFor Waits() const override { return WaitsFor::Value; }

  void Key(char key, double /*now*/) override {
    if (key == kEnterKey) return Enter();
    // The first key wipes what stands there: the kept value, or the limits.
    const bool wipes = key == '\b' && entry_.Text().empty();
    if (entry_.Key(key) || wipes) display_.WriteRow(kEntryRow, entry_.Text());
  }

  [[nodiscard]] std::optional<int> Next() const override {
    return done_ ? std::optional(next_) : std::nullopt;
  }

 private:
  void Enter() {
    const bool fits = entry_.Empty() ? KeptValueFits() : Fits(entry_.Value());
    if (!fits) return Refuse();
    if (!entry_.Empty()) machine_.SetVariable(prompt_.variable, ToHub(entry_.Value()));
    done_ = true;
  }

  void Refuse() {
    entry_.Clear();
    const std::string limits = FormatFixed4(prompt_.lower) + " to " + FormatFixed4(prompt_.upper);
    display_.WriteRow(kEntryRow, limits.size() <= kDisplayColumns ? limits : "out of limits");
  }

  /// The limits have no sign on the wire, so they hold for a position on either side.
  [[nodiscard]] bool Fits(Fixed4 value) const {
    const Fixed4 magnitude = std::abs(value);
    return magnitude >= prompt_.lower && magnitude <= prompt_.upper;
  }

  /// In the hub's whole numbers, so that a value which was entered as a limit still fits after its rounding.
  /// Where a factor of 0 turns every entry into 0, what is kept cannot be told in the operator's units.
  [[nodiscard]] bool KeptValueFits() const {
    if (hub_units_ == 0) return false;
    const int kept = machine_.Variable(prompt_.variable);
    const double magnitude = std::abs(static_cast<double>(kept));
    if (kept < 0 && !RulesOf(prompt_).sign) return false;
    return magnitude >= ToHub(prompt_.lower) && magnitude <= ToHub(prompt_.upper);
  }

  [[nodiscard]] Fixed4 KeptValue() const {
    return std::llround(machine_.Variable(prompt_.variable) * static_cast<double>(kFixed4One) / hub_units_);
  }

  [[nodiscard]] int ToHub(Fixed4 value) const {
    constexpr double kHighest = std::numeric_limits<int>::max();
    // Multiplied before it is divided: a ten-thousandth has no exact double, and a half must be seen as one.
    const double exact = static_cast<double>(value) * hub_units_ / kFixed4One;
    return static_cast<int>(std::clamp(std::nearbyint(exact), -kHighest, kHighest));
  }

  ValueStatement prompt_;
  Machine& machine_;
  TerminalDisplay& display_;
  int next_;
  double hub_units_;
  ValueEntry entry_;
  bool done_ = false;
};

class YesNoWait : public Interaction {
 public:
  YesNoWait(int yes, int no) : yes_(yes), no_(no) {}

  [[nodiscard]] WaitsFor Waits() const override { return WaitsFor::YesOrNo; }
  void Key(char key, double /*now*/) override {
    if (next_) return;
    if (key == kYesKey) next_ = yes_;
    if (key == kNoKey) next_ = no_;
  }
  [[nodiscard]] std::optional<int> Next() const override { return next_; }

 private:
  int yes_;
  int no_;
  std::optional<int> next_;
};

class MenuWait : public Interaction {
 public:
  MenuWait(const MenuStatement& menu, int line_behind) : menu_(menu), line_behind_(line_behind) {}

  [[nodiscard]] WaitsFor Waits() const override { return HasKeys() ? WaitsFor::MenuKey : WaitsFor::Enter; }
  void Key(char key, double /*now*/) override {
    if (next_) return;
    if (key == kEnterKey && !HasKeys()) next_ = line_behind_;
    const int number = key - '1';
    if (number < 0 || number >= static_cast<int>(menu_.lines.size())) return;
    next_ = menu_.lines[static_cast<std::size_t>(number)];
  }
  [[nodiscard]] std::optional<int> Next() const override { return next_; }

 private:
  [[nodiscard]] bool HasKeys() const {
    return std::ranges::any_of(menu_.lines, [](const auto& line) { return line.has_value(); });
  }

  MenuStatement menu_;
  int line_behind_;
  std::optional<int> next_;
};

}  // namespace

std::unique_ptr<Interaction> AskValue(const ValueStatement& prompt, int line, Machine& machine,
                                      TerminalDisplay& display) {
  return std::make_unique<ValueWait>(prompt, line, machine, display);
}

std::unique_ptr<Interaction> AskYesNo(const YesNoStatement& prompt, int line) {
  return std::make_unique<YesNoWait>(prompt.line, line + 1);
}

std::unique_ptr<Interaction> AskMenu(const MenuStatement& menu, int line) {
  return std::make_unique<MenuWait>(menu, line + 1);
}

}  // namespace tavlo::hubsim
