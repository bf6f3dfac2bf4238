// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/run_log_book.h"

#include "windows/run_log_window.h"

namespace tavlo {
namespace {

/// Milliseconds: what a crash in a run may lose.
constexpr int kKeepEvery = 3000;

}  // namespace

RunLogBook::RunLogBook(Clock& clock, StateFolder* folder, QWidget* main_window)
    : log_(clock), main_window_(main_window) {
  if (folder != nullptr) keep_.emplace(*folder);
  keeping_.setInterval(kKeepEvery);
  connect(&keeping_, &QTimer::timeout, this, &RunLogBook::Keep);
  log_.OnBegin = log_.OnClose = [this] { RunsChanged(); };
}

/// A run that is up when the program ends is kept whole.
RunLogBook::~RunLogBook() {
  window_ = nullptr;
  log_.Close();
}

void RunLogBook::RunsChanged() {
  failure_.clear();
  if (log_.Open()) {
    keeping_.start();
  } else {
    keeping_.stop();
  }
  Keep();
  if (window_ != nullptr) window_->RunsChanged();
}

/// A failure is told in the window alone: nobody needs a box over a machine that moves.
void RunLogBook::Keep() {
  log_.Settle();
  if (!keep_) return;
  failure_ = keep_->Keep(log_).Why();
  if (window_ != nullptr) window_->TellFailure(failure_);
}

void RunLogBook::Open() {
  if (desk_ == nullptr) return;
  if (window_ == nullptr) {
    window_ = new RunLogWindow(*desk_, log_, keep_ ? &*keep_ : nullptr, main_window_);
    connect(window_, &RunLogWindow::Closed, this, &RunLogBook::Closed);
  }
  window_->TellFailure(failure_);
  window_->Open();
}

}  // namespace tavlo
