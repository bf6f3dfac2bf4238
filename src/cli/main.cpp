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

#include "cli/descriptor_stream.h"
#include "cli/interrupts.h"
#include "cli/qt_line.h"
#include "cli/standard_input.h"
#include "cli/tavlo.h"

namespace {

using tavlo::cli::DescriptorBuffer;
using tavlo::cli::Environment;
using tavlo::cli::Interrupted;
using tavlo::cli::Interrupts;

void AwaitKey() {
  std::array<pollfd, 2> waits = {{{STDIN_FILENO, POLLIN, 0}, {Interrupts::Descriptor(), POLLIN, 0}}};
  while (poll(waits.data(), waits.size(), -1) < 0 && errno == EINTR) {
  }
  if (Interrupts::Pending()) throw Interrupted();
}

/// A line from the terminal.
std::optional<std::string> ReadLine() {
  std::string line;
  for (;;) {
    AwaitKey();
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
  DescriptorBuffer out_buffer(STDOUT_FILENO);
  DescriptorBuffer err_buffer(STDERR_FILENO);
  std::ostream out(&out_buffer);
  std::ostream err(&err_buffer);
  tavlo::cli::StandardInput input;
  Environment environment{out, err, isatty(STDERR_FILENO) == 1, nullptr, tavlo::cli::MakeQtLine, &input};
  if (input.IsTerminal()) environment.read_line = ReadLine;
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return static_cast<int>(tavlo::cli::RunTavlo(arguments, environment));
}
