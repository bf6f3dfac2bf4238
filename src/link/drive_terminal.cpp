// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/drive_terminal.h"

#include "link/held_program.h"
#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr double kPassesThrough = 1.19;
constexpr std::string_view kPassthrough = "H";
constexpr std::string_view kBackToHub = "0HM\r";
constexpr std::string_view kLineEnd = "\r\n";
constexpr int kGreetingHeader = 255;
constexpr std::size_t kGreetingBytes = 3;
/// Models from here on are no hubs.
constexpr int kFirstOtherModel = 100;
/// A longer command text is cut: it keeps what comes from this character on, counted from 1.
constexpr std::size_t kLongestCommandText = 2000;
constexpr std::size_t kCommandTextKept = 100;
/// The same for the log.
constexpr std::size_t kLongestHistory = 4000;
constexpr std::size_t kHistoryKept = 2000;

std::string CodeText(char c) {
  return Format(CodeOf(c), "000");
}

void Log(Desk& desk, std::string_view text) {
  std::string& history = desk.source.VOXterm.History;
  history += text;
  if (desk.terminal != nullptr) desk.terminal->HistoryGrew(text);
  if (history.size() <= kLongestHistory) return;
  history.erase(0, kHistoryKept - 1);
  if (desk.terminal != nullptr) desk.terminal->HistoryCut();
}

/// Logs the command that has gone out between dollar signs, which set it off from the responses.
void CheckIdle(Desk& desk) {
  DriveTerminal& terminal = desk.source.VOXterm;
  terminal.Logging = true;
  const std::size_t shown = terminal.CmdBuf.size() - std::min(terminal.CmdBuf.size(), kLineEnd.size());
  Log(desk, "$" + terminal.CmdBuf.substr(0, shown) + "$" + std::string(kLineEnd));
  terminal.CmdBuf.clear();
  terminal.Logging = false;
}

/// The hub has been switched on while the terminal is up.
void DoPowerUp(Desk& desk, std::string_view message) {
  DriveTerminal& terminal = desk.source.VOXterm;
  Log(desk, "{" + CodeText(message[0]) + "-" + CodeText(message[1]) + "-" + CodeText(message[2]) + "}" +
                std::string(kLineEnd));
  if (CodeOf(message[0]) == kGreetingHeader && CodeOf(message[2]) < kFirstOtherModel) desk.Comm1.Output("00");
  // It may have been a drive's bytes. So the hub may still be running for all that is known.
  ForgetHub(desk.link());
  desk.beeper.Beep();
  terminal.AtLineStart = true;
  terminal.InPower = false;
}

}  // namespace

bool TerminalAllowed(const Source& source) {
  return !source.link.Busy && Val(source.link.DriveVersion) >= kPassesThrough;
}

void OpenTerminal(Desk& desk) {
  if (desk.terminal != nullptr && TerminalAllowed(desk.source)) desk.terminal->ShowModal();
}

void LoadTerminal(Desk& desk) {
  DriveTerminal& terminal = desk.source.VOXterm;
  terminal = {.TermActive = terminal.TermActive,
              .TermUsed = terminal.TermUsed,
              .VOXbuffer = std::move(terminal.VOXbuffer)};
}

void ActivateTerminal(Desk& desk) {
  if (desk.source.VOXterm.TermActive) return;
  // A failed upload has turned receive events off.
  desk.Comm1.RThreshold(1);
  desk.Comm1.Output(kPassthrough);
  desk.source.VOXterm.TermActive = true;
}

void LeaveTerminal(Desk& desk) {
  if (!desk.source.VOXterm.TermActive) return;
  desk.Comm1.Output(kBackToHub);
  desk.source.VOXterm.TermUsed = true;
  desk.source.VOXterm.TermActive = false;
}

void SendCommandText(Desk& desk, std::string_view text) {
  desk.source.VOXterm.CmdBuf += text;
  desk.Comm1.Output(text);
  CheckIdle(desk);
}

void ProcessChar(Desk& desk, char c) {
  DriveTerminal& terminal = desk.source.VOXterm;
  if (terminal.InPower) {
    terminal.PowerBuf += c;
    if (terminal.PowerBuf.size() == kGreetingBytes) DoPowerUp(desk, terminal.PowerBuf);
    return;
  }
  if (CodeOf(c) == kGreetingHeader) {
    terminal.InPower = true;
    terminal.PowerBuf = c;
    return;
  }
  const bool shown = (c >= ' ' && c <= '~') || c == '\n' || c == '\r';
  std::string text = shown ? std::string(1, c) : "[" + CodeText(c) + "]";
  terminal.AtLineStart = c == '\r';
  if (terminal.AtLineStart) text += '\n';
  Log(desk, text);
}

std::string CheckSize(std::string text) {
  while (text.size() > kLongestCommandText) text.erase(0, kCommandTextKept - 1);
  return text;
}

}  // namespace tavlo
