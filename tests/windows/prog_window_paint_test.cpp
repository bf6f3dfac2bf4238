// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "session/grid.h"
#include "session/source.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// The regions that a widget paints.
class PaintLog : public QObject {
 public:
  explicit PaintLog(QWidget& widget) { widget.installEventFilter(this); }
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint)
      regions.push_back(static_cast<QPaintEvent*>(event)->region().boundingRect());
    return false;
  }
  std::vector<QRect> regions;
};

QColor BackgroundAt(const QImage& image, const ProgWindow& pane, int line) {
  const QRect desc = pane.Geometry().Desc(line);
  return image.pixelColor(desc.right() - 6, desc.center().y());
}

bool HasInk(const QImage& image, const QRect& place) {
  for (int y = place.top(); y <= place.bottom(); ++y) {
    for (int x = place.left(); x <= place.right(); ++x) {
      if (image.pixelColor(x, y).lightness() < 90) return true;
    }
  }
  return false;
}

TEST(ProgWindowPaint, EveryStateHasItsExactBackground) {
  RunningSession session;
  session.Lines().Prog[3].Type = FL;
  struct Case {
    RowState state;
    QColor background;
  };
  const std::vector<Case> cases = {{RowState::Normal, {255, 255, 255}},
                                   {RowState::LimitTarget, {170, 255, 255}},
                                   {RowState::Executing, {255, 255, 128}},
                                   {RowState::WentOn, {255, 192, 192}},
                                   {RowState::Picked, {255, 255, 255}}};
  for (const Case& row : cases) {
    session.Session().shown.rows[3].state = row.state;
    session.Main().RowChanged(3);
    EXPECT_EQ(BackgroundAt(session.Painted(), session.Pane(), 3), row.background)
        << static_cast<int>(row.state);
  }
}

TEST(ProgWindowPaint, TextIsDarkOnItsBackgroundInADarkPaletteToo) {
  const QPalette light = QApplication::palette();
  QPalette dark = light;
  dark.setColor(QPalette::Window, QColor(40, 40, 40));
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::Text, Qt::white);
  QApplication::setPalette(dark);
  {
    RunningSession session;
    session.Session().shown.rows[4].desc = "Go to line 7";
    session.Main().RowChanged(4);
    const QImage image = session.Painted();
    const QRect desc = session.Pane().Geometry().Desc(4);
    EXPECT_EQ(BackgroundAt(image, session.Pane(), 4), QColor(Qt::white));
    EXPECT_TRUE(HasInk(image, QRect(desc.left() + 4, desc.top(), 60, desc.height())));
  }
  QApplication::setPalette(light);
}

TEST(ProgWindowPaint, EachRowBearsItsNumberAsTheOperatorCounts) {
  RunningSession session;
  ProgWindow& pane = session.Pane();
  const QImage image = session.Painted();
  for (const int line : {0, 1, 8, 9, 98, 99, 199}) {
    const QRect label = pane.Geometry().Label(line);
    QPixmap expected(label.size());
    expected.fill(pane.palette().color(QPalette::Window));
    QPainter painter(&expected);
    painter.setFont(pane.font());
    painter.setPen(pane.palette().color(QPalette::WindowText));
    painter.drawText(expected.rect(), Qt::AlignRight | Qt::AlignVCenter, QString::number(line + 1));
    painter.end();
    EXPECT_EQ(image.copy(label).convertToFormat(QImage::Format_RGB32),
              expected.toImage().convertToFormat(QImage::Format_RGB32))
        << line;
  }
}

TEST(ProgWindowPaint, ALineEventRepaintsItsRowAndNoOther) {
  RunningSession session;
  PaintLog paints(session.Pane());
  session.fakes.port.Receive(LineMessage(254, 5));
  session.Settle();
  ASSERT_EQ(paints.regions.size(), 1u);
  EXPECT_EQ(paints.regions[0].top(), session.Pane().Geometry().Top(5));
  EXPECT_EQ(paints.regions[0].height(), session.Pane().Geometry().pitch);
  EXPECT_EQ(BackgroundAt(session.Painted(), session.Pane(), 5), QColor(255, 255, 128));
}

TEST(ProgWindowPaint, ALineBeyondTheTablePaintsNothingAndIsAcknowledged) {
  RunningSession session;
  PaintLog paints(session.Pane());
  session.fakes.port.Receive(LineMessage(254, 200));
  session.fakes.port.Receive({static_cast<char>(254), 127, 127, 0});
  session.Settle();
  EXPECT_TRUE(paints.regions.empty());
  EXPECT_EQ(session.fakes.port.AllSent(), "II");
}

TEST(ProgWindowPaint, ASecondOfLineEventsAtTheWiresSpeedIsPaintedAndAcknowledgedWithinIt) {
  RunningSession session;
  for (int line = 0; line < kLines; ++line) session.Lines().Prog[line].Type = FL;
  ShowAllDescs(session.Handlers().grid());
  session.Settle();
  PaintLog paints(session.Pane());
  QElapsedTimer timer;
  timer.start();
  for (int i = 0; i < 480; ++i) {
    session.fakes.port.Receive(LineMessage(i % 2 == 0 ? 254 : 237, i / 2 % kLines));
    session.Settle();
  }
  EXPECT_LT(timer.elapsed(), 1000);
  EXPECT_EQ(session.fakes.port.AllSent(), std::string(240, 'I'));
  // An event about a row that has scrolled out of view has nothing to paint.
  EXPECT_GE(paints.regions.size(), 440u);
}

TEST(ProgWindowPaint, AFrameIsThickOnlyInAStretchThatRunsWhileAMoveGoesOn) {
  RunningSession session;
  session.Lines().Prog[0].Type = FL;
  session.Lines().Prog[0].Proceed = true;
  session.Lines().Prog[1].Type = WT;
  session.Lines().Prog[2].Type = GT;
  MarkChains(session.Handlers().grid());
  ShowAllDescs(session.Handlers().grid());
  const QImage image = session.Painted();
  const auto dark_from_the_left = [&](int line) {
    const QRect icon = session.Pane().Geometry().Icon(line);
    int width = 0;
    while (image.pixelColor(icon.left() + width, icon.bottom() - 4).lightness() < 200) ++width;
    return width;
  };
  EXPECT_EQ(dark_from_the_left(0), kPlainFrame);
  EXPECT_EQ(dark_from_the_left(1), kChainFrame);
  EXPECT_EQ(dark_from_the_left(2), kPlainFrame);
}

TEST(ProgWindowPaint, ArrowsAndTheColoursOfTheNumbersFollowTheProgram) {
  RunningSession session;
  session.Lines().Prog[2].Type = CL;
  session.Lines().Prog[2].LineNum = 8;
  DrawArrows(session.Handlers().grid());
  const QImage image = session.Painted();
  const RowGeometry& geometry = session.Pane().Geometry();
  const int x =
      geometry.ZoneLeft() + static_cast<int>(ArrowZone::LaneX(session.Session().shown.arrows.at(0)));
  EXPECT_EQ(image.pixelColor(x, geometry.Middle(5)), ArrowColours()[0]);
  bool red = false;
  const QRect label = geometry.Label(8);
  for (int px = label.left(); px <= label.right(); ++px) {
    const QColor dot = image.pixelColor(px, label.center().y());
    red = red || (dot.red() > 150 && dot.green() < 80);
  }
  EXPECT_TRUE(red);
}

TEST(ProgWindowPaint, ArrowColoursStandOutFromLightAndDarkPanes) {
  const auto luminance = [](const QColor& colour) {
    const auto part = [](double value) {
      return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
  };
  for (const QColor& colour : ArrowColours()) {
    EXPECT_GE((luminance(QColor(0xef, 0xef, 0xef)) + 0.05) / (luminance(colour) + 0.05), 3.0);
    EXPECT_GE((luminance(colour) + 0.05) / (luminance(QColor(0x2d, 0x2d, 0x2d)) + 0.05), 3.0);
  }
}

bool IsFullColour(const QColor& dot) {
  return std::ranges::find(ArrowColours(), dot) != ArrowColours().end();
}

TEST(ProgWindowPaint, TheArrowsOfTheCurrentRowLieOverFortyOthersThatArePaler) {
  const QPalette light = QApplication::palette();
  QPalette dark = light;
  dark.setColor(QPalette::Window, QColor(40, 40, 40));
  for (const QPalette& palette : {light, dark}) {
    QApplication::setPalette(palette);
    RunningSession session;
    for (int line = 0; line < 40; ++line) {
      session.Lines().Prog[line] = {.Type = GT, .LineNum = static_cast<std::int16_t>(99 - line)};
    }
    DrawArrows(session.Handlers().grid());
    const RowGeometry& geometry = session.Pane().Geometry();
    // One that goes out, then the same from its other end.
    for (const int row : {20, 79}) {
      session.Pane().SetCurrentRow(row);
      const QImage image = session.Painted();
      const auto own = std::ranges::find(session.Session().shown.arrows, 20, &Arrow::from);
      const int x = geometry.ZoneLeft() + static_cast<int>(ArrowZone::LaneX(*own));
      for (int line = 22; line < 78; ++line) {
        EXPECT_EQ(image.pixelColor(x, geometry.Middle(line)), ArrowColours()[own->colour]) << line;
        for (int px = geometry.ZoneLeft(); px < geometry.IconLeft() - 1; ++px) {
          if (std::abs(px - x) > 1) {
            EXPECT_FALSE(IsFullColour(image.pixelColor(px, geometry.Middle(line)))) << px;
          }
        }
      }
    }
    // A row without any leaves all as they are.
    session.Pane().SetCurrentRow(150);
    const QImage image = session.Painted();
    const int x = geometry.ZoneLeft() + static_cast<int>(ArrowZone::LaneX(session.Session().shown.arrows[0]));
    EXPECT_TRUE(IsFullColour(image.pixelColor(x, geometry.Middle(50))));
  }
  QApplication::setPalette(light);
}

TEST(ProgWindowPaint, ManyConnectionsStayInTheirZone) {
  RunningSession session;
  for (int line = 0; line < kLines; ++line) {
    session.Lines().Prog[line].Type = GT;
    session.Lines().Prog[line].LineNum = static_cast<std::int16_t>((line * 7) % kLines);
  }
  DrawArrows(session.Handlers().grid());
  ASSERT_EQ(session.Session().shown.arrows.size(), 200u);
  for (const Arrow& arrow : session.Session().shown.arrows) {
    EXPECT_GE(ArrowZone::LaneX(arrow), 4);
    EXPECT_LT(ArrowZone::LaneX(arrow), RowGeometry::kZoneWidth);
  }
  EXPECT_FALSE(session.Painted().isNull());
}

TEST(ProgWindowPaint, APromptLosesItsLastCharactersUntilItFits) {
  Source source;
  InitSession(source);
  source.program.Prog[0].Type = MMI;
  source.shown.rows[0].desc = "MMI: \"" + std::string(500, 'w') + "\"";
  const QFontMetrics font(QApplication::font());
  RowTexts texts;
  const QString prompt = texts.Shown(source, 0, 300, font);
  EXPECT_LE(font.horizontalAdvance(prompt), 296);
  EXPECT_GT(font.horizontalAdvance(prompt + QLatin1Char('w')), 296);
  EXPECT_FALSE(prompt.endsWith(QLatin1Char('"')));
}

TEST(ProgWindowPaint, AnyOtherTextThatDoesNotFitEndsInAnEllipsis) {
  Source source;
  InitSession(source);
  source.program.Prog[0].Type = CM;
  source.shown.rows[0].desc = std::string(500, 'w');
  source.shown.rows[1].desc = "Go to line 7";
  const QFontMetrics font(QApplication::font());
  RowTexts texts;
  const QString cut = texts.Shown(source, 0, 300, font);
  EXPECT_TRUE(cut.endsWith(QChar(0x2026))) << cut.toStdString();
  EXPECT_LE(font.horizontalAdvance(cut), 296);
  EXPECT_EQ(texts.Shown(source, 1, 300, font), "Go to line 7");
  const int whole = font.horizontalAdvance(QStringLiteral("Go to line 7"));
  EXPECT_TRUE(texts.Shown(source, 1, whole + 3, font).endsWith(QChar(0x2026)));
}

TEST(ProgWindowPaint, ATextOfMegabytesIsShownWithoutMeasuringIt) {
  Source source;
  InitSession(source);
  source.program.Prog[0].Type = MMI;
  source.shown.rows[0].desc = std::string(8u << 20, 'i');
  RowTexts texts;
  QElapsedTimer timer;
  timer.start();
  EXPECT_LE(texts.Shown(source, 0, 300, QFontMetrics(QApplication::font())).size(), 200);
  EXPECT_LT(timer.elapsed(), 500);
}

TEST(ProgWindowPaint, ADoubledAmpersandShowsOnceAndControlsAsBlanks) {
  Source source;
  InitSession(source);
  source.shown.rows[0].desc = "Cut && eject\n\x01\xe9";
  RowTexts texts;
  EXPECT_EQ(texts.Shown(source, 0, 300, QFontMetrics(QApplication::font())),
            QString::fromLatin1("Cut & eject  \xe9"));
}

TEST(ProgWindowPaint, TheMarkerStandsBesideItsRowAndGoes) {
  RunningSession session;
  auto* marker = session.Find<QWidget>("ProgCounter");
  EXPECT_FALSE(marker->isVisible());
  const int pitch = session.Pane().Geometry().pitch;
  session.fakes.port.Receive({static_cast<char>(235), 1, 0, 12});
  EXPECT_TRUE(marker->isVisible());
  EXPECT_EQ(marker->y(), 12 * pitch - 15 * pitch / 24);
  session.fakes.port.Receive({static_cast<char>(235), 1, 0, 0});
  EXPECT_EQ(marker->y(), -9 * pitch / 24);
  session.fakes.port.Receive({static_cast<char>(235), 0, 0, 0});
  EXPECT_FALSE(marker->isVisible());
}

TEST(ProgWindowPaint, TheScrollBarReachesRow200WholeAndFollowsTheRun) {
  RunningSession session;
  auto* bar = session.Find<QScrollBar>("ScrollProg");
  const int pitch = session.Pane().Geometry().pitch;
  const int view = session.Pane().parentWidget()->height();
  EXPECT_EQ(bar->maximum() + view, kLines * pitch);
  session.fakes.port.Receive(LineMessage(254, 3));
  EXPECT_EQ(bar->value(), 0);
  session.fakes.port.Receive(LineMessage(254, 120));
  EXPECT_LE(bar->value(), 120 * pitch);
  EXPECT_GE(bar->value() + view, 121 * pitch);
  const int before = bar->value();
  session.fakes.port.Receive(LineMessage(254, 121));
  EXPECT_EQ(bar->value(), before);
  session.fakes.port.Receive(LineMessage(254, 199));
  EXPECT_EQ(bar->value(), bar->maximum());
}

}  // namespace
}  // namespace tavlo::testing
