// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/upload.h"

#include <algorithm>

#include "codegen/compile.h"
#include "codegen/decode.h"
#include "codegen/encodings.h"
#include "link/drive_check.h"
#include "link/held_program.h"
#include "link/operation.h"
#include "link/polled.h"
#include "platform/number_format.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "session/happened.h"

namespace tavlo {
namespace {

constexpr double kGaugeStart = 10;
constexpr double kGaugeSpan = 190;
/// Longest wait for bytes between two turns of the event loop, which keep the window alive.
constexpr double kLongestLook = 0.05;

struct Receipt {
  int count = 0;
  bool complete = false;
};

/// Watches the bytes gather until they are all there, the time is over or the port is gone.
Receipt AwaitImage(const Link& link, const TransferGauge& gauge, double start) {
  Receipt receipt;
  for (;;) {
    receipt.count = link.Comm1.InBufferCount();
    gauge.form.Gauge(static_cast<double>(receipt.count) / kImageBytes * kGaugeSpan + kGaugeStart);
    gauge.form.Phase("program", receipt.count, kUploadBytes);
    gauge.loop.Yield();
    receipt.complete = receipt.count == kUploadBytes;
    const double elapsed = link.clock.Timer() - start;
    if (receipt.complete || elapsed > kUploadLimit || !link.Comm1.PortOpen()) return receipt;
    link.Comm1.WaitForInput(std::clamp(kUploadLimit - elapsed, 0.001, kLongestLook));
  }
}

bool SumAgrees(std::string_view bytes) {
  const auto code = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  return SumStr(bytes.substr(0, kImageBytes)) % 65536 == code(kImageBytes) * 256 + code(kImageBytes + 1);
}

/// The program is now the hub's: shows it as if its lines were entered one by one.
void ShowUploaded(Desk& desk) {
  desk.source.shown.LimitLine = LimitLineOf(desk.program());
  desk.view.LimitChanged();
  for (int line = 0; line < kLines; ++line) {
    SetIcon(desk.grid(), line);
    ShowDesc(desk.grid(), line);
    desk.upbox.Gauge(kGaugeStart + line * kGaugeSpan / (kLines - 1));
    desk.loop.Yield();
  }
  ShowDrive(desk.view);
  DrawArrows(desk.grid());
  desk.view.AutoScroll(0);
}

void TellFailure(const Link& link, const TransferGauge& gauge, const std::string& text) {
  TellFailedExchange(link, {.text = text});
  gauge.form.Hide();
}

bool MayReplace(Desk& desk) {
  if (!desk.source.Changed) return true;
  return desk.boxes.MsgBox({.text =
                                "You have made changes without Saving or Downloading.  Do you really want to "
                                "upload and replace your program?",
                            .title = "Upload",
                            .buttons = Buttons::OKCancel,
                            .icon = Icon::Question}) == Answer::OK;
}

std::optional<UploadResult> UploadWhileBusy(Desk& desk) {
  StopHub(desk.link());
  if (SilentCheckDrive(desk.link()).empty()) return std::nullopt;
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) return std::nullopt;
  // Shown for a device of any model; the check itself shows it only for models that exist.
  desk.source.link.DriveVersion = VersionText(desk.program().HubVersion);
  desk.view.HubChanged();
  if (!IsHub(desk.boxes, identity)) return std::nullopt;
  const UploadResult result = UploadProg(desk, desk.program().HubVersion);
  MarkChains(desk.grid());
  static_cast<void>(CheckDrive(desk));
  return result;
}

constexpr const char* kNotCorrect =
    "Your program did not upload correctly.  Make sure the cable connections are secure and that you are not "
    "working around electrical noise, such as a welder, a high powered motor or big relays.";

}  // namespace

ImageReading ReadImage(const Link& link, const TransferGauge& gauge) {
  DropInput(link);
  gauge.form.Gauge(kGaugeStart);
  gauge.form.Show();
  link.Comm1.Output("U");
  const Receipt receipt = AwaitImage(link, gauge, link.clock.Timer());
  std::string bytes = receipt.complete ? link.Comm1.Input() : std::string();
  if (bytes.size() < kUploadBytes) {
    TellFailure(link, gauge,
                "The Tavlo Hub stopped responding after " + Joined(receipt.count) +
                    " chars.  Is it connected to the right port and turned on?");
    return {UploadResult::Stopped, {}};
  }
  if (!SumAgrees(bytes)) {
    TellFailure(link, gauge, kNotCorrect);
    return {UploadResult::WrongSum, {}};
  }
  bytes.resize(kImageBytes);
  return {UploadResult::Done, std::move(bytes)};
}

UploadResult UploadProg(Desk& desk, float rev) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  const Link link = desk.link();
  const TransferGauge gauge = desk.uploading();
  const TransferUnderWay under_way(link);
  const double start = desk.clock.Timer();
  const ImageReading reading = ReadImage(link, gauge);
  const double end = desk.clock.Timer();
  // Keeps the rest of a garbled answer from the handler of events.
  if (reading.result == UploadResult::WrongSum) events.RestoreTo(0);
  if (reading.result != UploadResult::Done) {
    Happened(desk, "Upload not read");
    return reading.result;
  }
  NoteHubProgram(link, {.by = HubProgram::By::Upload,
                        .image = reading.image,
                        .HubIndex = desk.program().HubIndex,
                        .HubVersion = rev,
                        .bytes = kUploadBytes,
                        .file_name = {},
                        .at = end});
  Happened(desk, "Upload read: " + PaceText(kUploadBytes, start, end));
  try {
    Program read = desk.program();
    read.HubVersion = rev;
    DecodeImage(read, reading.image);
    const EditStep upload(desk, "upload");
    desk.program() = std::move(read);
  } catch (const DecodeError&) {
    TellFailure(link, gauge, kNotCorrect);
    return UploadResult::CannotDecode;
  }
  ShowUploaded(desk);
  desk.upbox.Hide();
  MarkUnchanged(desk, Unchanged::Uploaded);
  return UploadResult::Done;
}

std::optional<UploadResult> Upload(Desk& desk) {
  if (desk.source.link.Busy || !MayReplace(desk)) return std::nullopt;
  return WhileBusy(desk, [&desk] { return UploadWhileBusy(desk); });
}

}  // namespace tavlo
