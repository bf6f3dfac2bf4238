// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/upload.h"

#include <algorithm>

#include "codegen/compile.h"
#include "codegen/decode.h"
#include "codegen/encodings.h"
#include "link/drive_check.h"
#include "link/operation.h"
#include "link/polled.h"
#include "platform/number_format.h"
#include "session/grid.h"

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
Receipt AwaitImage(Desk& desk, double start) {
  Receipt receipt;
  for (;;) {
    receipt.count = desk.Comm1.InBufferCount();
    desk.upbox.Gauge(static_cast<double>(receipt.count) / kImageBytes * kGaugeSpan + kGaugeStart);
    desk.upbox.Phase("program", receipt.count, kUploadBytes);
    desk.loop.Yield();
    receipt.complete = receipt.count == kUploadBytes;
    const double elapsed = desk.clock.Timer() - start;
    if (receipt.complete || elapsed > kUploadLimit || !desk.Comm1.PortOpen()) return receipt;
    desk.Comm1.WaitForInput(std::clamp(kUploadLimit - elapsed, 0.001, kLongestLook));
  }
}

bool SumAgrees(std::string_view bytes) {
  const auto code = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  return SumStr(bytes.substr(0, kImageBytes)) % 65536 == code(kImageBytes) * 256 + code(kImageBytes + 1);
}

/// The program is the hub's now: shows it as the lines would come in one by one.
void ShowUploaded(Desk& desk) {
  desk.source.LimitLine = static_cast<std::int16_t>(desk.program().LimitBranch);
  desk.view.LimitChanged();
  for (int line = 0; line < kLines; ++line) {
    SetIcon(desk, line);
    ShowDesc(desk, line);
    desk.upbox.Gauge(kGaugeStart + line * kGaugeSpan / (kLines - 1));
    desk.loop.Yield();
  }
  ShowDrive(desk);
  DrawArrows(desk);
  desk.view.AutoScroll(0);
}

void TellFailure(Desk& desk, const std::string& text) {
  TellFailedExchange(desk, {.text = text});
  desk.upbox.Hide();
}

std::optional<UploadResult> UploadWhileBusy(Desk& desk) {
  StopHub(desk);
  if (SilentCheckDrive(desk).empty()) return std::nullopt;
  const std::string identity = CheckDrive(desk);
  if (identity.empty()) return std::nullopt;
  // Shown for a device of any model, where the check itself shows it for the models that there are.
  desk.source.DriveVersion = VersionText(desk.program().HubVersion);
  desk.view.HubChanged();
  if (!IsHub(desk, identity)) return std::nullopt;
  const UploadResult result = UploadProg(desk, desk.program().HubVersion);
  MarkChains(desk);
  static_cast<void>(CheckDrive(desk));
  return result;
}

constexpr const char* kNotCorrect =
    "Your program did not upload correctly.  Make sure the cable connections are secure and that you are not "
    "working around electrical noise, such as a welder, a high powered motor or big relays.";

}  // namespace

ImageReading ReadImage(Desk& desk) {
  DropInput(desk);
  desk.upbox.Gauge(kGaugeStart);
  desk.upbox.Show();
  desk.Comm1.Output("U");
  const Receipt receipt = AwaitImage(desk, desk.clock.Timer());
  std::string bytes = receipt.complete ? desk.Comm1.Input() : std::string();
  if (bytes.size() < kUploadBytes) {
    TellFailure(desk, "The Tavlo Hub stopped responding after " + Joined(receipt.count) +
                          " chars.  Is it connected to the right port and turned on?");
    return {UploadResult::Stopped, {}};
  }
  if (!SumAgrees(bytes)) {
    TellFailure(desk, kNotCorrect);
    return {UploadResult::WrongSum, {}};
  }
  bytes.resize(kImageBytes);
  return {UploadResult::Done, std::move(bytes)};
}

UploadResult UploadProg(Desk& desk, float rev) {
  EventsOff events(desk.Comm1);
  events.RestoreTo(1);
  const ImageReading reading = ReadImage(desk);
  // What may still come of a garbled answer is kept from the handler of events.
  if (reading.result == UploadResult::WrongSum) events.RestoreTo(0);
  if (reading.result != UploadResult::Done) return reading.result;
  try {
    Program read = desk.program();
    read.HubVersion = rev;
    DecodeImage(read, reading.image);
    desk.program() = std::move(read);
  } catch (const DecodeError&) {
    TellFailure(desk, kNotCorrect);
    return UploadResult::CannotDecode;
  }
  ShowUploaded(desk);
  desk.upbox.Hide();
  desk.source.Changed = false;
  return UploadResult::Done;
}

std::optional<UploadResult> Upload(Desk& desk) {
  if (desk.source.Busy) return std::nullopt;
  return WhileBusy(desk, [&desk] { return UploadWhileBusy(desk); });
}

}  // namespace tavlo
