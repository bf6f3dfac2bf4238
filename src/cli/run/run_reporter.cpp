// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_reporter.h"

#include <cmath>
#include <utility>

#include "cli/console/json_text.h"
#include "model/kinds.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo::cli {
namespace {

struct EventName {
  std::string_view row;
  std::string_view json;
};

EventName NameOf(LineEvent event) {
  switch (event) {
    case LineEvent::Started: return {"started", "started"};
    case LineEvent::WentOn: return {"went on", "wentOn"};
    case LineEvent::Finished: return {"finished", "finished"};
  }
  return {};
}

std::string_view ReasonOf(RunEnd end) {
  switch (end) {
    case RunEnd::None: return "none";
    case RunEnd::Interrupted: return "interrupted";
    case RunEnd::Stopped: return "stopped";
    case RunEnd::TimeOver: return "timeOver";
    case RunEnd::Halted: return "halted";
    case RunEnd::Restarted: return "restarted";
    case RunEnd::PortLost: return "portLost";
    case RunEnd::OutputLost: return "outputLost";
  }
  return "";
}

/// To the millisecond; the line itself is no more exact.
double Rounded(double seconds) {
  return std::round(seconds * 1000) / 1000;
}

}  // namespace

void RunReporter::Line(LineEvent event, int line) {
  const EventName name = NameOf(event);
  const std::string caption = ShownCaption(source_.shown.rows[line].desc);
  if (json_) {
    Json json = {{"event", name.json}, {"seconds", Rounded(watch_.Seconds())}, {"line", line + 1}};
    if (texts_known_) {
      json["type"] = Mnemonic(source_.program.Prog[line].Type);
      json["text"] = Utf8FromLatin1(caption);
    }
    console_.Result(JsonLine(json));
    return;
  }
  std::string row = Joined(line + 1) + '\t' + std::string(name.row);
  if (texts_known_) row += '\t' + ShownText(caption);
  console_.Result(row);
}

void RunReporter::Display(int row, std::string_view text) {
  if (json_) {
    console_.Result(JsonLine({{"event", "display"},
                              {"seconds", Rounded(watch_.Seconds())},
                              {"row", row},
                              {"text", Utf8FromLatin1(text)}}));
    return;
  }
  console_.Result("display\t" + Joined(row) + '\t' + ShownText(text));
}

void RunReporter::Status() {
  for (int axis = 0; axis < kAxes; ++axis) {
    if (!std::exchange(status_changed_[axis], false)) continue;
    const AxisStatus status(source_, axis);
    if (status == std::exchange(status_[axis], status)) continue;
    if (json_) {
      Json json = {{"event", "status"}, {"seconds", Rounded(watch_.Seconds())}, {"axis", axis + 1}};
      status.AddTo(json);
      console_.Result(JsonLine(json));
    } else {
      const bool is_hub = source_.program.HubIndex == HubQuad && axis == kHubQuadIO;
      const std::string name = is_hub ? "hub" : "axis " + Joined(axis + 1);
      console_.Result("status\t" + name + '\t' + status.Text());
    }
  }
}

void RunReporter::Fault(const ServoFaultPanel& panel) {
  if (!json_) return;
  Json alarms = Json::array();
  for (std::size_t bit = 0; bit < panel.Label1.size(); ++bit) {
    if ((panel.code >> bit & 1) != 0) alarms.push_back(panel.Label1[bit]);
  }
  console_.Result(JsonLine({{"event", "fault"},
                            {"seconds", Rounded(watch_.Seconds())},
                            {"axis", panel.axis},
                            {"code", panel.code},
                            {"message", panel.FaultMessage},
                            {"alarms", alarms}}));
}

void RunReporter::End(RunEnd end, const OpenedPort& opened, std::string_view cause) {
  if (!json_ || end == RunEnd::None) return;
  Json json = {{"event", "ended"}, {"seconds", Rounded(watch_.Seconds())}, {"reason", ReasonOf(end)}};
  if (!cause.empty()) json["cause"] = cause;
  console_.Result(JsonLine(WithPort(std::move(json), opened)));
}

}  // namespace tavlo::cli
