// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/compile.h"

#include <algorithm>
#include <cmath>

#include "codegen/line_layout.h"
#include "model/wire.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr int kLongestPulseByte = 255;

/// Writes one line, field by field.
class LineCompiler {
 public:
  LineCompiler(Program& program, int index, StringPool& pool)
      : program_(program), line_(program.Prog[index]), pool_(pool) {}

  std::string Run(const LineLayout& layout) {
    const bool menu = line_.SubType == Menu && (line_.Type == MMI || line_.Type == MMImenu);
    bytes_ += WholeByte(menu ? static_cast<int>(MMImenu) : line_.Type, "the type");
    if (line_.Type == FE && line_.CountIsMMI) bytes_[0] = static_cast<char>(FE + kProceedBit);
    for (const LayoutItem& item : layout.items) Add(item, layout.flags);
    return bytes_;
  }

 private:
  void AddByte(std::int32_t x, std::string_view what) { bytes_ += WholeByte(x, what); }

  void Add(const LayoutItem& item, std::span<const FlagBit> flags) {
    if (item.is_mmi != nullptr && line_.*item.is_mmi) {
      AddByte(line_.*item.variable, "the variable of " + std::string(item.what));
      bytes_ += item.op == Op::Dist ? std::string(2, '\0') : std::string(1, '\0');
      return;
    }
    switch (item.op) {
      case Op::Flags: AddByte(FlagByte(flags), item.what); break;
      case Op::Byte: AddByte(line_.*item.number, item.what); break;
      case Op::LowByte: bytes_ += Raw2(line_.*item.whole, item.what)[1]; break;
      case Op::Sensor: AddByte(SensorByte(), item.what); break;
      case Op::RotatedInput: AddByte(RotatedInput(), item.what); break;
      case Op::PulseByte: AddPulseByte(item); break;
      case Op::PulseTicks: AddPulseTicks(item); break;
      case Op::Speed: bytes_ += PackSpeed(line_.*item.single, item.what); break;
      case Op::Word: bytes_ += Pack2NZ(line_.*item.whole, item.what); break;
      case Op::RawWord: bytes_ += Raw2(line_.*item.whole, item.what); break;
      case Op::Dist: bytes_ += Pack3(line_.*item.whole, item.what); break;
      case Op::LoopOfTarget: AddLoopOfTarget(item); break;
      case Op::RoundedAmps:
        AddByte(WholeLong(RoundHalfEven(line_.*item.single), item.what), item.what);
        break;
      case Op::WholeAmps: AddByte(WholeLong(std::floor(line_.*item.single), item.what), item.what); break;
      case Op::CentiAmps: AddCentiAmps(item); break;
      case Op::InStates: AddByte(Levels(line_.InState, item.what), item.what); break;
      case Op::Mode: AddByte((line_.WaitAND ? 1 : 0) + (TestsOwnInputs() ? 2 : 0), item.what); break;
      case Op::DriveInputs: AddDriveInputs(item); break;
      case Op::JogAxis: AddByte(line_.*item.number + (line_.*item.enabled ? 0 : 128), item.what); break;
      case Op::KeyMask: AddKeyMask(); break;
      case Op::KeyTargets:
        for (int key = 1; key <= 8; ++key) AddByte(line_.MenuLine[key], item.what);
        break;
      case Op::CommentText: AddComment(); break;
      case Op::PoolOffset:
        bytes_ += Raw2(pool_.PoolPtr);
        AddToPool(line_.Text);
        break;
      case Op::PoolHigh: bytes_ += Raw2(pool_.PoolPtr)[0]; break;
      case Op::PoolLow: bytes_ += Raw2(pool_.PoolPtr)[1]; break;
      case Op::PoolHead: AddKnobText(); break;
    }
  }

  [[nodiscard]] int FlagByte(std::span<const FlagBit> flags) const {
    int sum = 0;
    for (const FlagBit& bit : flags) {
      if (bit.number != nullptr) {
        sum += bit.value * (line_.*bit.number);
      } else if (line_.*bit.flag) {
        sum += bit.value;
      }
    }
    return sum;
  }

  [[nodiscard]] int Model() const { return DriveModelOf(program_, line_.Drive); }

  [[nodiscard]] int SensorByte() const {
    return line_.IONum == kFirstDriveInput && ZenuServo(Model()) ? kServoIndexInput : line_.IONum;
  }

  [[nodiscard]] int RotatedInput() const {
    if (line_.IONum < kFirstDriveInput) return line_.IONum;
    return line_.IONum == kFirstDriveInput ? kFirstDriveInput + 7 : line_.IONum - 1;
  }

  void AddPulseByte(const LayoutItem& item) {
    std::int32_t& pulse = line_.*item.whole;
    pulse = std::min(pulse, kLongestPulseByte);
    AddByte(pulse, item.what);
  }

  void AddPulseTicks(const LayoutItem& item) {
    const double ticks = RoundHalfEven(line_.*item.whole * kTicksPerMs) - kTicksOfTheHub;
    bytes_ += Pack2NZ(WholeLong(std::max(ticks, 1.0), item.what), item.what);
  }

  void AddLoopOfTarget(const LayoutItem& item) {
    const int target = line_.LineNum;
    AddByte(target <= kLines ? program_.Prog[target].LoopIndex : 0, item.what);
  }

  void AddCentiAmps(const LayoutItem& item) {
    const double amps = line_.*item.single;
    AddByte(WholeLong(std::floor((amps - std::floor(amps)) * 100), item.what), item.what);
  }

  [[nodiscard]] int Levels(std::int16_t wanted, std::string_view what) const {
    const int byte = static_cast<unsigned char>(WholeByte(wanted, what));
    return line_.WaitAND ? byte : 255 - byte;
  }

  [[nodiscard]] bool HasDriveInputs() const { return program_.HubVersion > kDriveInputsFirmware; }

  [[nodiscard]] bool TestsOwnInputs() const {
    const int model = Model();
    return HasDriveInputs() && (MainZENU_Ox(model) || PlainNetModel(model) || ProgNetModel(model));
  }

  void AddDriveInputs(const LayoutItem& item) {
    if (!HasDriveInputs()) return;
    if (!TestsOwnInputs()) {
      AddByte(line_.WaitAND ? 0 : 255, item.what);
      AddByte(0, item.what);
      return;
    }
    const int states = RotDrv(static_cast<unsigned char>(WholeByte(line_.DrvState, item.what)));
    const int mask = RotDrv(static_cast<unsigned char>(WholeByte(line_.DrvMask, item.what)));
    AddByte(line_.WaitAND ? states : 255 - states, item.what);
    AddByte(mask, item.what);
  }

  void AddKeyMask() {
    int mask = 0;
    for (int key = 1; key <= 8; ++key) mask |= line_.MenuKey[key] ? 1 << (key - 1) : 0;
    AddByte(mask, "the key mask");
  }

  /// An older file may bring a longer one.
  void AddComment() {
    bytes_ += line_.Text.substr(0, kLongestComment);
    if (line_.Text.size() < kLongestComment) bytes_ += kEndMark;
  }

  void AddToPool(std::string_view text) {
    pool_.PoolItem = static_cast<int>(text.size()) + 1;
    pool_.PoolPtr += pool_.PoolItem;
    pool_.Pool += text;
    pool_.Pool += kEndMark;
  }

  void AddKnobText() {
    const std::string_view text = line_.Text;
    bytes_ += text.substr(0, kKnobHead);
    if (text.size() < kKnobHead) {
      bytes_ += kEndMark;
    } else {
      AddToPool(text.substr(kKnobHead));
    }
  }

  Program& program_;
  Instruction& line_;
  StringPool& pool_;
  std::string bytes_;
};

/// A comment that came back without its end mark ends in this many bytes of its slot's rest.
constexpr std::size_t kRestOfSlot = 4;

/// Returns the part of a comment that somebody wrote. Each trip to the hub and back adds four zeros to the
/// end of a full comment; without this, the next download would refuse it.
std::string_view WrittenComment(std::string_view text) {
  if (text.size() < kLongestComment) return text;
  text = text.substr(0, kLongestComment - kRestOfSlot);
  return text.substr(0, text.find_last_not_of('\0') + 1);
}

/// The hub finds the end of a comment, of a knob line's text and of the pool by a mark among the bytes. A
/// text that contains the mark would make the hub read the rest as something else, and the sum would still
/// agree: such a line must not be sent.
void RefuseUnboundedText(const Instruction& line) {
  const bool in_pool = line.Type == MMI || line.Type == MMImenu;
  const bool knob_text = line.Type == FE && line.CountIsMMI;
  if ((line.Type == CM || knob_text) && line.Text.find(kEndMark) != std::string::npos) {
    throw EncodeError("its text holds the character 255");
  }
  const std::string_view own = line.Type == CM ? WrittenComment(line.Text) : std::string_view(line.Text);
  if ((in_pool || knob_text || line.Type == CM) && own.find('\0') != std::string::npos) {
    throw EncodeError("its text holds the character 0");
  }
}

}  // namespace

std::string Compile(Program& program, int line, StringPool& pool) {
  const Instruction& record = program.Prog[line];
  const LineLayout* layout = LayoutOf(record);
  if (layout == nullptr) throw EncodeError("there is no instruction of type " + Joined(record.Type));
  std::string bytes = LineCompiler(program, line, pool).Run(*layout);
  const int first = static_cast<unsigned char>(bytes[0]) + (record.WaitThis ? kWaitThisBit : 0) +
                    (record.Proceed ? kProceedBit : 0);
  bytes[0] = WholeByte(first, "the first byte");
  return bytes;
}

CompiledProgram CompileProgram(Program& program) {
  ScanLoops(program);
  CompiledProgram compiled;
  StringPool pool;
  std::int32_t sum = 0;
  for (int line = 0; line < kLines; ++line) {
    try {
      RefuseUnboundedText(program.Prog[line]);
      compiled.lines[line] = Compile(program, line, pool);
    } catch (const EncodeError& error) {
      throw EncodeError("Line " + Joined(line + 1) + " cannot be compiled: " + error.what() + ".", line);
    }
    sum += SumStr(compiled.lines[line]);
  }
  RefuseLongNames(program);
  compiled.system = SysString(program);
  compiled.pool = pool.Pool + '\0';
  sum += SumStr(compiled.system) + SumStr(compiled.pool);
  compiled.checksum = sum % 65536;
  return compiled;
}

std::string ImageOf(const CompiledProgram& compiled) {
  std::string image(kImageBytes, '\0');
  const auto put = [&image](std::size_t offset, std::size_t room, std::string_view bytes) {
    std::ranges::copy(bytes.substr(0, room), image.begin() + static_cast<std::ptrdiff_t>(offset));
  };
  for (std::size_t line = 0; line < kLines; ++line) put(line * kSlotBytes, kSlotBytes, compiled.lines[line]);
  put(kSystemAt, kSystemBytes, compiled.system);
  put(kPoolAt, kPoolBytes, compiled.pool);
  return image;
}

}  // namespace tavlo
