// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QList>
#include <QWidget>
#include <utility>

#include "viewer/bar_button.h"

class QLabel;
class QLineEdit;

namespace tavlo::viewer {

class PageView;

/// Which page is shown and how large, and the controls that change it.
class PageBar : public QWidget {
  Q_OBJECT

 public:
  PageBar(PageView& view, QWidget* parent);
  /// After another document was opened.
  void ShowState();

 signals:
  void FindPressed();

 protected:
  void changeEvent(QEvent* event) override;

 private:
  QToolButton* Add(Sign sign, const char* object_name, const QString& name, const QString& key);
  void GoToEntered();

  PageView& view_;
  QLineEdit* page_;
  QLabel* of_pages_;
  QLabel* scale_;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
  QList<std::pair<QToolButton*, Sign>> buttons_;
};

}  // namespace tavlo::viewer
