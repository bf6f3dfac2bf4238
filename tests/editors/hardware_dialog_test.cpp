// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/hardware_dialog.h"

#include "editors/dialog_bench.h"

namespace tavlo::testing {
namespace {

/// The dialog of the hardware settings.
struct HardwareDialogBench : DialogOperator {
  HardwareDialogBench() : DialogOperator(dialog), dialog(boxes, help, nullptr) {
    InitHardware(program.Axis);
    InitProg(program);
  }

  bool While(const std::function<void()>& act) {
    return Acting([this] { return dialog.Edit(program, [this] { return found; }); }, act);
  }
  void Choose(const char* list, const char* entry) {
    auto& box = Find<QComboBox>(list);
    const int index = box.findText(QLatin1String(entry));
    ASSERT_GE(index, 0) << entry;
    box.setCurrentIndex(index);
    emit box.activated(index);
  }

  Program program;
  FakeBoxes boxes;
  FakeHelp help;
  HardwareDialog dialog;
  DriveScan found;
};

TEST(HardwareDialog, HasItsFormsControlsAndNoOthers) {
  HardwareDialogBench d;
  EXPECT_EQ(d.dialog.objectName(), QStringLiteral("Hardware"));
  EXPECT_EQ(d.dialog.windowTitle(), QStringLiteral("Configure Drives"));
  d.ExpectControlsOf(Hardware(d.boxes));
}

TEST(HardwareDialog, HasNoMnemonicTwice) {
  HardwareDialogBench d;
  d.ExpectNoMnemonicTwice();
}

TEST(HardwareDialog, IsWalkedByTabInTheOrderOfItsForm) {
  for (const std::int16_t model : {1, 3, 12, 44}) {
    HardwareDialogBench d;
    d.program.Axis.DriveModel[0] = model;
    d.program.Axis.SameLimits = false;
    d.While([&] { d.ExpectWalkedByTab(Hardware(d.boxes)); });
  }
}

TEST(HardwareDialog, BeginsAtTheModelOfTheFirstAxis) {
  HardwareDialogBench d;
  d.While([&] { EXPECT_EQ(d.Focus(), QStringLiteral("ModelList(0)")); });
}

TEST(HardwareDialog, OpensItsHelp) {
  HardwareDialogBench d;
  d.While([&] { d.Press(Qt::Key_F1); });
  EXPECT_EQ(d.help.shown, std::vector<std::string>{"hardware.pdf"});
}

TEST(HardwareDialog, EnterTakesTheEntryAndStaysInIt) {
  HardwareDialogBench d;
  const bool written = d.While([&] {
    d.Find<QLineEdit>("TxtCurrent(1)").setFocus();
    d.Type(QStringLiteral("99"));
    d.Press(Qt::Key_Return);
    EXPECT_EQ(d.Text("TxtCurrent(1)"), QStringLiteral("3.50"));
    EXPECT_EQ(d.Focus(), QStringLiteral("TxtCurrent(1)"));
    EXPECT_EQ(d.Selected(), QStringLiteral("3.50"));
  });
  EXPECT_FALSE(written);
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(HardwareDialog, IsDrivenForEachModelAsAnOperatorDoes) {
  HardwareDialogBench d;
  const bool written = d.While([&] {
    for (int code = 1; code <= 50; ++code) {
      d.Choose("ModelList(1)", std::string(ModelName(code)).c_str());
      const bool has_panel = d.Find<QWidget>("lblCurrent(1)").isVisible();
      EXPECT_NE(has_panel, d.Find<QWidget>("TxtCurrent(1)").isVisible()) << code;
      if (!has_panel) continue;
      d.Click("lblCurrent(1)");
      const bool motor = MirelModel(code);
      EXPECT_EQ(d.Find<QWidget>("STMCurrentPanel").isVisible(), motor) << code;
      EXPECT_EQ(d.Find<QWidget>("CurrentPanel").isVisible(), !motor) << code;
      EXPECT_EQ(d.Focus(), motor ? QStringLiteral("TxtRun") : QStringLiteral("Acont"));
      d.Type(QStringLiteral("1.5"));
      d.Press(motor ? Qt::Key_T : Qt::Key_U, Qt::AltModifier);
      EXPECT_TRUE(QTest::qWaitFor([&] { return d.Focus() == QStringLiteral("lblCurrent(1)"); })) << code;
    }
    d.Click("OK");
  });
  EXPECT_TRUE(written);
  EXPECT_EQ(d.program.Axis.DriveModel[1], 50);
  EXPECT_EQ(d.program.Axis.ContCurrent[1], 1.5F);
  EXPECT_EQ(d.program.Axis.RunCurrent[1], 1.5F);
}

TEST(HardwareDialog, EscapeClosesAPanelBeforeItClosesTheDialog) {
  HardwareDialogBench d;
  d.program.Axis.DriveModel[1] = 12;
  d.While([&] {
    d.Click("lblCurrent(1)");
    EXPECT_TRUE(d.Find<QWidget>("CurrentPanel").isVisible());
    d.Press(Qt::Key_Escape);
    EXPECT_FALSE(d.Find<QWidget>("CurrentPanel").isVisible());
    EXPECT_TRUE(d.dialog.isVisible());
    d.Press(Qt::Key_Escape);
    EXPECT_FALSE(d.dialog.isVisible());
  });
  EXPECT_TRUE(d.closed_by_itself);
}

TEST(HardwareDialog, ARefusedNoneShowsTheModelChosenBefore) {
  HardwareDialogBench d;
  d.While([&] {
    d.Choose("ModelList(0)", "none");
    EXPECT_EQ(d.boxes.shown.size(), 1U);
    EXPECT_EQ(d.Find<QComboBox>("ModelList(0)").currentText(), QStringLiteral("Oskel-A"));
  });
}

TEST(HardwareDialog, AnAxisThatTheHubDoesNotHaveTakesNoRoom) {
  HardwareDialogBench octo;
  HardwareDialogBench quad;
  quad.program.HubIndex = HubQuad;
  int tall = 0;
  octo.While([&] { tall = octo.dialog.height(); });
  quad.While(
      [&] { EXPECT_LT(quad.dialog.height(), tall - 3 * quad.Find<QWidget>("ModelList(0)").height()); });
}

TEST(HardwareDialog, NothingJumpsWhenAModelShowsOtherControls) {
  HardwareDialogBench d;
  d.While([&] {
    const QPoint limits = d.Find<QWidget>("Limits(0)").pos();
    const QSize size = d.dialog.size();
    for (const char* model : {"none", "Zenu-B-a", "Mirel-p1", "Oskel-B", "Oskel-A"}) {
      d.Choose("ModelList(1)", model);
      QTest::qWait(0);
      EXPECT_EQ(d.Find<QWidget>("Limits(0)").pos(), limits) << model;
      EXPECT_EQ(d.dialog.size(), size) << model;
    }
  });
}

}  // namespace
}  // namespace tavlo::testing
