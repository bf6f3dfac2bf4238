// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QDialog>

namespace tavlo {

/// `About`: which program this is, and under which licences it and its toolkit are.
class About : public QDialog {
  Q_OBJECT

 public:
  explicit About(QWidget* parent);
};

}  // namespace tavlo
