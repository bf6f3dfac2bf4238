// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/looks_tuning.h"

#include "editors/form_grid.h"
#include "editors/look_rows.h"

namespace tavlo {
namespace {

constexpr int kDigits = 6;

struct Value {
  const char* caption;
  const char* check_box;
  const char* text;
  const char* slider;
  const char* unit = "";
};
constexpr Value kValues[] = {
    {"&Proportional Gain", "chkKP", "KP", "barKP"},
    {"&Integral Gain", "chkKI", "KI", "barKI"},
    {"&Derivative Gain", "chkKD", "KD", "barKD"},
    {"&Velocity Feedback", "chkKV", "KV", "barKV"},
    {"Velocity Feed&fwd", "chkKVFF", "KVFF", "barKVFF"},
    {"&Accel Feedforward", "chkKAFF", "KAFF", "barKAFF"},
    {"&Continuous Current", "chkCC", "Acont", "SliderAcont", "A"},
    {"Pea&k Current", "chkPC", "Apeak", "SliderApeak", "A"},
};

}  // namespace

std::function<void()> LookOfTuning(QWidget* body) {
  FormGrid grid(body);
  AddAxis(grid);
  grid.AddOptions(QStringLiteral("Motor"), {{"optServoOn", QStringLiteral("&Servo On")},
                                            {"optServoOff", QStringLiteral("Se&rvo Off")}});
  for (const Value& value : kValues) {
    grid.AddCheckedEntry(QLatin1String(value.caption), value.check_box,
                         {.text = value.text,
                          .unit_caption = QLatin1String(value.unit),
                          .slider = value.slider,
                          .digits = kDigits,
                          .slider_tip = QStringLiteral("Use arrow keys to fine tune")});
  }
  grid.AddParagraph("lblWarning");
  return grid.Aligned({});
}

}  // namespace tavlo
