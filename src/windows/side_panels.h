// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QString>
#include <array>

#include "link/com_port.h"
#include "platform/comm_devices.h"
#include "session/desk.h"
#include "session/grid.h"
#include "windows/comm_option.h"

class QButtonGroup;
class QComboBox;
class QLineEdit;

namespace tavlo {

// The three groups beside the grid. Each shows part of the session's state and passes on the operator's
// actions.

/// Hub model, firmware and the choice of port.
class HubPanel : public QGroupBox {
  Q_OBJECT

 public:
  /// `comms` must outlive the panel.
  HubPanel(CommDevices& comms, QWidget* parent);
  ~HubPanel() override;
  void Show(const Source& source);

 signals:
  void ModelChosen(int index);
  void PortChosen(int index);
  /// The device of Comm `number` has come or gone.
  void DeviceChanged(int number, const QString& device, bool there);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Looks again which devices exist now, and shows them.
  void LookAgain();

  CommDevices& comms_;
  QComboBox* model_list_;
  QLabel* drive_version_;
  QButtonGroup* opt_com_;
  std::array<CommOption*, kPorts> options_{};
  /// What each Comm led to when it was looked at last.
  std::array<std::optional<CommDevice>, kPorts> seen_;
};

/// `LblDriveDesc`: one row of the axis summary. Its text is the whole row, but it is drawn in columns.
class DriveLabel : public QLabel {
  Q_OBJECT

 public:
  DriveLabel(int axis, QWidget* parent);
  void Show(const DriveDesc& desc);
  /// Returns the width that the whole name of the axis would need.
  [[nodiscard]] int NameWidth() const;
  /// Must be the same for all rows, so that they form columns.
  void SetNameColumn(int width);
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Columns {
    QString name;
    QString model;
    QString current;
  };
  Columns columns_;
  int name_column_ = 0;
};

class DrivesPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit DrivesPanel(QWidget* parent);
  void Show(const Program& program);

 signals:
  /// A row was clicked.
  void Clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  std::array<DriveLabel*, kAxes> rows_{};
};

/// What the hub does at a limit: `LimitList` and `LimitBranch`.
class LimitsPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit LimitsPanel(QWidget* parent);
  ~LimitsPanel() override;
  void Show(const Program& program);
  /// Takes the text of `LimitBranch` over although the box still has the focus.
  void Commit();

 signals:
  void ActionChosen(int index);
  void BranchEntered(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QComboBox* limit_list_;
  QLineEdit* limit_branch_;
};

}  // namespace tavlo
