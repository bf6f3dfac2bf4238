// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/rows.h"

#include <algorithm>
#include <optional>

#include "model/kinds.h"

namespace tavlo {

const std::array<IconRow, kIconRows> kIcons = {{
    {"move", {"MoveIcon", "imoveicon", "ymoveicon", "rMoveIcon", "cMoveIcon"}},
    {"feed-set-output", {"FLSOicon", "iFLSOicon", "yFLSOicon", "RFLSOicon", "cFLSOicon"}},
    {"feed-position", {"FPicon", "iFPicon", "yFPicon", "rFPicon", "cFPicon"}},
    {"wait-time", {"WaitTimeIcon", "iWTicon", "yWTicon", "rWTicon", "cWTicon"}},
    {"wait-input", {"WaitInIcon", "iWIicon", "yWIicon", "rWIicon", "cWIicon"}},
    {"go-to", {"GotoIcon", "iGTicon", "yGTicon", "rGTicon", "cGTicon"}},
    {"loop", {"LoopIcon", "iRPicon", "yRPicon", "rRPicon", "cRPicon"}},
    {"set-output", {"OutIcon", "iSOicon", "ySOicon", "rSOicon", "cSOicon"}},
    {"if-input", {"IfIcon", "iIIicon", "yIIicon", "rIIicon", "cIIicon"}},
    {"none", {"NoneIcon", "iNOicon", "yNOicon", "rNOicon", "cNOicon"}},
    {"seek-home", {"HomeIcon", "iSHicon", "ySHicon", "rSHicon", "cSHicon"}},
    {"comment", {"ComIcon", "iCMicon", "yCMicon", "rCMicon", "cCMicon"}},
    {"mmi-prompt", {"MMIicon", "iMMIicon", "yMMIicon", "rMMIicon", "cMMIicon"}},
    {"change-current", {"SCicon", "iSCicon", "ySCicon", "rSCicon", "cSCicon"}},
    {"set-position", {"SPicon", "iSPicon", "ySPicon", "rSPicon", "cSPicon"}},
    {"follow-knob", {"FEicon", "iFEicon", "yFEicon", "rFEicon", "cFEicon"}},
    {"reset-loop", {"RLicon", "iRLicon", "yRLicon", "rRLicon", "cRLicon"}},
    {"learn-position", {"LPicon", "iLPicon", "yLPicon", "rLPicon", "cLPicon"}},
    {"call", {"CLicon", "imoveicon", "ymoveicon", "rMoveIcon", "cCLicon"}},
    {"return", {"RTicon", "imoveicon", "ymoveicon", "rMoveIcon", "cRTicon"}},
    {"if-moving", {"IMicon", "iIMicon", "yIMicon", "rIMicon", "cIMicon"}},
}};

namespace {

constexpr int kMoveRow = 0;
constexpr int kCallRow = 18;
constexpr int kReturnRow = 19;

// Row of kIcons by type code.
constexpr auto kIconRowOfType = std::to_array(
    {/*FL*/ 0,  /*FR*/ 0,  /*FS*/ 0,   /*FSR*/ 0, /*WT*/ 3,  /*WI*/ 4,   /*GT*/ 5,   /*RP*/ 6,
     /*ER*/ 6,  /*SO*/ 7,  /*II*/ 8,   /*NO*/ 9,  /*SH*/ 10, /*CM*/ 11,  /*MMI*/ 12, /*FP*/ 2,
     /*ED*/ 13, /*SP*/ 14, /*FE*/ 15,  /*CC*/ 13, /*III*/ 8, /*FLSO*/ 1, /*FLCS*/ 0, /*WII*/ 4,
     /*FSS*/ 0, /*RL*/ 16, /*menu*/ 0, /*LP*/ 17, /*CL*/ 18, /*RT*/ 19,  /*IM*/ 20,  /*SS*/ 0});
static_assert(kIconRowOfType.size() == kTypes, "each kind of line has an icon");

std::optional<int> LineTarget(int target) {
  return target >= 0 && target < kLines ? std::optional(target) : std::nullopt;
}

}  // namespace

IconRef IconFor(int type, IconSet set) {
  int row = type >= 0 && type < kTypes ? kIconRowOfType[type] : kMoveRow;
  const bool own_image = set == IconSet::Normal || set == IconSet::Cyan;
  if ((row == kCallRow || row == kReturnRow) && !own_image) row = kMoveRow;
  return {row, set};
}

std::string_view IconName(IconRef icon) {
  return kIcons[icon.row].names[static_cast<int>(icon.set)];
}

Colour BackgroundOf(RowState state) {
  switch (state) {
    case RowState::Normal: return {255, 255, 255};
    case RowState::LimitTarget: return {170, 255, 255};
    case RowState::Executing: return {255, 255, 128};
    case RowState::WentOn: return {255, 192, 192};
    case RowState::Picked: return {255, 255, 255};
  }
  return {255, 255, 255};
}

std::vector<Arrow> ArrowsOf(const Program& program) {
  std::vector<Arrow> arrows;
  const auto add_group = [&](Lead lead) {
    for (int line = kLines - 1; line >= 0; --line) {
      const Instruction& record = program.Prog[line];
      const auto target = LineTarget(record.LineNum);
      if (LeadOf(record) != lead || !target) continue;
      const int lane = static_cast<int>(arrows.size());
      arrows.push_back({line, *target, lane, 0, lane % kArrowColours});
    }
  };
  add_group(Lead::Jump);
  add_group(Lead::Branch);
  add_group(Lead::LoopEnd);
  for (Arrow& arrow : arrows) arrow.lanes = static_cast<int>(arrows.size());
  return arrows;
}

std::array<LabelColour, kLines> LabelColoursOf(const Program& program) {
  std::array<LabelColour, kLines> colours{};
  const auto mark = [&colours](int line, LabelColour colour) {
    if (const auto target = LineTarget(line)) colours[*target] = colour;
  };
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    if (line.Type == CL) mark(line.LineNum, LabelColour::Red);
    if (line.Type == MMI && line.SubType == Menu) {
      for (int key = 1; key <= 8; ++key) {
        if (line.MenuKey[key]) mark(line.MenuLine[key], LabelColour::Blue);
      }
    }
  }
  return colours;
}

std::array<int, kLines> ChainFramesOf(const Program& program) {
  std::array<int, kLines> frames{};
  frames[0] = kPlainFrame;
  for (int i = 1; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    const Instruction& before = program.Prog[i - 1];
    const bool in_stretch = GoesOnAtOnce(before) || (frames[i - 1] >= 2 && IsPassive(before.Type));
    const bool stays = GoesOnAtOnce(line) || IsPassive(line.Type);
    frames[i] = in_stretch && stays ? kChainFrame : kPlainFrame;
  }
  return frames;
}

int WantedScroll(int line, int pitch, int value, int viewport, int maximum) {
  const int top = line * pitch;
  const bool whole_in_view = top >= value && top + pitch <= value + viewport;
  if (whole_in_view) return value;
  // The row lands where the old screen had it: 192 of 413 units below the top of the view, and whole even
  // where the view is hardly higher than a row.
  const int above = std::max(std::min(viewport * 192 / 413, viewport - pitch), 0);
  return std::clamp(top - above, 0, std::max(maximum, 0));
}

int ExtraWidth(int window_width) {
  if (window_width <= 640) return 0;
  return window_width > 950 ? 310 : window_width - 640;
}

}  // namespace tavlo
