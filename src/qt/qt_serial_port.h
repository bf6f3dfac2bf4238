// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <string>

#include "platform/serial_port.h"
#include "qt/port_guard.h"

namespace tavlo {

/// The hub's line on QSerialPort.
///
/// QSerialPort also announces bytes from inside its own waits. So its signal only fills a buffer here, and
/// the receive event is posted to the event loop. Needs a QCoreApplication.
class QtSerialPort : public QObject, public SerialPort {
 public:
  /// `device_for` returns the device of a port number.
  explicit QtSerialPort(std::function<std::string(int)> device_for);
  ~QtSerialPort() override;

  void CommPort(int number) override { number_ = number; }
  [[nodiscard]] int CommPort() const override { return number_; }
  void Settings(std::string_view parameters) override;
  Outcome PortOpen(bool open) override;
  [[nodiscard]] bool PortOpen() const override { return port_.isOpen() && !lost_; }
  [[nodiscard]] std::string Device() const override { return device_; }
  [[nodiscard]] bool LeadsElsewhere() const override;
  void RThreshold(int bytes) override;
  [[nodiscard]] int RThreshold() const override { return threshold_; }
  void ParityReplace(std::string_view) override {}
  [[nodiscard]] int InBufferCount() override;
  [[nodiscard]] std::string Input() override;
  void Output(std::string_view bytes) override;
  void WaitForInput(double seconds) override;
  [[nodiscard]] int CommEvent() const override { return kCommEventReceive; }

  /// Returns the descriptor of the open line; -1 where the operating system has no such number.
  [[nodiscard]] int Descriptor() const;

  /// For a trace. Called with every byte that was sent (`out` is true) or received.
  std::function<void(bool out, std::string_view bytes)> OnTraffic;

 private:
  void Drain();
  void Pump();
  void PostEvent();
  void Deliver();
  void Fail(QSerialPort::SerialPortError error);
  void Lose();
  void Close();

  std::function<std::string(int)> device_for_;
  QSerialPort port_;
  PortGuard guard_;
  std::string device_;
  std::string received_;
  int number_ = 1;
  int threshold_ = 0;
  bool event_posted_ = false;
  bool lost_ = false;
};

}  // namespace tavlo
