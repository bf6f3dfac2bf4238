// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/qt_serial_port.h"

#include <QtGlobal>
#ifdef Q_OS_UNIX
#include <poll.h>
#endif

#include <QFileInfo>
#include <QMetaObject>
#include <QStringList>
#include <algorithm>
#include <cerrno>
#include <cmath>

#include "qt/open_failure.h"

namespace tavlo {
namespace {

QSerialPort::Parity ParityOf(char letter) {
  switch (letter) {
    case 'E':
    case 'e': return QSerialPort::EvenParity;
    case 'O':
    case 'o': return QSerialPort::OddParity;
    default: return QSerialPort::NoParity;
  }
}

/// What QSerialPort could not do, in our words: its own are the system's.
std::string Description(QSerialPort::SerialPortError error, const std::string& device) {
  switch (error) {
    case QSerialPort::DeviceNotFoundError: return OpenFailure(device, ENOENT);
    // Missing rights have been reported before, where the system tells them from a port in use.
    case QSerialPort::PermissionError: return PortInUse(device, {});
    case QSerialPort::UnsupportedOperationError: return NoSerialPort(device);
    default: return OpenFailure(device, EIO);
  }
}

/// Links are followed: the lock that keeps two programs off one line goes by the name.
std::string Canonical(const std::string& device) {
  const QString path = QString::fromStdString(device);
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return (canonical.isEmpty() ? path : canonical).toStdString();
}

/// Whether the device at the other end of the open line is still there.
bool IsThere(const QSerialPort& port) {
#ifdef Q_OS_UNIX
  if (!port.isOpen()) return false;
  pollfd line{port.handle(), POLLIN, 0};
  return poll(&line, 1, 0) >= 0 && (line.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
#else
  static_cast<void>(port);
  return false;
#endif
}

}  // namespace

QtSerialPort::QtSerialPort(std::function<std::string(int)> device_for) : device_for_(std::move(device_for)) {
  connect(&port_, &QSerialPort::readyRead, this, [this] {
    Drain();
    PostEvent();
  });
  connect(&port_, &QSerialPort::errorOccurred, this,
          [this](QSerialPort::SerialPortError error) { Fail(error); });
}

QtSerialPort::~QtSerialPort() {
  port_.disconnect(this);
  Close();
}

void QtSerialPort::Settings(std::string_view parameters) {
  const QStringList parts =
      QString::fromLatin1(parameters.data(), static_cast<qsizetype>(parameters.size())).split(',');
  if (parts.size() != 4) return;
  port_.setBaudRate(parts[0].toInt());
  port_.setParity(ParityOf(parts[1].isEmpty() ? 'N' : parts[1][0].toLatin1()));
  port_.setDataBits(static_cast<QSerialPort::DataBits>(parts[2].toInt()));
  port_.setStopBits(parts[3] == "2" ? QSerialPort::TwoStop : QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
}

Outcome QtSerialPort::PortOpen(bool open) {
  if (open && port_.isOpen()) return Outcome::Failed(device_ + " is open already");
  Close();
  received_.clear();
  lost_ = false;
  if (!open) return {};
  device_ = device_for_(number_);
  const std::string canonical = Canonical(device_);
  if (Outcome taken = guard_.Take(device_, canonical); !taken) return taken;
  port_.setPortName(QString::fromStdString(canonical));
  if (!port_.open(QIODevice::ReadWrite)) {
    guard_.Release();
    return Outcome::Failed(Description(port_.error(), device_));
  }
  if (Outcome marked = guard_.Mark(); !marked) {
    Close();
    return marked;
  }
  // What was sent before the line was open is not meant for anybody.
  port_.clear();
  return {};
}

void QtSerialPort::Close() {
  port_.close();
  guard_.Release();
}

bool QtSerialPort::LeadsElsewhere() const {
  return PortOpen() && !guard_.Has(Canonical(device_for_(number_)));
}

int QtSerialPort::Descriptor() const {
#ifdef Q_OS_UNIX
  return port_.isOpen() ? static_cast<int>(port_.handle()) : -1;
#else
  return -1;
#endif
}

void QtSerialPort::RThreshold(int bytes) {
  threshold_ = bytes;
  if (threshold_ > 0 && !received_.empty()) PostEvent();
}

int QtSerialPort::InBufferCount() {
  Pump();
  return static_cast<int>(received_.size());
}

std::string QtSerialPort::Input() {
  Pump();
  return std::exchange(received_, {});
}

void QtSerialPort::Output(std::string_view bytes) {
  if (!PortOpen()) return;
  if (OnTraffic) OnTraffic(true, bytes);
  port_.write(bytes.data(), static_cast<qint64>(bytes.size()));
  port_.flush();
}

void QtSerialPort::WaitForInput(double seconds) {
  if (!PortOpen()) return;
  // A wait that has rounded down to nothing would spin.
  port_.waitForReadyRead(std::max(1, static_cast<int>(std::ceil(seconds * 1000))));
  Drain();
}

/// Takes what Qt has read.
void QtSerialPort::Drain() {
  if (!port_.isOpen()) return;
  const QByteArray bytes = port_.readAll();
  if (bytes.isEmpty()) return;
  received_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (OnTraffic) OnTraffic(false, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

/// Takes what the operating system holds, which Qt would only read in its event loop.
void QtSerialPort::Pump() {
  Drain();
  while (PortOpen() && port_.waitForReadyRead(0)) Drain();
}

void QtSerialPort::PostEvent() {
  if (event_posted_ || threshold_ == 0) return;
  event_posted_ = true;
  QMetaObject::invokeMethod(this, &QtSerialPort::Deliver, Qt::QueuedConnection);
}

void QtSerialPort::Deliver() {
  event_posted_ = false;
  if (threshold_ > 0 && !received_.empty() && OnComm) OnComm();
}

void QtSerialPort::Fail(QSerialPort::SerialPortError error) {
  switch (error) {
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
      if (!IsThere(port_)) {
        Lose();
        break;
      }
      // Qt takes a read that finds nothing for a failure, and stops listening. One comes when a poll has
      // emptied the line after the event loop saw bytes on it and before it read them. Reading makes it
      // listen again.
      port_.clearError();
      Drain();
      break;
    // Each open and each time-out is announced as an error too, and a pty has no pins to query.
    default: break;
  }
}

void QtSerialPort::Lose() {
  if (lost_ || !port_.isOpen()) return;
  lost_ = true;
  // Closing at once matters: until then Qt announces the failure some 100,000 times a second.
  Close();
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (lost_ && OnLost) OnLost();
      },
      Qt::QueuedConnection);
}

}  // namespace tavlo
