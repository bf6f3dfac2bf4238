// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/small_forms.h"

#include <QProgressBar>

#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// Which share of the bar is full each time it is painted.
class PaintedGauge : public QObject {
 public:
  explicit PaintedGauge(QProgressBar* bar) : bar_(bar) { bar->installEventFilter(this); }
  [[nodiscard]] const std::vector<double>& Seen() const { return seen_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      seen_.push_back(200.0 * (bar_->value() - bar_->minimum()) / (bar_->maximum() - bar_->minimum()));
    }
    return false;
  }

 private:
  QProgressBar* bar_;
  std::vector<double> seen_;
};

TEST(TheGauge, IsAtTenWhenItIsFirstSeenInEachTransfer) {
  RunningSession session;
  for (const auto& [name, form] :
       {std::pair{"downbox", &session.Handlers().downbox}, std::pair{"upbox", &session.Handlers().upbox}}) {
    for (int transfer = 0; transfer < 2; ++transfer) {
      const PaintedGauge painted(session.Find<QWidget>(name)->findChild<QProgressBar*>());
      form->Gauge(10);
      form->Show();
      ASSERT_FALSE(painted.Seen().empty()) << name;
      for (const double seen : painted.Seen()) EXPECT_EQ(seen, 10) << name << " " << transfer;
      form->Gauge(200);
      EXPECT_EQ(painted.Seen().back(), 200) << name;
      form->Hide();
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
