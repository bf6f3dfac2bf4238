// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/tavlo.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <exception>

#include "cli/commands/command.h"
#include "cli/console/console.h"
#include "cli/console/json_text.h"
#include "cli/console/spelling.h"
#include "model/program_file.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

using Commands = std::vector<std::unique_ptr<Command>>;

Commands AllCommands() {
  constexpr std::array kMakers = {
      MakeShowCommand,     MakeListCommand,     MakeProfileCommand, MakeCheckCommand,
      MakeSimulateCommand, MakeCompileCommand,  MakeDecodeCommand,  MakeConvertCommand,
      MakeDownloadCommand, MakeUploadCommand,   MakeVerifyCommand,  MakeRunCommand,
      MakeTerminalCommand, MakeIdentifyCommand, MakeStopCommand,    MakePortsCommand};
  Commands commands;
  for (const auto make : kMakers) commands.push_back(make());
  return commands;
}

std::string ExitCodeText() {
  std::string text = "Exit codes:\n";
  for (const ExitCodeRow& row : kExitCodes) {
    std::string code = "  " + Joined(static_cast<int>(row.code));
    code.resize(8, ' ');
    text += code + std::string(row.meaning) + '\n';
  }
  return text;
}

constexpr std::string_view kHelp = "help";
constexpr std::string_view kSeeHelp = "Run with --help for more information.";

/// Asks for help and errors both come out of the parser as exceptions; it prints either.
ExitCode ExitParser(const CLI::App& app, const CLI::ParseError& error, Environment& environment) {
  const bool done = app.exit(error, environment.out, environment.err) == 0;
  if (!done) environment.failures.emplace_back(error.what());
  return done ? ExitCode::Done : ExitCode::Usage;
}

/// How long an end waits for a reader who has stopped taking.
constexpr double kPatience = 1;

ExitCode ExecuteGuarded(Command& command, Environment& environment) {
  Console console(environment);
  try {
    return command.Execute(environment);
  } catch (const Interrupted& interrupted) {
    if (interrupted.time_over) {
      console.Note("gave up: --timeout is over");
      return ExitCode::Hub;
    }
    console.Note("interrupted");
    return ExitCode::Interrupted;
  } catch (const std::bad_alloc&) {
    console.Note("there is not enough memory");
    return ExitCode::Other;
  } catch (const std::exception&) {
    // Its text is a library's, for whoever writes programs.
    console.Note(
        "something went wrong in here that should not have; --trace tells what passed over the line");
    return ExitCode::Other;
  }
}

/// Prints `error_object`, if there is one, and waits until everything is written. After an interruption or a
/// run it waits only for a limited time.
ExitCode Deliver(Environment& environment, ExitCode code, bool prints_events,
                 const std::string& error_object) {
  Outlet* outlet = environment.outlet;
  const bool bounded = outlet != nullptr && (prints_events || code == ExitCode::Interrupted);
  const HeldOutput held(bounded ? outlet : nullptr);
  if (!error_object.empty()) Console(environment).Result(error_object);
  environment.out.flush();
  if (bounded) outlet->Finish(kPatience);
  environment.out.flush();
  const int dropped = outlet != nullptr ? outlet->DroppedRows() : 0;
  if (environment.out.good() && dropped == 0) return code;
  if (code == ExitCode::Done) code = ExitCode::Other;
  Console(environment)
      .Note(dropped > 0 ? Joined(dropped) + " rows of the result were not printed, for nobody took them"
                        : "the result could not be written");
  if (bounded) outlet->Finish(kPatience);
  return code;
}

/// The commands of the companion on a parser of their own.
class CommandLine {
 public:
  explicit CommandLine(Environment& environment) : environment_(environment), commands_(AllCommands()) {
    app_.set_version_flag("--version", "tavlo " + VersionTextOf(kVersion));
    // A missing command is reported below, so that a wrong one is reported by its name.
    app_.require_subcommand(0, 1);
    app_.footer(ExitCodeText());
    for (const auto& command : commands_) Add(*command);
    app_.add_subcommand(std::string(kHelp), "Print the help of a command")
        ->add_option("COMMAND", helped_, "The command; of all of them unless told")
        ->type_name("");
  }

  ExitCode Run(std::vector<std::string> arguments) {
    // The help of a command is what its own option prints.
    if (arguments.size() == 1 && arguments[0] == kHelp) arguments = {"--help"};
    if (arguments.size() == 2 && arguments[0] == kHelp) arguments = {arguments[1], "--help"};
    if (!arguments.empty() && !arguments.front().starts_with('-') && !IsCommand(arguments.front())) {
      return NoSuchCommand(arguments.front());
    }
    try {
      app_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
      if (chosen_ == nullptr) throw CLI::RequiredError::Subcommand(1);
    } catch (const CLI::ParseError& error) {
      return ExitParser(app_, error, environment_);
    }
    const bool talks = app_.get_subcommands().front()->get_option_no_throw("--port") != nullptr;
    const HeldOutput held(talks ? environment_.outlet : nullptr);
    return ExecuteGuarded(*chosen_, environment_);
  }
  [[nodiscard]] bool PrintsEvents() const { return chosen_ != nullptr && chosen_->PrintsEvents(); }

 private:
  void Add(Command& command) {
    CLI::App* sub = app_.add_subcommand(std::string(command.Name()), std::string(command.Description()));
    command.AddOptions(*sub);
    sub->add_flag("-q,--quiet", environment_.quiet, "Tell results and failures alone");
    sub->callback([this, &command] { chosen_ = &command; });
  }
  [[nodiscard]] bool IsCommand(const std::string& word) const {
    return word == kHelp ||
           std::ranges::any_of(commands_, [&](const auto& command) { return command->Name() == word; });
  }
  ExitCode NoSuchCommand(const std::string& word) {
    std::vector<std::string> names = {std::string(kHelp)};
    for (const auto& command : commands_) names.emplace_back(command->Name());
    const std::string nearest = NearestWord(word, names);
    Console console(environment_);
    console.Note("there is no command '" + word + "'" +
                 (nearest.empty() ? "" : "; did you mean '" + nearest + "'?"));
    environment_.err << kSeeHelp << '\n' << std::flush;
    return ExitCode::Usage;
  }

  Environment& environment_;
  const Commands commands_;
  CLI::App app_{"The command line companion of the Tavlo Composer", "tavlo"};
  Command* chosen_ = nullptr;
  std::string helped_;
};

}  // namespace

ExitCode RunTavlo(const std::vector<std::string>& arguments, Environment& environment) {
  CommandLine line(environment);
  ExitCode code = line.Run(arguments);
  const bool json = std::ranges::find(arguments, "--json") != arguments.end();
  const bool tells_error = json && code != ExitCode::Done && !environment.error_told;
  return Deliver(environment, code, line.PrintsEvents(),
                 tells_error ? JsonLine({{"error", ErrorOf(environment, code)}}) : std::string());
}

}  // namespace tavlo::cli
