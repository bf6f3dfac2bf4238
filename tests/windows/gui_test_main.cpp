// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <QApplication>
#include <QFont>

// The window tests need no screen; a real one is used where QT_QPA_PLATFORM names it.
int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  QFont font;
  font.setFamily(QStringLiteral("Liberation Sans"));
  font.setPointSizeF(10);
  QApplication::setFont(font);
  return RUN_ALL_TESTS();
}
