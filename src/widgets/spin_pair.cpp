// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/spin_pair.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace tavlo {

SpinPair::SpinPair(const QString& spoken, QWidget* box) : QWidget(box->parentWidget()) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  const auto add = [&](const QString& sign, const QString& name, int way) {
    auto* button = new QToolButton(this);
    button->setText(sign);
    // A thin sign would be paler than its ink.
    QFont bold = button->font();
    bold.setBold(true);
    button->setFont(bold);
    button->setAccessibleName(name + spoken);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRepeat(true);
    connect(button, &QToolButton::clicked, this, [this, way] { emit Pressed(way); });
    row->addWidget(button);
  };
  add(QStringLiteral("+"), QStringLiteral("Next "), 1);
  add(QStringLiteral("\u2212"), QStringLiteral("Previous "), -1);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  box->installEventFilter(this);
}

bool SpinPair::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Up && key != Qt::Key_Down) return QWidget::eventFilter(watched, event);
  emit Pressed(key == Qt::Key_Up ? 1 : -1);
  return true;
}

}  // namespace tavlo
