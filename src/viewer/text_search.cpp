// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/text_search.h"

#include <QPdfDocument>
#include <QPdfSelection>
#include <QStringList>
#include <algorithm>

namespace tavlo::viewer {
namespace {

/// Its words, with any blanks and line ends between them.
QRegularExpression PatternOf(const QString& text) {
  QStringList words = text.split(QLatin1Char(' '));
  for (QString& word : words) word = QRegularExpression::escape(word);
  return QRegularExpression(
      words.join(QStringLiteral("\\s+")),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
}

}  // namespace

TextSearch::TextSearch(QPdfDocument& document) : document_(document) {
  connect(&next_page_, &QTimer::timeout, this, &TextSearch::SearchPage);
}

void TextSearch::Find(const QString& text, int from_page) {
  text_ = text.simplified();
  matches_.clear();
  current_ = -1;
  from_page_ = from_page;
  searched_ = 0;
  pattern_ = PatternOf(text_);
  if (text_.isEmpty() || document_.pageCount() == 0) {
    next_page_.stop();
  } else {
    next_page_.start(0);
  }
  emit Changed();
}

QList<Match> TextSearch::MatchesOn(int page) const {
  QList<Match> matches;
  const QString words = document_.getAllText(page).text();
  for (auto each = pattern_.globalMatch(words); each.hasNext();) {
    const QRegularExpressionMatch found = each.next();
    const auto from = static_cast<int>(found.capturedStart());
    Match match{.page = page, .places = {}};
    for (const QPolygonF& place :
         document_.getSelectionAtIndex(page, from, static_cast<int>(found.capturedLength())).bounds()) {
      match.places.append(place.boundingRect());
    }
    matches.append(match);
  }
  return matches;
}

void TextSearch::SearchPage() {
  const int pages = document_.pageCount();
  if (searched_ >= pages) {
    next_page_.stop();
    emit Changed();
    return;
  }
  const int page = (from_page_ + searched_++) % pages;
  if (searched_ >= pages) next_page_.stop();
  const auto before = std::ranges::lower_bound(matches_, page, {}, &Match::page);
  const auto at = before - matches_.begin();
  const QList<Match> found = MatchesOn(page);
  for (qsizetype i = 0; i < found.size(); ++i) matches_.insert(at + i, found[i]);
  if (found.isEmpty() && searched_ < pages) return;
  const bool first = current_ < 0 && !matches_.isEmpty();
  // The search goes around: pages before the first one come in front of what is there.
  if (first) {
    current_ = 0;
  } else if (current_ >= at) {
    current_ += static_cast<int>(found.size());
  }
  emit Changed();
  if (first) emit Reached(matches_[current_]);
}

void TextSearch::Step(int by) {
  if (matches_.isEmpty()) return;
  const int count = static_cast<int>(matches_.size());
  current_ = (current_ + by + count) % count;
  emit Changed();
  emit Reached(matches_[current_]);
}

}  // namespace tavlo::viewer
