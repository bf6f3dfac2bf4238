// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QFont>
#include <QPalette>
#include <string>

#include "windows/editor_walk.h"
#include "windows/run_session.h"

namespace tavlo::testing {

/// Palette and size of the text that a desktop may bring.
struct Look {
  bool dark = false;
  double points = 9;
};
std::string NameOf(const Look& look);
QPalette LightPalette();
QPalette DarkPalette();

/// Gives the application a look and takes it back.
class WearingLook {
 public:
  explicit WearingLook(const Look& look);
  ~WearingLook();
  WearingLook(const WearingLook&) = delete;
  WearingLook& operator=(const WearingLook&) = delete;

 private:
  QPalette palette_;
  QFont font_;
};

/// Brings up every window of the program in each of its states, one after the other, and hands it over while
/// it stands.
void ForEachWindow(const LookAt& look_at);

}  // namespace tavlo::testing
