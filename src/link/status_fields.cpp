// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/status_fields.h"

#include "link/drive_check.h"
#include "platform/number_format.h"
#include "session/happened.h"

namespace tavlo {
namespace {

bool HasName(const HubProgram& held) {
  return !held.file_name.empty() && held.file_name != kUntitled;
}

/// How, when and from where the hub has its program.
std::string Origin(const HubProgram& held) {
  std::string text = HasName(held) ? held.file_name + "\n" : "";
  text += held.by == HubProgram::By::Download ? "Proven by its sum at " : "Read from the hub at ";
  return text + TimeTextWithSeconds(held.at) + ", " + BytesText(held.bytes);
}

std::string WhatItHolds(const HubProgram& held) {
  const std::string what = HasName(held) ? std::string(BaseName(held.file_name)) : "the program shown";
  const std::string_view how = held.by == HubProgram::By::Download ? ", proven " : ", read ";
  return "Hub holds " + what + std::string(how) + TimeText(held.at);
}

StatusField Waiting(const HubProgram& held, Holds holds) {
  switch (holds) {
    case Holds::TheProgramShown: return {WhatItHolds(held), Origin(held)};
    case Holds::Another: return {"Hub holds another program than the one shown", Origin(held)};
    case Holds::Unknown: break;
  }
  return {"Not known what the hub holds", "A download or an upload will tell."};
}

/// What was so at the start of the run, or has come about since, whichever says more.
Holds Worse(Holds one, Holds other) {
  if (one == Holds::Another || other == Holds::Another) return Holds::Another;
  return one == Holds::Unknown ? one : other;
}

std::string_view ModelText(int code) {
  const auto model = HubOfCode(code);
  return model ? kHubModels[*model].name : "unknown device";
}

}  // namespace

StatusField HubField(const Source& source, Holds now) {
  const HubProgram& held = source.link.held;
  if (!source.link.HubRuns) return Waiting(held, now);
  constexpr const char* kRows = "The rows that light up are those of the program shown.";
  switch (Worse(source.run.holds, now)) {
    case Holds::TheProgramShown: return Waiting(held, Holds::TheProgramShown);
    case Holds::Another: return {"Warning: the hub runs another program than the one shown", kRows, true};
    case Holds::Unknown: break;
  }
  return {"Not known what the hub runs", kRows, true};
}

StatusField PortField(const Source& source, bool open, const std::string& device) {
  const LinkState& link = source.link;
  const int gone = link.ComNum != 0 ? link.ComNum : link.gone;
  if (!open && gone != 0) {
    return {"Comm " + Joined(gone) + " has gone", "Check the cable, then choose a comm port again."};
  }
  if (!open) return {"No port is open", "Choose a comm port."};
  const std::string port = "Comm " + Joined(link.ComNum) + ", " + device + ", ";
  if (link.identity.size() < 2) {
    return {port + "firmware not known", "Nothing has answered on this port since it was opened."};
  }
  const auto code = [&](int at) { return static_cast<unsigned char>(link.identity[at]); };
  const std::string model(ModelText(code(1)));
  const std::string firmware = "firmware " + VersionText(RevisionOf(code(0)));
  if (!HubOfCode(code(1))) return {port + model, "What answers on this port is no hub."};
  return {port + firmware, model + ", " + firmware};
}

StatusField EventField(const Source& source) {
  if (source.happened.empty()) return {"Nothing has happened yet", ""};
  const Happening& last = source.happened.front();
  StatusField field{last.text + " (" + TimeText(last.at) + ")", ""};
  for (const Happening& happening : source.happened) {
    if (!field.more.empty()) field.more += "\n";
    field.more += TimeTextWithSeconds(happening.at) + "  " + happening.text;
  }
  return field;
}

}  // namespace tavlo
