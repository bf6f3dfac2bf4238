// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QPdfView>

#include "viewer/text_search.h"

namespace tavlo::viewer {

/// The pages of a document, one below the other, with marks where a text was found.
class PageView : public QPdfView {
  Q_OBJECT

 public:
  PageView(QPdfDocument& document, QWidget* parent);

  /// Pages count from 0.
  [[nodiscard]] int PageCount() const { return static_cast<int>(sizes_.size()); }
  /// The page that is read now: that of which the upper third of the window shows something.
  [[nodiscard]] int CurrentPage() const;
  /// To the top of a page; one beyond the ends is the last or the first.
  void GoTo(int page);
  /// Scrolls so far that the match can be seen.
  void Show(const Match& match);
  /// A window's height on, or back, but never past the top of a page.
  void Turn(int way);

  void SetMarks(const QList<Match>& matches, int current);
  /// How large the pages are shown: 1 is their size on paper.
  [[nodiscard]] double Scale() const;
  /// Larger by a step, or smaller, within 25 and 400 percent.
  void Zoom(int steps);
  void FitWidth();

  /// The place of a page in the whole, in units of the window, and that of a match on it. Public for those
  /// who look whether the marks are where the words are.
  [[nodiscard]] QRect PlaceOf(int page) const { return Places()[page]; }
  [[nodiscard]] QRectF PlaceOf(int page, const QRectF& points) const;

 signals:
  void PageChanged();
  void ScaleChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Measure();
  [[nodiscard]] QSize SizeOf(int page) const;
  /// The places of all pages in the whole.
  [[nodiscard]] QList<QRect> Places() const;
  void Tell();

  /// In points. Each costs the document a look at the page.
  QList<QSizeF> sizes_;
  QList<Match> marks_;
  int current_ = -1;
  int told_page_ = -1;
};

}  // namespace tavlo::viewer
