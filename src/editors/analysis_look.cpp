// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/analysis_look.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "widgets/font_size.h"
#include "widgets/profile_graph.h"

namespace tavlo {
namespace {

constexpr int kRows = 6;
constexpr int kRowsWidth = 270;

QLabel* AddLabel(QGridLayout& grid, int row, int column, const QString& name, QWidget* page) {
  auto* label = new QLabel(page);
  label->setObjectName(name);
  QSizePolicy policy = label->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  label->setSizePolicy(policy);
  grid.addWidget(label, row, column, column == 0 ? Qt::AlignLeft : Qt::AlignRight);
  return label;
}

void AddHeading(QGridLayout& grid, int row, int column, const QString& text, QWidget* page) {
  grid.addWidget(new QLabel(text, page), row, column, column == 0 ? Qt::AlignLeft : Qt::AlignRight);
}

}  // namespace

void BuildAnalysis(QWidget* page, bool output) {
  auto* rows = new QGridLayout;
  AddHeading(*rows, 0, 1, QStringLiteral("Time (sec)"), page);
  AddHeading(*rows, 0, 2, QStringLiteral("Distance"), page);
  int row = 1;
  for (int i = 0; i < kRows; ++i, ++row) {
    AddLabel(*rows, row, 0, QStringLiteral("StatLabel(%1)").arg(i), page);
    AddLabel(*rows, row, 1, QStringLiteral("TimeBox(%1)").arg(i), page);
    AddLabel(*rows, row, 2, QStringLiteral("DistBox(%1)").arg(i), page);
  }
  AddHeading(*rows, row, 0, QStringLiteral("Peak speed"), page);
  AddLabel(*rows, row++, 1, QStringLiteral("PeakSpeed"), page);
  if (output) {
    AddHeading(*rows, row, 0, QStringLiteral("Output set"), page);
    AddLabel(*rows, row, 1, QStringLiteral("OutTime"), page);
    AddLabel(*rows, row, 2, QStringLiteral("OutDist"), page);
  }
  rows->setColumnMinimumWidth(1, ByFont(page->fontMetrics(), kRowsWidth / 3));
  rows->setColumnMinimumWidth(2, ByFont(page->fontMetrics(), kRowsWidth / 3));
  auto* over = new QGroupBox(QStringLiteral("Show speed over"), page);
  auto* choices = new QHBoxLayout(over);
  for (const auto& [name, caption] :
       {std::pair{"OptTime", QStringLiteral("Time")}, std::pair{"OptDistance", QStringLiteral("Distance")}}) {
    auto* choice = new QRadioButton(caption, over);
    choice->setObjectName(QLatin1String(name));
    choices->addWidget(choice);
  }
  choices->addStretch(1);
  auto* cant = new QLabel(page);
  cant->setObjectName(QStringLiteral("lblCant"));
  cant->setWordWrap(true);
  auto* left = new QVBoxLayout;
  left->addLayout(rows);
  left->addWidget(over);
  left->addWidget(cant);
  left->addStretch(1);
  auto* graph = new ProfileGraph(page);
  graph->setObjectName(QStringLiteral("Graph"));
  auto* columns = new QHBoxLayout(page);
  columns->addLayout(left);
  columns->addWidget(graph, 1);
}

}  // namespace tavlo
