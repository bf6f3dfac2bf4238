// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

#include "hubsim/hub.h"

class QLabel;

namespace tavlo::hubsim {

class AxisTable;
class HubControls;
class MemoryTabs;

/// The window of a hub. It shows the hub as it is and does to it what can be done to a machine.
class PanelWindow : public QWidget {
  Q_OBJECT

 public:
  /// `now` is the hub's clock. `serve` lets the hub do what is due and sends what it says; it is called
  /// before each look at the hub and after everything that was done to it.
  PanelWindow(Hub& hub, const QString& title, std::function<double()> now, std::function<void()> serve);

  /// Shows the hub as it is now. While the window can be seen it does so by itself.
  void Refresh();

 signals:
  void Closed();

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void ConnectControls();
  void AskFault(int axis);
  /// Called after something was done to the hub; `note` says why it had no effect.
  void Acted(const QString& note = {});

  Hub& hub_;
  std::function<double()> now_;
  std::function<void()> serve_;
  AxisTable* axes_;
  HubControls* controls_;
  MemoryTabs* memory_;
  QLabel* note_;
  QTimer refresh_;
};

}  // namespace tavlo::hubsim
