// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/time_line_json.h"

#include "cli/simulate/run_words.h"
#include "model/kinds.h"
#include "motion/units.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "text/short_desc.h"

namespace tavlo::cli {
namespace {

Json SecondsJson(const std::optional<double>& seconds) {
  return seconds ? Json(RoundedSeconds(*seconds)) : Json();
}

std::string SecondsText(const std::optional<double>& seconds) {
  return seconds ? Joined(RoundedSeconds(*seconds)) : "null";
}

}  // namespace

void TimeLineJson::SawLine(const Happening& happening) {
  auto& open = open_lines_[happening.line];
  if (happening.what == Happened::Started) {
    open.push_back(lines_.size());
    lines_.push_back({happening.line, happening.seconds, {}, {}, {}});
    return;
  }
  if (open.empty()) return;
  if (happening.what == Happened::WentOn) {
    lines_[open.back()].went_on = happening.seconds;
    return;
  }
  LineRun& run = lines_[open.front()];
  open.pop_front();
  run.end = happening.seconds;
  run.places = happening.places;
}

void TimeLineJson::Saw(const Happening& happening) {
  const Json seconds = SecondsJson(happening.seconds);
  switch (happening.what) {
    case Happened::Started:
    case Happened::WentOn:
    case Happened::Finished: return SawLine(happening);
    case Happened::Output:
      outputs_.push_back({{"seconds", seconds},
                          {"axis", happening.axis + 1},
                          {"output", NameOfOutput(happening.output)},
                          {"level", NameOfLevel(happening.high)}});
      return;
    case Happened::Display:
      display_.push_back(
          {{"seconds", seconds}, {"row", happening.row + 1}, {"text", Utf8FromLatin1(happening.text)}});
      return;
    case Happened::Act:
      acts_.push_back({{"seconds", seconds},
                       {"act", Utf8FromLatin1(happening.act->text)},
                       {"row", happening.act->row},
                       {"effect", happening.had_effect}});
      return;
    case Happened::Waits:
      open_waits_[happening.line] = waits_.size();
      waits_.push_back({happening.line, happening.seconds, {}, happening.text});
      return;
    case Happened::Waited:
      if (const auto wait = open_waits_.extract(happening.line))
        waits_[wait.mapped()].end = happening.seconds;
      return;
  }
}

Json TimeLineJson::JsonOf(const std::vector<AxisPlace>& places) const {
  const Program& program = source_.program;
  Json json = Json::array();
  for (const AxisPlace& place : places) {
    const std::string& unit = program.Axis.UnitName[static_cast<std::size_t>(place.axis)];
    json.push_back({{"axis", place.axis + 1},
                    {"steps", place.steps},
                    {"position", FormatDist(program, place.steps, place.axis)},
                    {"unit", Utf8FromLatin1(unit)}});
  }
  return json;
}

/// What the object of a line has in each of its runs, without its end.
std::string TimeLineJson::Beginning(int line) const {
  std::string text = JsonLine({{"line", line + 1},
                               {"type", Mnemonic(source_.program.Prog[line].Type)},
                               {"text", Utf8FromLatin1(ShownCaption(source_.shown.rows[line].desc))}});
  text.pop_back();
  return text;
}

std::string TimeLineJson::LinesText() const {
  std::map<int, std::string> beginnings;
  std::string text;
  for (const LineRun& run : lines_) {
    std::string& beginning = beginnings[run.line];
    if (beginning.empty()) beginning = Beginning(run.line);
    if (!text.empty()) text += ',';
    text += beginning + ",\"start\":" + SecondsText(run.start) + ",\"wentOn\":" + SecondsText(run.went_on) +
            ",\"end\":" + SecondsText(run.end) +
            ",\"positions\":" + (run.places.empty() ? "[]" : JsonLine(JsonOf(run.places))) + '}';
  }
  return '[' + text + ']';
}

std::string TimeLineJson::Document(const RunSummary& summary, double limit, const Json& error) const {
  Json halt;
  if (summary.halt) {
    halt = {{"seconds", SecondsJson(summary.halt->seconds)},
            {"line", summary.halt->line + 1},
            {"cause", summary.halt->cause}};
  }
  Json waits = Json::array();
  for (const WaitRun& wait : waits_) {
    waits.push_back({{"line", wait.line + 1},
                     {"start", SecondsJson(wait.start)},
                     {"end", SecondsJson(wait.end)},
                     {"freedBy", wait.freed_by}});
  }
  Json turning = Json::array();
  for (const int axis : summary.turning) turning.push_back(axis + 1);
  Json never = Json::array();
  for (const int line : NeverRan(source_.program, summary)) never.push_back(line + 1);
  std::string text = JsonLine({{"total", SecondsJson(summary.total)},
                               {"ended", NameOf(summary.ending)},
                               {"message", EndingText(summary, limit)},
                               {"halt", halt}});
  text.pop_back();
  text += ",\"lines\":" + LinesText() + ",\"outputs\":" + JsonLine(outputs_) +
          ",\"display\":" + JsonLine(display_) + ",\"acts\":" + JsonLine(acts_) +
          ",\"waits\":" + JsonLine(waits) + ",\"stillTurning\":" + JsonLine(turning) +
          ",\"neverRan\":" + JsonLine(never);
  if (!error.is_null()) text += ",\"error\":" + JsonLine(error);
  return text + '}';
}

}  // namespace tavlo::cli
