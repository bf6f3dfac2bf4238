// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/wheel_focus.h"

#include <QAbstractSlider>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// A notch towards the operator.
void TurnWheelOver(QWidget& widget) {
  const QPoint here = widget.rect().center();
  QWheelEvent notch(here, widget.mapToGlobal(here), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&widget, &notch);
}

TEST(WheelFocus, NoListOfTheMainWindowChangesByTheWheelUnlessItHasTheFocus) {
  RunningSession session;
  const auto lists = session.Main().findChildren<QComboBox*>();
  EXPECT_EQ(lists.size(), 2);
  for (QComboBox* list : lists) {
    session.Pane().setFocus();
    const int index = list->currentIndex();
    TurnWheelOver(*list);
    EXPECT_EQ(list->currentIndex(), index) << list->objectName().toStdString();
    EXPECT_TRUE(session.Pane().hasFocus()) << list->objectName().toStdString();
    list->setFocus();
    TurnWheelOver(*list);
    EXPECT_EQ(list->currentIndex(), index + 1) << list->objectName().toStdString();
  }
}

/// A window with one of each control that holds a value.
struct Controls : QWidget {
  Controls() : list(this), whole(this), broken(this), slider(this), bar(this), other(this) {
    list.addItems({"a", "b", "c"});
    list.setCurrentIndex(1);
    whole.setValue(5);
    broken.setValue(5);
    slider.setValue(5);
    bar.setValue(5);
    auto* column = new QVBoxLayout(this);
    const std::vector<QWidget*> all = {&list, &whole, &broken, &slider, &bar, &other};
    for (QWidget* control : all) column->addWidget(control);
    other.setFocusPolicy(Qt::StrongFocus);
    show();
    activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return isActiveWindow(); }));
    other.setFocus();
  }
  [[nodiscard]] std::vector<double> Values() const {
    return {static_cast<double>(list.currentIndex()), static_cast<double>(whole.value()), broken.value(),
            static_cast<double>(slider.value())};
  }

  QComboBox list;
  QSpinBox whole;
  QDoubleSpinBox broken;
  QSlider slider;
  QScrollBar bar;
  QWidget other;
};

TEST(WheelFocus, HoldsForEveryControlThatHoldsAValueInEveryWindow) {
  const WheelFocus wheel;
  Controls controls;
  const std::vector<double> before = controls.Values();
  const std::vector<QWidget*> all = {&controls.list, &controls.whole, &controls.broken, &controls.slider};
  for (QWidget* control : all) {
    TurnWheelOver(*control);
    EXPECT_EQ(controls.Values(), before);
    EXPECT_FALSE(control->hasFocus());
  }
  for (std::size_t i = 0; i < all.size(); ++i) {
    all[i]->setFocus();
    TurnWheelOver(*all[i]);
    EXPECT_NE(controls.Values()[i], before[i]) << i;
  }
}

TEST(WheelFocus, LeavesScrollBarsAlone) {
  const WheelFocus wheel;
  Controls controls;
  TurnWheelOver(controls.bar);
  EXPECT_NE(controls.bar.value(), 5);
}

}  // namespace
}  // namespace tavlo::testing
