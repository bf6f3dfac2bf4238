// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QString>
#include <QWidget>

#include "hubsim/hub_bench.h"
#include "hubsim/panel/panel_window.h"

namespace tavlo::hubsim {

/// A hub in simulated time with its window.
class PanelBench {
 public:
  explicit PanelBench(const HubOptions& options = {})
      : bench(options),
        window(
            bench.hub, QStringLiteral("Simulated hub on Comm 1"), [this] { return bench.now; },
            [this] {
              ++served;
              bench.hub.Advance(bench.now);
            }) {}

  HubBench bench;
  int served = 0;
  PanelWindow window;

  /// The lamp or button whose accessible name is `name`, or begins with it.
  [[nodiscard]] QWidget* Named(const QString& name) const {
    for (auto* widget : window.findChildren<QWidget*>()) {
      if (widget->accessibleName().startsWith(name)) return widget;
    }
    ADD_FAILURE() << "nothing is called " << name.toStdString();
    return nullptr;
  }
  [[nodiscard]] std::string NameOf(const QString& beginning) const {
    const QWidget* widget = Named(beginning);
    return widget == nullptr ? std::string() : widget->accessibleName().toStdString();
  }
  void Click(const QString& name) const {
    auto* button = qobject_cast<QAbstractButton*>(Named(name));
    ASSERT_NE(button, nullptr);
    button->click();
  }
  void ClickObject(const char* name) const {
    auto* button = window.findChild<QAbstractButton*>(QLatin1String(name));
    ASSERT_NE(button, nullptr) << name;
    button->click();
  }
  [[nodiscard]] std::string LabelText(const char* name) const {
    const auto* label = window.findChild<QLabel*>(QLatin1String(name));
    return label == nullptr ? "no such label" : label->text().toStdString();
  }
  [[nodiscard]] std::string Described(const QString& description) const {
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (label->accessibleDescription() == description) return label->text().toStdString();
    }
    return "no such label";
  }
};

}  // namespace tavlo::hubsim
