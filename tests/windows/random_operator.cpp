// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/random_operator.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTextEdit>
#include <QWheelEvent>
#include <QWindow>
#include <algorithm>
#include <array>
#include <iterator>

#include "editors/pick_prog.h"
#include "windows/prog_window.h"

namespace tavlo::testing {
namespace {

constexpr Qt::Key kKeys[] = {
    Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Space,
    Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Home,    Qt::Key_End,
    Qt::Key_PageUp, Qt::Key_Tab,   Qt::Key_Space,  Qt::Key_PageDown, Qt::Key_Delete,  Qt::Key_Backspace,
    Qt::Key_F1,     Qt::Key_F4,    Qt::Key_Insert, Qt::Key_A,        Qt::Key_Z,       Qt::Key_O,
    Qt::Key_0,      Qt::Key_9,     Qt::Key_Minus,  Qt::Key_Period,   Qt::Key_Comma,   Qt::Key_Menu};

/// What the main window does with lines.
constexpr QKeyCombination kCommands[] = {
    Qt::CTRL | Qt::Key_Z, Qt::CTRL | Qt::Key_Z, Qt::CTRL | Qt::SHIFT | Qt::Key_Z,
    Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::Key_X, Qt::CTRL | Qt::Key_C,
    Qt::CTRL | Qt::Key_V, Qt::CTRL | Qt::Key_V, Qt::Key_Delete,
    Qt::Key_Insert,       Qt::CTRL | Qt::Key_G, Qt::CTRL | Qt::Key_F,
    Qt::Key_F3,           Qt::CTRL | Qt::Key_S, Qt::CTRL | Qt::SHIFT | Qt::Key_S,
    Qt::CTRL | Qt::Key_O};

const char* const kTexts[] = {"",           "0",
                              "1",          "-0",
                              "7",          "12.5",
                              "0,5",        "1,000.25",
                              "abc",        "none\"",
                              "1E300",      "-1E300",
                              "1e-320",     "1E999",
                              "-1E999",     "nan",
                              "inf",        "-5",
                              "--3",        "+8",
                              ".",          "1.2.3",
                              "0x10",       "&H7F",
                              "300",        "65536",
                              "16000001",   "-16000001",
                              "4294967297", "99999999999999999999",
                              "3.05",       "0.0000001",
                              "Feed & cut", "word1 word2 word3 word4 word5",
                              "  5  ",      "\xe4\xf6\xfc"};

/// What a key cannot type: line ends of every kind, what controls a terminal, what no byte can hold.
const std::u16string_view kPastes[] = {u"1\r\n2",
                                       u"line\nline\nline",
                                       u"tab\there",
                                       u"\x1b[2J",
                                       u"bell\a and \x1a end",
                                       u"\u20ac\u4e2d\u6587",
                                       u"\u2028\u2029",
                                       u"5\u00a0",
                                       u"\u0661\u0662",
                                       u"nul",
                                       u"\xd83d\xde00",
                                       u"\x7f\x80\x9f",
                                       u"say \"this\"",
                                       u"\r",
                                       u"12.5\n"};

QWindow* HandleOf(QWidget& widget) {
  return widget.window()->windowHandle();
}

struct ModifierKey {
  Qt::KeyboardModifier modifier;
  Qt::Key key;
};
constexpr std::array<ModifierKey, 3> kModifierKeys = {{{Qt::ShiftModifier, Qt::Key_Shift},
                                                       {Qt::ControlModifier, Qt::Key_Control},
                                                       {Qt::AltModifier, Qt::Key_Alt}}};

/// Presses the modifiers and the key and lets them go. The event loop has a turn after each of them, in which
/// the window may go.
void ClickKey(QWidget& window, Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
  const QPointer<QWindow> handle = HandleOf(window);
  const auto send = [&handle](bool press, Qt::Key which, Qt::KeyboardModifiers held, const QString& text) {
    if (handle != nullptr) QTest::simulateEvent(handle, press, which, held, text, false);
  };
  const char ascii = QTest::keyToAscii(key);
  const QString text = ascii == 0 ? QString() : QString(QLatin1Char(ascii));
  Qt::KeyboardModifiers held;
  for (const ModifierKey& row : kModifierKeys) {
    if (!with.testFlag(row.modifier)) continue;
    send(true, row.key, held, {});
    held |= row.modifier;
  }
  send(true, key, with, text);
  send(false, key, with, text);
  for (const ModifierKey& row : kModifierKeys) {
    if (with.testFlag(row.modifier)) send(false, row.key, with, {});
  }
}

void TypeLetter(QWidget& window, QChar letter) {
  constexpr char16_t kLastOfAscii = 0x7e;
  if (letter.unicode() <= kLastOfAscii) {
    const QPointer<QWindow> handle = HandleOf(window);
    QTest::keyPress(handle, letter.toLatin1());
    if (handle != nullptr) QTest::keyRelease(handle, letter.toLatin1());
    return;
  }
  QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, letter);
  QWidget* focus = window.focusWidget();
  QApplication::sendEvent(focus != nullptr ? focus : &window, &press);
}

QPoint InWindow(const QWidget& widget, QPoint at) {
  return widget.mapTo(widget.window(), at);
}

}  // namespace

QWidget& InFront(QWidget& main_window) {
  if (QWidget* popup = QApplication::activePopupWidget()) return *popup;
  if (QWidget* modal = QApplication::activeModalWidget()) return *modal;
  return main_window;
}

struct RandomOperator::Way {
  int weight;
  void (RandomOperator::*act)(QWidget& window);
};

void RandomOperator::Act(QWidget& main_window) {
  constexpr auto kWays = std::to_array<Way>({{18, &RandomOperator::Key},
                                             {14, &RandomOperator::Command},
                                             {20, &RandomOperator::TypeText},
                                             {5, &RandomOperator::Paste},
                                             {12, &RandomOperator::Click},
                                             {2, &RandomOperator::DoubleClick},
                                             {12, &RandomOperator::ClickButton},
                                             {4, &RandomOperator::DragAround},
                                             {10, &RandomOperator::Mnemonic},
                                             {1, &RandomOperator::CloseWindow},
                                             {2, &RandomOperator::HoldEnter},
                                             {4, &RandomOperator::Walk},
                                             {8, &RandomOperator::Open},
                                             {3, &RandomOperator::CopyRow},
                                             {2, &RandomOperator::ClickBehind},
                                             {2, &RandomOperator::PressAsReader},
                                             {3, &RandomOperator::TurnWheel}});
  main_window_ = &main_window;
  QWidget& window = InFront(main_window);
  if (repeats_ > 0) return HoldEnter(window);
  int total = 0;
  for (const Way& way : kWays) total += way.weight;
  int place = Below(total);
  const Way* way = kWays.data();
  while (place >= way->weight) place -= (way++)->weight;
  (this->*way->act)(window);
}

template <class Widget>
std::vector<Widget*> RandomOperator::Seen(QWidget& window) const {
  std::vector<Widget*> seen;
  for (auto* widget : window.findChildren<Widget*>()) {
    const bool is_part = widget->window() == &window;
    if (is_part && widget->isVisible() && widget->isEnabled() && !widget->visibleRegion().isEmpty())
      seen.push_back(widget);
  }
  return seen;
}

QWidget* RandomOperator::AnyWidget(QWidget& window) {
  const auto seen = Seen<QWidget>(window);
  return seen.empty() ? nullptr : OneOf(seen);
}

QPoint RandomOperator::PointIn(const QWidget& widget) {
  const QRect rect = widget.visibleRegion().boundingRect();
  // A press may have hidden it.
  if (rect.isEmpty()) return widget.rect().center();
  return {rect.left() + Below(rect.width()), rect.top() + Below(rect.height())};
}

Qt::KeyboardModifiers RandomOperator::Modifiers() {
  constexpr Qt::KeyboardModifier kOthers[] = {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};
  return OneIn(6) ? Qt::KeyboardModifiers(OneOf(kOthers)) : Qt::NoModifier;
}

void RandomOperator::Key(QWidget& window) {
  const Qt::Key key = OneOf(kKeys);
  const Qt::KeyboardModifiers with = Modifiers();
  Say("key " + QKeySequence(key | with).toString().toStdString());
  ClickKey(window, key, with);
}

void RandomOperator::Command(QWidget& window) {
  auto* pane = window.findChild<ProgWindow*>();
  if (pane == nullptr) return Key(window);
  const QKeyCombination keys = OneOf(kCommands);
  Say("command " + QKeySequence(keys).toString().toStdString());
  if (!OneIn(5)) pane->setFocus();
  if (OneIn(3)) ClickKey(window, OneIn(2) ? Qt::Key_Down : Qt::Key_PageUp, Qt::ShiftModifier);
  ClickKey(window, keys.key(), keys.keyboardModifiers());
}

void RandomOperator::TypeText(QWidget& window) {
  const auto boxes = Seen<QLineEdit>(window);
  if (!boxes.empty() && !OneIn(4)) {
    QLineEdit* box = OneOf(boxes);
    QTest::mouseClick(HandleOf(window), Qt::LeftButton, {}, InWindow(*box, box->rect().center()));
    if (!OneIn(3)) ClickKey(window, Qt::Key_A, Qt::ControlModifier);
  }
  const QString text = QString::fromLatin1(OneOf(kTexts));
  Say("type " + text.left(40).toStdString());
  for (const QChar letter : text) {
    // What a letter opened takes the rest.
    TypeLetter(InFront(*main_window_), letter);
    if (&InFront(*main_window_) != &window) return;
  }
}

void RandomOperator::Paste(QWidget& window) {
  constexpr int kManyDigits = 400;
  const auto from_table = OneOf(kPastes);
  QString text = QString::fromUtf16(from_table.data(), static_cast<qsizetype>(from_table.size()));
  if (OneIn(8)) text = QString(kManyDigits, QLatin1Char(static_cast<char>('0' + Below(10))));
  Say("paste");
  QApplication::clipboard()->setText(text);
  if (!OneIn(3)) ClickKey(window, Qt::Key_A, Qt::ControlModifier);
  ClickKey(window, Qt::Key_V, Qt::ControlModifier);
}

void RandomOperator::Click(QWidget& window) {
  QWidget* widget = AnyWidget(window);
  if (widget == nullptr) return;
  Say("click " + widget->objectName().toStdString());
  const Qt::MouseButton button = OneIn(8) ? Qt::RightButton : Qt::LeftButton;
  QTest::mouseClick(HandleOf(window), button, Modifiers(), InWindow(*widget, PointIn(*widget)));
}

void RandomOperator::DoubleClick(QWidget& window) {
  QWidget* widget = AnyWidget(window);
  if (widget == nullptr) return;
  Say("double click " + widget->objectName().toStdString());
  QTest::mouseDClick(HandleOf(window), Qt::LeftButton, {}, InWindow(*widget, PointIn(*widget)));
}

void RandomOperator::ClickButton(QWidget& window) {
  const auto buttons = Seen<QAbstractButton>(window);
  if (buttons.empty()) return;
  QAbstractButton* button = OneOf(buttons);
  Say("click button " + button->objectName().toStdString());
  QTest::mouseClick(HandleOf(window), Qt::LeftButton, {}, InWindow(*button, PointIn(*button)));
}

void RandomOperator::DragAround(QWidget& window) {
  QWidget* widget = AnyWidget(window);
  if (widget == nullptr) return;
  Say("drag in " + widget->objectName().toStdString());
  QWindow* handle = HandleOf(window);
  QTest::mousePress(handle, Qt::LeftButton, {}, InWindow(*widget, PointIn(*widget)));
  QTest::mouseMove(handle, InWindow(*widget, PointIn(*widget)));
  QTest::mouseMove(handle, InWindow(*widget, PointIn(*widget)));
  QTest::mouseRelease(handle, Qt::LeftButton, {}, InWindow(*widget, PointIn(*widget)));
}

void RandomOperator::Mnemonic(QWidget& window) {
  std::vector<QString> captions;
  for (const auto* button : Seen<QAbstractButton>(window)) captions.push_back(button->text());
  for (const auto* label : Seen<QLabel>(window)) captions.push_back(label->text());
  std::erase_if(captions, [](const QString& text) { return QKeySequence::mnemonic(text).isEmpty(); });
  if (captions.empty()) return;
  const QKeySequence keys = QKeySequence::mnemonic(OneOf(captions));
  Say("mnemonic " + keys.toString().toStdString());
  ClickKey(window, keys[0].key(), Qt::AltModifier);
}

void RandomOperator::CloseWindow(QWidget& window) {
  if (&window == main_window_ && !OneIn(30)) return;
  Say("close");
  window.close();
}

/// The first press, then a repeat each time, at last the release.
void RandomOperator::HoldEnter(QWidget& window) {
  constexpr int kRepeats = 12;
  const bool first = repeats_ == 0;
  Say(first ? "hold Enter" : "Enter held");
  repeats_ = first ? kRepeats : repeats_ - 1;
  QWidget* focus = window.focusWidget() != nullptr ? window.focusWidget() : &window;
  if (repeats_ == 0) {
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(focus, &up);
    return;
  }
  QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), !first);
  QApplication::sendEvent(focus, &down);
}

void RandomOperator::LetGo(QWidget& main_window) {
  main_window_ = &main_window;
  if (repeats_ == 0) return;
  repeats_ = 1;
  HoldEnter(InFront(main_window));
}

void RandomOperator::Walk(QWidget& window) {
  constexpr Qt::Key kWays[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
  const Qt::Key key = OneOf(kWays);
  Say("walk");
  const QPointer<QWidget> there(&window);
  for (int i = Below(6); i >= 0 && there != nullptr; --i) ClickKey(window, key);
}

/// The icon of a row, or what stands in the picker.
void RandomOperator::Open(QWidget& window) {
  if (qobject_cast<PickProg*>(&window) != nullptr) return ClickButton(window);
  auto* pane = window.findChild<ProgWindow*>();
  if (pane == nullptr) return Key(window);
  const QRect seen = pane->visibleRegion().boundingRect();
  const int line = pane->Geometry().RowAt(seen.top() + Below(seen.height()));
  const bool shift = OneIn(3);
  Say("click icon " + std::to_string(line + 1));
  const QPoint icon = InWindow(*pane, pane->Geometry().Icon(line).center());
  QTest::mouseClick(HandleOf(window), Qt::LeftButton, shift ? Qt::ShiftModifier : Qt::NoModifier, icon);
}

void RandomOperator::CopyRow(QWidget& window) {
  auto* pane = window.findChild<ProgWindow*>();
  if (pane == nullptr) return TurnWheel(window);
  const QRect seen = pane->visibleRegion().boundingRect();
  const auto icon = [&] {
    const int line = pane->Geometry().RowAt(seen.top() + Below(seen.height()));
    return InWindow(*pane, pane->Geometry().Icon(line).center());
  };
  Say("copy a row");
  const QPoint from = icon();
  const QPoint to = icon();
  QWindow* handle = HandleOf(window);
  QTest::mousePress(handle, Qt::LeftButton, {}, from);
  QTest::mouseMove(handle, from + QPoint(3, 3));
  QTest::mouseMove(handle, to);
  QTest::mouseRelease(handle, Qt::LeftButton, {}, to);
}

/// The main window, whatever stands before it.
void RandomOperator::ClickBehind(QWidget&) {
  if (QApplication::activePopupWidget() != nullptr) return;
  auto* pane = main_window_->findChild<ProgWindow*>();
  const QRect seen = pane->visibleRegion().boundingRect();
  if (seen.isEmpty()) return;
  Say("click on the main window");
  const int line = pane->Geometry().RowAt(seen.top() + Below(seen.height()));
  const QPoint at = pane->Geometry().Icon(line).center();
  QTest::mouseClick(HandleOf(*main_window_), Qt::LeftButton, {}, InWindow(*pane, at));
}

/// A screen reader presses a row, or any button there is, whatever stands before it and whether it is seen or
/// not.
void RandomOperator::PressAsReader(QWidget&) {
  if (QApplication::activePopupWidget() != nullptr) return;
  Say("press as a screen reader");
  if (OneIn(2)) {
    // The toolkit does the same a moment later, which is another act's.
    auto* button = OneOf(main_window_->findChildren<QAbstractButton*>());
    if (button->isEnabled()) button->click();
    return;
  }
  QAccessibleInterface* pane = QAccessible::queryAccessibleInterface(main_window_->findChild<ProgWindow*>());
  QAccessibleInterface* row = pane->child(Below(pane->childCount()));
  row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

void RandomOperator::TurnWheel(QWidget& window) {
  QWidget* widget = AnyWidget(window);
  if (widget == nullptr) return;
  Say("wheel over " + widget->objectName().toStdString());
  const QPoint at = PointIn(*widget);
  QWheelEvent notch(at, widget->mapToGlobal(at), {}, {0, OneIn(2) ? 120 : -120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(widget, &notch);
}

}  // namespace tavlo::testing
