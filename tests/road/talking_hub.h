// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "hubsim/hub.h"
#include "model/program.h"

namespace tavlo::testing {

/// What a hub is doing of its own accord when somebody comes to it.
enum class Talk {
  Paused,       ///< status of its axes ten times a second
  Running,      ///< line events as fast as they are acknowledged
  Prompting,    ///< texts for the operator terminal, one after the other
  HalfMessage,  ///< paused, and a message has just been torn in two
};
inline constexpr std::array kTalks = {Talk::Paused, Talk::Running, Talk::Prompting, Talk::HalfMessage};
/// Of the line, in seconds.
inline constexpr std::array kLatencies = {0.0, 0.001, 0.004, 0.016};
inline constexpr std::uint8_t kTalkersFirmware = 40;

inline std::string_view NameOf(Talk talk) {
  constexpr std::array<std::string_view, kTalks.size()> kNames = {"paused", "running", "prompting",
                                                                  "half a message"};
  return kNames[static_cast<std::size_t>(talk)];
}

/// A program that goes on for ever with something to say.
inline void WriteTalker(Program& program, Talk talk) {
  for (int line = 0; line < 6; ++line) {
    Instruction& record = program.Prog[line];
    record.Type = talk == Talk::Prompting ? MMI : WT;
    record.SubType = DisplayOnly;
    record.Text = "Line " + std::to_string(line + 1) + " of a long talk to the operator, who is not there";
    record.Time = 2;
  }
  // Without it the hub would not want the terminal, whose window can be closed on a running program.
  program.Prog[6].Type = MMI;
  program.Prog[6].SubType = DisplayOnly;
  program.Prog[6].Text = "again";
  program.Prog[7].Type = GT;
  program.Prog[7].LineNum = 0;
}

/// Has the hub talk, as a session does that has been left: `send` brings a command to it, `pass` lets so many
/// seconds pass in which its messages are taken.
template <class Send, class Pass>
void StartTalk(hubsim::Hub& hub, Talk talk, Send send, Pass pass) {
  send("E");
  pass(0.1);
  send("M");
  pass(0.5);
  if (talk == Talk::Paused || talk == Talk::HalfMessage) {
    send("P");
    pass(0.3);
  }
  if (talk == Talk::HalfMessage) hub.Say("\xf3\x05");
}

}  // namespace tavlo::testing
