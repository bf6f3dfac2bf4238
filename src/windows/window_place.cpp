// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/window_place.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QSplitter>
#include <QString>
#include <QStringList>
#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr std::string_view kSection = "Window";
/// Left, top, width, height, and 1 if the window was maximised.
constexpr std::string_view kPlace = "Place";
/// The widths of the columns.
constexpr std::string_view kColumns = "Columns";
/// What a window manager draws beside a window, at most.
constexpr int kFrame = 8;
/// So much of a title bar must be on a screen for the window to be moved by it.
constexpr QSize kReach(100, 20);

void Store(SettingsStore& settings, std::string_view key, const QList<int>& numbers) {
  QStringList words;
  for (const int number : numbers) words.append(QString::number(number));
  settings.Save(kSettingsApplication, kSection, key, words.join(QLatin1Char(' ')).toStdString());
}

/// The numbers that are kept; nothing unless there are so many of them.
std::optional<std::vector<int>> Stored(SettingsStore& settings, std::string_view key, int count) {
  const QString text = QString::fromStdString(settings.Get(kSettingsApplication, kSection, key, ""));
  std::vector<int> numbers;
  for (const QString& word : text.split(QLatin1Char(' '))) {
    bool good = false;
    numbers.push_back(word.toInt(&good));
    if (!good) return std::nullopt;
  }
  if (static_cast<int>(numbers.size()) != count) return std::nullopt;
  return numbers;
}

bool InReach(QPoint top_left, int width) {
  const QRect title(top_left, QSize(width, kReach.height()));
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect seen = title & screen->availableGeometry();
    if (seen.width() >= kReach.width() && seen.height() >= kReach.height() / 2) return true;
  }
  return false;
}

/// The last one where both cannot be.
int Between(int wanted, int first, int last) {
  return std::min(std::max(wanted, first), last);
}

int Area(const QSize& size) {
  return size.width() * size.height();
}

}  // namespace

QSize OpeningSize(const QWidget& window, const QSize& usual) {
  const QFontMetrics font = window.fontMetrics();
  const QSize wanted(ByFont(font, usual.width()), ByFont(font, usual.height()));
  const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  return wanted.boundedTo(window.screen()->availableSize() - QSize(2 * kFrame, title + 2 * kFrame));
}

QSize FrameOf(const QWidget& window) {
  return window.frameGeometry().size() - window.size();
}

QRect RoomBeside(const QRect& spared, const QRect& room, const QSize& size, const QSize& least) {
  const QRect parts[] = {{QPoint(spared.right() + 1, room.top()), room.bottomRight()},
                         {room.topLeft(), QPoint(spared.left() - 1, room.bottom())},
                         {QPoint(room.left(), spared.bottom() + 1), room.bottomRight()},
                         {room.topLeft(), QPoint(room.right(), spared.top() - 1)}};
  QRect best;
  int least_covered = std::numeric_limits<int>::max();
  for (const QRect& part : parts) {
    const QSize fits = size.boundedTo(part.size()).expandedTo(least);
    // As near to what is spared as the part lets it be, and at the edge of the room if the part is too small.
    const QPoint last = part.bottomRight() + QPoint(1, 1) - QPoint(fits.width(), fits.height());
    const QPoint end = room.bottomRight() + QPoint(1, 1) - QPoint(fits.width(), fits.height());
    const QRect place(QPoint(Between(Between(spared.left(), part.left(), last.x()), room.left(), end.x()),
                             Between(Between(spared.top(), part.top(), last.y()), room.top(), end.y())),
                      fits);
    const int covered = Area(place.intersected(spared).size());
    if (covered > least_covered || (covered == least_covered && Area(fits) <= Area(best.size()))) continue;
    least_covered = covered;
    best = place;
  }
  return best;
}

void RememberPlace(SettingsStore& settings, const QWidget& window, const QSplitter& columns) {
  const bool maximised = window.isMaximized();
  const QPoint place = maximised ? window.normalGeometry().topLeft() : window.pos();
  const QSize size = maximised ? window.normalGeometry().size() : window.size();
  Store(settings, kPlace, {place.x(), place.y(), size.width(), size.height(), maximised ? 1 : 0});
  Store(settings, kColumns, columns.sizes());
}

void TakePlace(SettingsStore& settings, QWidget& window, QSplitter& columns) {
  if (const auto place = Stored(settings, kPlace, 5)) {
    const QPoint top_left((*place)[0], (*place)[1]);
    const QSize size = QSize((*place)[2], (*place)[3]).expandedTo(window.minimumSizeHint());
    const bool fits = size == size.boundedTo(window.screen()->virtualSize());
    if (fits && InReach(top_left, size.width())) {
      window.move(top_left);
      window.resize(size);
      if ((*place)[4] == 1) window.setWindowState(window.windowState() | Qt::WindowMaximized);
    }
  }
  if (const auto widths = Stored(settings, kColumns, columns.count())) {
    columns.setSizes(QList<int>(widths->begin(), widths->end()));
  }
}

}  // namespace tavlo
