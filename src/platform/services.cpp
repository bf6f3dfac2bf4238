// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/services.h"

#include <algorithm>

namespace tavlo {

Answer HarmlessAnswer(Buttons buttons) {
  switch (buttons) {
    case Buttons::OK:
    case Buttons::OKWithoutPort: return Answer::OK;
    case Buttons::OKCancel: return Answer::Cancel;
    case Buttons::YesNo: return Answer::No;
    case Buttons::RestoreDiscard: return Answer::Restore;
  }
  return Answer::OK;
}

Answer MessageBoxes::MsgBox(Box box) {
  if (box.line && GoToLine) GoToLine(*box.line);
  const bool stands = std::ranges::any_of(
      standing_, [&box](const Box& other) { return other.text == box.text && other.title == box.title; });
  if (stands) return HarmlessAnswer(box.buttons);
  if (by_themselves_ > 0) box.by_itself = true;
  standing_.push_back(box);
  const Answer answer = Show(box);
  // Boxes go in the reverse order of their coming.
  standing_.pop_back();
  return answer;
}

}  // namespace tavlo
