// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/mmi_form.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "qt/gui/shown_text.h"
#include "widgets/display_colours.h"
#include "widgets/font_size.h"

namespace tavlo {
namespace {

constexpr int kDisplayColumns = 20;
/// Height of the display's letters, in dots beside a text 16 high.
constexpr int kDisplayLetters = 24;
constexpr int kKeyWidth = 46;
constexpr int kWordWidth = 62;
constexpr int kKeyHeight = 36;
/// Height of a screen on which display, keys and controls have their chosen sizes.
constexpr int kRoomForAll = 640;
/// What a key needs around its word.
constexpr int kKeyEdge = 12;
/// A row grows without end while text comes that nothing clears. What stands before its newest so many
/// characters is kept, not shown.
constexpr std::size_t kShownColumns = 1000;

/// A key as it stands on the keypad: the operator terminal's own layout.
struct KeyRow {
  MmiKey key;
  const char* name;
  const char* caption;
  /// What a screen reader says.
  const char* spoken;
  int row;
  int column;
  int columns = 1;
};
constexpr std::array<KeyRow, 19> kKeys = {{
    {MmiKey::Digit7, "number7", "7", "7", 0, 0},
    {MmiKey::Digit8, "number8", "8", "8", 0, 1},
    {MmiKey::Digit9, "number9", "9", "9", 0, 2},
    {MmiKey::yes, "yes", "Yes +", "yes, plus", 0, 3},
    {MmiKey::Digit4, "number4", "4", "4", 1, 0},
    {MmiKey::Digit5, "number5", "5", "5", 1, 1},
    {MmiKey::Digit6, "number6", "6", "6", 1, 2},
    {MmiKey::no, "no", "No \xe2\x88\x92", "no, minus", 1, 3},
    {MmiKey::Digit1, "number1", "1", "1", 2, 0},
    {MmiKey::Digit2, "number2", "2", "2", 2, 1},
    {MmiKey::Digit3, "number3", "3", "3", 2, 2},
    {MmiKey::bksp, "bksp", "Bksp", "backspace", 2, 3},
    {MmiKey::Digit0, "number0", "0", "0", 3, 0},
    {MmiKey::dot, "dot", ".", "point", 3, 1},
    {MmiKey::enter, "enter", "Enter", "enter", 3, 2, 2},
    {MmiKey::arrowup, "arrowup", "\xe2\x86\x91", "up", 0, 6},
    {MmiKey::arrowleft, "arrowleft", "\xe2\x86\x90", "left", 1, 5},
    {MmiKey::arrowright, "arrowright", "\xe2\x86\x92", "right", 1, 7},
    {MmiKey::arrowdown, "arrowdown", "\xe2\x86\x93", "down", 2, 6},
}};
constexpr int kWordColumn = 3;
constexpr int kGapColumn = 4;

/// In proportion to the font, as long as the screen has room for it: Stop must stay in sight.
int Measure(const QWidget& window, int chosen) {
  const int wanted = ByFont(window.fontMetrics(), chosen);
  const int height = ByFont(window.fontMetrics(), kRoomForAll);
  return std::min(wanted, wanted * window.screen()->availableSize().height() / height);
}

bool IsArrow(MmiKey key) {
  return key >= MmiKey::arrowup;
}

std::optional<MmiKey> KeyOf(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) return std::nullopt;
  const int key = event.key();
  if (key >= Qt::Key_0 && key <= Qt::Key_9) return static_cast<MmiKey>(key - Qt::Key_0);
  switch (key) {
    // The point of a keypad is a comma where numbers have one.
    case Qt::Key_Period:
    case Qt::Key_Comma: return MmiKey::dot;
    case Qt::Key_Y:
    case Qt::Key_Plus: return MmiKey::yes;
    case Qt::Key_N:
    case Qt::Key_Minus: return MmiKey::no;
    case Qt::Key_Return:
    case Qt::Key_Enter: return MmiKey::enter;
    case Qt::Key_Backspace: return MmiKey::bksp;
    case Qt::Key_Up: return MmiKey::arrowup;
    case Qt::Key_Down: return MmiKey::arrowdown;
    case Qt::Key_Left: return MmiKey::arrowleft;
    case Qt::Key_Right: return MmiKey::arrowright;
    default: return std::nullopt;
  }
}

}  // namespace

/// A row of the display. Where its text is longer than the row it shows the end, which is the newest.
class MmiForm::DisplayRow : public QLabel {
 public:
  using QLabel::QLabel;
  [[nodiscard]] QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(QString(kDisplayColumns, QLatin1Char('M'))),
            fontMetrics().lineSpacing()};
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideLeft, width()));
  }
};

MmiForm::MmiForm(Desk& desk, QWidget* main_window, std::function<void(bool)> hold)
    : RunForm(desk, RunWindow::fakeMMI, main_window, std::move(hold)) {
  auto* column = new QVBoxLayout;
  column->addWidget(MakeDisplay());
  column->addWidget(MakeKeypad());
  column->addStretch(1);
  Body().insertLayout(0, column);
  for (QWidget* child : findChildren<QWidget*>()) child->installEventFilter(this);
}

QWidget* MmiForm::MakeDisplay() {
  auto* frame = new QGroupBox(QStringLiteral("Display"), this);
  glass_ = new QWidget(frame);
  glass_->setObjectName(QStringLiteral("Display"));
  glass_->setAccessibleName(QStringLiteral("Display"));
  glass_->setFocusPolicy(Qt::StrongFocus);
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPixelSize(Measure(*this, kDisplayLetters));
  QPalette colours = glass_->palette();
  colours.setColor(QPalette::Window, kGlass);
  colours.setColor(QPalette::WindowText, kGlassText);
  glass_->setPalette(colours);
  glass_->setAutoFillBackground(true);
  auto* lines = new QVBoxLayout(glass_);
  lines->setSpacing(0);
  for (std::size_t row = 0; row < textline_.size(); ++row) {
    auto* line = new DisplayRow(glass_);
    line->setObjectName(QStringLiteral("textline%1").arg(row));
    line->setAccessibleDescription(QStringLiteral("display row %1").arg(row + 1));
    line->setTextFormat(Qt::PlainText);
    line->setFont(fixed);
    textline_[row] = line;
    lines->addWidget(line);
  }
  auto* column = new QVBoxLayout(frame);
  column->addWidget(glass_);
  return frame;
}

QWidget* MmiForm::MakeKeypad() {
  auto* frame = new QGroupBox(QStringLiteral("Keypad"), this);
  auto* grid = new QGridLayout(frame);
  grid->setSpacing(4);
  for (const KeyRow& row : kKeys) {
    auto* button = new QPushButton(QString::fromUtf8(row.caption), frame);
    button->setObjectName(QLatin1String(row.name));
    button->setAccessibleName(QLatin1String(row.spoken));
    button->setFixedHeight(std::max(Measure(*this, kKeyHeight), fontMetrics().height() + kKeyEdge / 2));
    // A key over several columns fills them.
    const int word = fontMetrics().horizontalAdvance(button->text()) + kKeyEdge;
    const int width = Measure(*this, row.column == kWordColumn ? kWordWidth : kKeyWidth);
    if (row.columns == 1) button->setFixedWidth(std::max(width, word));
    // The keyboard works the keys, so that none of them need hold the focus.
    button->setFocusPolicy(Qt::NoFocus);
    // A held arrow jogs on.
    button->setAutoRepeat(IsArrow(row.key));
    connect(button, &QPushButton::clicked, this, [this, key = row.key] { PressKey(Handlers(), key); });
    grid->addWidget(button, row.row, row.column, 1, row.columns);
  }
  grid->setColumnMinimumWidth(kGapColumn, kKeyWidth / 3);
  grid->setColumnStretch(kGapColumn + 4, 1);
  return frame;
}

void MmiForm::TextLinesChanged() {
  if (std::exchange(text_due_, true)) return;
  QTimer::singleShot(0, this, &MmiForm::ShowTextLines);
}

void MmiForm::ShowTextLines() {
  text_due_ = false;
  for (std::size_t row = 0; row < textline_.size(); ++row) {
    const std::string& text = Handlers().source.display.textline[row];
    textline_[row]->setText(FromText(text.substr(text.size() - std::min(text.size(), kShownColumns))));
  }
}

bool MmiForm::TakeKey(const QKeyEvent& event) {
  const bool held = held_.Repeats(event);
  if (event.type() != QEvent::KeyPress) return false;
  const auto key = KeyOf(event);
  if (!key) return false;
  // Of held keys, only those that jog and Backspace repeat.
  const bool repeats = IsArrow(*key) || *key == MmiKey::bksp;
  if (!held || repeats) PressKey(Handlers(), *key);
  return true;
}

bool MmiForm::eventFilter(QObject* watched, QEvent* event) {
  const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
  if (key && TakeKey(*static_cast<QKeyEvent*>(event))) return true;
  return RunForm::eventFilter(watched, event);
}

void MmiForm::keyPressEvent(QKeyEvent* event) {
  if (!TakeKey(*event)) RunForm::keyPressEvent(event);
}

}  // namespace tavlo
