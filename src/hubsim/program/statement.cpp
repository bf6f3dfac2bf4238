// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/statement.h"

#include <algorithm>
#include <cstddef>

namespace tavlo::hubsim {
namespace {

constexpr std::uint8_t kBackwardsFlag = 1;
constexpr std::uint8_t kDistanceVariableFlag = 2;
constexpr std::uint8_t kSpeedVariableFlag = 4;
constexpr std::uint8_t kCountVariableFlag = 8;
constexpr std::uint8_t kSecondDistanceVariableFlag = 16;
constexpr std::uint8_t kSecondSpeedVariableFlag = 32;
constexpr std::uint8_t kOutputOnTheWayFlag = 32;
constexpr std::uint8_t kCountUpFlag = 64;
constexpr std::uint8_t kShowCountFlag = 128;
constexpr std::uint8_t kAllInputsFlag = 1;
constexpr std::uint8_t kJogFlag = 1;
/// On the axis of a pair of arrow keys: they turn nothing.
constexpr std::uint8_t kNoJogFlag = 128;

constexpr std::uint8_t kFirstDriveInput = 128;
constexpr std::uint8_t kEncoderIndex = 255;
constexpr int kDriveInputs = 8;

int Direction(std::uint8_t flags) {
  return (flags & kBackwardsFlag) != 0 ? -1 : 1;
}
bool WaitsForMoves(Slot slot) {
  return (slot[0] & kProceedBit) == 0;
}

/// Every number that moves or counts something has a floor of 1 on the wire. A 0 can only come of a value
/// that was too large for its bytes.
int AtLeastOne(int value) {
  return value > 0 ? value : 1;
}

Operand Distance(Slot slot, std::size_t at, bool variable) {
  return variable ? Operand{slot[at], true} : Operand{Read3(slot, at), false};
}

Operand Speed(Slot slot, std::size_t at, bool variable) {
  return variable ? Operand{slot[at], true} : Operand{AtLeastOne(Read2(slot, at)), false};
}

Condition ConditionOf(std::uint8_t byte) {
  return static_cast<Condition>(byte & 3);
}
OutputAction OutputActionOf(std::uint8_t byte) {
  return static_cast<OutputAction>(byte & 3);
}

InputRef Input(int axis, std::uint8_t number) {
  if (number < kFirstXInput) return {axis, number};
  if (number == kEncoderIndex) return {axis, kFirstXInput};
  if (number >= kFirstDriveInput && number < kFirstDriveInput + kDriveInputs) {
    return {axis, kFirstXInput + number - kFirstDriveInput};
  }
  return {axis, std::nullopt};
}

/// The drives count their own inputs X1 to X7, X0; the branch on one input uses their order, all other
/// lines use X0 to X7.
InputRef BranchInput(int axis, std::uint8_t number) {
  if (number < kFirstDriveInput || number >= kFirstDriveInput + kDriveInputs) return Input(axis, number);
  const int turned = (number - kFirstDriveInput + 1) % kDriveInputs;
  return {axis, kFirstXInput + turned};
}

std::optional<int> Output(std::uint8_t number) {
  if (number < kFirstYOutput) return number;
  if (number >= kFirstDriveInput && number < kFirstDriveInput + kOutputCount - kFirstYOutput) {
    return kFirstYOutput + number - kFirstDriveInput;
  }
  return std::nullopt;
}

std::uint8_t FromDriveOrder(std::uint8_t bits) {
  return static_cast<std::uint8_t>(bits << 1 | bits >> 7);
}

MoveWait WaitOf(Slot slot) {
  if ((slot[0] & kProceedBit) != 0) return MoveWait::None;
  return (slot[0] & kWaitThisBit) != 0 ? MoveWait::ThisMove : MoveWait::AllMoves;
}

MoveStatement Feed(Slot slot, std::size_t axis_at) {
  const std::uint8_t flags = slot[1];
  MoveStatement move;
  move.axis = slot[axis_at];
  move.direction = Direction(flags);
  move.speed = Speed(slot, 2, (flags & kSpeedVariableFlag) != 0);
  move.accel = AtLeastOne(Read2(slot, 4));
  move.decel = AtLeastOne(Read2(slot, 6));
  move.distance = Distance(slot, 8, (flags & kDistanceVariableFlag) != 0);
  move.wait = WaitOf(slot);
  return move;
}

MoveStatement::Sensor SensorAt(Slot slot, std::size_t at, int axis) {
  return {Input(axis, slot[at]), ConditionOf(slot[at + 1])};
}

MoveStatement::Trip TripAt(Slot slot, std::size_t at) {
  return {AtLeastOne(Read2(slot, at)), AtLeastOne(Read2(slot, at + 2))};
}

MoveStatement FeedPosition(Slot slot) {
  MoveStatement move = Feed(slot, 11);
  move.to_position = true;
  return move;
}

MoveStatement FeedReturn(Slot slot) {
  MoveStatement move = Feed(slot, 15);
  move.trip = TripAt(slot, 11);
  return move;
}

MoveStatement FeedSensor(Slot slot) {
  MoveStatement move = Feed(slot, 13);
  move.sensor = SensorAt(slot, 11, move.axis);
  return move;
}

MoveStatement FeedSensorReturn(Slot slot) {
  MoveStatement move = Feed(slot, 17);
  move.sensor = SensorAt(slot, 11, move.axis);
  move.trip = TripAt(slot, 13);
  return move;
}

MoveStatement FeedSafety(Slot slot) {
  MoveStatement move = Feed(slot, 17);
  move.sensor = SensorAt(slot, 11, move.axis);
  move.safety = {Read3(slot, 13), slot[16]};
  return move;
}

/// An output line has no second speed; the flag of one tells that the output acts on the way.
MoveStatement FeedOutput(Slot slot) {
  MoveStatement move = Feed(slot, 17);
  const std::uint8_t flags = slot[1];
  MoveStatement::Output output{Output(slot[14]), OutputActionOf(slot[15]), slot[16], std::nullopt};
  if ((flags & kOutputOnTheWayFlag) != 0) {
    output.at = Distance(slot, 11, (flags & kSecondDistanceVariableFlag) != 0);
  }
  move.output = output;
  return move;
}

MoveStatement FeedChange(Slot slot) {
  MoveStatement move = Feed(slot, 16);
  const std::uint8_t flags = slot[1];
  move.change = {Distance(slot, 11, (flags & kSecondDistanceVariableFlag) != 0),
                 Speed(slot, 14, (flags & kSecondSpeedVariableFlag) != 0)};
  return move;
}

MoveStatement SeekHome(Slot slot) {
  MoveStatement move;
  move.axis = slot[10];
  move.direction = Direction(slot[1]);
  move.speed = Speed(slot, 2, false);
  move.accel = AtLeastOne(Read2(slot, 4));
  move.decel = AtLeastOne(Read2(slot, 6));
  move.sensor = SensorAt(slot, 8, move.axis);
  move.wait = WaitOf(slot);
  move.home = true;
  return move;
}

/// The pattern of a multi-input line whose mode byte stands at `mode_at`.
InputPattern Pattern(Slot slot, std::size_t mode_at, std::uint8_t firmware) {
  InputPattern pattern;
  pattern.states = slot[1];
  pattern.mask = slot[2];
  pattern.all = (slot[mode_at] & kAllInputsFlag) != 0;
  pattern.axis = slot[mode_at + 1];
  if (firmware > kLastShortMultiInput) {
    pattern.drive_states = FromDriveOrder(slot[mode_at + 2]);
    pattern.drive_mask = FromDriveOrder(slot[mode_at + 3]);
  }
  return pattern;
}

RepeatStatement Repeat(Slot slot) {
  const std::uint8_t flags = slot[1];
  RepeatStatement repeat;
  repeat.loop = slot[4];
  repeat.count = Speed(slot, 2, (flags & kCountVariableFlag) != 0);
  repeat.show_count = (flags & kShowCountFlag) != 0;
  repeat.count_up = (flags & kCountUpFlag) != 0;
  repeat.wait_for_moves = WaitsForMoves(slot);
  return repeat;
}

SetPositionStatement SetPosition(Slot slot) {
  return {slot[5], Read3(slot, 2) * Direction(slot[1])};
}

StartStopStatement StartStop(Slot slot) {
  const std::uint8_t flags = slot[1];
  StartStopStatement order;
  order.kind = static_cast<StartStopKind>(flags >> 4 & 3);
  order.axis = slot[6];
  order.direction = Direction(flags);
  order.speed = Speed(slot, 2, (flags & kSpeedVariableFlag) != 0);
  order.accel = AtLeastOne(Read2(slot, 4));
  return order;
}

std::optional<JogRate> ArrowJog(Slot slot, std::size_t axis_at) {
  const std::uint8_t axis = slot[axis_at];
  if ((axis & kNoJogFlag) != 0 || axis >= kAxisCount) return std::nullopt;
  return JogRate{axis, AtLeastOne(Read2(slot, axis_at + 1)), AtLeastOne(Read2(slot, axis_at + 3))};
}

Statement WaitInput(Slot slot) {
  WaitInputStatement wait{Input(slot[8], slot[1]), ConditionOf(slot[2]), std::nullopt};
  if ((slot[3] & kJogFlag) != 0)
    wait.jog = JogRate{slot[8], AtLeastOne(Read2(slot, 4)), AtLeastOne(Read2(slot, 6))};
  return wait;
}

ValueStatement Value(Slot slot, ValueKind kind) {
  ValueStatement value;
  value.pool_offset = Read2(slot, 2);
  value.kind = kind;
  value.variable = slot[5];
  value.lower = Read3(slot, 6) * kFixed4One + Read2(slot, 9);
  value.upper = Read3(slot, 11) * kFixed4One + Read2(slot, 14);
  value.units_axis = slot[16];
  return value;
}

/// A sub-type that means nothing is a text like any other.
Statement Prompt(Slot slot) {
  const int offset = Read2(slot, 2);
  switch (slot[1]) {
    case 0: return Value(slot, ValueKind::Distance);
    case 1: return Value(slot, ValueKind::Speed);
    case 2: return Value(slot, ValueKind::Count);
    case 4: return EnterStatement{offset, ArrowJog(slot, 5), ArrowJog(slot, 10)};
    case 5: return YesNoStatement{offset, slot[5]};
    default: return DisplayStatement{offset};
  }
}

MenuStatement Menu(Slot slot) {
  constexpr std::size_t kMaskAt = 3;
  MenuStatement menu;
  menu.pool_offset = Read2(slot, 1);
  for (std::size_t key = 0; key < kMenuKeys; ++key) {
    if ((slot[kMaskAt] >> key & 1) != 0) menu.lines[key] = slot[kMaskAt + 1 + key];
  }
  return menu;
}

/// In the form with a text the value stands between the two bytes of the pool offset.
FollowKnobStatement FollowKnob(Slot slot) {
  constexpr std::ptrdiff_t kTextAt = 5;
  FollowKnobStatement knob;
  knob.steps_per_count = AtLeastOne(slot[3]);
  knob.until_enter = (slot[0] & kProceedBit) != 0;
  if (!knob.until_enter) {
    knob.input = Input(slot[4], slot[1]);
    knob.condition = ConditionOf(slot[2]);
    return knob;
  }
  const auto start = slot.begin() + kTextAt;
  const auto last = start + kKnobText;
  const auto end = std::find(start, last, kTextEnd);
  knob.text.assign(start, end);
  if (end == last) knob.pool_offset = slot[2] * 256 + slot[4];
  return knob;
}

Statement Read(Slot slot, std::uint8_t firmware) {
  const int number = slot[0] & kCodeMask;
  if (number >= kLineCodes) return SilentStatement{};
  switch (static_cast<LineCode>(number)) {
    case LineCode::Feed: return Feed(slot, 11);
    case LineCode::FeedReturn: return FeedReturn(slot);
    case LineCode::FeedSensor: return FeedSensor(slot);
    case LineCode::FeedSensorReturn: return FeedSensorReturn(slot);
    case LineCode::WaitTime: return WaitTimeStatement{AtLeastOne(Read2(slot, 1))};
    case LineCode::WaitInput: return WaitInput(slot);
    case LineCode::GoTo: return GoToStatement{slot[1], WaitsForMoves(slot)};
    case LineCode::Repeat: return Repeat(slot);
    case LineCode::EndRepeat: return EndRepeatStatement{slot[2], slot[1], WaitsForMoves(slot)};
    case LineCode::SetOutput:
      return SetOutputStatement{slot[5], Output(slot[1]), OutputActionOf(slot[2]), Read2(slot, 3)};
    case LineCode::IfInput:
      return IfInputStatement{BranchInput(slot[4], slot[1]), ConditionOf(slot[2]), slot[3],
                              WaitsForMoves(slot)};
    case LineCode::Empty:
    case LineCode::Comment: return SilentStatement{};
    case LineCode::SeekHome: return SeekHome(slot);
    case LineCode::Prompt: return Prompt(slot);
    case LineCode::Menu: return Menu(slot);
    case LineCode::FeedPosition: return FeedPosition(slot);
    case LineCode::MotorPower: return MotorPowerStatement{slot[4], slot[1] == 1};
    case LineCode::SetPosition: return SetPosition(slot);
    case LineCode::FollowKnob: return FollowKnob(slot);
    case LineCode::MotorCurrent: return MotorCurrentStatement{slot[3], slot[1] + slot[2] / 100.0};
    case LineCode::IfInputs:
      return IfInputsStatement{Pattern(slot, 4, firmware), slot[3], WaitsForMoves(slot)};
    case LineCode::FeedOutput: return FeedOutput(slot);
    case LineCode::FeedChange: return FeedChange(slot);
    case LineCode::WaitInputs: return WaitInputsStatement{Pattern(slot, 3, firmware)};
    case LineCode::FeedSafety: return FeedSafety(slot);
    case LineCode::ResetLoop: return ResetLoopStatement{slot[2]};
    case LineCode::LearnPosition: return LearnPositionStatement{slot[2], slot[1]};
    case LineCode::Call: return CallStatement{slot[1]};
    case LineCode::Return: return ReturnStatement{};
    case LineCode::IfMoving: return IfMovingStatement{slot[2], slot[1]};
    case LineCode::StartStop: return StartStop(slot);
  }
  return SilentStatement{};
}

template <typename T>
std::optional<int> AxisIn(const T& statement) {
  if constexpr (requires { statement.axis; }) {
    return statement.axis;
  } else if constexpr (requires { statement.pattern; }) {
    return statement.pattern.axis;
  } else if constexpr (requires { statement.input; }) {
    return statement.input.axis;
  } else {
    return std::nullopt;
  }
}

}  // namespace

std::optional<int> AxisOf(const Statement& statement) {
  if (const auto* order = std::get_if<StartStopStatement>(&statement)) {
    if (order->kind == StartStopKind::StopAll) return std::nullopt;
  }
  if (const auto* knob = std::get_if<FollowKnobStatement>(&statement)) {
    if (knob->until_enter) return std::nullopt;
  }
  return std::visit([](const auto& one) { return AxisIn(one); }, statement);
}

Statement ReadStatement(Slot slot, std::uint8_t firmware) {
  Statement statement = Read(slot, firmware);
  const auto axis = AxisOf(statement);
  if (axis && *axis >= kAxisCount) return SilentStatement{};
  return statement;
}

}  // namespace tavlo::hubsim
