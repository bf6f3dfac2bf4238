// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/time_line_rows.h"

#include <utility>

#include "cli/simulate/run_words.h"
#include "motion/units.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo::cli {
namespace {

constexpr std::size_t kManyBytes = 1U << 16U;

std::string SecondsText(double seconds) {
  return Format(seconds, "0.000");
}

}  // namespace

TimeLineRows::TimeLineRows(Console& console, const Source& source) : console_(console), source_(source) {
  for (std::size_t line = 0; line < texts_.size(); ++line) {
    texts_[line] = ShownText(ShownCaption(source.shown.rows[line].desc));
  }
}

void TimeLineRows::Row(double seconds, const std::string& text) {
  rows_ += SecondsText(seconds) + '\t' + text + '\n';
  if (rows_.size() > kManyBytes) Send();
}

void TimeLineRows::Send() {
  if (!rows_.empty()) console_.Bytes(std::exchange(rows_, {}));
}

void TimeLineRows::LineRow(const Happening& happening, std::string_view event) {
  std::string text = Joined(happening.line + 1) + '\t' + std::string(event) + '\t' + TextOf(happening.line);
  const Program& program = source_.program;
  for (const AxisPlace& place : happening.places) {
    text += '\t' + ShownText(NameOfAxis(program, place.axis)) + ' ' +
            FormatDist(program, place.steps, place.axis) + ' ' +
            ShownText(program.Axis.UnitName[static_cast<std::size_t>(place.axis)]);
  }
  Row(happening.seconds, text);
}

void TimeLineRows::TellStarted() {
  if (const auto started = std::exchange(started_, std::nullopt)) LineRow(*started, "started");
}

void TimeLineRows::Saw(const Happening& happening) {
  if (happening.what == Happened::Finished && started_ && started_->line == happening.line &&
      started_->seconds == happening.seconds) {
    started_.reset();
    return LineRow(happening, "ran");
  }
  TellStarted();
  switch (happening.what) {
    case Happened::Started: started_ = happening; return;
    case Happened::WentOn: return LineRow(happening, "went on");
    case Happened::Finished: return LineRow(happening, "finished");
    case Happened::Waited: {
      Waited& waited = waited_[happening.line];
      ++waited.times;
      waited.seconds += happening.waited;
      break;
    }
    case Happened::Output:
    case Happened::Display:
    case Happened::Act:
    case Happened::Waits: break;
  }
  Row(happening.seconds, TextOf(happening));
}

std::string TimeLineRows::TextOf(const Happening& happening) const {
  switch (happening.what) {
    case Happened::Output:
      return "output\t" + ShownText(NameOfAxis(source_.program, happening.axis)) + '\t' +
             NameOfOutput(happening.output) + ' ' + std::string(NameOfLevel(happening.high));
    case Happened::Display: return "display\t" + Joined(happening.row + 1) + '\t' + ShownText(happening.text);
    case Happened::Act:
      return "act\t" + ShownText(happening.act->text) + (happening.had_effect ? "" : "\tnothing happens");
    case Happened::Waits: return Joined(happening.line + 1) + "\twaits\t" + happening.text;
    case Happened::Waited:
      return Joined(happening.line + 1) + "\twaited\t" + SecondsText(happening.waited) + " s";
    case Happened::Started:
    case Happened::WentOn:
    case Happened::Finished: break;
  }
  return TextOf(happening.line);
}

void TimeLineRows::Summarise(const RunSummary& summary, double limit) {
  TellStarted();
  rows_ += "Total\t" + SecondsText(summary.total) + "\nEnded\t" + EndingText(summary, limit) + '\n';
  for (const auto& [line, waited] : waited_) {
    rows_ += "Waited\t" + Joined(line + 1) + '\t' + SecondsText(waited.seconds) + " s" +
             (waited.times > 1 ? " in " + Joined(waited.times) + " waits" : "") + '\n';
  }
  for (const int axis : summary.turning) {
    rows_ += "Still turns\t" + ShownText(NameOfAxis(source_.program, axis)) + '\n';
  }
  for (const int line : NeverRan(source_.program, summary)) {
    rows_ += "Never ran\t" + Joined(line + 1) + '\t' + TextOf(line) + '\n';
  }
  Send();
}

}  // namespace tavlo::cli
