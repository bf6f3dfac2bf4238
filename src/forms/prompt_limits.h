// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "forms/entries.h"

namespace tavlo {

/// The lowest and the highest number that a prompt takes, in the units that the operator types: `lowerlimit`
/// and `upperlimit` with their units `lblLL` and `lblUL`.
///
/// They are not forced when they are left: OK tests what was typed.
class PromptLimits {
 public:
  static constexpr std::string_view kLower = "lowerlimit";
  static constexpr std::string_view kUpper = "upperlimit";

  void AddTo(ControlTable& controls);
  void Fill(const Instruction& record);
  /// Shows them for a function that takes a number, with its unit.
  void ShowHide(AxisUnits axis, int sub_type);
  /// Tells what is wrong with the limits of a function and returns the box that has it; nothing if all is
  /// well. A repeat count below 1 has no message.
  [[nodiscard]] std::optional<std::string_view> Refused(AxisUnits axis, int sub_type,
                                                        MessageBoxes& boxes) const;
  /// The limits of a repeat count become whole and no more than the hub counts.
  void CleanUpCounts();
  void Write(Instruction& record) const;

 private:
  /// A number as a record holds it.
  struct Limit {
    TextBox text;
    Label unit;
    std::int32_t whole = 0;
    std::int32_t ten_thousandths = 0;

    void Fill(std::int32_t its_whole, std::int32_t its_ten_thousandths);
    void CleanUpCount();
    [[nodiscard]] double Value() const;
    void Write(std::int32_t& its_whole, std::int32_t& its_ten_thousandths) const;
  };

  [[nodiscard]] bool upperlimitOK(AxisUnits axis, int sub_type, MessageBoxes& boxes) const;
  [[nodiscard]] bool lowerlimitOK(AxisUnits axis, int sub_type, MessageBoxes& boxes) const;

  Limit lower_;
  Limit upper_;
};

}  // namespace tavlo
