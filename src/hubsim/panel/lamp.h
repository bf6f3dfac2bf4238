// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <QAbstractButton>
#include <QString>
#include <QWidget>
#include <vector>

namespace tavlo::hubsim {

/// A row of lamps, one an input or output: a filled disc where it is on (low), a small hollow square where it
/// is off. Each lamp carries its name and state, as "axis 3 input 2: on".
class LampRow : public QWidget {
  Q_OBJECT

 public:
  enum class Use { Show, Click };

  /// One lamp each of `names`; a gap in front of lamp `gap_at`. A row to click is one stop of the tab order,
  /// in which the arrow keys, Home and End go from lamp to lamp.
  LampRow(const std::vector<QString>& names, int gap_at, Use use, QWidget* parent);

  /// Bit i of `levels` belongs to lamp i; a set bit is high, which is off.
  void Show(unsigned levels);
  /// The captions above such rows, as wide as the lamps.
  static QWidget* MakeCaptions(const std::vector<QString>& captions, int gap_at, QWidget* parent);

 signals:
  /// A lamp was clicked; its input is to become `high`.
  void Clicked(int lamp, bool high);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] bool On(std::size_t lamp) const { return (levels_ >> lamp & 1U) == 0; }
  void Tell(std::size_t lamp);
  void MoveFocus(int to);

  std::vector<QString> names_;
  std::vector<QWidget*> lamps_;
  unsigned levels_ = ~0U;
};

}  // namespace tavlo::hubsim
