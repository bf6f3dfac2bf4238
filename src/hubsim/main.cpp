// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "hubsim/hub.h"
#include "hubsim/mount/device_link.h"
#include "hubsim/mount/server.h"
#include "hubsim/option_text.h"
#include "hubsim/panel/panel.h"
#include "hubsim/wire/failure.h"

namespace {

using tavlo::hubsim::HubModel;
using tavlo::hubsim::HubOptions;
using tavlo::hubsim::ServerOptions;

constexpr int kUsageError = 2;

struct CommandLine {
  int comm = 1;
  std::string link;
  std::string model = "octo";
  std::string firmware = "1.38";
  std::string drives;
  std::string drive_revs;
  std::string fail = "none";
  double latency_ms = 0;
  double speedup = 1;
  bool pace = false;
  bool greet = false;
  bool panel = false;
  bool list_fail_modes = false;
  std::string journal;
};

void Describe(CLI::App& app, CommandLine& line) {
  app.add_option("--comm", line.comm, "Stand behind Comm N of this user's Composer")
      ->check(CLI::Range(1, 8))
      ->capture_default_str();
  app.add_option("--link", line.link, "Make the link PATH instead of Comm N")->type_name("PATH");
  app.add_option("--model", line.model, "Hub model")
      ->check(CLI::IsMember({"octo", "quad"}))
      ->capture_default_str();
  app.add_option("--firmware", line.firmware, "Firmware revision, 1.00 to 2.27")->capture_default_str();
  app.add_option(
      "--drives", line.drives,
      "Model codes of the plugged drives by axis, as 1,4,3; 0 none, 100 a drive that no list knows. "
      "Without it, what the downloaded program expects");
  app.add_option("--drive-revs", line.drive_revs,
                 "Revisions of the drives by axis, as 1.89,2.00; 2.00 unless told");
  app.add_flag("--pace", line.pace, "Exactly 1920 bytes a second each way");
  app.add_option("--latency", line.latency_ms, "Milliseconds added to what goes to the PC")
      ->check(CLI::Range(0.0, 60000.0));
  app.add_option("--speedup", line.speedup, "Divides the time of moves and waits")
      ->check(CLI::Range(0.001, 1e6))
      ->capture_default_str();
  app.add_option("--journal", line.journal, "Write every byte both ways to FILE, a JSON object a line")
      ->type_name("FILE");
  app.add_option("--fail", line.fail, "What goes wrong, as MODE or MODE:N; see --list-fail-modes");
  app.add_flag("--list-fail-modes", line.list_fail_modes, "List the failure modes and end");
  app.add_flag("--greet", line.greet, "Send the power-up greeting at the start");
  app.add_flag("--panel", line.panel, "Show the hub in a window; closing it ends the hub");
  app.set_version_flag("--version", std::string("tavlo-hubsim " TAVLO_VERSION));
}

template <typename T>
T Wanted(const std::optional<T>& value, const std::string& option, const std::string& text) {
  if (!value) throw CLI::ValidationError(option, "cannot make sense of \"" + text + "\"");
  return *value;
}

HubOptions HubOptionsOf(const CommandLine& line) {
  using namespace tavlo::hubsim;
  HubOptions options;
  options.model = line.model == "quad" ? HubModel::Quad : HubModel::Octo;
  options.firmware =
      static_cast<std::uint8_t>(Wanted(ParseFirmware(line.firmware), "--firmware", line.firmware));
  if (!line.drives.empty()) options.drives = Wanted(ParseDrives(line.drives), "--drives", line.drives);
  if (!line.drive_revs.empty()) {
    options.drive_revisions =
        Wanted(ParseRevisions(line.drive_revs, options.drive_revisions), "--drive-revs", line.drive_revs);
  }
  options.failure = Wanted(ParseFailure(line.fail), "--fail", line.fail);
  options.speedup = line.speedup;
  options.greet = line.greet;
  return options;
}

void ListFailModes() {
  constexpr std::size_t kColumn = 20;
  for (const auto& row : tavlo::hubsim::kFailures) {
    std::string name(row.name);
    if (row.parameter == tavlo::hubsim::Parameter::Count) name += ":N";
    name.resize(kColumn, ' ');
    std::cout << name << row.meaning << '\n';
  }
}

ServerOptions ServerOptionsOf(const CommandLine& line) {
  ServerOptions options;
  options.link = line.link.empty() ? tavlo::hubsim::CommLink(line.comm) : line.link;
  options.pace = line.pace;
  options.latency_s = line.latency_ms / 1000;
  options.journal = line.journal;
  return options;
}

void Serve(const HubOptions& hub_options, const ServerOptions& options) {
  tavlo::hubsim::Hub hub(hub_options);
  tavlo::hubsim::Server server(hub, options);
  server.Announce();
  server.Run();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("A simulated motion hub behind a pseudo terminal. Standard input takes commands; type help.");
  CommandLine line;
  Describe(app, line);
  try {
    app.parse(argc, argv);
    if (line.list_fail_modes) {
      ListFailModes();
      return 0;
    }
    const HubOptions hub_options = HubOptionsOf(line);
    const ServerOptions server_options = ServerOptionsOf(line);
    if (line.panel) return tavlo::hubsim::RunPanel(argc, argv, hub_options, server_options);
    Serve(hub_options, server_options);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kUsageError;
  } catch (const std::exception& error) {
    std::cerr << "tavlo-hubsim: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
