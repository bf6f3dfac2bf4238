// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cmath>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/comm_devices.h"
#include "session/desk.h"
#include "session/rows.h"
#include "session/source.h"
#include "support/fake_boxes.h"

namespace tavlo::testing {

/// Time that only passes when somebody waits.
class FakeClock : public Clock {
 public:
  [[nodiscard]] double Timer() override { return std::fmod(now, 86400.0); }
  double now = 1000;
};

/// A line whose other end is the test: what is sent is recorded and may be answered, at once or later.
class FakePort : public SerialPort {
 public:
  explicit FakePort(FakeClock& clock) : clock_(clock) {}

  void CommPort(int value) override { number = value; }
  [[nodiscard]] int CommPort() const override { return number; }
  void Settings(std::string_view parameters) override { settings = parameters; }
  Outcome PortOpen(bool open) override {
    log.push_back((open ? "open " : "close ") + std::to_string(number));
    if (!open) {
      is_open = false;
      return {};
    }
    if (const auto found = open_errors.find(number); found != open_errors.end())
      return Outcome::Failed(found->second);
    is_open = true;
    return {};
  }
  [[nodiscard]] bool PortOpen() const override { return is_open; }
  [[nodiscard]] bool LeadsElsewhere() const override { return leads_elsewhere; }
  void RThreshold(int bytes) override {
    threshold = bytes;
    thresholds.push_back(bytes);
  }
  [[nodiscard]] int RThreshold() const override { return threshold; }
  void ParityReplace(std::string_view replacement) override { parity_replace = std::string(replacement); }
  [[nodiscard]] int InBufferCount() override {
    Arrive();
    return static_cast<int>(buffer_.size());
  }
  [[nodiscard]] std::string Input() override {
    Arrive();
    return std::exchange(buffer_, {});
  }
  void Output(std::string_view bytes) override {
    if (!is_open) return;
    sent.emplace_back(bytes);
    if (on_output) on_output(std::string(bytes));
  }
  void WaitForInput(double seconds) override {
    const double limit = clock_.now + seconds;
    clock_.now = !pending_.empty() && pending_.front().first <= limit
                     ? std::max(clock_.now, pending_.front().first)
                     : limit;
  }
  [[nodiscard]] int CommEvent() const override { return comm_event; }

  /// Bytes that arrive so many seconds from now. Later calls must not arrive earlier.
  void Reply(std::string bytes, double delay = 0) {
    pending_.emplace_back(clock_.now + delay, std::move(bytes));
  }
  /// Bytes arrive and the event loop hands them over.
  void Receive(std::string bytes) {
    Reply(std::move(bytes));
    if (threshold > 0 && OnComm) OnComm();
  }
  [[nodiscard]] std::string AllSent() const {
    std::string all;
    for (const std::string& bytes : sent) all += bytes;
    return all;
  }

  std::function<void(const std::string&)> on_output;
  std::vector<std::string> sent;
  std::vector<std::string> log;
  std::map<int, std::string> open_errors;
  int number = 1;
  bool is_open = true;
  bool leads_elsewhere = false;
  int threshold = 1;
  std::vector<int> thresholds;
  std::string settings;
  std::optional<std::string> parity_replace;
  int comm_event = kCommEventReceive;

 private:
  void Arrive() {
    while (!pending_.empty() && pending_.front().first <= clock_.now) {
      buffer_ += pending_.front().second;
      pending_.pop_front();
    }
  }

  FakeClock& clock_;
  std::deque<std::pair<double, std::string>> pending_;
  std::string buffer_;
};

class FakeLoop : public EventLoop {
 public:
  explicit FakeLoop(FakeClock& clock) : clock_(clock) {}
  void Yield() override {
    ++yields;
    if (on_yield) on_yield();
  }
  void WaitSecs(double seconds) override {
    waits.push_back(seconds);
    if (pass) {
      pass(seconds);
    } else {
      clock_.now += seconds;
    }
    if (on_wait) on_wait();
  }
  int yields = 0;
  std::vector<double> waits;
  std::function<void()> on_yield;
  /// Instead of the time alone.
  std::function<void(double seconds)> pass;
  /// After a wait.
  std::function<void()> on_wait;

 private:
  FakeClock& clock_;
};

class FakeSettings : public SettingsStore {
 public:
  [[nodiscard]] std::string Get(std::string_view application, std::string_view section, std::string_view key,
                                std::string_view fallback) override {
    const auto found = values.find(Path(application, section, key));
    return found == values.end() ? std::string(fallback) : found->second;
  }
  void Save(std::string_view application, std::string_view section, std::string_view key,
            std::string_view value) override {
    values[Path(application, section, key)] = value;
  }
  static std::string Path(std::string_view application, std::string_view section, std::string_view key) {
    return std::string(application) + "/" + std::string(section) + "/" + std::string(key);
  }
  std::map<std::string, std::string> values;
};

class FakeDialogs : public FileDialogs {
 public:
  std::optional<std::string> SaveFileName(const FileDialogSetup& setup) override { return Answer(setup); }
  std::optional<std::string> OpenFileName(const FileDialogSetup& setup) override { return Answer(setup); }
  std::optional<std::string> next_file_name;
  std::vector<FileDialogSetup> shown;

 private:
  std::optional<std::string> Answer(const FileDialogSetup& setup) {
    shown.push_back(setup);
    return next_file_name;
  }
};

/// Files in memory; a write can be made to fail after so many bytes.
class FakeFiles : public FileStore {
 public:
  Outcome Replace(const std::string& path, std::string_view bytes) override {
    if (bytes.size() > room) return Outcome::Failed("No space left on device");
    files[path] = bytes;
    return {};
  }
  std::optional<std::string> Read(const std::string& path, std::size_t limit) override {
    const auto found = files.find(path);
    if (found == files.end()) return std::nullopt;
    return found->second.substr(0, limit);
  }
  std::map<std::string, std::string> files;
  std::size_t room = static_cast<std::size_t>(-1);
};

class FakeProgress : public ProgressForm {
 public:
  void Show() override {
    visible = true;
    if (!gauges.empty()) first_seen = gauges.back();
  }
  void Hide() override { visible = false; }
  void Gauge(double value) override { gauges.push_back(value); }
  void Phase(std::string_view name, int done, int total) override {
    phases.emplace_back(name);
    bytes_done = done;
    bytes_total = total;
  }
  bool visible = false;
  std::vector<double> gauges;
  /// What the gauge showed when the form came up; nothing where that is what the last transfer left.
  std::optional<double> first_seen;
  std::vector<std::string> phases;
  int bytes_done = 0;
  int bytes_total = 0;
};

class FakeLoading : public LoadingForm {
 public:
  void Show() override { log.emplace_back("show"); }
  void Hide() override { log.emplace_back("hide"); }
  std::vector<std::string> log;
};

/// A device behind each Comm, until the test says otherwise.
class FakeComms : public CommDevices {
 public:
  [[nodiscard]] CommDevice Look(int number) const override {
    const auto found = devices.find(number);
    return found == devices.end() ? CommDevice{"/dev/line" + std::to_string(number), true, ""}
                                  : found->second;
  }
  std::map<int, CommDevice> devices;
};

class FakeBeeper : public Beeper {
 public:
  void Beep() override { ++beeps; }
  int beeps = 0;
};

class FakeView : public ProgramView {
 public:
  void RowChanged(int line) override { rows.push_back(line); }
  void AllRowsChanged() override { ++all_rows; }
  void ArrowsChanged() override { ++arrows; }
  void DrivesChanged() override { ++drives; }
  void HubChanged() override { ++hub; }
  void LimitChanged() override { ++limit; }
  void CaptionChanged() override { ++caption; }
  void AutoScroll(int line) override { scrolls.push_back(line); }
  void GoTo(int line) override { gone_to.push_back(line); }
  void ProgCounter(std::optional<int> line) override { counters.push_back(line); }
  void StopChanged() override { ++stop; }
  void SomethingHappened() override { ++happened; }
  void Note(std::string_view text) override { notes.emplace_back(text); }
  std::vector<int> rows;
  std::vector<int> scrolls;
  std::vector<int> gone_to;
  std::vector<std::optional<int>> counters;
  std::vector<std::string> notes;
  int all_rows = 0;
  int arrows = 0;
  int drives = 0;
  int hub = 0;
  int limit = 0;
  int caption = 0;
  int stop = 0;
  int happened = 0;
};

class FakeRun : public RunView {
 public:
  [[nodiscard]] RunWindow Active() const override { return active; }
  void ShowModal(RunWindow window) override {
    active = window;
    shown.push_back(window);
    if (on_show) on_show(window);
    active = RunWindow::None;
  }
  void Hide() override {
    if (active != RunWindow::None) ++hides;
    active = RunWindow::None;
  }
  void StatusChanged(int axis) override { statuses.push_back(axis); }
  void ControlsChanged() override { ++control_changes; }
  void TextLinesChanged() override { ++text_changes; }
  void ShowServoFault(const ServoFaultPanel& panel) override { faults.push_back(panel); }
  RunWindow active = RunWindow::None;
  std::vector<RunWindow> shown;
  std::function<void(RunWindow)> on_show;
  /// The axes whose lights changed.
  std::vector<int> statuses;
  std::vector<ServoFaultPanel> faults;
  int hides = 0;
  int control_changes = 0;
  int text_changes = 0;
};

/// Remembers what it was told of the log.
class FakeTerminal : public TerminalView {
 public:
  void ShowModal() override {
    ++shown;
    if (on_show) on_show();
  }
  void HistoryGrew(std::string_view added) override {
    log += added;
    if (on_growth) on_growth(added);
  }
  void HistoryCut() override { ++cuts; }
  std::string log;
  int shown = 0;
  int cuts = 0;
  std::function<void()> on_show;
  std::function<void(std::string_view)> on_growth;
};

/// A session with fakes all around it, its hardware and program initialised, port 1 open.
struct FakeDesk {
  FakeDesk() {
    InitSession(source);
    source.link.ComNum = 1;
    source.link.OptCom = 0;
    boxes.GoToLine = [this](int line) { view.GoTo(line); };
  }
  FakeDesk(const FakeDesk&) = delete;
  FakeDesk& operator=(const FakeDesk&) = delete;

  Instruction& Line(int index) { return source.program.Prog[index]; }
  /// What has been painted and told so far.
  void ForgetShown() {
    view.rows.clear();
    view.scrolls.clear();
    view.counters.clear();
    run.statuses.clear();
    run.faults.clear();
    boxes.shown.clear();
  }

  Source source;
  FakeClock clock;
  FakePort port{clock};
  FakeBoxes boxes;
  FakeLoop loop{clock};
  FakeBeeper beeper;
  FakeView view;
  FakeRun run;
  FakeProgress downbox;
  FakeProgress upbox;
  FakeSettings settings;
  FakeDialogs dialogs;
  FakeFiles files;
  FakeLoading loading;
  /// The fakes around another line, or other files.
  [[nodiscard]] Desk DeskOn(SerialPort& line, FileStore& store) {
    return {.source = source,
            .Comm1 = line,
            .boxes = boxes,
            .clock = clock,
            .loop = loop,
            .beeper = beeper,
            .view = view,
            .run = run,
            .downbox = downbox,
            .upbox = upbox,
            .settings = settings,
            .dialogs = dialogs,
            .files = store,
            .loading = loading};
  }

  Desk desk = DeskOn(port, files);
};

/// The name of the icon of a row, 0..199.
inline std::string_view IconOf(const FakeDesk& fake, int line) {
  return IconName(fake.source.shown.rows[static_cast<std::size_t>(line)].icon);
}

}  // namespace tavlo::testing
