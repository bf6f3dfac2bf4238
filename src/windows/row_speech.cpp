// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/row_speech.h"

#include <QStringList>

#include "qt/gui/shown_text.h"
#include "text/short_desc.h"

namespace tavlo {
namespace {

QString StateWord(RowState state) {
  switch (state) {
    case RowState::Normal: return {};
    case RowState::LimitTarget: return QStringLiteral("limit branch target");
    case RowState::Executing: return QStringLiteral("executing");
    case RowState::WentOn: return QStringLiteral("executing, program went on");
    case RowState::Picked: return QStringLiteral("picked for change");
  }
  return {};
}

QString NumberWord(LabelColour colour) {
  switch (colour) {
    case LabelColour::Plain: return {};
    case LabelColour::Red: return QStringLiteral("number in red: target of a call");
    case LabelColour::Blue: return QStringLiteral("number in blue: target of a menu");
  }
  return {};
}

QString NameOf(const Row& row, int line) {
  QString text = FromText(ShownCaption(row.desc));
  if (text.isEmpty()) text = QStringLiteral("empty");
  QString name = QStringLiteral("Line %1: %2").arg(QString::number(line + 1), text);
  const QString state = StateWord(row.state);
  if (!state.isEmpty()) name += QStringLiteral(", ") + state;
  return name;
}

}  // namespace

RowSpeech SpeechOf(const Row& row, int line, bool at_program_counter) {
  QStringList seen;
  if (at_program_counter) seen += QStringLiteral("program counter");
  if (row.frame == kChainFrame) seen += QStringLiteral("thick frame: runs while an axis moves");
  if (row.label != LabelColour::Plain) seen += NumberWord(row.label);
  return {NameOf(row, line), seen.join(QStringLiteral("; "))};
}

}  // namespace tavlo
