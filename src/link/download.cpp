// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/download.h"

#include "checks/chain.h"
#include "codegen/compile.h"
#include "link/drive_check.h"
#include "link/held_program.h"
#include "link/operation.h"
#include "link/polled.h"
#include "platform/number_format.h"
#include "session/edit_step.h"
#include "session/happened.h"

namespace tavlo {
namespace {

constexpr float kConfigFirmware = 1.19F;
constexpr int kBlockBytes = 32;
constexpr double kGaugeEnd = 200;

int BytesOf(const CompiledProgram& compiled) {
  std::size_t bytes = compiled.system.size() + compiled.pool.size();
  for (const std::string& line : compiled.lines) bytes += line.size();
  return static_cast<int>(bytes);
}

/// Sends one compiled program. Each step returns false after a time-out.
class Transfer {
 public:
  Transfer(const Link& link, const TransferGauge& gauge, const CompiledProgram& compiled)
      : link_(link), gauge_(gauge), compiled_(compiled) {
    total_ = BytesOf(compiled);
  }

  bool Start() {
    DropInput(link_);
    NoteHubProgram(link_, {});
    gauge_.form.Gauge(10);
    gauge_.form.Show();
    link_.Comm1.Output("F");
    return AwaitY();
  }

  /// Returns the number of lines that were acknowledged: all 200, or the index of the first that was not.
  int SendLines() {
    for (int line = 0; line < kLines; ++line) {
      Output(compiled_.lines[line]);
      if (!AwaitY()) return line;
      gauge_.form.Gauge(10 + line * 190.0 / (kLines - 1));
      Show("program lines");
      gauge_.loop.Yield();
    }
    gauge_.form.Gauge(kGaugeEnd);
    return kLines;
  }

  bool SendSystem() {
    const std::string& bytes = compiled_.system;
    gauge_.form.Gauge(0);
    const double step = kGaugeEnd / static_cast<double>(bytes.size());
    for (std::size_t i = 1; i <= bytes.size(); ++i) {
      gauge_.form.Gauge(static_cast<double>(i) * step);
      Output({&bytes[i - 1], 1});
      if (i % kBlockBytes == 0) {
        if (!AwaitY()) return false;
        Show("system settings");
      }
      gauge_.loop.Yield();
    }
    return true;
  }

  bool SendPool() {
    std::string_view pool = compiled_.pool;
    gauge_.form.Gauge(0);
    const std::size_t blocks = (pool.size() + kBlockBytes - 1) / kBlockBytes;
    const double step = kGaugeEnd / static_cast<double>(blocks);
    double gauge = 0;
    while (!pool.empty()) {
      gauge += step;
      gauge_.form.Gauge(gauge);
      const std::string_view block = pool.substr(0, kBlockBytes);
      pool.remove_prefix(block.size());
      Output(block);
      gauge_.loop.Yield();
      if (!AwaitY()) return false;
      Show("prompt texts");
    }
    return true;
  }

  /// Returns the hub's own sum; nothing unless exactly two bytes arrived.
  std::optional<int> AskSum() {
    link_.Comm1.Output("K");
    const double start = link_.clock.Timer();
    static_cast<void>(
        AwaitUntil(link_, start, kReplyLimit, [&] { return link_.Comm1.InBufferCount() >= 2; }));
    if (link_.Comm1.InBufferCount() != 2) return std::nullopt;
    const std::string sum = link_.Comm1.Input();
    if (sum.size() != 2) return std::nullopt;
    return static_cast<unsigned char>(sum[0]) * 256 + static_cast<unsigned char>(sum[1]);
  }

 private:
  void Output(std::string_view bytes) {
    link_.Comm1.Output(bytes);
    sent_ += static_cast<int>(bytes.size());
  }
  bool AwaitY() { return AwaitExactly(link_, "Y", link_.clock.Timer()); }
  void Show(std::string_view phase) { gauge_.form.Phase(phase, sent_, total_); }

  Link link_;
  TransferGauge gauge_;
  const CompiledProgram& compiled_;
  int total_ = 0;
  int sent_ = 0;
};

/// Ends a transfer after a time-out: nothing more is sent, and the hub gives the transfer up by itself.
DownloadResult Stopped(const Link& link, const TransferGauge& gauge, DownloadResult result,
                       const std::string& text) {
  TellFailedExchange(link, {.text = text, .icon = Icon::Question});
  gauge.form.Hide();
  link.state.Busy = false;
  return result;
}

DownloadResult Refused(const Link& link, const TransferGauge& gauge, DownloadResult result,
                       const std::string& text) {
  TellFailedExchange(link, {.text = text});
  gauge.form.Hide();
  return result;
}

DownloadResult Send(const Link& link, const TransferGauge& gauge, const CompiledProgram& compiled) {
  Transfer transfer(link, gauge, compiled);
  if (!transfer.Start()) {
    return Stopped(
        link, gauge, DownloadResult::NoAnswer,
        "The Tavlo Hub is not responding to the Download command.  Is it connected to the right port and "
        "turned on?");
  }
  if (const int line = transfer.SendLines(); line < kLines) {
    return Stopped(link, gauge, DownloadResult::StoppedInLines,
                   "The Tavlo Hub has stopped responding during transfer of program line " +
                       Joined(line + 1) + ". Is it connected and turned on?");
  }
  if (!transfer.SendSystem()) {
    return Stopped(link, gauge, DownloadResult::StoppedInSystem,
                   "The Tavlo Hub has stopped responding during system info transfer.");
  }
  if (!transfer.SendPool()) {
    return Stopped(link, gauge, DownloadResult::StoppedInPool,
                   "The Tavlo Hub has stopped responding during string pool transfer.");
  }
  const auto sum = transfer.AskSum();
  if (!sum) {
    return Refused(link, gauge, DownloadResult::NoSum,
                   "The Tavlo Hub did not provide a checksum.  There may be a problem with the download.");
  }
  if (*sum != compiled.checksum) {
    return Refused(
        link, gauge, DownloadResult::WrongSum,
        "Your program did not download correctly.  Make sure the cable connections are secure, less than "
        "50 feet long, and that you are not working around electrical noise, such as a welder, a high "
        "powered motor or big relays.");
  }
  return DownloadResult::Done;
}

/// `start`: when the transfer began.
void TellSent(Desk& desk, DownloadResult result, double start) {
  if (result != DownloadResult::Done) return Happened(desk, "Download not proven");
  HubProgram& held = desk.source.link.held;
  held.file_name = desk.source.file_name;
  Happened(desk, "Download proven: " + PaceText(held.bytes, start, held.at));
}

/// Runs the checks, sends the program and returns how that ended. What the checks correct in the lines is
/// kept only if the program can be sent.
DownloadResult CheckAndSend(Desk& desk) {
  Source& source = desk.source;
  const auto lines = source.program.Prog;
  ScanLoops(source.program);
  const CheckResult checked = CheckProgram(source.program, desk.boxes);
  if (checked != CheckResult::Passed) {
    source.program.Prog = lines;
    // A program whose Repeats do not pair is marked as unchanged all the same.
    if (checked == CheckResult::StoppedClean) MarkUnchanged(desk, Unchanged::Otherwise);
    return DownloadResult::Refused;
  }
  const double start = desk.clock.Timer();
  const DownloadResult result =
      DownloadProg(source.program, desk.link(), desk.downloading(), source.program.HubVersion);
  if (result == DownloadResult::CannotCompile) {
    // Nothing has been sent: the program stays as it was, and as unsaved.
    source.program.Prog = lines;
  } else {
    TellSent(desk, result, start);
    MarkUnchanged(desk, result == DownloadResult::Done ? Unchanged::Transferred : Unchanged::Otherwise);
  }
  return result;
}

std::optional<DownloadResult> DownloadWhileBusy(Desk& desk) {
  StopHub(desk.link());
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) {
    MarkUnchanged(desk, Unchanged::Otherwise);
    return std::nullopt;
  }
  if (!IsHub(desk.boxes, identity)) return std::nullopt;
  return CheckAndSend(desk);
}

}  // namespace

DownloadResult DownloadProg(Program& program, const Link& link, const TransferGauge& gauge, float rev) {
  CompiledProgram compiled;
  try {
    // What compiling changes is the program's only if all of it can be compiled.
    Program copy = program;
    compiled = CompileProgram(copy);
    program = std::move(copy);
  } catch (const EncodeError& error) {
    link.boxes.MsgBox({.text = error.what(), .line = error.Line()});
    return DownloadResult::CannotCompile;
  }
  EventsOff events(link.Comm1);
  events.RestoreTo(1);
  const TransferUnderWay under_way(link);
  const DownloadResult result = Send(link, gauge, compiled);
  if (result != DownloadResult::Done) return result;
  NoteHubProgram(link, {.by = HubProgram::By::Download,
                        .image = ImageOf(compiled),
                        .HubIndex = program.HubIndex,
                        .HubVersion = rev,
                        .bytes = BytesOf(compiled),
                        .file_name = {},
                        .at = link.clock.Timer()});
  if (rev >= kConfigFirmware) ConfigDSPdrives(program, link);
  gauge.form.Hide();
  return result;
}

std::optional<DownloadResult> Download(Desk& desk) {
  if (desk.source.link.Busy) return std::nullopt;
  return WhileBusy(desk, [&desk] { return DownloadWhileBusy(desk); });
}

}  // namespace tavlo
