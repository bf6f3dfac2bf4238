// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/stop_button.h"

#include <QEvent>

#include "windows/run_glyph.h"

namespace tavlo {

StopButton::StopButton(QWidget* parent) : RingedButton(kGlyphSize, parent) {
  setObjectName(QStringLiteral("StopButton"));
  setText(QStringLiteral("S&top (Esc)"));
  setToolTip(QStringLiteral("Stop the program on the hub, whatever window is up (Esc)"));
  setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  Show(false, false);
  Draw();
}

void StopButton::Show(bool possible, bool moving) {
  setEnabled(possible);
  const bool lit = possible && moving;
  setAccessibleDescription(lit ? QStringLiteral("the machine may be moving")
                               : QStringLiteral("nothing is known to run"));
  if (lit == lit_) return;
  lit_ = lit;
  Draw();
}

void StopButton::Draw() {
  setIcon(GlyphIcon(Glyph::Stop, lit_ ? kLitRed : kGray, palette()));
}

void StopButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::PaletteChange) Draw();
  RingedButton::changeEvent(event);
}

}  // namespace tavlo
