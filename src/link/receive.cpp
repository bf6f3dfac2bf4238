// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/receive.h"

#include <algorithm>
#include <iterator>

#include "link/drive_terminal.h"
#include "link/hub_messages.h"
#include "link/run_record.h"
#include "platform/encoding.h"

namespace tavlo {
namespace {

constexpr std::size_t kMessageBytes = 4;
constexpr std::size_t kColumns = 20;
constexpr int kLastRow = 3;
constexpr char kEscape = 27;
constexpr char kBackspace = 8;

/// True for as long as it lives.
class ScopedFlag {
 public:
  explicit ScopedFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~ScopedFlag() { flag_ = false; }
  ScopedFlag(const ScopedFlag&) = delete;
  ScopedFlag& operator=(const ScopedFlag&) = delete;

 private:
  bool& flag_;
};

/// Each turn of the event loop may bring more bytes while earlier ones are being handled; the call that came
/// first handles those too.
void ToTerminal(Desk& desk) {
  Source& source = desk.source;
  source.VOXterm.VOXbuffer += desk.Comm1.Input();
  if (source.VOXterm.Draining) return;
  const ScopedFlag draining(source.VOXterm.Draining);
  while (!source.VOXterm.VOXbuffer.empty()) {
    const char c = source.VOXterm.VOXbuffer.front();
    source.VOXterm.VOXbuffer.erase(0, 1);
    ProcessChar(desk, c);
    desk.loop.Yield();
  }
}

void TakeCharacter(Desk& desk, char c) {
  Source& source = desk.source;
  const bool header = CodeOf(c) >= 128;
  if (header) {
    source.link.InMsg = true;
    source.link.MsgBuf = c;
  } else if (!source.link.InMsg) {
    if (!source.display.MMIActive) return;
    RecordText(desk);
    Char2MMI(source.display, desk.run, c);
  } else {
    source.link.MsgBuf += c;
    if (source.link.MsgBuf.size() < kMessageBytes) return;
    // Taken out before it is handled: a box in there may call the receive event again.
    const std::string message = source.link.MsgBuf;
    source.link.MsgBuf.clear();
    source.link.InMsg = false;
    HandleMsg(desk, message);
  }
}

void PlainCharacter(DisplayState& display, char c) {
  std::string& line = display.textline[display.CurRow];
  if (c == kEscape) {
    display.EscPending = true;
  } else if (c >= ' ' && c <= '~') {
    line += c;
    if (display.CurRow < kLastRow && line.size() == kColumns) ++display.CurRow;
  } else if (c == kBackspace) {
    if (display.CurRow >= 1 && line.empty()) --display.CurRow;
    std::string& left = display.textline[display.CurRow];
    if (!left.empty()) left.pop_back();
  } else if (c == '\n') {
    if (display.CurRow < kLastRow) ++display.CurRow;
  }
}

void EscapeCharacter(DisplayState& display, char c) {
  if (!display.RowPending) {
    if (c == 'Y') {
      display.RowPending = true;
    } else if (c == 'E') {
      for (std::string& line : display.textline) line.clear();
      display.CurRow = 0;
      display.EscPending = false;
    } else if (c == 'K' || c == 'M') {
      display.textline[display.CurRow].clear();
      display.EscPending = false;
    }
  } else if (!display.RowGot) {
    display.RowValue = static_cast<std::int16_t>(CodeOf(c) - 32);
    display.RowGot = true;
  } else {
    // The column: rows are always written from their start, so only a row that exists counts.
    if (display.RowValue >= 0 && display.RowValue <= kLastRow) display.CurRow = display.RowValue;
    display.EscPending = display.RowPending = display.RowGot = false;
  }
}

}  // namespace

void NewOnComm(Desk& desk) {
  if (desk.Comm1.CommEvent() != kCommEventReceive) return;
  if (desk.source.VOXterm.TermActive) {
    ToTerminal(desk);
    return;
  }
  // There is one queue: an event inside a box goes on after the message that brought up the box, and what it
  // handles is gone from the queue when the box is answered.
  std::deque<char>& queue = desk.source.link.received;
  std::ranges::copy(desk.Comm1.Input(), std::back_inserter(queue));
  while (!queue.empty()) {
    const char c = queue.front();
    queue.pop_front();
    TakeCharacter(desk, c);
  }
}

void Char2MMI(DisplayState& display, RunView& view, char c) {
  if (display.EscPending) {
    EscapeCharacter(display, c);
  } else {
    PlainCharacter(display, c);
  }
  view.TextLinesChanged();
}

}  // namespace tavlo
