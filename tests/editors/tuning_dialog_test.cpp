// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QCheckBox>

#include "editors/dialog_bench.h"

namespace tavlo::testing {
namespace {

QString CaptionOf(const QAbstractButton& button) {
  return button.text().remove(QLatin1Char('&'));
}

TEST(TuningDialog, HasTheCaptionsAndToolTipsThatTheOperatorKnows) {
  DialogBench d(kTuning);
  EXPECT_EQ(d.dialog.windowTitle(), QStringLiteral("Change Control Loop Tuning"));
  const struct {
    const char* check_box;
    const char* caption;
    const char* slider;
  } rows[] = {{"chkKP", "Proportional Gain", "barKP"},        {"chkKI", "Integral Gain", "barKI"},
              {"chkKD", "Derivative Gain", "barKD"},          {"chkKV", "Velocity Feedback", "barKV"},
              {"chkKVFF", "Velocity Feedfwd", "barKVFF"},     {"chkKAFF", "Accel Feedforward", "barKAFF"},
              {"chkCC", "Continuous Current", "SliderAcont"}, {"chkPC", "Peak Current", "SliderApeak"}};
  for (const auto& row : rows) {
    EXPECT_EQ(CaptionOf(d.Find<QCheckBox>(row.check_box)), QLatin1String(row.caption));
    EXPECT_EQ(d.Find<QSlider>(row.slider).toolTip(), QStringLiteral("Use arrow keys to fine tune"));
  }
  EXPECT_EQ(CaptionOf(d.Find<QRadioButton>("optServoOn")), QStringLiteral("Servo On"));
  EXPECT_EQ(CaptionOf(d.Find<QRadioButton>("optServoOff")), QStringLiteral("Servo Off"));
}

TEST(TuningDialog, ShowsItsWholeWarning) {
  DialogBench d(kTuning);
  d.While([&] {
    const QLabel& warning = d.Find<QLabel>("lblWarning");
    EXPECT_TRUE(warning.text().startsWith(QStringLiteral("Warning: do not enter values")));
    EXPECT_GE(warning.height(), warning.heightForWidth(warning.width()));
    EXPECT_LT(d.dialog.width(), 2 * d.dialog.height())
        << "in several rows, not in one that widens the dialog";
  });
}

TEST(TuningDialog, ArrowKeysTuneFinely) {
  DialogBench d(kTuning);
  d.program.Prog[0].KP = 32000;
  d.program.Prog[0].ChangesKP = true;
  EXPECT_TRUE(d.While([&] {
    d.Find<QSlider>("barKP").setFocus();
    d.Press(Qt::Key_Left);
    EXPECT_EQ(d.Text("KP"), QStringLiteral("31904"));
    d.Press(Qt::Key_Home);
    EXPECT_EQ(d.Text("KP"), QStringLiteral("1"));
    d.Find<QPushButton>("OK").click();
  }));
  EXPECT_EQ(d.program.Prog[0].KP, 1);
  EXPECT_EQ(d.program.Prog[0].KD, 1) << "its floor, though nothing changes it";
}

TEST(TuningDialog, ATickedValueIsEnteredAndWrittenByHandAsInAnyDialog) {
  DialogBench d(kTuning);
  EXPECT_TRUE(d.While([&] {
    EXPECT_FALSE(d.Find<QLineEdit>("Acont").isEnabled());
    d.Click("chkCC");
    d.Find<QLineEdit>("Acont").setFocus();
    d.Type(QStringLiteral("9"));
    d.Press(Qt::Key_Tab);
    EXPECT_EQ(d.Text("Acont"), QStringLiteral("4.50"));
    EXPECT_EQ(d.Find<QSlider>("SliderAcont").value(), 450);
    d.Find<QPushButton>("OK").click();
  }));
  EXPECT_EQ(d.program.Prog[0].Acont, 4.5F);
  EXPECT_TRUE(d.program.Prog[0].ChangesAcont);
  EXPECT_FALSE(d.program.Prog[0].ChangesApeak);
}

}  // namespace
}  // namespace tavlo::testing
