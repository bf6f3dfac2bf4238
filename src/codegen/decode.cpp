// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/decode.h"

#include <algorithm>

#include "codegen/compile.h"
#include "codegen/decode_exceptions.h"
#include "codegen/line_layout.h"
#include "model/wire.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

using I = Instruction;

constexpr int kLargestInteger = 32767;
/// Bit of the first of the two flags that are read one place too low.
constexpr int kSecondOperandBit = 16;

/// The byte rotated left by one bit: undoes `RotDrv`.
constexpr int RotBack(int x) {
  return x * 2 % 256 + x / 128;
}

const LineLayout* PromptLayout(std::int16_t sub_type) {
  I prompt;
  prompt.Type = MMI;
  prompt.SubType = sub_type;
  return LayoutOf(prompt);
}

/// Reads one line, field by field.
class LineDecoder {
 public:
  LineDecoder(Program& program, int line, std::string_view slot, std::string_view pool)
      : program_(program), line_(program.Prog[line]), pool_(pool), slot_(slot.substr(0, kSlotBytes)) {
    slot_.resize(kSlotBytes, '\0');
  }

  void Run() {
    const int first = NextByte();
    line_.WaitThis = (first & kWaitThisBit) != 0;
    line_.Proceed = (first & kProceedBit) != 0;
    type_ = first & kTypeMask;
    line_.Type = static_cast<std::int16_t>(type_);
    const LineLayout* layout = Layout();
    if (layout == nullptr || Has(DecodeException::NothingRead)) return;
    for (const LayoutItem& item : layout->items) {
      if (Dropped(item)) {
        NextByte();
      } else {
        Take(item, layout->flags);
      }
    }
    Finish();
  }

 private:
  [[nodiscard]] bool Has(DecodeException exception) const { return AppliesTo(exception, type_); }

  [[nodiscard]] int ByteAt(std::size_t offset) const {
    return offset < slot_.size() ? static_cast<unsigned char>(slot_[offset]) : 0;
  }
  int NextByte() { return ByteAt(at_++); }
  int NextWord() {
    const int high = NextByte();
    return high * 256 + NextByte();
  }
  int NextTriple() {
    const int high = NextWord();
    return high * 256 + NextByte();
  }

  /// The rows that the line's bytes are read by; they are chosen by the bytes alone, never by what the record
  /// held.
  const LineLayout* Layout() {
    if (type_ == MMImenu) {
      line_.Type = MMI;
      line_.SubType = Menu;
      return PromptLayout(Menu);
    }
    if (type_ == MMI) {
      const auto sub_type = static_cast<std::int16_t>(ByteAt(1));
      is_pause_ = sub_type == WaitEnter;
      is_branch_ = sub_type == BranchYesNo;
      return PromptLayout(sub_type == Menu ? std::int16_t{GetDistance} : sub_type);
    }
    I plain;
    plain.Type = static_cast<std::int16_t>(type_);
    return LayoutOf(plain);
  }

  /// Whether the field, always of one byte, is in the line but not read.
  [[nodiscard]] bool Dropped(const LayoutItem& item) const {
    if (Has(DecodeException::LoopNumbers)) {
      return item.op == Op::LoopOfTarget || item.number == &I::LoopIndex;
    }
    if (Has(DecodeException::MotorCurrent)) {
      return item.op == Op::RoundedAmps || item.number == &I::IdlePct;
    }
    return Has(DecodeException::KnobHead) && item.number == &I::Drive;
  }

  void Take(const LayoutItem& item, std::span<const FlagBit> flags) {
    if (item.is_mmi != nullptr && line_.*item.is_mmi) {
      TakeVariable(item);
      return;
    }
    switch (item.op) {
      case Op::Flags:
        TakeFlags(flags);
        if (Has(DecodeException::PromptFlags) && !is_pause_ && !is_branch_)
          line_.Wrap3 = line_.Blank3 = false;
        break;
      case Op::Byte:
      case Op::Sensor:
      case Op::InStates: line_.*item.number = static_cast<std::int16_t>(NextByte()); break;
      case Op::LowByte:
      case Op::PulseByte: line_.*item.whole = NextByte(); break;
      case Op::RotatedInput: TakeRotatedInput(); break;
      case Op::PulseTicks: TakePulseTicks(item); break;
      case Op::Speed: line_.*item.single = static_cast<float>(NextWord() / kSpeedUnits); break;
      case Op::Word:
      case Op::RawWord: line_.*item.whole = NextWord(); break;
      case Op::Dist: line_.*item.whole = NextTriple(); break;
      case Op::WholeAmps: line_.*item.single = static_cast<float>(NextByte()); break;
      case Op::CentiAmps:
        line_.*item.single = static_cast<float>(static_cast<double>(line_.*item.single) + NextByte() / 100.0);
        break;
      case Op::Mode: line_.WaitAND = NextByte() % 2 != 0; break;
      case Op::DriveInputs: TakeDriveInputs(); break;
      case Op::JogAxis: TakeJogAxis(item); break;
      case Op::KeyMask: TakeKeyMask(); break;
      case Op::KeyTargets:
        for (int key = 1; key <= 8; ++key) line_.MenuLine[key] = static_cast<std::int16_t>(NextByte());
        break;
      case Op::CommentText: TakeComment(); break;
      case Op::PoolOffset: TakePoolText(); break;
      // None of these comes up: loop numbers and a motor's current are dropped, and a knob line is always
      // read in its plain form.
      case Op::LoopOfTarget:
      case Op::RoundedAmps:
      case Op::PoolHigh:
      case Op::PoolLow:
      case Op::PoolHead: break;
    }
  }

  void TakeVariable(const LayoutItem& item) {
    const bool too_early = Has(DecodeException::SetOutVariable) && item.whole == &I::Dist2;
    line_.*item.variable = static_cast<std::int16_t>(ByteAt(too_early ? at_ - 1 : at_));
    at_ += item.op == Op::Dist ? 3 : 2;
  }

  void TakeFlags(std::span<const FlagBit> flags) {
    const int byte = NextByte();
    for (const FlagBit& bit : flags) {
      int value = bit.value;
      if (Has(DecodeException::SecondOperandFlags) && value >= kSecondOperandBit) value /= 2;
      if (bit.number == &I::SubType && Has(DecodeException::WholeSubType)) {
        line_.SubType = static_cast<std::int16_t>(byte / value);
      } else if (bit.number != nullptr) {
        line_.*bit.number = static_cast<std::int16_t>(byte / value % 2);
      } else {
        line_.*bit.flag = Has(DecodeException::MotorByte) ? byte == value : byte / value % 2 != 0;
      }
    }
  }

  void TakeRotatedInput() {
    const int input = NextByte();
    const int rotated = input < kFirstDriveInput ? input : input + 1;
    line_.IONum = static_cast<std::int16_t>(rotated == kFirstDriveInput + 8 ? kFirstDriveInput : rotated);
  }

  void TakePulseTicks(const LayoutItem& item) {
    const int ticks = NextWord() + kTicksOfTheHub;
    if (ticks > kLargestInteger) throw DecodeError("its pulse is too long");
    line_.*item.whole = static_cast<std::int32_t>(RoundHalfEven(ticks / kTicksPerMs));
  }

  void TakeDriveInputs() {
    if (!(program_.HubVersion > kDriveInputsFirmware)) return;
    const int states = RotBack(NextByte());
    line_.DrvState = static_cast<std::int16_t>(line_.WaitAND ? states : 255 - states);
    line_.DrvMask = static_cast<std::int16_t>(RotBack(NextByte()));
  }

  void TakeJogAxis(const LayoutItem& item) {
    const int byte = NextByte();
    line_.*item.number = static_cast<std::int16_t>(byte % 8);
    line_.*item.enabled = byte < 128;
  }

  void TakeKeyMask() {
    const int mask = NextByte();
    for (int key = 1; key <= 8; ++key) line_.MenuKey[key] = (mask & 1 << (key - 1)) != 0;
  }

  void TakeComment() {
    const std::size_t end = slot_.find(kEndMark, at_);
    line_.Text = end == std::string::npos ? slot_.substr(slot_.size() - kLongestComment)
                                          : slot_.substr(at_, end - at_);
    at_ = slot_.size();
  }

  void TakePoolText() {
    const auto offset = static_cast<std::size_t>(NextWord());
    const std::string_view rest = pool_.substr(std::min(offset, pool_.size()));
    line_.Text = rest.substr(0, rest.find(kEndMark));
  }

  /// Decodes what depends on a later byte: the axis and the mode are the last bytes of their lines.
  void Finish() {
    const bool senses = type_ == FS || type_ == FSR || type_ == FSS || type_ == SH;
    if (senses && line_.IONum == kServoIndexInput && ZenuServo(DriveModelOf(program_, line_.Drive))) {
      line_.IONum = kFirstDriveInput;
    }
    const bool several = type_ == III || type_ == WII;
    if (several && !line_.WaitAND) line_.InState = static_cast<std::int16_t>(255 - line_.InState);
    if (Has(DecodeException::BranchFlags) && is_branch_) line_.CountIsMMI = line_.SpeedIsMMI = true;
  }

  Program& program_;
  I& line_;
  std::string_view pool_;
  std::string slot_;
  std::size_t at_ = 0;
  /// By the hub's bytes; a record has no `MMImenu`.
  int type_ = 0;
  bool is_pause_ = false;
  bool is_branch_ = false;
};

}  // namespace

void Decode(Program& program, int line, std::string_view slot, std::string_view pool) {
  LineDecoder(program, line, slot, pool).Run();
}

void DecodeImage(Program& program, std::string_view image) {
  std::string bytes(image.substr(0, kImageBytes));
  bytes.resize(kImageBytes, '\0');
  const std::string_view memory = bytes;
  Program read = program;
  // The settings come first: how a sensor's number is read depends on the drive.
  DecodeSystem(read, memory.substr(kSystemAt, kSystemBytes));
  const std::string_view pool = memory.substr(kPoolAt);
  for (int line = 0; line < kLines; ++line) {
    const std::size_t at = static_cast<std::size_t>(line) * kSlotBytes;
    try {
      Decode(read, line, memory.substr(at, kSlotBytes), pool);
    } catch (const DecodeError& error) {
      throw DecodeError("Line " + Joined(line + 1) + " cannot be read: " + error.what() + ".");
    }
  }
  ScanLoops(read);
  program = std::move(read);
}

}  // namespace tavlo
