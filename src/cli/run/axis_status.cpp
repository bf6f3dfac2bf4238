// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/axis_status.h"

#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

struct RowNames {
  LedRow row;
  std::string_view letter;
  std::string_view json;
};
constexpr std::array<RowNames, kLedRows.size()> kNames = {{{LedRow::INlo, "", "inputs"},
                                                           {LedRow::INX, "X", "xInputs"},
                                                           {LedRow::OUTlo, "", "outputs"},
                                                           {LedRow::OUTY, "Y", "yOutputs"}}};

std::optional<std::vector<int>> LightsOn(const Source& source, LedRow row, int axis) {
  std::vector<int> on;
  for (int bit = 0; bit < LedsOf(row); ++bit) {
    if (!ShowsLed(source.program, row, axis, bit)) continue;
    switch (source.run.panel.At(row, axis, bit)) {
      case Led::Green:
      case Led::Red: on.push_back(bit + 1); break;
      case Led::GreenOff:
      case Led::RedOff: break;
      case Led::Unknown: return std::nullopt;
    }
  }
  return on;
}

}  // namespace

AxisStatus::AxisStatus(const Source& source, int axis) {
  for (std::size_t i = 0; i < kNames.size(); ++i) on_[i] = LightsOn(source, kNames[i].row, axis);
}

std::string AxisStatus::Text() const {
  const auto side = [this](std::string_view name, std::size_t first) {
    std::string text;
    for (const std::size_t i : {first, first + 1}) {
      const std::string letter = ' ' + std::string(kNames[i].letter);
      if (!on_[i]) text += letter + '?';
      for (const int number : on_[i].value_or(std::vector<int>())) text += letter + Joined(number);
    }
    return std::string(name) + (text.empty() ? " -" : text);
  };
  return side("in", 0) + '\t' + side("out", 2);
}

void AxisStatus::AddTo(Json& json) const {
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    json[std::string(kNames[i].json)] = on_[i] ? Json(*on_[i]) : Json();
  }
}

}  // namespace tavlo::cli
