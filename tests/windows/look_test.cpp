// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionButton>
#include <QToolButton>
#include <map>
#include <set>

#include "widgets/contrast.h"
#include "widgets/line_text.h"
#include "windows/led_panel.h"
#include "windows/side_panels.h"
#include "windows/status_line.h"
#include "windows/window_walk.h"

// What every window looks like with a light and a dark palette and with a small and a large text. The same
// tests run once more on screens of other resolutions: see CMakeLists.txt.

namespace tavlo::testing {
namespace {

class LookOfAllWindows : public ::testing::TestWithParam<Look> {};

INSTANTIATE_TEST_SUITE_P(Looks, LookOfAllWindows,
                         ::testing::Values(Look{false, 9}, Look{false, 16}, Look{true, 9}, Look{true, 16}),
                         [](const auto& each) {
                           return std::string(each.param.dark ? "Dark" : "Light") +
                                  (each.param.points > 9 ? "Large" : "Small");
                         });

std::string Called(const QWidget& widget) {
  std::string name;
  for (const QWidget* up = &widget; up != nullptr; up = up->parentWidget()) {
    const QString own =
        up->objectName().isEmpty() ? QLatin1String(up->metaObject()->className()) : up->objectName();
    name = own.toStdString() + (name.empty() ? "" : " / ") + name;
  }
  return name;
}

std::vector<QWidget*> Seen(QWidget& window) {
  std::vector<QWidget*> seen;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->isVisible() && widget->window() == &window) seen.push_back(widget);
  }
  return seen;
}

/// Children of a pane that scrolls reach out of what is seen of it.
bool Scrolls(const QWidget& widget) {
  return widget.parentWidget() != nullptr &&
         qobject_cast<QAbstractScrollArea*>(widget.parentWidget()->parentWidget()) != nullptr;
}

constexpr int kNarrowestScreen = 1280;

QSize TextSize(const QWidget& widget, const QString& text) {
  return widget.fontMetrics().size(Qt::TextShowMnemonic, text);
}

/// The room that a widget of this kind has for its text, and the text; no text if it draws it in its own way.
struct TextRoom {
  QString text;
  QSize room{0, 0};
};

TextRoom RoomOf(QWidget& widget) {
  if (qobject_cast<LedLight*>(&widget) != nullptr || qobject_cast<DriveLabel*>(&widget) != nullptr ||
      dynamic_cast<LineText*>(&widget) != nullptr || qobject_cast<StatusLabel*>(&widget) != nullptr) {
    return {};
  }
  if (const auto* label = qobject_cast<QLabel*>(&widget)) {
    if (label->wordWrap() || label->text().isEmpty()) return {};
    return {label->text(), label->contentsRect().size()};
  }
  if (auto* button = qobject_cast<QPushButton*>(&widget)) {
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    return {button->text(),
            button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button).size()};
  }
  return {};
}

/// What a widget needs to be seen whole.
QSize Needs(QWidget& widget) {
  if (qobject_cast<QPushButton*>(&widget) != nullptr) return {0, 0};
  const bool whole =
      qobject_cast<QAbstractButton*>(&widget) != nullptr || qobject_cast<LedLight*>(&widget) != nullptr ||
      qobject_cast<QLineEdit*>(&widget) != nullptr || qobject_cast<QGroupBox*>(&widget) != nullptr ||
      qobject_cast<QComboBox*>(&widget) != nullptr;
  if (!whole) return {0, 0};
  return qobject_cast<QAbstractButton*>(&widget) != nullptr ? widget.sizeHint() : widget.minimumSizeHint();
}

TEST_P(LookOfAllWindows, NothingIsClipped) {
  const WearingLook wearing(GetParam());
  ForEachWindow([](QWidget& window, const std::string& state) {
    for (QWidget* widget : Seen(window)) {
      const std::string name = state + ": " + Called(*widget);
      const TextRoom text = RoomOf(*widget);
      const QSize wanted = TextSize(*widget, text.text);
      EXPECT_LE(wanted.width(), text.room.width()) << name << ": " << text.text.toStdString();
      EXPECT_TRUE(text.text.isEmpty() || wanted.height() <= text.room.height()) << name;
      const QSize needs = Needs(*widget);
      EXPECT_LE(needs.width(), widget->width()) << name;
      EXPECT_LE(needs.height(), widget->height()) << name;
      if (Scrolls(*widget) || qobject_cast<ProgWindow*>(widget->parentWidget()) != nullptr) continue;
      EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry()))
          << name << " leaves its parent";
    }
    // The screen that the tests have by themselves is narrower than any that is made.
    const QSize room = window.screen()->availableSize();
    if (room.width() * window.devicePixelRatioF() < kNarrowestScreen) return;
    EXPECT_LE(window.width(), room.width()) << state;
    EXPECT_LE(window.height(), room.height()) << state;
  });
}

TEST_P(LookOfAllWindows, TheFirstWindowFitsTheScreenItOpensOn) {
  const WearingLook wearing(GetParam());
  RunningSession session;
  EXPECT_LE(session.Main().width(), session.Main().screen()->availableSize().width());
  EXPECT_LE(session.Main().height(), session.Main().screen()->availableSize().height());
}

/// What is painted in a place: the colour of most of it, and how much another one stands out from that.
struct Painted {
  QColor ground;
  double contrast = 1;
};

/// The colours of all dots that a place touches.
std::map<QRgb, int> ColoursIn(const QImage& picture, const QRect& place) {
  const qreal scale = picture.devicePixelRatio();
  const QRectF scaled(QPointF(place.topLeft()) * scale, QSizeF(place.size()) * scale);
  const QRect dots = scaled.toAlignedRect() & picture.rect();
  std::map<QRgb, int> colours;
  for (int y = dots.top(); y <= dots.bottom(); ++y) {
    for (int x = dots.left(); x <= dots.right(); ++x) ++colours[picture.pixel(x, y)];
  }
  return colours;
}

double MostAgainst(const QColor& ground, const std::map<QRgb, int>& colours) {
  double most = 1;
  for (const auto& [colour, count] : colours) most = std::max(most, Contrast(ground, QColor(colour)));
  return most;
}

Painted PaintedIn(const QImage& picture, const QRect& place) {
  const std::map<QRgb, int> colours = ColoursIn(picture, place);
  Painted painted;
  int most = 0;
  for (const auto& [colour, count] : colours) {
    if (count > most) painted.ground = QColor(colour);
    most = std::max(most, count);
  }
  painted.contrast = MostAgainst(painted.ground, colours);
  return painted;
}

/// Where a widget has its text, without the frames of its kind.
QRect TextPlace(QWidget& widget) {
  constexpr int kFrame = 4;
  if (qobject_cast<QGroupBox*>(&widget) != nullptr) {
    return {QPoint(0, 0), QSize(widget.width(), widget.fontMetrics().height())};
  }
  const bool framed =
      qobject_cast<QAbstractButton*>(&widget) != nullptr || qobject_cast<QComboBox*>(&widget) != nullptr ||
      qobject_cast<QLineEdit*>(&widget) != nullptr || qobject_cast<QPlainTextEdit*>(&widget) != nullptr;
  if (framed) {
    return widget.rect().adjusted(kFrame, kFrame, -kFrame, -kFrame);
  }
  const auto* label = qobject_cast<QLabel*>(&widget);
  const bool light = qobject_cast<LedLight*>(&widget) != nullptr;
  return label != nullptr && !light && !label->text().trimmed().isEmpty() ? widget.rect() : QRect();
}

TEST_P(LookOfAllWindows, EveryTextStandsOut) {
  const WearingLook wearing(GetParam());
  int texts = 0;
  ForEachWindow([&](QWidget& window, const std::string& state) {
    const QImage picture = window.grab().toImage();
    for (QWidget* widget : Seen(window)) {
      const QRect place = TextPlace(*widget);
      const QRect seen(widget->visibleRegion().boundingRect() & place);
      if (place.isEmpty() || seen != place || !widget->isEnabled()) continue;
      ++texts;
      EXPECT_GE(PaintedIn(picture, {widget->mapTo(&window, place.topLeft()), place.size()}).contrast,
                kTextContrast)
          << state << ": " << Called(*widget);
    }
  });
  EXPECT_GT(texts, 300);
}

TEST_P(LookOfAllWindows, EveryLightStandsOutAndWhatIsOffIsHollow) {
  const WearingLook wearing(GetParam());
  std::map<Led, int> lights;
  ForEachWindow([&](QWidget& window, const std::string& state) {
    auto* panel = window.findChild<LedPanel*>();
    if (panel == nullptr || !panel->isVisible()) return;
    const QImage picture = panel->grab().toImage();
    for (const LedLight* light : panel->findChildren<LedLight*>()) {
      if (!light->isVisible()) continue;
      ++lights[light->Shown()];
      const QPoint at = light->mapTo(panel, QPoint(0, 0));
      const std::string name = state + ": " + Called(*light);
      const QColor ground = PaintedIn(picture, {at, QSize(2, 2)}).ground;
      const bool on = light->Shown() == Led::Green || light->Shown() == Led::Red;
      const QColor middle = PaintedIn(picture, {at + light->rect().center(), QSize(1, 1)}).ground;
      EXPECT_GE(PaintedIn(picture, {at, light->size()}).contrast, kSymbolContrast) << name;
      EXPECT_TRUE(!on || Contrast(middle, ground) >= kTextContrast) << name;
      EXPECT_TRUE(on || light->Shown() == Led::Unknown || middle == ground) << name;
    }
  });
  for (const Led led : {Led::GreenOff, Led::Green, Led::RedOff, Led::Red, Led::Unknown}) {
    EXPECT_GT(lights[led], 0) << static_cast<int>(led);
  }
}

TEST_P(LookOfAllWindows, ATextIsCutOnlyWhereTheGridEndsOrWhereItIsLong) {
  constexpr int kLongText = 50;
  const WearingLook wearing(GetParam());
  RunningSession session;
  const RowGeometry& geometry = session.Pane().Geometry();
  const int whole = geometry.width - geometry.DescLeft();
  const int long_text = kLongText * session.Pane().fontMetrics().averageCharWidth();
  EXPECT_GE(geometry.text_width, std::min(whole, long_text));
  session.Main().resize(session.Main().minimumSizeHint());
  session.Settle();
  EXPECT_GE(geometry.text_width, std::min(geometry.width - geometry.DescLeft(), long_text));
}

/// The rows as they are painted: every state of them stands among the first.
TEST_P(LookOfAllWindows, NumbersTextsIconsAndFramesOfRowsStandOut) {
  const WearingLook wearing(GetParam());
  ForEachWindow([](QWidget& window, const std::string& state) {
    if (state != "main") return;
    const auto& pane = *window.findChild<ProgWindow*>();
    const RowGeometry& geometry = pane.Geometry();
    const QImage picture = window.findChild<ProgWindow*>()->grab().toImage();
    for (int line = 0; line < 17; ++line) {
      const QRect icon = geometry.Icon(line);
      const QRect text = geometry.Desc(line).adjusted(3, 3, -3, -3);
      EXPECT_GE(PaintedIn(picture, geometry.Label(line)).contrast, kTextContrast) << "number of row " << line;
      const bool empty = pane.Session().shown.rows[line].desc.empty();
      EXPECT_TRUE(empty || PaintedIn(picture, text).contrast >= kTextContrast) << "text of row " << line;
      EXPECT_GE(PaintedIn(picture, icon.adjusted(4, 4, -4, -4)).contrast, kSymbolContrast) << "icon " << line;
      // Across the frame, from its outer edge into the tile.
      const QRect frame(icon.left(), icon.top() + 5, 5, 1);
      EXPECT_GE(PaintedIn(picture, frame).contrast, kSymbolContrast) << "frame of row " << line;
    }
    const QRect marker(0, geometry.Top(6), RowGeometry::kMarkerWidth + 1, geometry.pitch);
    EXPECT_GE(PaintedIn(picture, marker).contrast, kSymbolContrast) << "program counter";
    for (const QColor& arrow : ArrowColours()) {
      EXPECT_GE(Contrast(arrow, window.palette().color(QPalette::Window)), kSymbolContrast);
    }
  });
}

TEST_P(LookOfAllWindows, PicturesOfButtonsAndSquaresOfFaultsStandOut) {
  const WearingLook wearing(GetParam());
  int buttons = 0;
  int squares = 0;
  ForEachWindow([&](QWidget& window, const std::string& state) {
    const QImage picture = window.grab().toImage();
    for (QWidget* widget : Seen(window)) {
      const std::string name = state + ": " + Called(*widget);
      const QPoint at = widget->mapTo(&window, QPoint(0, 0));
      const auto* button = qobject_cast<QToolButton*>(widget);
      if (button != nullptr && button->isEnabled() &&
          button->visibleRegion().boundingRect() == button->rect()) {
        ++buttons;
        const QRect upper(at + QPoint(5, 4), QSize(button->width() - 10, button->iconSize().height()));
        EXPECT_GE(PaintedIn(picture, upper).contrast, kSymbolContrast) << name;
      }
      if (widget->objectName().startsWith(QLatin1String("RedSquare"))) {
        ++squares;
        const QRect around = QRect(at, widget->size()).adjusted(-2, -2, 2, 2);
        const QColor ground = PaintedIn(picture, {around.topLeft(), QSize(2, 2)}).ground;
        const Painted inside = PaintedIn(picture, QRect(at, widget->size()).adjusted(3, 3, -3, -3));
        EXPECT_GE(MostAgainst(ground, ColoursIn(picture, {at, widget->size()})), kSymbolContrast) << name;
        const bool alarm = widget->accessibleName().endsWith(QLatin1String(": alarm"));
        EXPECT_TRUE(!alarm || inside.contrast >= kTextContrast) << name;
      }
    }
  });
  EXPECT_GT(buttons, 40);
  EXPECT_EQ(squares, 14);
}

/// Dots that became another colour, plainly so.
int PlainlyChanged(const QImage& before, const QImage& after) {
  int changed = 0;
  for (int y = 0; y < before.height(); ++y) {
    for (int x = 0; x < before.width(); ++x) {
      if (Contrast(before.pixelColor(x, y), after.pixelColor(x, y)) >= kSymbolContrast) ++changed;
    }
  }
  return changed;
}

TEST_P(LookOfAllWindows, TheFocusIsSeenOnEveryToolButton) {
  const WearingLook wearing(GetParam());
  std::set<std::string> seen;
  ForEachWindow([&](QWidget& window, const std::string& state) {
    for (QWidget* widget : Seen(window)) {
      if (qobject_cast<QToolButton*>(widget) == nullptr || !widget->isEnabled()) continue;
      widget->clearFocus();
      const QImage before = widget->grab().toImage();
      widget->setFocus(Qt::TabFocusReason);
      if (!widget->hasFocus()) continue;
      seen.insert(widget->objectName().toStdString());
      const int around = before.width() + before.height();
      EXPECT_GT(PlainlyChanged(before, widget->grab().toImage()), around) << state << ": " << Called(*widget);
      widget->clearFocus();
    }
  });
  for (const char* button : {"Load", "Save", "BtnClear", "Download", "Upload", "execbutton", "Quit", "Play",
                             "Pause", "SingleStep", "btnReset", "btnStop", "StopButton"}) {
    EXPECT_TRUE(seen.contains(button)) << button;
  }
}

TEST(Look, FollowsAPaletteThatChangesWhileTheWindowsStand) {
  const WearingLook light({false, 10});
  RunSession session;
  session.WhileRunning(RunWindow::ExecStatus, [&] {
    const WearingLook dark({true, 10});
    session.Settle();
    for (const char* name : {"btnReset", "Play", "btnStop"}) {
      auto& button = session.Find<QToolButton>("ExecStatus", name);
      const QRect picture(QPoint(5, 4), QSize(button.width() - 10, button.iconSize().height()));
      EXPECT_GE(PaintedIn(button.grab().toImage(), picture).contrast, kSymbolContrast) << name;
    }
    session.Click("ExecStatus", "btnStop");
  });
}

/// A picture of every window for the eye, where TAVLO_LOOK names a folder.
TEST_P(LookOfAllWindows, CanBeKeptAsPictures) {
  const QString folder = qEnvironmentVariable("TAVLO_LOOK");
  if (folder.isEmpty()) GTEST_SKIP() << "TAVLO_LOOK names no folder";
  const WearingLook wearing(GetParam());
  ForEachWindow([&](QWidget& window, const std::string& state) {
    const std::string file = state + ", " + NameOf(GetParam()) + ".png";
    EXPECT_TRUE(window.grab().save(QDir(folder).filePath(QString::fromStdString(file)))) << file;
  });
}

}  // namespace
}  // namespace tavlo::testing
