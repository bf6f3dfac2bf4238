// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/qt_line.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "cli/console/interrupts.h"
#include "qt/comm_devices.h"
#include "qt/qt_serial_port.h"
#include "qt/qt_services.h"

namespace tavlo::cli {
namespace {

void ThrowIfInterrupted() {
  if (Interrupts::Pending()) throw Interrupted{Interrupts::TimeOver()};
}

/// Waits in slices, because Qt takes up an interrupted wait again.
class InterruptiblePort : public QtSerialPort {
 public:
  using QtSerialPort::QtSerialPort;
  void WaitForInput(double seconds) override {
    constexpr double kSlice = 0.1;
    ThrowIfInterrupted();
    QtSerialPort::WaitForInput(std::min(seconds, kSlice));
    ThrowIfInterrupted();
  }
};

class InterruptibleLoop : public QtEventLoop {
 public:
  void Yield() override {
    QtEventLoop::Yield();
    ThrowIfInterrupted();
  }
};

class QtLine : public HubLine {
 public:
  explicit QtLine(const PortName& name)
      : name_of_port_(name),
        application_(argument_count_, arguments_.data()),
        port_([name](int number) { return name.comm != 0 ? CommDeviceFor(number) : name.device; }) {
    port_.OnTraffic = [this](bool out, std::string_view bytes) {
      if (OnTraffic) OnTraffic(out, bytes);
    };
  }

  [[nodiscard]] SerialPort& Port() override { return port_; }
  [[nodiscard]] Clock& Time() override { return clock_; }
  [[nodiscard]] EventLoop& Loop() override { return loop_; }
  [[nodiscard]] bool IsInterrupted() const override { return Interrupts::Pending(); }
  [[nodiscard]] std::string Doubt() const override {
    return name_of_port_.comm != 0 ? LookAtComm(name_of_port_.comm).doubt : std::string();
  }

  void LimitTo(std::optional<double> seconds) override { Interrupts::LimitTo(seconds); }
  void SetLastWord(std::string_view bytes) override { Interrupts::SetLastWord(port_.Descriptor(), bytes); }

  void Wait(double seconds, const Feed* feed) override {
    if (IsInterrupted() || !port_.PortOpen() || port_.InBufferCount() > 0) return;
    QEventLoop waiting;
    QSocketNotifier interrupted(Interrupts::Descriptor(), QSocketNotifier::Read);
    QObject::connect(&interrupted, &QSocketNotifier::activated, &waiting, &QEventLoop::quit);
    std::optional<QSocketNotifier> fed;
    if (feed != nullptr) {
      fed.emplace(feed->Descriptor(), QSocketNotifier::Read);
      QObject::connect(&*fed, &QSocketNotifier::activated, &waiting, &QEventLoop::quit);
    }
    QTimer limit;
    limit.setTimerType(Qt::PreciseTimer);
    QObject::connect(&limit, &QTimer::timeout, &waiting, &QEventLoop::quit);
    limit.start(static_cast<int>(std::ceil(seconds * 1000)));
    // The bytes are handled by the caller, not in here: an exception must not pass through Qt.
    port_.OnComm = port_.OnLost = [&waiting] { waiting.quit(); };
    waiting.exec();
    port_.OnComm = port_.OnLost = nullptr;
  }

 private:
  PortName name_of_port_;
  Interrupts interrupts_;
  int argument_count_ = 1;
  std::array<char, 6> name_ = {"tavlo"};
  std::array<char*, 2> arguments_ = {name_.data(), nullptr};
  QCoreApplication application_;
  InterruptiblePort port_;
  QtClock clock_;
  InterruptibleLoop loop_;
};

}  // namespace

std::unique_ptr<HubLine> MakeQtLine(const PortName& port) {
  return std::make_unique<QtLine>(port);
}

}  // namespace tavlo::cli
