// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/console.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "link/com_port.h"
#include "qt/comm_devices.h"

namespace tavlo::cli {
namespace {

class PortsCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "ports"; }
  [[nodiscard]] std::string_view Description() const override {
    return "List Comm 1 to Comm 8 and the devices that they stand for";
  }
  void AddOptions(CLI::App& app) override { AddJson(app, json_); }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    Json ports = Json::array();
    for (int comm = 1; comm <= kPorts; ++comm) {
      const CommDevice at = LookAtComm(comm);
      Json port = {{"comm", comm}, {"device", at.device}, {"exists", at.there}};
      if (!at.doubt.empty()) port["doubt"] = at.doubt;
      ports.push_back(port);
      const std::string label = PortName{comm, ""}.Label();
      if (!json_) console.Result(label + '\t' + at.device + '\t' + (at.there ? "there" : "missing"));
      if (!at.doubt.empty()) console.Note(label + ": " + at.doubt);
    }
    if (json_) console.Result(JsonLine({{"ports", ports}}));
    return ExitCode::Done;
  }

 private:
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakePortsCommand() {
  return std::make_unique<PortsCommand>();
}

}  // namespace tavlo::cli
