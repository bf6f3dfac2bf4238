// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// The plainest client there can be: sends a program with write() and waits with poll(). It is what the
// Composer's own download is measured against.
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "codegen/compile.h"
#include "full_program.h"

namespace {

using Clock = std::chrono::steady_clock;

struct Line {
  int descriptor;
  long sent = 0;
  long received = 0;
};

void Send(Line& line, std::string_view bytes) {
  if (write(line.descriptor, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::exit(5);
  line.sent += static_cast<long>(bytes.size());
}

std::string Await(Line& line, std::size_t count) {
  std::string reply;
  while (reply.size() < count) {
    pollfd waiting{line.descriptor, POLLIN, 0};
    char buffer[64];
    if (poll(&waiting, 1, 1000) != 1) std::exit(6);
    const ssize_t got = read(line.descriptor, buffer, sizeof buffer);
    if (got <= 0) std::exit(6);
    reply.append(buffer, static_cast<std::size_t>(got));
  }
  line.received += static_cast<long>(reply.size());
  return reply;
}

}  // namespace

/// usage: poll-download DEVICE. Prints the seconds from "F" to the hub's sum and the bytes both ways.
int main(int argc, char** argv) {
  if (argc != 2) return 2;
  Line line{open(argv[1], O_RDWR | O_NOCTTY)};
  if (line.descriptor < 0) return 5;
  termios raw{};
  tcgetattr(line.descriptor, &raw);
  cfmakeraw(&raw);
  tcsetattr(line.descriptor, TCSANOW, &raw);
  tavlo::Program program = tavlo::bench::FullProgram();
  program.HubVersion = 1.38F;
  const tavlo::CompiledProgram compiled = tavlo::CompileProgram(program);

  const auto start = Clock::now();
  Send(line, "F");
  Await(line, 1);
  for (const std::string& bytes : compiled.lines) {
    Send(line, bytes);
    Await(line, 1);
  }
  for (const std::string* bytes : {&compiled.system, &compiled.pool}) {
    for (std::size_t i = 0; i < bytes->size(); i += 32) {
      Send(line, std::string_view(*bytes).substr(i, 32));
      Await(line, 1);
    }
  }
  Send(line, "K");
  const std::string sum = Await(line, 2);
  const std::chrono::duration<double> seconds = Clock::now() - start;
  const int hub_sum = static_cast<unsigned char>(sum[0]) * 256 + static_cast<unsigned char>(sum[1]);
  std::cout << seconds.count() << ' ' << line.sent << ' ' << line.received << '\n';
  return hub_sum == compiled.checksum ? 0 : 7;
}
