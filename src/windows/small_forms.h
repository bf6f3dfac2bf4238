// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFrame>
#include <functional>

#include "platform/services.h"

class QLabel;
class QProgressBar;

namespace tavlo {

// Small forms that stand in the middle of the main window while it is busy. They are panes of it and not
// windows of their own, so that they can be painted at once, without waiting for a window manager.

/// `downbox`. While it stands, nothing that would disturb the transfer can be reached.
class GaugeForm : public QFrame, public ProgressForm {
  Q_OBJECT

 public:
  /// `doing` stands in front of a phase. `hold` is told when the form comes and goes.
  GaugeForm(const QString& name, const QString& title, const QString& doing, std::function<void(bool)> hold,
            QWidget* parent);
  void Show() override;
  void Hide() override;
  void Gauge(double value) override;
  void Phase(std::string_view name, int bytes_done, int bytes_total) override;

 private:
  QString doing_;
  std::function<void(bool)> hold_;
  QLabel* phase_;
  QProgressBar* gauge_;
};

/// `Loading`
class LoadingPane : public QFrame, public LoadingForm {
  Q_OBJECT

 public:
  explicit LoadingPane(QWidget* parent);
  void Show() override;
  void Hide() override;
};

}  // namespace tavlo
