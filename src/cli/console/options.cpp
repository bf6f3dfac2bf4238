// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>

#include "link/com_port.h"
#include "model/file_examination.h"
#include "model/instruction.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr std::string_view kEmptyName = "the name is empty";

}  // namespace

std::optional<PortName> ParsePort(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const bool number = std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  if (!number) return PortName{0, std::string(text)};
  const int comm = text.size() == 1 ? text[0] - '0' : 0;
  return comm >= 1 && comm <= kPorts ? std::optional(PortName{comm, ""}) : std::nullopt;
}

std::optional<int> ParseFirmware(std::string_view text) {
  constexpr double kLowest = 100;
  constexpr double kHighest = 355;
  const auto version = ParseNumber(text);
  if (!version) return std::nullopt;
  const double hundredths = std::round(*version * 100);
  const bool two_places = std::abs(*version * 100 - hundredths) < 1e-6;
  if (!two_places || hundredths < kLowest || hundredths > kHighest) return std::nullopt;
  return static_cast<int>(hundredths - kLowest);
}

bool IsProgramName(std::string_view path) {
  return KindByName(path) == FileKind::HubProg;
}

PortName LineOptions::Name() const {
  return ParsePort(port).value_or(PortName{0, port});
}

void AddFile(CLI::App& app, std::string& path, bool required) {
  app.add_option("FILE", path, "Program file (.TVH), or - for standard input")
      ->required(required)
      ->type_name("");
}

void AddOldFile(CLI::App& app, std::string& path) {
  app.add_option("OLD", path, "Program file of any version (.OSK or .TVH), or - for standard input")
      ->required()
      ->type_name("");
}

void AddNewFile(CLI::App& app, const std::string& option, std::string& path) {
  constexpr const char* kMeaning =
      "Program file (.TVH) to write, or - for standard output; a file that is there is replaced";
  app.add_option(option, path, kMeaning)
      ->required()
      ->type_name(option.starts_with('-') ? "FILE" : "")
      ->check(CLI::Validator(
          [](const std::string& text) {
            if (text.empty()) return std::string(kEmptyName);
            return IsStandard(text) || IsProgramName(text) ? "" : "'" + text + "' does not end in .TVH";
          },
          ""));
}

void AddImageToRead(CLI::App& app, std::string& path) {
  app.add_option("IMAGE", path, "The 8192 bytes of a hub's memory, or - for standard input")
      ->required()
      ->type_name("");
}

void AddImageToWrite(CLI::App& app, std::string& path) {
  app.add_option("-o,--output", path,
                 "Write the 8192 bytes of the hub's memory to IMAGE, or - for standard output")
      ->type_name("IMAGE")
      ->check(CLI::Validator(
          [](const std::string& text) { return std::string(text.empty() ? kEmptyName : ""); }, ""));
}

void AddInput(CLI::App& app, const std::string& option, std::string& path, const std::string& description) {
  AddOutput(app, option, path, description);
}

void AddOutput(CLI::App& app, const std::string& option, std::string& path, const std::string& description) {
  app.add_option(option, path, description)
      ->type_name("FILE")
      ->check(CLI::Validator(
          [](const std::string& text) { return std::string(text.empty() ? kEmptyName : ""); }, ""));
}

void AddLine(CLI::App& app, int& line) {
  app.add_option("LINE", line, "Number of the line, 1 to 200")
      ->required()
      ->type_name("")
      ->check(CLI::Validator(
          [](const std::string& text) {
            const auto number = ParseNumber(text);
            const bool fits = number && *number >= 1 && *number <= kLines && *number == std::floor(*number);
            return fits ? "" : "'" + text + "' is no line from 1 to " + Joined(kLines);
          },
          ""));
}

void AddChoice(CLI::App& app, const std::string& option, std::string& choice,
               const std::vector<std::string>& words, const std::string& description) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : "|") + word;
  app.add_option(option, choice, description)
      ->type_name(all)
      ->check(CLI::Validator(
          [words, all](const std::string& text) {
            return std::ranges::find(words, text) != words.end() ? "" : "'" + text + "' is none of " + all;
          },
          ""));
}

void AddJson(CLI::App& app, bool& json) {
  AddFlag(app, "--json", json, "Print the result as JSON");
}

void AddFlag(CLI::App& app, const std::string& option, bool& on, const std::string& description) {
  app.add_flag(option, on, description);
}

void AddChecked(CLI::App& app, const std::string& option, std::string& text, const std::string& type,
                const std::string& description, std::function<std::string(const std::string&)> complaint) {
  app.add_option(option, text, description)
      ->type_name(type)
      ->check(CLI::Validator(
          [complaint = std::move(complaint)](const std::string& typed) { return complaint(typed); }, ""));
}

void AddFlagOfFile(CLI::App& app, const std::string& option, bool& on, const std::string& description) {
  app.add_flag(option, on, description)->needs(app.get_option("FILE"));
}

void AddLineOptions(CLI::App& app, LineOptions& options) {
  app.add_option("-p,--port", options.port, "The hub's port: 1 to 8 for Comm 1 to Comm 8, or a device's path")
      ->envname("TAVLO_PORT")
      ->required()
      ->type_name("P")
      ->check(CLI::Validator(
          [](const std::string& text) {
            return ParsePort(text) ? "" : "'" + text + "' is neither 1 to 8 nor a path";
          },
          ""));
  AddSeconds(app, "--timeout", options.timeout, "Give up what is not done after SECONDS");
  AddFlag(app, "--trace", options.trace, "Print the bytes both ways on standard error");
}

void AddNoStop(CLI::App& app, bool& no_stop) {
  AddFlag(app, "--no-stop", no_stop, "Do not stop the machine first; nothing may be waiting at the hub");
}

void AddAnswerOptions(CLI::App& app, AnswerOptions& options) {
  CLI::Option* yes = app.add_flag("--yes", options.yes, "Answer every question with Yes or OK");
  app.add_flag("--no", options.no, "Answer every question with No or Cancel")->excludes(yes);
}

void AddSeconds(CLI::App& app, const std::string& option, std::optional<double>& seconds,
                const std::string& description) {
  app.add_option(option, seconds, description)
      ->type_name("SECONDS")
      ->check(CLI::Validator(
          [](const std::string& text) {
            constexpr double kLongest = 1e9;
            const auto number = ParseNumber(text);
            const bool fits = number && *number >= 0 && *number <= kLongest;
            return fits ? "" : "'" + text + "' is no number of seconds";
          },
          ""));
}

void AddFirmware(CLI::App& app, int& revision_byte) {
  app.add_option_function<std::string>(
         "--firmware",
         [&revision_byte](const std::string& text) {
           revision_byte = ParseFirmware(text).value_or(revision_byte);
         },
         "Firmware of the hub to compile for, 1.00 to 3.55")
      ->type_name("X.YY")
      ->default_str("1.38")
      ->check(CLI::Validator(
          [](const std::string& text) {
            return ParseFirmware(text) ? "" : "'" + text + "' is no firmware from 1.00 to 3.55";
          },
          ""));
}

}  // namespace tavlo::cli
