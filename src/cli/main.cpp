// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/console/descriptor_stream.h"
#include "cli/console/interrupts.h"
#include "cli/console/standard_descriptors.h"
#include "cli/console/standard_input.h"
#include "cli/desk/qt_line.h"
#include "cli/tavlo.h"

namespace {

using tavlo::cli::DescriptorBuffer;
using tavlo::cli::Environment;
using tavlo::cli::Interrupted;
using tavlo::cli::Interrupts;
using tavlo::cli::Outlet;

/// Standard output and standard error.
class StandardOutlet : public Outlet {
 public:
  DescriptorBuffer out{STDOUT_FILENO};
  DescriptorBuffer err{STDERR_FILENO};

  void Hold(bool held) override {
    out.Hold(held);
    err.Hold(held);
  }
  [[nodiscard]] bool Waits() const override { return out.Waits() || err.Waits(); }
  void SendOn() override {
    out.SendOn();
    err.SendOn();
  }
  void Finish(double patience) override {
    out.Finish(patience);
    err.Finish(patience);
  }
  [[nodiscard]] int DroppedRows() const override { return out.DroppedRows(); }
};

/// Waits for a key. Meanwhile sends output that its reader would not take before, such as the question
/// itself.
void AwaitKey(Outlet& outlet) {
  constexpr int kLookMilliseconds = 50;
  std::array<pollfd, 2> waits = {{{STDIN_FILENO, POLLIN, 0}, {Interrupts::Descriptor(), POLLIN, 0}}};
  for (;;) {
    const int ready = poll(waits.data(), waits.size(), outlet.Waits() ? kLookMilliseconds : -1);
    if (ready > 0 || (ready < 0 && errno != EINTR)) break;
    outlet.SendOn();
  }
  if (Interrupts::Pending()) throw Interrupted{Interrupts::TimeOver()};
}

/// A line from the terminal.
std::optional<std::string> ReadLine(Outlet& outlet) {
  std::string line;
  for (;;) {
    AwaitKey(outlet);
    char c = 0;
    const ssize_t count = read(STDIN_FILENO, &c, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return line.empty() ? std::nullopt : std::optional(line);
    if (c == '\n') return line;
    line += c;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!tavlo::cli::OpenStandardDescriptors()) return static_cast<int>(tavlo::cli::ExitCode::Other);
  StandardOutlet outlet;
  std::ostream out(&outlet.out);
  std::ostream err(&outlet.err);
  tavlo::cli::StandardInput input;
  Environment environment{out,    err,    isatty(STDERR_FILENO) == 1, nullptr, tavlo::cli::MakeQtLine,
                          &input, &outlet};
  if (input.IsTerminal()) environment.read_line = [&] { return ReadLine(outlet); };
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return static_cast<int>(tavlo::cli::RunTavlo(arguments, environment));
}
