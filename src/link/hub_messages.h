// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "session/desk.h"

namespace tavlo {

/// Headers of the messages that the hub sends unasked. Each is followed by three bytes of 0..127. Where an
/// axis is part of the header, the row names the first of eight headers.
enum class HubHeader : int {
  Greeting = 255,     ///< revision, model
  LineStarted = 254,  ///< line in two nibbles; acknowledged with "I"
  StepDone = 253,
  LimitHit = 252,  ///< axis
  StopButton = 251,
  OldFirmware = 250,      ///< drive, revision
  WrongDrive = 249,       ///< axis, model found, model expected
  DriveStatus = 241,      ///< inputs in two nibbles, outputs
  DriveLost = 240,        ///< axis
  StackOverflow = 239,    ///< line
  StackUnderflow = 238,   ///< line
  LineFinished = 237,     ///< line in two nibbles
  LineConcurrent = 236,   ///< line in two nibbles; acknowledged with "I"
  ProgramCounter = 235,   ///< 1 to show, line in two nibbles
  ExtendedOutputs = 221,  ///< outputs
  ExtendedInputs = 213,   ///< inputs in two nibbles
  DriveDisabled = 212,    ///< axis
  DriveFault = 211,       ///< axis, code in two parts of 7 bits
};

/// What the bits of a fault's code are called on this axis, 0-based.
[[nodiscard]] std::array<std::string, 14> FaultLabels(const Program& program, int axis);

/// Carries out what a message of the hub asks for. `message` has four bytes. An unknown header and an axis
/// that does not exist are ignored.
void HandleMsg(Desk& desk, std::string_view message);

/// A hub has sent its greeting, as it does when it is switched on: ends the run that is shown, if any.
/// `revision` is the firmware's byte.
void DispDrive(Desk& desk, int revision, int hub_code);

/// `axis` counts from 1 in these two, as it does in their texts.
void ServoNotOn(Desk& desk, int axis);
void ServoError(Desk& desk, int axis, int code);

}  // namespace tavlo
