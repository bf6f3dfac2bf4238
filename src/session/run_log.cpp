// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/run_log.h"

#include <cmath>
#include <utility>

#include "platform/encoding.h"
#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

/// No honest text is longer; a display whose last row grows on and on must not push out all others.
constexpr std::size_t kLongestText = 400;

std::string Clipped(std::string text) {
  if (text.size() <= kLongestText) return text;
  const std::size_t more = text.size() - kLongestText;
  text.resize(kLongestText);
  return text + " (and " + Joined(static_cast<int>(more)) + " more)";
}

bool IsInput(LedRow row) {
  return row == LedRow::INlo || row == LedRow::INX;
}

bool IsOn(Led led) {
  return led == Led::Green || led == Led::Red;
}

/// Two messages may draw the same input in different colours.
bool Same(Led a, Led b) {
  return IsOn(a) == IsOn(b) && (a == Led::Unknown) == (b == Led::Unknown);
}

/// Rows of the display without the blanks at their ends; empty ones at the end are left out.
std::string ShownOn(const DisplayState& display) {
  std::string shown;
  std::string breaks;
  for (const std::string& line : display.textline) {
    const std::size_t end = line.find_last_not_of(' ');
    if (end != std::string::npos) shown += std::exchange(breaks, {}) + line.substr(0, end + 1);
    breaks += " / ";
  }
  return shown;
}

void AddTo(std::string& list, const std::string& text) {
  list += (list.empty() ? "" : "; ") + text;
}

}  // namespace

void RunLog::Begin(const Source& source) {
  Close();
  source_ = &source;
  ++run_;
  began_ = wall();
  hub_quad_ = source.program.HubIndex == HubQuad;
  program_name_ = program_known ? ShownMessage(source.file_name) : std::string();
  line_texts_.clear();
  for (const Row& row : source.shown.rows) {
    if (program_known) line_texts_.push_back(ShownText(ShownCaption(row.desc)));
  }
  events_.clear();
  first_ = last_ = 0;
  text_bytes_ = 0;
  lost_until_ = 0;
  ended_ = text_pending_ = false;
  lights_ = {};
  watch_.Restart();
  if (OnBegin) OnBegin();
}

std::int64_t RunLog::Now() {
  return std::llround(watch_.Seconds() * 1000);
}

void RunLog::Add(RunEvent event) {
  if (!Open()) return;
  EndText();
  event.ms = Now();
  Append(std::move(event));
}

void RunLog::Append(RunEvent event) {
  event.text = Clipped(std::move(event.text));
  text_bytes_ += event.text.size();
  if (last_ - first_ == kMostEvents) DropOldest();
  if (events_.size() < kMostEvents) {
    events_.push_back(std::move(event));
  } else {
    events_[last_ % kMostEvents] = std::move(event);
  }
  ++last_;
  while (text_bytes_ > kMostText) DropOldest();
}

void RunLog::DropOldest() {
  RunEvent& oldest = events_[first_ % kMostEvents];
  lost_until_ = oldest.ms;
  text_bytes_ -= oldest.text.size();
  oldest.text = {};
  ++first_;
}

void RunLog::TextComes() {
  if (!Open()) return;
  Settle();
  text_pending_ = true;
  text_ms_ = Now();
}

void RunLog::Settle() {
  const bool rests = static_cast<double>(Now() - text_ms_) >= kTextRest * 1000;
  if (Open() && rests) EndText();
}

/// The event has the time of the text's last character.
void RunLog::EndText() {
  if (!std::exchange(text_pending_, false)) return;
  Append({.kind = RunEventKind::Display, .ms = text_ms_, .text = ShownOn(source_->display)});
}

void RunLog::ShowLights(int axis, std::span<const LedRow> rows) {
  if (!Open()) return;
  std::string on;
  std::string unknown;
  bool first_time = false;
  for (const LedRow row : rows) {
    std::vector<Led>& known = lights_[static_cast<std::size_t>(row)][axis];
    const bool was_known = !known.empty();
    known.resize(LedsOf(row), Led::Unknown);
    for (int bit = 0; bit < LedsOf(row); ++bit) {
      const Led led = source_->run.panel.At(row, axis, bit);
      const Led before = std::exchange(known[bit], led);
      if (!ShowsLed(source_->program, row, axis, bit)) continue;
      if (!was_known) {
        first_time = true;
        const std::string name = (IsInput(row) ? "input " : "output ") + LedCaption(row, bit);
        if (IsOn(led)) AddTo(on, name);
        if (led == Led::Unknown) AddTo(unknown, name);
      } else if (!Same(led, before)) {
        Add({.kind = IsInput(row) ? RunEventKind::Input : RunEventKind::Output,
             .axis = static_cast<std::int8_t>(axis),
             .row = row,
             .bit = static_cast<std::int8_t>(bit),
             .led = led});
      }
    }
  }
  if (!first_time) return;
  if (on.empty()) on = "nothing";
  if (!unknown.empty()) on += " (unknown: " + unknown + ")";
  Add({.kind = RunEventKind::State, .axis = static_cast<std::int8_t>(axis), .text = std::move(on)});
}

void RunLog::End(std::string_view why) {
  if (!Open() || std::exchange(ended_, true)) return;
  Add({.kind = RunEventKind::End, .text = std::string(why)});
}

void RunLog::Close() {
  if (!Open()) return;
  End("window closed");
  EndText();
  source_ = nullptr;
  if (OnClose) OnClose();
}

std::string_view RunLog::LineText(int line) const {
  const auto index = static_cast<std::size_t>(line);
  return index < line_texts_.size() ? std::string_view(line_texts_[index]) : std::string_view();
}

std::string RunLog::AxisName(int axis) const {
  return hub_quad_ && axis == kHubQuadIO ? "Hub" : Joined(axis + 1);
}

}  // namespace tavlo
