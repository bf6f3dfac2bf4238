// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFrame>
#include <functional>

#include "platform/services.h"

class QLabel;
class QProgressBar;

namespace tavlo {

// Small forms in the middle of the main window while it is busy. They are panes of it and not windows of
// their own, so that they can be painted at once, without waiting for a window manager.

/// `downbox` and `upbox`. While one is shown, nothing that would disturb the transfer can be used.
class GaugeForm : public QFrame, public ProgressForm {
  Q_OBJECT

 public:
  /// `doing` comes before the name of a phase. `hold` is called when the form is shown and when it is hidden.
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
