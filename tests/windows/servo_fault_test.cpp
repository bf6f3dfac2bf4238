// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/servo_fault.h"

#include <QLabel>

#include "windows/run_session.h"

namespace tavlo::testing {
namespace {

/// A fault of an axis that counts from 0.
std::string Fault(int axis, int code) {
  return {static_cast<char>(211), static_cast<char>(axis), static_cast<char>(code / 128),
          static_cast<char>(code % 128)};
}

struct FaultSession : RunSession {
  /// Lets the hub report a fault, and does this while the panel stands.
  void WhileFaulty(const std::string& message, const std::function<void()>& meanwhile) {
    QTimer::singleShot(0, &Main(), meanwhile);
    fakes.port.Receive(message);
  }
  [[nodiscard]] QWidget& Panel() { return Form("ServoFault"); }
  [[nodiscard]] QString Says(const char* name) { return Find<QLabel>("ServoFault", name).text(); }
  [[nodiscard]] QString Square(int bit) {
    const std::string name = "RedSquare" + std::to_string(bit);
    return Find<QWidget>("ServoFault", name.c_str()).accessibleName();
  }
  [[nodiscard]] QColor ColourOf(int bit) {
    const std::string name = "RedSquare" + std::to_string(bit);
    return Find<QWidget>("ServoFault", name.c_str()).grab().toImage().pixelColor(2, 2);
  }
};

TEST(ServoFault, EachBitHasItsIndicator) {
  FaultSession session;
  session.Lines().Axis.DriveModel[1] = 10;
  for (int bit = 0; bit < 14; ++bit) {
    session.WhileFaulty(Fault(1, 1 << bit), [&] {
      EXPECT_TRUE(session.Panel().isVisible());
      EXPECT_EQ(session.Panel().windowTitle(), "Drive Error");
      EXPECT_EQ(session.Says("FaultMessage"),
                "We are experiencing a servo fault on axis 2. The program has been halted.");
      for (int other = 0; other < 14; ++other) {
        const bool alarm = other == bit;
        EXPECT_EQ(session.ColourOf(other), alarm ? QColor(255, 0, 0) : QColor(192, 192, 192));
        EXPECT_TRUE(
            session.Square(other).endsWith(alarm ? QStringLiteral(": alarm") : QStringLiteral(": no alarm")));
      }
      session.Click("ServoFault", "Close");
    });
    EXPECT_FALSE(session.Panel().isVisible());
  }
  EXPECT_TRUE(session.fakes.boxes.shown.empty());
}

TEST(ServoFault, ACodeOfZeroShowsAllGreyWithTheHeadlineOfTheAxis) {
  FaultSession session;
  session.WhileFaulty(Fault(6, 0), [&] {
    for (int bit = 0; bit < 14; ++bit) EXPECT_EQ(session.ColourOf(bit), QColor(192, 192, 192));
    EXPECT_TRUE(session.Says("FaultMessage").contains("on axis 7."));
    session.Click("ServoFault", "Close");
  });
}

TEST(ServoFault, ACodeWithMoreBitsShowsTheFourteenThatAreKnown) {
  QWidget parent;
  ServoFaultForm form(&parent);
  ServoFaultPanel panel;
  panel.code = 0x7fffc000;
  form.Show(panel);
  for (int bit = 0; bit < 14; ++bit) {
    EXPECT_EQ(form.findChild<QWidget*>(QStringLiteral("RedSquare%1").arg(bit))->accessibleName(),
              ": no alarm");
  }
}

TEST(ServoFault, SaysWhatTheSquaresMeanAndHowTheErrorIsReset) {
  QWidget parent;
  const ServoFaultForm form(&parent);
  EXPECT_EQ(form.windowTitle(), "Servo Error") << "until a fault gives it another";
  QStringList texts;
  for (const QLabel* label : form.findChildren<QLabel*>()) texts += label->text();
  EXPECT_TRUE(texts.contains("You must cycle power to reset this error."));
  EXPECT_TRUE(texts.contains("indicates an alarm."));
}

TEST(ServoFault, ASecondFaultRepaintsThePanelThatStands) {
  FaultSession session;
  session.Lines().Axis.DriveModel[4] = 36;
  session.WhileFaulty(Fault(1, 1), [&] {
    session.fakes.port.Receive(Fault(4, 1 << 13));
    EXPECT_TRUE(session.Says("FaultMessage").contains("on axis 5."));
    EXPECT_EQ(session.Square(0), "Position Limit: no alarm");
    EXPECT_EQ(session.Square(13), "motor resistance: alarm");
    session.Click("ServoFault", "Close");
  });
  EXPECT_FALSE(session.Panel().isVisible());
}

TEST(ServoFault, TakesNoKeyInTheFirstMomentsOfEachShowing) {
  FaultSession session;
  for (int showing = 0; showing < 2; ++showing) {
    session.WhileFaulty(Fault(1, 1), [&] {
      auto& close = session.Find<QWidget>("ServoFault", "Close");
      for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        QTest::keyClick(&close, key);
        EXPECT_TRUE(session.Panel().isVisible()) << key;
      }
      QTest::qWait(850);
      QTest::keyClick(&close, Qt::Key_Return);
      EXPECT_FALSE(session.Panel().isVisible());
    });
  }
}

TEST(ServoFault, TakesTheRunWindowAwayBeforeItComesAndTheCommandsComeBackAfterIt) {
  FaultSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    QTimer::singleShot(0, &session.Main(), [&] {
      EXPECT_FALSE(session.Form("ExecStatus").isVisible());
      EXPECT_TRUE(session.Panel().isVisible());
      session.Click("ServoFault", "Close");
    });
    session.fakes.port.Receive(Fault(0, 5));
  });
  EXPECT_EQ(session.fakes.port.AllSent(), "X");
  EXPECT_TRUE(session.Find<QWidget>(nullptr, "Load").isEnabled());
}

}  // namespace
}  // namespace tavlo::testing
