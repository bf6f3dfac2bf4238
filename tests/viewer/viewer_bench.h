// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include "viewer/document_list.h"
#include "viewer/help_window.h"
#include "viewer/made_document.h"
#include "viewer/page_view.h"

namespace tavlo::testing {

/// The window of the help over documents that were made for the test.
struct ViewerBench {
  ViewerBench() { window.resize(900, 700); }

  QString Make(const QString& name, const QStringList& pages, const QString& title = {}) {
    WriteDocument(Path(name), title.isEmpty() ? name : title, pages);
    return Path(name);
  }
  [[nodiscard]] QString Path(const QString& name) const { return folder.filePath(name); }
  void Open(const QString& path) {
    window.Open(path);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  template <class Widget>
  [[nodiscard]] Widget& Find(const char* name) {
    auto* found = window.findChild<Widget*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(name);
    return *found;
  }
  [[nodiscard]] viewer::PageView& Pages() { return *window.findChild<viewer::PageView*>(); }
  [[nodiscard]] viewer::DocumentList& Documents() { return *window.findChild<viewer::DocumentList*>(); }
  [[nodiscard]] QString Text(const char* label) { return Find<QLabel>(label).text(); }
  [[nodiscard]] QString Page() { return Find<QLineEdit>("Page").text(); }
  void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QWidget* focus = window.focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &window, key, with);
  }
  /// Finds a text by the keyboard and waits for the end of the search.
  void Search(const QString& text) {
    Press(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(window.focusWidget(), text);
    EXPECT_TRUE(QTest::qWaitFor([&] { return SearchState() != QStringLiteral("Searching ..."); }));
    // The pages behind the first match are searched one at each turn of the loop.
    for (int turn = 0; turn < Pages().PageCount() + 2; ++turn) QTest::qWait(0);
  }
  [[nodiscard]] QString SearchState() { return Text("SearchState"); }
  [[nodiscard]] QString Message() {
    return Find<QLabel>("Message").isVisible() ? Text("Message") : QString();
  }

  QTemporaryDir folder;
  viewer::HelpWindow window;
};

}  // namespace tavlo::testing
