// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/input_labels.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "platform/number_format.h"

namespace tavlo {
namespace {

using enum InputUse;
using Uses = std::array<InputUse, kMainInputs>;

bool HasOnlyX(int model) {
  return ProgModel(model) || PlainModel(model);
}
bool IsNetwork(int model) {
  return ProgNetModel(model) || PlainNetModel(model);
}
/// These have no further block; a move may end on the index of their encoder.
bool HasIndexAlone(int model) {
  return ZenuServo(model) || VornModel(model);
}
bool IsAny(int) {
  return true;
}

/// What the inputs of a group of models are.
struct Layout {
  bool (*holds)(int model);
  /// Before the number of a main input.
  std::string_view prefix;
  int main;
  Uses main_use;
  /// X0 alone, or X0 to X7.
  int further;
  Uses further_use;
};

constexpr Uses kLimitsOnMain = {None, None, None, None, JogCW, JogCCW, LimitCW, LimitCCW};

/// The first that holds counts.
constexpr auto kLayouts = std::to_array<Layout>({
    {HasOnlyX, "X", 7, {JogCW, JogCCW, None, None, None, LimitCCW, LimitCW}, 0, {}},
    {IsNetwork, "", 8, {}, 8, {Index, JogCW, JogCCW, None, None, None, LimitCCW, LimitCW}},
    {ZENUC_Ox,
     "",
     8,
     {None, None, None, None, JogCW, JogCCW},
     8,
     {Index, None, None, None, None, None, LimitCCW, LimitCW}},
    {OxModel, "", 8, kLimitsOnMain, 8, {Index}},
    {FourInputModel, "", 4, {}, 0, {}},
    {HasIndexAlone, "", 8, kLimitsOnMain, 1, {Index}},
    {IsAny, "", 8, kLimitsOnMain, 0, {}},
});
constexpr Layout kHubQuadLayout = {IsAny, "", 4, {}, 0, {}};

const Layout& LayoutOf(const Program& program, int axis) {
  if (IsHubIO(program, axis)) return kHubQuadLayout;
  const int model = DriveModelOf(program, axis);
  return *std::ranges::find_if(kLayouts, [model](const Layout& layout) { return layout.holds(model); });
}

std::string_view Behind(InputUse use) {
  switch (use) {
    case None: return "";
    case Index: return "/index";
    case JogCW: return "/cwjog";
    case JogCCW: return "/ccwjog";
    case LimitCW: return "/cwlim";
    case LimitCCW: return "/ccwlim";
  }
  return "";
}

bool IsLimit(InputUse use) {
  return use == LimitCW || use == LimitCCW;
}

/// The drive stops at its limit switches, so a limit input cannot be anything else.
bool LimitsInUse(const Program& program, int axis) {
  return IsAxisSlot(axis) && program.Axis.LimitKind[axis] != kLimitsNotUsed;
}

}  // namespace

std::array<Input, kInputs> LabelInputs(const Program& program, int axis, InputsOf dialog) {
  const Layout& layout = LayoutOf(program, axis);
  const int main = dialog == InputsOf::Home ? std::min(layout.main, kMainInputsOfHome) : layout.main;
  // A line that waits or tests cannot ask for the index alone.
  const int further = dialog == InputsOf::Tests && layout.further == 1 ? 0 : layout.further;
  std::array<Input, kInputs> inputs;
  const auto put = [&](int place, InputUse use, std::string_view prefix, int number, std::string_view row) {
    const std::string behind = Joined(number) + std::string(Behind(use));
    inputs[static_cast<std::size_t>(place)] = {.offered = true,
                                               .valid = !IsLimit(use) || !LimitsInUse(program, axis),
                                               .use = use,
                                               .caption = std::string(prefix) + behind,
                                               .row = std::string(row) + behind};
  };
  for (int i = 0; i < main; ++i)
    put(i, layout.main_use[static_cast<std::size_t>(i)], layout.prefix, i + 1, "");
  for (int i = 0; i < further; ++i) {
    put(kMainInputs + i, layout.further_use[static_cast<std::size_t>(i)], "X", i, "X");
  }
  return inputs;
}

bool HasJogInputs(const Program& program, int axis) {
  return !IsHubIO(program, axis) && !FourInputModel(DriveModelOf(program, axis));
}

}  // namespace tavlo
