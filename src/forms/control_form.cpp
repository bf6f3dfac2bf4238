// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/control_form.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tavlo {

void ControlTable::Add(std::string name, AnyControl control, std::function<void()> rule) {
  rows_.push_back({std::move(name), control, std::move(rule)});
}

const Bound& ControlTable::Find(std::string_view name) const {
  const auto found = std::ranges::find(rows_, name, &Bound::name);
  assert(found != rows_.end());
  return *found;
}

void ControlForm::Begin() {
  for (const Bound& bound : controls_.Rows()) {
    if (auto* const box = std::get_if<TextBox*>(&bound.control)) (*box)->touched = false;
  }
  ShowAnew();
}

bool ControlForm::Confirm(MessageBoxes& boxes) {
  caret_.clear();
  CleanUp();
  const bool written = Accept(boxes);
  ShowAnew();
  return written;
}

void ControlForm::Enter() {
  CleanUp();
  ShowAnew();
}

void ControlForm::ShowAnew() {
  for (const auto& show : controls_.shown_) show();
  ShowHide();
}

void ControlForm::Follow(const Bound& bound) {
  caret_.clear();
  if (bound.rule) bound.rule();
  ShowAnew();
}

void ControlForm::Type(const Bound& box, std::string text) {
  if (auto* const area = std::get_if<TextArea*>(&box.control)) {
    (*area)->text = std::move(text);
    Follow(box);
    return;
  }
  TextBox& state = *std::get<TextBox*>(box.control);
  caret_.clear();
  state.text = std::move(text);
  state.touched = true;
  ShowAnew();
}

void ControlForm::Leave(const Bound& box) {
  Follow(box);
}

void ControlForm::Move(const Bound& slider, int value) {
  Slider& state = *std::get<Slider*>(slider.control);
  state.value = std::clamp(value, state.min, std::max(state.min, state.max));
  Follow(slider);
}

void ControlForm::Click(const Bound& what) {
  if (auto* const box = std::get_if<CheckBox*>(&what.control)) (*box)->value = !(*box)->value;
  if (auto* const option = std::get_if<OptionButton*>(&what.control)) (*option)->value = true;
  Follow(what);
}

void ControlForm::Choose(const Bound& list, int index) {
  ListBox& state = *std::get<ListBox*>(list.control);
  if (index < 0 || index >= static_cast<int>(state.list.size())) return;
  state.index = index;
  Follow(list);
}

void ControlForm::Spin(const Bound& button, int way) {
  std::get<SpinButton*>(button.control)->way = way;
  Follow(button);
}

void ControlForm::Turn(const Bound& tab_strip, int page) {
  std::get<TabStrip*>(tab_strip.control)->page = page;
  Follow(tab_strip);
}

}  // namespace tavlo
