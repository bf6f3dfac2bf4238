// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/feed_set_out.h"

namespace tavlo {

FeedSetOut::FeedSetOut() : MoveForm({}) {
  when_.AddTo(controls_, {"OptAtDist", "OptEndOfMove"});
  distance2_.AddTo(controls_, "Dist2Text", "dist2unit", [this] { CleanUpDist2(); });
  distance2_variable_.AddTo(controls_, "getmmidst2", "dst2name");
  output_.AddTo(controls_,
                {"optout(0)", "optout(1)", "optout(2)", "optout(3)", "optout(4)", "optout(5)", "optout(6)"});
  AddExecution();
  analysis_.AddTo(controls_, [this] { return Plan(); });
  analysis_.AddOutputTo(controls_);
}

void FeedSetOut::Fill() {
  MoveForm::Fill();
  const Instruction& from = record();
  // On these lines the flag says that the output is set during the move.
  when_.Fill(from.Speed2IsMMI ? 0 : 1);
  distance2_.Fill(Units(), from.Dist2);
  distance2_variable_.Fill(from.Dist2IsMMI, from.Dist2Var);
  output_.Fill(Units(), from);
  analysis_.Activate();
}

AnalysisTab::Planned FeedSetOut::Plan() {
  CleanUp();
  // In user units too the speeds stand under the caption of revolutions.
  AnalysisTab::Planned planned{.units = Units(), .y_caption = "R e v / s e c"};
  if (MoveForm::HasVariable()) return planned;
  planned.move = PlannedByDialog();
  planned.output = {.change = {.during = DuringMove(),
                               .dist = distance2_.Steps(),
                               .state = output_.State(),
                               .pulse = static_cast<double>(output_.Pulse())},
                    .known = !distance2_variable_.IsOn()};
  return planned;
}

void FeedSetOut::SetUnits() {
  distance2_.ReadAnew(Units());
  output_.LabelOutputs(Units());
  MoveForm::SetUnits();
}

void FeedSetOut::CleanUpDist() {
  MoveForm::CleanUpDist();
  CleanUpDist2();
}

void FeedSetOut::CleanUp() {
  MoveForm::CleanUp();
  output_.CleanUp();
}

bool FeedSetOut::HasVariable() const {
  return distance2_variable_.IsOn() || MoveForm::HasVariable();
}

void FeedSetOut::ShowHide() {
  MoveForm::ShowHide();
  distance2_variable_.Show(true);
  distance2_variable_.Enable(DuringMove());
  distance2_.Enable(DuringMove() && !distance2_variable_.IsOn());
  output_.ShowHide();
}

void FeedSetOut::Write(Instruction& record) const {
  MoveForm::Write(record);
  record.Type = FLSO;
  record.Dist2 = distance2_.Steps();
  distance2_variable_.Write(record.Dist2IsMMI, record.Dist2Var);
  record.Speed2IsMMI = DuringMove();
  output_.Write(Units(), record);
}

}  // namespace tavlo
