// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "link/com_port.h"

#include "link/held_program.h"
#include "link/polled.h"
#include "link/run_record.h"
#include "platform/number_format.h"
#include "session/happened.h"

namespace tavlo {
namespace {

constexpr std::string_view kSettingsSection = "Startup";
constexpr std::string_view kSettingsKey = "ComPort";
constexpr int kStartThreshold = 3;
constexpr std::string_view kMayMove =
    "A program was running: the machine may still be moving, and its own stop is the only one left.  ";

Outcome OpenPort(SerialPort& port, int number) {
  port.CommPort(number);
  port.Settings(kLineSettings);
  return port.PortOpen(true);
}

int StoredPort(Desk& desk) {
  const double stored = Val(desk.settings.Get(kSettingsApplication, kSettingsSection, kSettingsKey, "1"));
  const double whole = RoundHalfEven(stored);
  return whole < 1 || whole > kPorts ? 1 : static_cast<int>(whole);
}

/// Returns false if the operator would rather go on without a port than look for one.
bool TellAndLookOn(Desk& desk, const std::string& text) {
  return desk.boxes.MsgBox({.text = text,
                            .title = "Communication Error",
                            .buttons = Buttons::OKWithoutPort,
                            .icon = Icon::Exclamation}) != Answer::WithoutPort;
}

void SelectOptCom(Desk& desk, std::optional<int> index) {
  desk.source.link.OptCom = index;
  desk.view.HubChanged();
}

/// A line that has been deaf since no port could be opened, or since an upload failed, hears again. Any other
/// threshold is kept.
void HearAgain(Desk& desk) {
  if (desk.Comm1.RThreshold() == 0) desk.Comm1.RThreshold(1);
  desk.view.StopChanged();
  desk.view.HubChanged();
}

/// What the hub at the end of the other line does, a stop on this one does not end.
void ListenTo(Desk& desk) {
  NoteHubRuns(desk.link(), false);
  HearAgain(desk);
}

}  // namespace

void StartComm(Desk& desk) {
  const int stored = StoredPort(desk);
  int candidate = stored;
  bool tried_first = false;
  for (Outcome open = OpenPort(desk.Comm1, candidate); !open; open = OpenPort(desk.Comm1, candidate)) {
    if (candidate == 1) tried_first = true;
    bool look_on = false;
    if (candidate == stored && !tried_first) {
      look_on =
          TellAndLookOn(desk, "Error opening the last comm port that was used by the Hub Composer (Comm " +
                                  Joined(candidate) + "):  " + open.Why() + ".  Will try Comm 1.");
      candidate = 1;
    } else if (candidate < kPorts) {
      look_on = TellAndLookOn(desk, "Error on Comm" + Joined(candidate) + ":  " + open.Why() +
                                        ".  Will try Comm" + Joined(candidate + 1) + ".");
      ++candidate;
    }
    if (look_on) continue;
    desk.boxes.MsgBox(
        {.text = "Could not find an open comm port.  You can still edit and save programs, but drive "
                 "communication is not possible at this time.",
         .title = "No open port"});
    SelectOptCom(desk, std::nullopt);
    return;
  }
  desk.Comm1.RThreshold(kStartThreshold);
  desk.Comm1.ParityReplace("");
  desk.source.display.MMIActive = false;
  // Goes through the choice of the operator: that is how `ComNum` gets its value.
  ClickOptCom(desk, candidate - 1);
}

void ClickOptCom(Desk& desk, int index) {
  Source& source = desk.source;
  const std::int16_t old = source.link.ComNum;
  const std::int16_t chosen = static_cast<std::int16_t>(index + 1);
  if (chosen == old && desk.Comm1.PortOpen() && !desk.Comm1.LeadsElsewhere()) return;
  const bool ran = source.link.HubRuns;
  source.link.ComNum = chosen;
  source.link.gone = 0;
  SelectOptCom(desk, index);
  if (desk.Comm1.PortOpen()) static_cast<void>(desk.Comm1.PortOpen(false));
  ForgetHub(desk.link());
  // A message that has begun on one line must not go on on another.
  DropInput(desk.link());
  if (OpenPort(desk.Comm1, chosen)) {
    if (ran) Happened(desk, "Comm " + Joined(old) + " was left while its hub may run");
    return ListenTo(desk);
  }
  desk.boxes.MsgBox({.text = "COM port " + Joined(chosen) + " is not available.",
                     .title = "COM Error",
                     .icon = Icon::Exclamation});
  source.link.ComNum = 0;
  if (old == 0) {
    SelectOptCom(desk, std::nullopt);
    return;
  }
  // Without a number, the choice stands for a port that is not open, so that it can be clicked again.
  if (chosen != old && OpenPort(desk.Comm1, old)) {
    source.link.ComNum = old;
    HearAgain(desk);
  }
  SelectOptCom(desk, old - 1);
}

void RememberPort(Desk& desk) {
  desk.settings.Save(kSettingsApplication, kSettingsSection, kSettingsKey, Joined(desk.Comm1.CommPort()));
}

void TellPortLost(Desk& desk) {
  Source& source = desk.source;
  // A run is an operation too, but nothing reports the loss at its end, and the report cannot wait.
  if (source.link.Busy && desk.run.Active() == RunWindow::None) {
    source.link.PortLost = true;
    desk.view.StopChanged();
    return;
  }
  const ComeByThemselves nobody_asked(desk.boxes);
  const bool ran = source.link.HubRuns;
  NoteHubRuns(desk.link(), false);
  ForgetHub(desk.link());
  source.link.gone = desk.Comm1.CommPort();
  Happened(desk, "Comm " + Joined(source.link.gone) + " has gone");
  source.link.ComNum = 0;
  source.display.MMIActive = false;
  DropInput(desk.link());
  SelectOptCom(desk, std::nullopt);
  // Nothing more will come of a run.
  RecordEnd(desk, RunOver::PortGone);
  desk.run.Hide();
  desk.boxes.MsgBox(
      {.text = "Comm " + Joined(desk.Comm1.CommPort()) + " has gone.  " + std::string(ran ? kMayMove : "") +
               "Check the cable, then choose a comm port again.  Your program is still here and can "
               "be edited and saved.",
       .title = "Communication Error",
       .icon = Icon::Exclamation});
}

}  // namespace tavlo
