// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/mmi_prompt.h"

#include <algorithm>

#include "forms/prompt_pool.h"
#include "forms/prompt_text.h"
#include "model/line_operations.h"
#include "model/wire.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr JogBlock::Parts kLeftRight = {.allowed = "ChkJogLR",
                                        .drive = "DriveLR",
                                        .speed = "TxtLRJogSpeed",
                                        .speed_unit = "LRSpeedUnit",
                                        .accel = "TxtLRJogAccel",
                                        .accel_unit = "LRAccelUnit",
                                        .jog = &Instruction::JogLR,
                                        .jog_drive = &Instruction::JogLRDrive,
                                        .jog_speed = &Instruction::JogLRSpeed,
                                        .jog_accel = &Instruction::JogLRAccel};
constexpr JogBlock::Parts kUpDown = {.allowed = "ChkJogUD",
                                     .drive = "DriveUD",
                                     .speed = "TxtUDJogSpeed",
                                     .speed_unit = "UDSpeedUnit",
                                     .accel = "TxtUDJogAccel",
                                     .accel_unit = "UDAccelUnit",
                                     .jog = &Instruction::JogUD,
                                     .jog_drive = &Instruction::JogUDDrive,
                                     .jog_speed = &Instruction::JogUDSpeed,
                                     .jog_accel = &Instruction::JogUDAccel};

constexpr std::string_view kNoKeys =
    "You must check at least one key in the Branch Table of an MMI Menu instruction";
constexpr std::string_view kPoolIsFull =
    "You have too many MMI prompts in your program.  You must shorten the text in other MMI prompts to make "
    "room for this one.";

std::string NoRoomFor(std::size_t left_over) {
  if (left_over == 0) return {};
  if (left_over == 1) return "The last character does not fit";
  return "The last " + Joined(static_cast<double>(left_over)) + " characters do not fit";
}

}  // namespace

MMIprompt::MMIprompt() : Form("MMItext"), jog_lr_(kLeftRight), jog_ud_(kUpDown) {
  controls_.Add("MMItext", &text_);
  controls_.Add("ReservedDataEntry", &line_4_is_reserved_);
  controls_.Add("MMIdisplay", &display_);
  controls_.Add("lblLeftOver", &left_over_);
  controls_.Add("PoolGauge", &pool_);
  function_.AddTo(controls_, {"MMIfunction(0)", "MMIfunction(1)", "MMIfunction(2)", "MMIfunction(3)",
                              "MMIfunction(4)", "MMIfunction(5)", "MMIfunction(6)"});
  AddBlocks();
}

void MMIprompt::AddBlocks() {
  controls_.Add("framemmivar", &variable_frame_);
  variable_.AddTo(controls_);
  limits_.AddTo(controls_);
  controls_.Add("FrameDrive", &drive_frame_);
  drive_.AddTo(controls_, {});
  controls_.Add("framelinenum", &line_frame_);
  target_.AddTo(controls_);
  controls_.Add("FrameBranchTable", &table_frame_);
  table_.AddTo(controls_);
  controls_.Add("FrameJog", &jog_frame_);
  jog_lr_.AddTo(controls_);
  jog_ud_.AddTo(controls_);
}

void MMIprompt::Fill() {
  const Instruction& from = record();
  drive_.Fill(program(), from.Drive);
  const bool is_function = from.SubType >= GetDistance && from.SubType <= Menu;
  function_.Fill(is_function ? int{from.SubType} : int{DisplayOnly});
  // A file may bring a text of any length. No more of it is shown than the pool could hold at most; the line
  // keeps it all the same until it is edited.
  text_.text = text_before_ = NoWordBreaks(from).substr(0, kPoolBytes);
  variable_.Fill(from.DistVar);
  limits_.Fill(from);
  target_.Fill(program(), from.LineNum, line());
  table_.Fill(program(), from, line());
  jog_lr_.Fill(program(), from);
  jog_ud_.Fill(program(), from);
}

void MMIprompt::CleanUp() {
  target_.CleanUp();
  table_.CleanUp();
  jog_lr_.CleanUp();
  jog_ud_.CleanUp();
}

bool MMIprompt::KeepsText() const {
  const bool has_room = LinesForText(Function()) >= LinesForText(record().SubType) ||
                        record().Text.size() <= kPromptColumns * (kPromptLines - 1);
  return text_.text == text_before_ && has_room;
}

void MMIprompt::ShowText() {
  constexpr std::size_t kRoom = kPromptColumns * kPromptLines;
  text_.lines = display_.lines_for_text = LinesForText(Function());
  const BrokenText broken = BreakText(text_.text, text_.lines);
  const std::string shown = KeepsText() ? record().Text : broken.Stored();
  display_.lines.clear();
  for (std::size_t at = 0; at < std::min(shown.size(), kRoom); at += kPromptColumns) {
    display_.lines.push_back(shown.substr(at, kPromptColumns));
  }
  left_over_.caption =
      NoRoomFor(KeepsText() ? shown.size() - std::min(shown.size(), kRoom) : broken.left_over);
  left_over_.visible = !left_over_.caption.empty();
  // Counts what is stored, so it stays as it is until OK.
  ShowPoolSize(pool_, PoolSize(program()));
}

void MMIprompt::ShowHide() {
  const int function = Function();
  const bool takes_a_number = TakesNumber(function);
  line_4_is_reserved_.visible = takes_a_number;
  ShowText();
  variable_frame_.visible = takes_a_number;
  variable_.Show(takes_a_number);
  limits_.ShowHide({program(), drive_.Axis()}, function);
  drive_frame_.visible = function == GetDistance || function == GetSpeed;
  line_frame_.visible = function == BranchYesNo;
  table_frame_.visible = function == Menu;
  jog_frame_.visible = function == WaitEnter;
  jog_lr_.ShowHide();
  jog_ud_.ShowHide();
}

bool MMIprompt::PoolWouldOverflow(std::size_t text_length) const {
  return StringsTooLong(program(), text_length, line());
}

bool MMIprompt::MayWrite(MessageBoxes& boxes) {
  if (Function() == Menu && table_.NoValidKeys()) {
    boxes.MsgBox({.text = std::string(kNoKeys)});
    SendCaretTo("Check1(1)");
    return false;
  }
  const std::size_t length =
      KeepsText() ? record().Text.size() : BreakText(text_.text, text_.lines).Stored().size();
  if (PoolWouldOverflow(length)) {
    boxes.MsgBox({.text = std::string(kPoolIsFull), .title = "Strings too long"});
    SendCaretTo("MMItext");
    return false;
  }
  if (const auto limit = limits_.Refused({program(), drive_.Axis()}, Function(), boxes)) {
    SendCaretTo(*limit);
    return false;
  }
  if (Function() == GetCount) limits_.CleanUpCounts();
  return true;
}

void MMIprompt::Write(Instruction& record) const {
  if (!KeepsText()) WriteText(record, BreakText(text_.text, LinesForText(Function())));
  record.Type = MMI;
  record.SubType = static_cast<std::int16_t>(Function());
  record.Drive = drive_.Axis();
  jog_lr_.Write(record);
  jog_ud_.Write(record);
  table_.Write(record);
  limits_.Write(record);
  record.DistVar = variable_.Variable();
  record.LineNum = target_.Target();
}

}  // namespace tavlo
