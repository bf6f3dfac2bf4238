// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/download.h"

#include "checks/chain.h"
#include "codegen/compile.h"
#include "link/drive_check.h"
#include "link/operation.h"
#include "link/polled.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

constexpr float kConfigFirmware = 1.19F;
constexpr int kBlockBytes = 32;
constexpr double kGaugeEnd = 200;

/// Sends one compiled program. Each step gives false after a time-out.
class Transfer {
 public:
  Transfer(Desk& desk, const CompiledProgram& compiled) : desk_(desk), compiled_(compiled) {
    for (const std::string& line : compiled.lines) total_ += static_cast<int>(line.size());
    total_ += static_cast<int>(compiled.system.size() + compiled.pool.size());
  }

  bool Start() {
    DropInput(desk_);
    desk_.downbox.Gauge(10);
    desk_.downbox.Show();
    desk_.Comm1.Output("F");
    return AwaitY();
  }

  /// Gives the number of lines that were acknowledged: all 200, or the index of the one that was not.
  int SendLines() {
    for (int line = 0; line < kLines; ++line) {
      Output(compiled_.lines[line]);
      if (!AwaitY()) return line;
      desk_.downbox.Gauge(10 + line * 190.0 / (kLines - 1));
      Show("program lines");
      desk_.loop.Yield();
    }
    desk_.downbox.Gauge(kGaugeEnd);
    return kLines;
  }

  bool SendSystem() {
    const std::string& bytes = compiled_.system;
    desk_.downbox.Gauge(0);
    const double step = kGaugeEnd / static_cast<double>(bytes.size());
    for (std::size_t i = 1; i <= bytes.size(); ++i) {
      desk_.downbox.Gauge(static_cast<double>(i) * step);
      Output({&bytes[i - 1], 1});
      if (i % kBlockBytes == 0) {
        if (!AwaitY()) return false;
        Show("system settings");
      }
      desk_.loop.Yield();
    }
    return true;
  }

  bool SendPool() {
    std::string_view pool = compiled_.pool;
    desk_.downbox.Gauge(0);
    const std::size_t blocks = (pool.size() + kBlockBytes - 1) / kBlockBytes;
    const double step = kGaugeEnd / static_cast<double>(blocks);
    double gauge = 0;
    while (!pool.empty()) {
      gauge += step;
      desk_.downbox.Gauge(gauge);
      const std::string_view block = pool.substr(0, kBlockBytes);
      pool.remove_prefix(block.size());
      Output(block);
      desk_.loop.Yield();
      if (!AwaitY()) return false;
      Show("prompt texts");
    }
    return true;
  }

  /// The hub's own sum, or nothing unless exactly two bytes came.
  std::optional<int> AskSum() {
    desk_.Comm1.Output("K");
    const double start = desk_.clock.Timer();
    static_cast<void>(
        AwaitUntil(desk_, start, kReplyLimit, [&] { return desk_.Comm1.InBufferCount() >= 2; }));
    if (desk_.Comm1.InBufferCount() != 2) return std::nullopt;
    const std::string sum = desk_.Comm1.Input();
    if (sum.size() != 2) return std::nullopt;
    return static_cast<unsigned char>(sum[0]) * 256 + static_cast<unsigned char>(sum[1]);
  }

 private:
  void Output(std::string_view bytes) {
    desk_.Comm1.Output(bytes);
    sent_ += static_cast<int>(bytes.size());
  }
  bool AwaitY() { return AwaitExactly(desk_, "Y", desk_.clock.Timer()); }
  void Show(std::string_view phase) { desk_.downbox.Phase(phase, sent_, total_); }

  Desk& desk_;
  const CompiledProgram& compiled_;
  int total_ = 0;
  int sent_ = 0;
};

/// A time-out in the middle: nothing more is sent, the hub gives the transfer up by itself.
DownloadResult Stopped(Desk& desk, DownloadResult result, const std::string& text) {
  TellFailedExchange(desk, {.text = text, .icon = Icon::Question});
  desk.downbox.Hide();
  desk.source.Busy = false;
  return result;
}

DownloadResult Refused(Desk& desk, DownloadResult result, const std::string& text) {
  TellFailedExchange(desk, {.text = text});
  desk.downbox.Hide();
  return result;
}

DownloadResult Send(Desk& desk, const CompiledProgram& compiled, float rev) {
  Transfer transfer(desk, compiled);
  if (!transfer.Start()) {
    return Stopped(
        desk, DownloadResult::NoAnswer,
        "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and "
        "turned on?");
  }
  if (const int line = transfer.SendLines(); line < kLines) {
    return Stopped(desk, DownloadResult::StoppedInLines,
                   "The Tavlo Hub has stopped responding during transfer of program line " +
                       Joined(line + 1) + ". Is it connected and turned on?");
  }
  if (!transfer.SendSystem()) {
    return Stopped(desk, DownloadResult::StoppedInSystem,
                   "The Tavlo Hub has stopped responding during system info transfer.");
  }
  if (!transfer.SendPool()) {
    return Stopped(desk, DownloadResult::StoppedInPool,
                   "The Tavlo Hub has stopped responding during string pool transfer.");
  }
  const auto sum = transfer.AskSum();
  if (!sum) {
    return Refused(desk, DownloadResult::NoSum,
                   "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.");
  }
  if (*sum != compiled.checksum) {
    return Refused(
        desk, DownloadResult::WrongSum,
        "Your program did not download correctly.  Make sure the cable connections are secure, less than "
        "50 feet long, and that you are not working around electrical noise, such as a welder, a high "
        "powered motor or big relays.");
  }
  if (rev >= kConfigFirmware) ConfigDSPdrives(desk);
  desk.downbox.Hide();
  return DownloadResult::Done;
}

/// How a download ended that goes through its checks. What these put right in the lines stays only if the
/// program can be sent.
DownloadResult CheckAndSend(Desk& desk) {
  Source& source = desk.source;
  const auto lines = source.program.Prog;
  ScanLoops(source.program);
  const CheckResult checked = CheckProgram(desk);
  if (checked != CheckResult::Passed) {
    source.program.Prog = lines;
    // A program whose Repeats do not pair is taken for unchanged all the same.
    if (checked == CheckResult::StoppedClean) source.Changed = false;
    return DownloadResult::Refused;
  }
  const DownloadResult result = DownloadProg(desk, source.program.HubVersion);
  if (result == DownloadResult::CannotCompile) {
    // Nothing has left the program: it is as it was, and as unsaved.
    source.program.Prog = lines;
  } else {
    source.Changed = false;
  }
  return result;
}

std::optional<DownloadResult> DownloadWhileBusy(Desk& desk) {
  StopHub(desk);
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) {
    desk.source.Changed = false;
    return std::nullopt;
  }
  if (!IsHub(desk, identity)) return std::nullopt;
  return CheckAndSend(desk);
}

}  // namespace

DownloadResult DownloadProg(Desk& desk, float rev) {
  CompiledProgram compiled;
  try {
    // What compiling changes is the program's only if all of it can be compiled.
    Program program = desk.program();
    compiled = CompileProgram(program);
    desk.program() = std::move(program);
  } catch (const EncodeError& error) {
    MsgBoxAbout(desk, error.Line(), {.text = error.what()});
    return DownloadResult::CannotCompile;
  }
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  return Send(desk, compiled, rev);
}

std::optional<DownloadResult> Download(Desk& desk) {
  if (desk.source.Busy) return std::nullopt;
  return WhileBusy(desk, [&desk] { return DownloadWhileBusy(desk); });
}

}  // namespace tavlo
