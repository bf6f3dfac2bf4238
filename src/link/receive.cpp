// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/receive.h"

#include "link/drive_terminal.h"
#include "link/hub_messages.h"

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

int Code(char c) {
  return static_cast<unsigned char>(c);
}

/// Each turn of the event loop may bring more bytes in behind those that are being worked off; whoever was
/// first takes them too.
void ToTerminal(Desk& desk) {
  Source& source = desk.source;
  source.VOXbuffer += desk.Comm1.Input();
  if (source.VOXterm.Draining) return;
  const ScopedFlag draining(source.VOXterm.Draining);
  while (!source.VOXbuffer.empty()) {
    const char c = source.VOXbuffer.front();
    source.VOXbuffer.erase(0, 1);
    ProcessChar(desk, c);
    desk.loop.Yield();
  }
}

void TakeCharacter(Desk& desk, char c) {
  Source& source = desk.source;
  const bool header = Code(c) >= 128;
  if (header) {
    source.InMsg = true;
    source.MsgBuf = c;
  } else if (!source.InMsg) {
    if (source.MMIActive) Char2MMI(desk, c);
  } else {
    source.MsgBuf += c;
    if (source.MsgBuf.size() < kMessageBytes) return;
    // Taken out before it is handled: a box in there brings the receive event in again.
    const std::string message = source.MsgBuf;
    source.MsgBuf.clear();
    source.InMsg = false;
    HandleMsg(desk, message);
  }
}

void PlainCharacter(Source& source, char c) {
  std::string& line = source.textline[source.CurRow];
  if (c == kEscape) {
    source.EscPending = true;
  } else if (c >= ' ' && c <= '~') {
    line += c;
    if (source.CurRow < kLastRow && line.size() == kColumns) ++source.CurRow;
  } else if (c == kBackspace) {
    if (source.CurRow >= 1 && line.empty()) --source.CurRow;
    std::string& left = source.textline[source.CurRow];
    if (!left.empty()) left.pop_back();
  } else if (c == '\n') {
    if (source.CurRow < kLastRow) ++source.CurRow;
  }
}

void EscapeCharacter(Source& source, char c) {
  if (!source.RowPending) {
    if (c == 'Y') {
      source.RowPending = true;
    } else if (c == 'E') {
      for (std::string& line : source.textline) line.clear();
      source.CurRow = 0;
      source.EscPending = false;
    } else if (c == 'K' || c == 'M') {
      source.textline[source.CurRow].clear();
      source.EscPending = false;
    }
  } else if (!source.RowGot) {
    source.RowValue = static_cast<std::int16_t>(Code(c) - 32);
    source.RowGot = true;
  } else {
    // The column: rows are always written from their start, so only a row that exists counts.
    if (source.RowValue >= 0 && source.RowValue <= kLastRow) source.CurRow = source.RowValue;
    source.EscPending = source.RowPending = source.RowGot = false;
  }
}

}  // namespace

void NewOnComm(Desk& desk) {
  if (desk.Comm1.CommEvent() != kCommEventReceive) return;
  if (desk.source.TermActive) {
    ToTerminal(desk);
    return;
  }
  // One queue: an event inside a box goes on where the message that brought the box up has stopped, and what
  // it takes is gone when the box is answered.
  std::string& queue = desk.source.received;
  queue += desk.Comm1.Input();
  while (!queue.empty()) {
    const char c = queue.front();
    queue.erase(0, 1);
    TakeCharacter(desk, c);
  }
}

void Char2MMI(Desk& desk, char c) {
  if (desk.source.EscPending) {
    EscapeCharacter(desk.source, c);
  } else {
    PlainCharacter(desk.source, c);
  }
  desk.run.TextLinesChanged();
}

}  // namespace tavlo
