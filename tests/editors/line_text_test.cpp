// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/line_text.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QImage>
#include <QToolTip>

namespace tavlo::testing {
namespace {

/// The tool tip that comes up over it; empty for none.
QString ToolTipOf(LineText& text) {
  QHelpEvent event(QEvent::ToolTip, text.rect().center(), text.mapToGlobal(text.rect().center()));
  QCoreApplication::sendEvent(&text, &event);
  const QString tip = QToolTip::isVisible() ? QToolTip::text() : QString();
  QToolTip::hideText();
  return tip;
}

QImage Painted(LineText& text) {
  return text.grab().toImage();
}

TEST(LineText, IsAsWideWhateverItSays) {
  LineText text(20, nullptr);
  const QSize empty = text.sizeHint();
  text.setText(QStringLiteral("Axis 1:If input 1,3,5,7 high and 2,4,6,8,X0,X1,X2,X3 low goto 12"));
  EXPECT_EQ(text.sizeHint(), empty);
}

TEST(LineText, ShowsWhatDoesNotFitWholeInItsToolTip) {
  LineText text(20, nullptr);
  text.resize(text.sizeHint());
  text.show();
  text.setText(QStringLiteral("Go to line 4"));
  EXPECT_EQ(ToolTipOf(text), QString());
  const QString longer = QStringLiteral("If <b>input</b> 1,3,5,7 high and 2,4,6,8,X0,X1,X2,X3 low goto 12");
  text.setText(longer);
  EXPECT_EQ(ToolTipOf(text), longer.toHtmlEscaped());
}

TEST(LineText, EndsWhatDoesNotFitInAnEllipsis) {
  LineText text(20, nullptr);
  text.resize(text.sizeHint());
  const QString longer = QStringLiteral("If input 1,3,5,7 high and 2,4,6,8,X0,X1,X2,X3 low goto 12");
  text.setText(longer);
  const QImage cut = Painted(text);
  text.setText(text.fontMetrics().elidedText(longer, Qt::ElideRight, text.width()));
  EXPECT_EQ(cut, Painted(text));
  text.setText(longer.left(longer.size() - 30));
  EXPECT_NE(cut, Painted(text));
}

}  // namespace
}  // namespace tavlo::testing
