// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/led_panel.h"

#include <QAccessible>

#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

/// A status message: the inputs in two nibbles.
std::string Status(int header, int inputs, int outputs) {
  return {static_cast<char>(header), static_cast<char>(inputs & 15), static_cast<char>(inputs >> 4),
          static_cast<char>(outputs)};
}

LedPanel& Panel(RunSession& session, const char* form) {
  return session.Find<LedPanel>(form, "LedPanel");
}

TEST(LedPanel, PaintsAndNamesWhatTheHubTellsInBothWindows) {
  for (const RunWindow window : {RunWindow::ExecStatus, RunWindow::fakeMMI}) {
    const char* form = window == RunWindow::fakeMMI ? "fakeMMI" : "ExecStatus";
    RunSession session;
    session.WhileRunning(window, [&] {
      LedPanel& panel = Panel(session, form);
      EXPECT_EQ(panel.title(), "Input/Output Status");
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 1)->accessibleName(), "axis 3 input 2: off");
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 6)->accessibleName(), "axis 3 input 7 (limit): off");
      session.fakes.port.Receive(Status(243, 0xbd, 0x0e));
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 1)->accessibleName(), "axis 3 input 2: on");
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 1)->Shown(), Led::Green);
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 6)->Shown(), Led::Red);
      EXPECT_EQ(panel.Light(LedRow::INlo, 2, 0)->Shown(), Led::GreenOff);
      EXPECT_EQ(panel.Light(LedRow::OUTlo, 2, 0)->accessibleName(), "axis 3 output 1: on");
      EXPECT_EQ(panel.Light(LedRow::INlo, 3, 1)->Shown(), Led::GreenOff);
      session.Click(form, "btnStop");
    });
  }
}

TEST(LedPanel, ShowsTheLightsThatTheDrivesHave) {
  RunSession session;
  session.Lines().Axis.DriveModel = {1, 36, 10, 20, 0, 2, 7, 8, 0};
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    LedPanel& panel = Panel(session, "ExecStatus");
    for (const LedRow row : kLedRows) {
      for (int axis = 0; axis < kAxes; ++axis) {
        for (int bit = 0; bit < LedsOf(row); ++bit) {
          EXPECT_EQ(panel.Light(row, axis, bit)->isVisible(), ShowsLed(session.Lines(), row, axis, bit));
        }
      }
    }
    EXPECT_TRUE(panel.Light(LedRow::INlo, 0, 7)->isVisible());
    EXPECT_FALSE(panel.Light(LedRow::INlo, 1, 3)->isVisible());
    EXPECT_FALSE(panel.Light(LedRow::INlo, 2, 0)->isVisible());
    EXPECT_TRUE(panel.Light(LedRow::INX, 2, 0)->isVisible());
    EXPECT_FALSE(panel.Light(LedRow::INlo, 4, 0)->isVisible());
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(LedPanel, TheFifthColumnOfAHubQuadIsTheHubsOwn) {
  RunSession session;
  session.Lines().HubIndex = HubQuad;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    LedPanel& panel = Panel(session, "ExecStatus");
    EXPECT_EQ(session.Find<QLabel>("ExecStatus", "Label2_4").text(), "Hub");
    EXPECT_FALSE(session.Find<QLabel>("ExecStatus", "Label2_5").isVisible());
    EXPECT_TRUE(panel.Light(LedRow::INlo, 4, 3)->isVisible());
    EXPECT_FALSE(panel.Light(LedRow::INlo, 4, 4)->isVisible());
    session.fakes.port.Receive(Status(245, 0xfe, 0x0f));
    EXPECT_EQ(panel.Light(LedRow::INlo, 4, 0)->accessibleName(), "hub input 1: on");
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(LedPanel, TheFifthColumnIsNamedByTheHubOfThisRun) {
  RunSession session;
  for (const HubModel hub : {HubOcto, HubQuad, HubOcto}) {
    session.Lines().HubIndex = hub;
    session.WhileRunning(RunWindow::ExecStatus, [&] {
      EXPECT_EQ(Panel(session, "ExecStatus").Light(LedRow::INlo, 4, 0)->accessibleName(),
                hub == HubQuad ? "hub input 1: off" : "axis 5 input 1: off");
      session.Click("ExecStatus", "btnStop");
    });
  }
}

TEST(LedPanel, LightsAreToldApartByShapeAsWellAsByColour) {
  QWidget parent;
  LedLight light(&parent);
  light.resize(light.sizeHint());
  std::vector<QImage> shapes;
  for (const Led led : {Led::GreenOff, Led::Green, Led::RedOff, Led::Red, Led::Unknown}) {
    light.Show(led, QStringLiteral("light"));
    shapes.push_back(light.grab().toImage().convertToFormat(QImage::Format_Grayscale8));
  }
  for (std::size_t a = 0; a < shapes.size(); ++a) {
    for (std::size_t b = a + 1; b < shapes.size(); ++b) {
      int different = 0;
      for (int y = 0; y < shapes[a].height(); ++y) {
        for (int x = 0; x < shapes[a].width(); ++x) {
          const int step = qGray(shapes[a].pixel(x, y)) - qGray(shapes[b].pixel(x, y));
          if (std::abs(step) > 40) ++different;
        }
      }
      EXPECT_GT(different, 20) << a << " and " << b;
    }
  }
}

TEST(LedPanel, AScreenReaderFindsEachLightAsATextOfItsName) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    LedLight* light = Panel(session, "ExecStatus").Light(LedRow::INlo, 2, 1);
    session.fakes.port.Receive(Status(243, 0xfd, 0x0f));
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(light);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->role(), QAccessible::StaticText);
    EXPECT_EQ(spoken->text(QAccessible::Name), "axis 3 input 2: on");
    session.Click("ExecStatus", "btnStop");
  });
}

TEST(LedPanel, AStatusWithoutAWindowPaintsNothing) {
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] { session.Click("ExecStatus", "btnStop"); });
  const RunPanel before = session.Session().run.panel;
  session.fakes.port.Receive(Status(241, 0, 0));
  EXPECT_EQ(session.Session().run.panel.INlo, before.INlo);
  EXPECT_EQ(session.Find<LedPanel>("ExecStatus", "LedPanel").Light(LedRow::INlo, 0, 0)->Shown(),
            Led::GreenOff);
}

}  // namespace
}  // namespace tavlo::testing
