// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/editor_walk.h"

#include <QAbstractButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <set>

#include "editors/editor_dialog.h"
#include "editors/hardware_dialog.h"
#include "editors/pick_prog.h"
#include "forms/registry.h"
#include "forms/tuning.h"
#include "support/fake_desk.h"
#include "support/fake_help.h"

namespace tavlo::testing {
namespace {

void LookAtPicker(const LookAt& look_at) {
  PickProg picker(nullptr);
  QTimer::singleShot(0, &picker, [&] {
    look_at(picker, "PickProg");
    picker.reject();
  });
  picker.Run(0, [](const Picked&) { return true; });
}

void LookAtEditor(FakeDesk& fake, const FormRow& row, const std::string& state, const LookAt& look_at) {
  FakeHelp help;
  EditorDialog dialog(row, fake.boxes, help, nullptr);
  QTimer::singleShot(0, &dialog, [&] {
    const std::string name = std::string(row.name) + ", " + state;
    look_at(dialog, name);
    if (auto* tabs = dialog.findChild<QTabWidget*>()) {
      tabs->setCurrentIndex(1);
      QTest::qWait(0);
      look_at(dialog, name + ", analysis");
    }
    dialog.reject();
  });
  static_cast<void>(dialog.Edit(fake.source.program, 0));
}

/// With every control of theirs to be seen: variables chosen, blocks shown.
void LookAtEditors(const LookAt& look_at) {
  FakeDesk fake;
  fake.Line(0) = {.Type = FLCS,
                  .Dist = 12345678,
                  .Speed = 12.5F,
                  .Speed2 = 2.5F,
                  .Time = 30000,
                  .LineNum = 199,
                  .Text = "A text of 27 characters is."};
  Instruction& line = fake.Line(0);
  std::set<std::string_view> seen;
  for (int type = 0; type < kTypes; ++type) {
    const FormRow* row = FormOf(type);
    if (row == nullptr) continue;
    line.Type = static_cast<std::int16_t>(type);
    line.DistIsMMI = line.SpeedIsMMI = line.Dist2IsMMI = line.Speed2IsMMI = seen.contains(row->name);
    seen.insert(row->name);
    LookAtEditor(fake, *row, "type " + std::to_string(type), look_at);
  }
}

/// With some of its values dimmed, and with the longest that there are.
void LookAtTuning(const LookAt& look_at) {
  FakeDesk fake;
  fake.Line(0) = {.Type = NO,
                  .MotorOn = true,
                  .KP = 32000,
                  .KI = 1200,
                  .KD = 32000,
                  .KAFF = 10,
                  .KVFF = 300,
                  .Acont = 3.25F,
                  .Apeak = 13.5F,
                  .ChangesKP = true,
                  .ChangesKD = true,
                  .ChangesKVFF = true,
                  .ChangesApeak = true};
  LookAtEditor(fake, TuningRow(), "some dimmed", look_at);
}

/// Each function of a prompt shows other controls.
void LookAtPrompts(const LookAt& look_at) {
  FakeDesk fake;
  fake.source.program.Prog[1].Type = MMI;
  for (std::int16_t function = GetDistance; function <= Menu; ++function) {
    fake.Line(0) = {.Type = MMI,
                    .LineNum = 199,
                    .Text = "1 Feed and cut      2 Feed              3 Cut               4 End of the shift",
                    .SubType = function,
                    .UpperInt = 16000000,
                    .MenuLine = {0, 9, 19, 29, 99, 109, 119, 129, 199},
                    .MenuKey = {false, true, true, true, true},
                    .JogLRSpeed = 12.5F,
                    .JogUDSpeed = 0.5F,
                    .JogLRAccel = 3000,
                    .JogUDAccel = 100,
                    .JogLR = true};
    fake.source.program.Prog[1].Text = std::string(function * 245, 'x');
    LookAtEditor(fake, *FormOf(MMI), "function " + std::to_string(function), look_at);
  }
}

/// The dialogs of inputs with all that a drive can have: its further block, all inputs asked for, jogs.
void LookAtInputs(const LookAt& look_at) {
  constexpr int kWithFurtherBlock = 20;
  constexpr int kJogInput = kFirstDriveInput + 1;
  FakeDesk fake;
  fake.source.program.Axis.DriveModel[0] = kWithFurtherBlock;
  for (const Type type : {FSS, FSR, SH, WI, WII, III}) {
    fake.Line(0) = {.Type = type,
                    .IONum = kJogInput,
                    .InState = 0x55,
                    .InMask = 0xff,
                    .DrvMask = 0xff,
                    .WaitAND = true,
                    .JogSpeed = 1,
                    .JogAccel = 100,
                    .JogOn = true};
    const FormRow& row = *FormOf(type);
    FakeHelp help;
    EditorDialog dialog(row, fake.boxes, help, nullptr);
    QTimer::singleShot(0, &dialog, [&] {
      look_at(dialog, std::string(row.name) + ", type " + std::to_string(type) + ", all inputs");
      dialog.reject();
    });
    static_cast<void>(dialog.Edit(fake.source.program, 0));
  }
}

/// A row for each family of drives, with what a scan found, and each of the panels.
void LookAtHardware(const LookAt& look_at) {
  FakeDesk fake;
  Program& program = fake.source.program;
  program.Axis.DriveModel = {1, 3, 8, 12, 25, 44, 31, 0};
  program.Axis.AxisName = {"Cross cut", "Feed", "WWWWWWWW", "Turn", "Lift", "Stack", "Eject", "Axis 8"};
  program.Axis.StepsPerUnit[2] = kMaxSteps;
  program.Axis.UnitName[2] = "WWWW";
  program.Axis.SameLimits = false;
  DriveScan found;
  for (int axis = 0; axis < kAxes; ++axis) {
    found[axis] = {.model = program.Axis.DriveModel[axis], .revision = 1.53F};
  }
  found[4].model.reset();
  FakeHelp help;
  HardwareDialog dialog(fake.boxes, help, nullptr);
  const auto click = [&](const char* name) {
    auto* button = dialog.findChild<QAbstractButton*>(QLatin1String(name));
    button->click();
    QTest::qWait(0);
  };
  const auto stand = [&](const std::function<void()>& act) {
    QTimer::singleShot(0, &dialog, [&] {
      act();
      dialog.reject();
    });
    static_cast<void>(dialog.Edit(program, [&] { return found; }));
  };
  stand([&] {
    look_at(dialog, "Hardware");
    click("Scan");
    look_at(dialog, "Hardware, scanned");
    click("OKscan");
    click("lblCurrent(3)");
    look_at(dialog, "Hardware, currents of a servo");
    click("CancelCrnt");
    click("lblCurrent(5)");
    look_at(dialog, "Hardware, currents of a motor");
  });
  program.HubIndex = HubQuad;
  program.Axis.SameLimits = program.Axis.SameUnits = true;
  stand([&] { look_at(dialog, "Hardware, Hub Quad"); });
}

}  // namespace

void ForEachEditor(const LookAt& look_at) {
  LookAtPicker(look_at);
  LookAtEditors(look_at);
  LookAtTuning(look_at);
  LookAtPrompts(look_at);
  LookAtInputs(look_at);
  LookAtHardware(look_at);
}

}  // namespace tavlo::testing
