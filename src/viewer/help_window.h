// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QPdfDocument>
#include <QWidget>

#include "viewer/text_search.h"

class QLabel;
class QStackedWidget;

namespace tavlo::viewer {

class DocumentList;
class PageBar;
class PageView;
class SearchBar;

/// The window of the help: a document, and the others of its folder beside it.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  HelpWindow();
  ~HelpWindow() override;

  /// Shows a document, or in its place a sentence that says why it cannot.
  void Open(const QString& path);
  /// Brings the window before the others.
  void ComeToFront();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void LayOut();
  void Connect();
  void AddKeys();
  void EndSearch();
  /// The page's text stands for its picture where nobody sees that.
  void SpeakPage();

  QPdfDocument document_;
  TextSearch search_;
  DocumentList* documents_;
  QStackedWidget* panes_;
  PageView* pages_;
  QLabel* message_;
  PageBar* page_bar_;
  SearchBar* search_bar_;
};

}  // namespace tavlo::viewer
