// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/form.h"

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

void Form::Load(Program& program, int line) {
  program_ = &program;
  line_ = line;
  before_ = record();
  Fill();
  for (const Bound& bound : controls_.Rows()) {
    if (auto* const box = std::get_if<TextBox*>(&bound.control)) (*box)->touched = false;
  }
  ShowAnew();
}

bool Form::MayWrite(MessageBoxes&) {
  return true;
}

bool Form::Confirm(MessageBoxes& boxes) {
  refused_.clear();
  CleanUp();
  const bool written = MayWrite(boxes);
  if (written) Write(program_->Prog[line_]);
  ShowAnew();
  return written;
}

void Form::Cancel() {
  program_->Prog[line_] = before_;
}

void Form::Enter() {
  CleanUp();
  ShowAnew();
}

void Form::ShowAnew() {
  for (const auto& show : controls_.shown_) show();
  ShowHide();
}

void Form::Follow(const Bound& bound) {
  if (bound.rule) bound.rule();
  ShowAnew();
}

void Form::Type(const Bound& box, std::string text) {
  if (auto* const area = std::get_if<TextArea*>(&box.control)) {
    (*area)->text = std::move(text);
    Follow(box);
    return;
  }
  TextBox& state = *std::get<TextBox*>(box.control);
  state.text = std::move(text);
  state.touched = true;
  ShowAnew();
}

void Form::Leave(const Bound& box) {
  Follow(box);
}

void Form::Move(const Bound& slider, int value) {
  Slider& state = *std::get<Slider*>(slider.control);
  state.value = std::clamp(value, state.min, std::max(state.min, state.max));
  Follow(slider);
}

void Form::Click(const Bound& box_or_option) {
  if (auto* const box = std::get_if<CheckBox*>(&box_or_option.control)) {
    (*box)->value = !(*box)->value;
  } else {
    std::get<OptionButton*>(box_or_option.control)->value = true;
  }
  Follow(box_or_option);
}

void Form::Choose(const Bound& list, int index) {
  ListBox& state = *std::get<ListBox*>(list.control);
  if (index < 0 || index >= static_cast<int>(state.list.size())) return;
  state.index = index;
  Follow(list);
}

void Form::Spin(const Bound& button, int way) {
  std::get<SpinButton*>(button.control)->way = way;
  Follow(button);
}

void Form::Turn(const Bound& tab_strip, int page) {
  std::get<TabStrip*>(tab_strip.control)->page = page;
  Follow(tab_strip);
}

}  // namespace tavlo
