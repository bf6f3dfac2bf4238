// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_program.h"

#include <string>

#include "cli/desk/comparison.h"
#include "cli/desk/hub_program.h"
#include "cli/desk/settle.h"
#include "link/drive_check.h"
#include "link/polled.h"
#include "platform/number_format.h"

namespace tavlo::cli {
HubHolds ProgramCheck::Run(bool verify) {
  Desk& desk = own_.desk;
  const auto identity = OnSettledLine(console_, desk, own_.boxes, [&] {
    StopHub(desk.link());
    return CheckDrive(desk);
  });
  if (!identity || identity->empty() || !IsKnownHub(console_, *identity)) return HubHolds::NotAnswered;
  try {
    return verify ? CompareMemory() : CompareSums();
  } catch (const EncodeError& error) {
    console_.Message(error.what());
    return AskAboutAnother("The hub cannot hold this program, for it cannot be compiled.");
  }
}

HubHolds ProgramCheck::CompareSums() {
  // Compiling writes back into the program; what is shown stays as it is in the file.
  Program copy = own_.desk.program();
  const CompiledProgram compiled = CompileAsDownloaded(copy);
  const auto sum = AskLastSum(own_.desk);
  if (!sum) {
    console_.Inform(
        "the hub has no sum to tell, for it has been switched off or a download was broken off; reading its "
        "program back");
    return CompareMemory();
  }
  if (*sum == compiled.checksum) return HubHolds::ThisProgram;
  return AskAboutAnother("The hub holds another program: its sum is " + Joined(*sum) + ", that of the file " +
                         Joined(compiled.checksum) + ".");
}

HubHolds ProgramCheck::CompareMemory() {
  Program copy = own_.desk.program();
  const CompiledProgram compiled = CompileAsDownloaded(copy);
  const ImageReading hub = ReadIdleHub(own_.desk);
  if (hub.result != UploadResult::Done) return HubHolds::NotAnswered;
  const Comparison found = CompareWithHub(copy, compiled, hub.image);
  if (found.Same()) return HubHolds::ThisProgram;
  return AskAboutAnother(found.InWords() + ".");
}

HubHolds ProgramCheck::AskAboutAnother(std::string_view what) {
  const Answer answer =
      own_.desk.boxes.MsgBox({.text = std::string(what) + "  Do you want to run what the hub holds anyway?",
                              .title = "Another program",
                              .buttons = Buttons::YesNo,
                              .icon = Icon::Exclamation});
  return answer == Answer::Yes ? HubHolds::AnotherAccepted : HubHolds::AnotherRefused;
}

}  // namespace tavlo::cli
