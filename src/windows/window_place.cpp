// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/window_place.h"

#include <QByteArray>
#include <QSplitter>
#include <QWidget>
#include <string>

namespace tavlo {
namespace {

constexpr std::string_view kSection = "Window";
constexpr std::string_view kPlace = "Place";
constexpr std::string_view kColumns = "Columns";

std::string TextOf(const QByteArray& bytes) {
  return bytes.toBase64().toStdString();
}

QByteArray BytesOf(const std::string& text) {
  return QByteArray::fromBase64(QByteArray::fromStdString(text));
}

}  // namespace

void RememberPlace(SettingsStore& settings, const QWidget& window, const QSplitter& columns) {
  settings.Save(kSettingsApplication, kSection, kPlace, TextOf(window.saveGeometry()));
  settings.Save(kSettingsApplication, kSection, kColumns, TextOf(columns.saveState()));
}

void TakePlace(SettingsStore& settings, QWidget& window, QSplitter& columns) {
  // Both refuse what is not theirs.
  window.restoreGeometry(BytesOf(settings.Get(kSettingsApplication, kSection, kPlace, "")));
  columns.restoreState(BytesOf(settings.Get(kSettingsApplication, kSection, kColumns, "")));
}

}  // namespace tavlo
