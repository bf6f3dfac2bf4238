// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/window_accessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QDialog>
#include <optional>

namespace tavlo {
namespace {

/// Nothing for what is no window, or has a role of its own.
std::optional<QAccessible::Role> RoleOf(const QWidget& widget) {
  if (!widget.isWindow() || qobject_cast<const QDialog*>(&widget) != nullptr) return std::nullopt;
  const Qt::WindowType type = widget.windowType();
  if (type == Qt::Dialog) return QAccessible::Dialog;
  if (type == Qt::Window || type == Qt::SplashScreen) return QAccessible::Window;
  return std::nullopt;
}

QAccessibleInterface* MakeWindowInterface(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr) return nullptr;
  const auto role = RoleOf(*widget);
  return role ? new QAccessibleWidget(widget, *role) : nullptr;
}

}  // namespace

void InstallWindowAccessibility() {
  static const bool installed = (QAccessible::installFactory(MakeWindowInterface), true);
  static_cast<void>(installed);
}

}  // namespace tavlo
