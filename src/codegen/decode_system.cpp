// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/compile.h"
#include "codegen/decode.h"

namespace tavlo {
namespace {

constexpr std::size_t kBlockBytes = 32;
constexpr std::size_t kAxisNameBytes = 8;

/// The 32 bytes of one axis. Bytes 7 and 24 to 26 follow from the rest and are not read.
class Block {
 public:
  explicit Block(std::string_view bytes) : bytes_(bytes) {}

  [[nodiscard]] int Byte(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }
  [[nodiscard]] int Word(std::size_t at) const { return Byte(at) * 256 + Byte(at + 1); }
  [[nodiscard]] int Triple(std::size_t at) const { return Word(at) * 256 + Byte(at + 2); }
  [[nodiscard]] float Amps(std::size_t at) const {
    return static_cast<float>(Byte(at) + Byte(at + 1) / 100.0);
  }
  /// Never past the block, whatever length the bytes claim.
  [[nodiscard]] std::string Text(std::size_t at, std::size_t length) const {
    return std::string(bytes_.substr(at, length));
  }

 private:
  std::string_view bytes_;
};

std::int16_t LimDecode(int c) {
  if (c == '5') return 0;
  return c == '6' ? 1 : 2;
}

std::string WithoutBlanksAtTheEnd(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

/// Settings of the whole hub ride in the last byte of chosen axes. That the program needs the terminal rides
/// there too and is not read: it follows from the lines.
void TakeSettingsByte(Program& program, int axis, int byte) {
  switch (axis) {
    case 2:
      program.Axis.SameUnits = (byte & 1) != 0;
      program.Axis.SameLimits = (byte & 2) != 0;
      program.Axis.SameSpare = (byte & 4) != 0;
      break;
    case 3:
      // The list has no further entry; what it showed is better than a guess at what a limit should do.
      if (byte <= ContinueProgram) program.LimitList = static_cast<std::int16_t>(byte);
      break;
    case 4: program.LimitBranch = byte + 1; break;
    default: break;
  }
}

void TakeBlock(Program& program, std::size_t axis, const Block& block) {
  AxisConfig& axes = program.Axis;
  axes.DriveCurrent[axis] = axes.ContCurrent[axis] = axes.RunCurrent[axis] = block.Amps(0);
  axes.IdleCode[axis] = static_cast<std::int16_t>(block.Byte(2));
  axes.LimitKind[axis] = LimDecode(block.Byte(3));
  axes.DriveModel[axis] = static_cast<std::int16_t>(block.Byte(4));
  axes.StepsPerRev[axis] = block.Word(5);
  axes.StepsPerUnit[axis] = block.Triple(8);
  axes.UnitName[axis] = block.Text(12, static_cast<std::size_t>(block.Byte(11)));
  axes.UseUnits[axis] = true;
  axes.AxisName[axis] = WithoutBlanksAtTheEnd(block.Text(16, kAxisNameBytes));
  axes.PeakCurrent[axis] = axes.IdleCurrent[axis] = block.Amps(27);
  axes.AccelCurrent[axis] = block.Amps(29);
  TakeSettingsByte(program, static_cast<int>(axis), block.Byte(31));
}

}  // namespace

void DecodeSystem(Program& program, std::string_view system) {
  std::string bytes(system.substr(0, kSystemBytes));
  bytes.resize(kSystemBytes, '\0');
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    TakeBlock(program, axis, Block(std::string_view(bytes).substr(axis * kBlockBytes, kBlockBytes)));
  }
}

}  // namespace tavlo
