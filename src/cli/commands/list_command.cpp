// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "cli/desk/output_files.h"
#include "cli/desk/pdf_file.h"
#include "platform/encoding.h"
#include "text/shown_listing.h"

namespace tavlo::cli {
namespace {

Json TextsJson(const std::vector<std::string>& latin1) {
  Json texts = Json::array();
  for (const std::string& text : latin1) texts.push_back(Utf8FromLatin1(text));
  return texts;
}

Json LinesJson(const Listing& listing) {
  Json lines = Json::array();
  for (const ListedLine& line : listing.lines) {
    std::vector<std::string> printed;
    for (const LongRow& row : line.rows) printed.push_back(AsPrinted(row));
    lines.push_back({{"line", line.line}, {"printed", TextsJson(printed)}});
  }
  return lines;
}

Json UsesJson(const std::vector<UseRow>& uses) {
  Json rows = Json::array();
  for (const UseRow& use : uses) {
    Json row = {{"name", Utf8FromLatin1(use.name)}, {"lines", use.lines}};
    if (!use.filled_by.empty()) row["filledBy"] = use.filled_by;
    rows.push_back(std::move(row));
  }
  return rows;
}

Json ReferenceJson(const CrossReference& reference) {
  Json jumps = Json::array();
  for (const JumpRow& jump : reference.jumps) {
    jumps.push_back({{"from", jump.from ? Json(*jump.from) : Json()}, {"how", jump.how}, {"to", jump.to}});
  }
  return {{"inputs", UsesJson(reference.inputs)},
          {"outputs", UsesJson(reference.outputs)},
          {"variables", UsesJson(reference.variables)},
          {"axes", UsesJson(reference.axes)},
          {"jumps", jumps}};
}

class ListCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "list"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Print a program in full, as on paper: heading, hardware, lines";
  }
  void AddOptions(CLI::App& app) override {
    AddFile(app, path_, true);
    AddOutput(app, "--pdf", pdf_path_, "Write the listing on pages to FILE, or - for standard output");
    AddFlag(app, "--xref", xref_, "Add which lines use what, and which lead where");
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, pdf_path_)) return ExitCode::Usage;
    if (!pdf_path_.empty() && IsSameFile(console, path_, pdf_path_)) return ExitCode::File;
    Source source;
    if (!LoadProgram(source, console, path_)) return ExitCode::File;
    // A stream has no name.
    const std::string name = IsStandard(path_) ? std::string(kUntitled) : source.file_name;
    const Listing listing = MakeListing(source.program, name);
    const CrossReference reference = xref_ ? MakeCrossReference(source.program) : CrossReference();
    if (!pdf_path_.empty()) {
      const ExitCode written = WritePdf(console, OnPaper(listing, name, SectionsOf(reference)));
      if (written != ExitCode::Done) return written;
    }
    if (json_) {
      console.Result(JsonLine(AsJson(listing, reference)));
    } else if (!IsStandard(pdf_path_)) {
      environment.out << AsText(listing, SectionsOf(reference));
    }
    return ExitCode::Done;
  }

 private:
  [[nodiscard]] ExitCode WritePdf(Console& console, const PaperDocument& document) const {
    std::string pdf;
    if (const Outcome made = MakePdfFile(document, pdf); !made) {
      console.Note("cannot make a PDF: " + made.Why());
      return ExitCode::Other;
    }
    return WriteOutput(console, pdf_path_, pdf) ? ExitCode::Done : ExitCode::File;
  }

  [[nodiscard]] Json AsJson(const Listing& listing, const CrossReference& reference) const {
    Json json = {{"heading", listing.heading},
                 {"hardware", TextsJson(listing.hardware)},
                 {"lines", LinesJson(listing)}};
    if (xref_) json["xref"] = ReferenceJson(reference);
    return json;
  }

  std::string path_;
  std::string pdf_path_;
  bool xref_ = false;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeListCommand() {
  return std::make_unique<ListCommand>();
}

}  // namespace tavlo::cli
