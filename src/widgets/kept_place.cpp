// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/kept_place.h"

#include <QSizePolicy>
#include <QWidget>

namespace tavlo {

void KeepPlace(QWidget* widget, bool keep) {
  QSizePolicy policy = widget->sizePolicy();
  if (policy.retainSizeWhenHidden() == keep) return;
  policy.setRetainSizeWhenHidden(keep);
  widget->setSizePolicy(policy);
}

}  // namespace tavlo
