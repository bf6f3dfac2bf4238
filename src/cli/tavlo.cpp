// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/tavlo.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <exception>

#include "cli/command.h"
#include "cli/console.h"
#include "model/program_file.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

using Commands = std::vector<std::unique_ptr<Command>>;

Commands AllCommands() {
  constexpr std::array kMakers = {MakeShowCommand,     MakeCheckCommand,    MakeCompileCommand,
                                  MakeDecodeCommand,   MakeDownloadCommand, MakeUploadCommand,
                                  MakeVerifyCommand,   MakeRunCommand,      MakeTerminalCommand,
                                  MakeIdentifyCommand, MakePortsCommand};
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

/// Asks for help and errors both come out of the parser as exceptions; it prints either.
ExitCode ExitParser(const CLI::App& app, const CLI::ParseError& error, Environment& environment) {
  return app.exit(error, environment.out, environment.err) == 0 ? ExitCode::Done : ExitCode::Usage;
}

ExitCode ExecuteGuarded(Command& command, Environment& environment) {
  try {
    return command.Execute(environment);
  } catch (const Interrupted&) {
    Console(environment).Note("interrupted");
    return ExitCode::Interrupted;
  } catch (const std::exception& error) {
    Console(environment).Note(error.what());
    return ExitCode::Other;
  }
}

}  // namespace

ExitCode RunTavlo(const std::vector<std::string>& arguments, Environment& environment) {
  CLI::App app("The command line companion of the Tavlo Composer", "tavlo");
  app.set_version_flag("--version", "tavlo " + VersionTextOf(kVersion));
  // None at all is told below, so that a wrong one is told by its name.
  app.require_subcommand(0, 1);
  app.footer(ExitCodeText());
  const Commands commands = AllCommands();
  Command* chosen = nullptr;
  for (const auto& command : commands) {
    CLI::App* sub = app.add_subcommand(std::string(command->Name()), std::string(command->Description()));
    command->AddOptions(*sub);
    sub->callback([&chosen, &command] { chosen = command.get(); });
  }
  ExitCode code = ExitCode::Done;
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    if (chosen == nullptr) throw CLI::RequiredError::Subcommand(1);
    code = ExecuteGuarded(*chosen, environment);
  } catch (const CLI::ParseError& error) {
    code = ExitParser(app, error, environment);
  }
  environment.out.flush();
  if (environment.out.good()) return code;
  if (code == ExitCode::Done) code = ExitCode::Other;
  Console(environment).Note("the result could not be written");
  return code;
}

}  // namespace tavlo::cli
