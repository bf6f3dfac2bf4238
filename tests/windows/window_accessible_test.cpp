// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "widgets/window_accessible.h"

#include <QAccessible>

#include "windows/run_session.h"
#include "windows/start_form.h"

namespace tavlo::testing {
namespace {

QAccessible::Role RoleOf(QWidget& window) {
  return QAccessible::queryAccessibleInterface(&window)->role();
}

QString NameOf(QWidget& window) {
  return QAccessible::queryAccessibleInterface(&window)->text(QAccessible::Name);
}

TEST(WindowAccessibility, TheMainWindowIsAFrameWithItsCaptionForAName) {
  RunningSession session;
  EXPECT_EQ(RoleOf(session.Main()), QAccessible::Window);
  EXPECT_EQ(NameOf(session.Main()), session.Main().windowTitle());
}

TEST(WindowAccessibility, TheWindowsOfARunAreDialogs) {
  RunSession session;
  for (const auto& [window, name] :
       {std::pair{RunWindow::ExecStatus, "ExecStatus"}, std::pair{RunWindow::fakeMMI, "fakeMMI"}}) {
    session.WhileRunning(window, [&, form = name] {
      EXPECT_EQ(RoleOf(session.Form(form)), QAccessible::Dialog) << form;
      EXPECT_EQ(NameOf(session.Form(form)), session.Form(form).windowTitle());
      session.Click(form, "btnStop");
    });
  }
}

TEST(WindowAccessibility, NoTopLevelWindowIsAnythingElse) {
  RunSession session;
  StartForm splash;
  EXPECT_EQ(RoleOf(splash), QAccessible::Window);
  session.Session().link.DriveVersion = "1.38";
  QTimer::singleShot(0, &session.Main(), [&] {
    QTimer::singleShot(0, &session.Main(), [&] {
      EXPECT_EQ(RoleOf(session.Form("ServoFault")), QAccessible::Dialog);
      session.Click("ServoFault", "Close");
    });
    session.fakes.port.Receive({static_cast<char>(211), 0, 0, 1});
    EXPECT_EQ(RoleOf(session.Form("VOXterm")), QAccessible::Dialog);
    session.Form("VOXterm").close();
  });
  session.Handlers().terminal->ShowModal();
}

TEST(WindowAccessibility, WhatIsNoWindowKeepsItsRole) {
  RunningSession session;
  EXPECT_EQ(RoleOf(*session.Find<QWidget>("ModelList")), QAccessible::ComboBox);
  EXPECT_EQ(RoleOf(*session.Find<QWidget>("Save")), QAccessible::Button);
  EXPECT_EQ(RoleOf(session.Pane()), QAccessible::List);
}

}  // namespace
}  // namespace tavlo::testing
