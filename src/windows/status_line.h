// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QLabel>
#include <QWidget>

#include "link/status_fields.h"
#include "platform/comm_devices.h"
#include "session/desk.h"

namespace tavlo {

/// A field of the status line. A text that does not fit ends in an ellipsis; the tool tip says all of it and
/// more. A warning has a mark, a frame and a ground of its own.
class StatusLabel : public QLabel {
  Q_OBJECT

 public:
  /// `about` is what the field is called; at least so many letters of its text can be read, however narrow
  /// the window is.
  StatusLabel(const char* name, const QString& about, int least_characters, QWidget* parent);
  void Show(const StatusField& field);
  /// Asks for no more than its beginning, so that the others can be read whole.
  void GiveWay(bool gives_way);

  /// Asks for the whole text, and makes do with its beginning.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  /// A screen reader has been told the text, which is another one than before.
  void Spoken(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int Height() const;
  /// The width that everything beside the text takes.
  [[nodiscard]] int Beside() const;
  void PaintWarning(QPainter& painter) const;

  QString about_;
  int least_characters_;
  bool warning_ = false;
  bool gives_way_ = false;
};

/// `StatusLine`, at the foot of the main window: what the hub holds, the port, and what happened last. It
/// never widens the window.
class StatusLine : public QWidget {
  Q_OBJECT

 public:
  StatusLine(CommDevices& comms, QWidget* parent);
  /// From now on it shows this session.
  void Begin(Desk& desk) { desk_ = &desk; }

  /// Show the session anew at the next turn of the event loop, however often something changes until then;
  /// the second also compares the program with that of the hub.
  void ShowSoon();
  void CompareSoon();
  /// The device behind a Comm has come or gone: an event.
  void TellDevice(int number, const QString& device, bool there);

 private:
  void Show();

  CommDevices& comms_;
  Desk* desk_ = nullptr;
  bool show_due_ = false;
  bool compare_due_ = false;
  /// How the comparison came out.
  Holds holds_ = Holds::Unknown;
  StatusLabel* hub_;
  StatusLabel* port_;
  StatusLabel* event_;
};

}  // namespace tavlo
