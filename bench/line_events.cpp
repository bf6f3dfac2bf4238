// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// How long the real main window takes, on a real screen, to paint a line event and to acknowledge it.
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <random>
#include <vector>

#include "platform/services.h"
#include "qt/comm_devices.h"
#include "qt/gui/gui_clipboard.h"
#include "qt/gui/gui_printer.h"
#include "qt/gui/gui_services.h"
#include "qt/qt_help.h"
#include "qt/qt_serial_port.h"
#include "qt/qt_services.h"
#include "qt/qt_state_folder.h"
#include "session/run_log.h"
#include "windows/composer_windows.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kEvents = 6000;

class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return false;
  }
  int paints = 0;
};

class NoSettings : public tavlo::SettingsStore {
 public:
  std::string Get(std::string_view, std::string_view, std::string_view, std::string_view fallback) override {
    return std::string(fallback);
  }
  void Save(std::string_view, std::string_view, std::string_view, std::string_view) override {}
};

int OpenMaster() {
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) std::exit(5);
  const int slave = open(ptsname(master), O_RDWR | O_NOCTTY);
  termios raw{};
  tcgetattr(slave, &raw);
  cfmakeraw(&raw);
  tcsetattr(slave, TCSANOW, &raw);
  return master;
}

/// A byte of the Composer's, if one is there or comes within a tenth of a millisecond.
char ReadByte(int master) {
  pollfd waiting{master, POLLIN, 0};
  const timespec pause{0, 100000};
  char byte = 0;
  if (ppoll(&waiting, 1, &pause, nullptr) == 1 && read(master, &byte, 1) != 1) std::exit(5);
  return byte;
}

/// Milliseconds of processor time that this process has had.
double Worked() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

double MedianOf(std::vector<double> values) {
  std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
  return values[values.size() / 2];
}

}  // namespace

/// Prints {"p99Ms":..,"eventsPerSecond":..,"loggedRatio":..}. The ratio is of the processor time of the
/// median event that is logged to that of the median one that is not: a coin decides, so that whatever else
/// goes on falls on both alike. The log is kept and its window open.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const int master = OpenMaster();
  const std::string device = ptsname(master);
  tavlo::QtSerialPort port([device](int) { return device; });
  tavlo::GuiMessageBoxes boxes;
  tavlo::QtClock clock;
  tavlo::QtEventLoop loop;
  tavlo::GuiBeeper beeper;
  tavlo::GuiFileDialogs dialogs;
  tavlo::QtFileStore files;
  NoSettings settings;
  tavlo::QtCommDevices comms;
  tavlo::QtHelp help(QApplication::applicationDirPath());
  tavlo::GuiPrinter printer(files);
  tavlo::QtStateFolder sessions(tavlo::StateFolderOf("sessions"));
  tavlo::QtStateFolder runs(tavlo::StateFolderOf("runs"));
  tavlo::GuiClipboard clipboard;
  tavlo::ComposerWindows windows({port, boxes, clock, loop, beeper, settings, dialogs, files, comms, help,
                                  printer, sessions, clipboard, &runs});
  windows.Main().Begin(windows.Handlers());
  windows.Main().show();
  PaintCounter counter;
  for (QWidget* widget : windows.Main().findChildren<QWidget*>()) widget->installEventFilter(&counter);
  loop.WaitSecs(0.5);

  tavlo::RunLog* const log = windows.Handlers().log;
  log->Begin(windows.Handlers().source);
  emit windows.Main().RunLogAsked();
  loop.WaitSecs(0.5);

  std::vector<double> latencies;
  std::vector<double> logged;
  std::vector<double> plain;
  std::mt19937 random(1);
  std::bernoulli_distribution coin;
  const auto begin = Clock::now();
  for (int i = 0; i < kEvents; ++i) {
    // The run walks up and down in view, finishing one line as it starts the next.
    const int line = i % 20;
    const int before = (i + 19) % 20;
    const char messages[] = {'\xED', static_cast<char>(before / 16), static_cast<char>(before % 16), 0,
                             '\xFE', static_cast<char>(line / 16),   static_cast<char>(line % 16),   0};
    const bool logs = coin(random);
    windows.Handlers().log = logs ? log : nullptr;
    const int paints = counter.paints;
    const double worked = Worked();
    const auto start = Clock::now();
    if (write(master, messages, sizeof messages) != sizeof messages) return 5;
    bool acknowledged = false;
    while (!acknowledged || counter.paints == paints) {
      QCoreApplication::processEvents();
      acknowledged = acknowledged || ReadByte(master) == 'I';
      if (Clock::now() - start > std::chrono::seconds(2)) return 6;
    }
    latencies.push_back(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    (logs ? logged : plain).push_back(Worked() - worked);
  }
  const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
  std::ranges::sort(latencies);
  std::cout << "{\"p99Ms\":" << latencies[kEvents * 99 / 100] << ",\"eventsPerSecond\":" << kEvents / seconds
            << ",\"loggedRatio\":" << MedianOf(logged) / MedianOf(plain) << "}\n";
  return 0;
}
