// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QTimer>
#include <QToolButton>
#include <functional>
#include <utility>

#include "support/whenever.h"
#include "windows/window_session.h"

namespace tavlo::testing {

/// A session whose runs are played by the test.
struct RunSession : RunningSession {
  /// Runs a run window and does this once it is up.
  void WhileRunning(RunWindow window, const std::function<void()>& meanwhile) {
    QTimer::singleShot(0, &Main(), meanwhile);
    Handlers().run.ShowModal(window);
  }
  /// Does this once the terminal to a drive stands and has the keyboard, as long as the result lives.
  [[nodiscard]] Whenever WhenInTerminal(std::function<void()> act) {
    const auto stands = [this] {
      const auto* terminal = Main().findChild<QWidget*>(QStringLiteral("VOXterm"));
      return terminal != nullptr && terminal->isActiveWindow();
    };
    return {stands, std::move(act)};
  }
  [[nodiscard]] QWidget& Form(const char* name) { return Find<QWidget>(nullptr, name); }
  /// A control of the form of this name, which both have under the same name.
  template <class T>
  [[nodiscard]] T& Find(const char* form, const char* name) {
    QWidget* parent = form == nullptr ? static_cast<QWidget*>(&Main()) : &Form(form);
    T* found = parent->findChild<T*>(QString::fromLatin1(name));
    if (found == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return *found;
  }
  using WindowSession::Find;
  void Click(const char* form, const char* name) {
    QTest::mouseClick(&Find<QAbstractButton>(form, name), Qt::LeftButton);
  }
};

}  // namespace tavlo::testing
