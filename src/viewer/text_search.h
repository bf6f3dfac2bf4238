// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QList>
#include <QObject>
#include <QRectF>
#include <QRegularExpression>
#include <QTimer>

class QPdfDocument;

namespace tavlo::viewer {

/// A place where a text was found: on a page, counted from 0, in points from its upper left corner. A match
/// that goes over a line's end has more than one rectangle.
struct Match {
  int page = 0;
  QList<QRectF> places;
};

/// Looks for a text in a document, large and small letters alike, one page after the other, so that the
/// window stays awake.
class TextSearch : public QObject {
  Q_OBJECT

 public:
  /// The document must outlive the search.
  explicit TextSearch(QPdfDocument& document);

  /// Begins anew, at this page and around to the one before it. An empty text ends the search.
  void Find(const QString& text, int from_page);
  /// Goes to the match after the present one, or before it, and around at the ends.
  void Step(int by);

  /// Those found so far, in the order of the document.
  [[nodiscard]] const QList<Match>& Matches() const { return matches_; }
  /// The one that the operator looks at; -1 before one is found.
  [[nodiscard]] int Current() const { return current_; }
  [[nodiscard]] bool Searching() const { return next_page_.isActive(); }
  [[nodiscard]] const QString& Text() const { return text_; }

 signals:
  void Changed();
  /// There is a new present match.
  void Reached(const tavlo::viewer::Match& match);

 private:
  void SearchPage();
  [[nodiscard]] QList<Match> MatchesOn(int page) const;

  QPdfDocument& document_;
  QTimer next_page_;
  QString text_;
  QRegularExpression pattern_;
  QList<Match> matches_;
  int current_ = -1;
  int from_page_ = 0;
  int searched_ = 0;
};

}  // namespace tavlo::viewer
