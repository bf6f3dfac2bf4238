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
#include <cmath>

#include "platform/number_format.h"

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

/// What went wrong and what to do about it, for "... {error description}.  Will try ...": no point at
/// the end.
std::string Description(QSerialPort::SerialPortError error, const QString& device,
                        const QString& system_text) {
  const QFileInfo info(device);
  switch (error) {
    case QSerialPort::DeviceNotFoundError:
      return "there is no device " + device.toStdString() + "; connect the hub or choose another port";
    case QSerialPort::PermissionError: {
      if (info.exists() && info.isReadable() && info.isWritable()) {
        return device.toStdString() + " is in use by another program; close it there first";
      }
      const QString group = info.group();
      return "you have no right to use " + device.toStdString() +
             (group.isEmpty() ? std::string("; ask for access to it")
                              : "; have yourself added to the group " + group.toStdString());
    }
    case QSerialPort::OpenError: return device.toStdString() + " is open already";
    default: return device.toStdString() + ": " + system_text.toStdString();
  }
}

/// The device at the other end of the open line has not gone.
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
  port_.close();
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

std::optional<std::string> QtSerialPort::PortOpen(bool open) {
  if (!open) {
    port_.close();
    received_.clear();
    lost_ = false;
    return std::nullopt;
  }
  const QString device = QString::fromStdString(device_for_(number_));
  // The lock that keeps two programs off one line goes by the name, so links are followed first.
  const QString canonical = QFileInfo(device).canonicalFilePath();
  port_.setPortName(canonical.isEmpty() ? device : canonical);
  received_.clear();
  lost_ = false;
  if (!port_.open(QIODevice::ReadWrite)) return Description(port_.error(), device, port_.errorString());
  // What was sent before the line was open belongs to nobody.
  port_.clear();
  return std::nullopt;
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
  port_.close();
  QMetaObject::invokeMethod(
      this,
      [this] {
        if (lost_ && OnLost) OnLost();
      },
      Qt::QueuedConnection);
}

}  // namespace tavlo
