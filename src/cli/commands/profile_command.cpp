// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/output_files.h"
#include "cli/desk/profile_picture.h"
#include "forms/analysis_tab.h"
#include "forms/registry.h"
#include "model/kinds.h"
#include "platform/encoding.h"

namespace tavlo::cli {
namespace {

/// The analysis page of a line's dialog, worked by this command.
class Page {
 public:
  /// Nothing for a line whose dialog has no such page.
  static std::optional<Page> Of(Program& program, int line) {
    const FormRow* row = FormOf(program.Prog[line].Type);
    auto form = row != nullptr ? row->make() : nullptr;
    if (!form || form->Analysis() == nullptr) return std::nullopt;
    return Page(std::move(form), program, line);
  }

  void Show(bool over_time) {
    form_->Click(Find(over_time ? "OptTime" : "OptDistance"));
    form_->Turn(Find("SSTab1"), 1);
  }
  [[nodiscard]] const AnalysisTab& Analysis() const { return *form_->Analysis(); }
  [[nodiscard]] std::string Caption(const std::string& name) const {
    return Utf8FromLatin1(std::get<Label*>(Find(name).control)->caption);
  }
  [[nodiscard]] std::string Caption(std::string_view name, std::size_t row) const {
    return Caption(std::string(name) + "(" + std::to_string(row) + ")");
  }
  [[nodiscard]] const GraphBox& Picture() const { return *std::get<GraphBox*>(Find("Graph").control); }

 private:
  Page(std::unique_ptr<Form> form, Program& program, int line) : form_(std::move(form)) {
    form_->Load(program, line);
  }
  [[nodiscard]] const Bound& Find(std::string_view name) const { return form_->Controls().Find(name); }

  std::unique_ptr<Form> form_;
};

Json AxisJson(Divisions divisions, const std::vector<std::string>& labels, const std::string& caption) {
  return {{"divisions", divisions.count},
          {"step", divisions.step},
          {"labels", labels},
          {"caption", Utf8FromLatin1(caption)}};
}

Json AsJson(const Page& page) {
  const auto& profile = page.Analysis().Profile();
  if (!profile) return {{"shape", nullptr}, {"message", page.Caption("lblCant")}};
  const GraphBox& picture = page.Picture();
  Json rows = Json::array();
  for (std::size_t row = 0; row < profile->rows.size(); ++row) {
    rows.push_back({{"label", page.Caption("StatLabel", row)},
                    {"time", page.Caption("TimeBox", row)},
                    {"distance", page.Caption("DistBox", row)}});
  }
  Json points = Json::array();
  for (const ProfilePoint& point : profile->points) {
    points.push_back(Json::array({point.time, point.speed, point.dist}));
  }
  const Graph graph = GraphDraw(picture.curve, picture.trace, kPictureSize);
  Json json = {{"shape", ShapeName(profile->shape)},
               {"rows", rows},
               {"peakSpeed", page.Caption("PeakSpeed")},
               {"points", points},
               {"xAxis", AxisJson(graph.x_divisions, XCaptions(graph.x_divisions), picture.x_caption)},
               {"yAxis", AxisJson(graph.y_divisions, YCaptions(graph.y_divisions), picture.y_caption)}};
  if (const auto& trace = page.Analysis().Trace()) {
    Json steps = Json::array();
    for (const OutputPoint& point : trace->points) {
      steps.push_back(Json::array({point.time, point.state, point.dist}));
    }
    json["output"] = {
        {"time", page.Caption("OutTime")}, {"distance", page.Caption("OutDist")}, {"points", steps}};
  }
  return json;
}

void Print(Console& console, const Page& page) {
  const auto& profile = page.Analysis().Profile();
  if (!profile) return console.Result(page.Caption("lblCant"));
  for (std::size_t row = 0; row < profile->rows.size(); ++row) {
    console.Result(page.Caption("StatLabel", row) + "\t" + page.Caption("TimeBox", row) + "\t" +
                   page.Caption("DistBox", row));
  }
  console.Result("Peak speed\t" + page.Caption("PeakSpeed"));
  if (page.Analysis().Trace()) {
    console.Result("Output set\t" + page.Caption("OutTime") + "\t" + page.Caption("OutDist"));
  }
}

std::string AsCsv(const MoveProfile& profile) {
  std::string csv = "seconds,rev/s,steps\n";
  for (const ProfilePoint& point : profile.points) {
    csv += Joined(point.time) + "," + Joined(point.speed) + "," + Joined(point.dist) + "\n";
  }
  return csv;
}

class ProfileCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "profile"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Show what a move of a program will do before it is ever run";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddLine(app, line_);
    AddChoice(app, "--over", over_, {"time", "distance"}, "What the graph goes over");
    AddOutput(app, "--svg", svg_path_, "Write the graph to FILE, or - for standard output");
    AddOutput(app, "--csv", csv_path_, "Write the points of the curve to FILE, or - for standard output");
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    for (const std::string& output : {svg_path_, csv_path_}) {
      if (ResultsCollide(console, json_, output)) return ExitCode::Usage;
      if (!output.empty() && IsSameFile(console, path_, output)) return ExitCode::File;
    }
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    const int line = line_ - 1;
    auto page = Page::Of(source.program, line);
    if (!page) {
      console.Note("line " + Joined(line_) + " is a line of kind " +
                   std::string(Mnemonic(source.program.Prog[line].Type)) +
                   "; a profile has FL, FLCS and FLSO alone");
      return ExitCode::Usage;
    }
    page->Show(over_ == "time");
    return Tell(console, *page);
  }

 private:
  ExitCode Tell(Console& console, const Page& page) const {
    const auto& profile = page.Analysis().Profile();
    if (profile && !svg_path_.empty() && !WriteOutput(console, svg_path_, SvgOf(page.Picture()))) {
      return ExitCode::File;
    }
    if (profile && !csv_path_.empty() && !WriteOutput(console, csv_path_, AsCsv(*profile)))
      return ExitCode::File;
    if (json_) {
      console.Result(JsonLine(AsJson(page)));
    } else if (!IsStandard(svg_path_) && !IsStandard(csv_path_)) {
      Print(console, page);
    }
    return ExitCode::Done;
  }

  std::string path_;
  int line_ = 1;
  std::string over_ = "time";
  std::string svg_path_;
  std::string csv_path_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeProfileCommand() {
  return std::make_unique<ProfileCommand>();
}

}  // namespace tavlo::cli
