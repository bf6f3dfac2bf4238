// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/standard_input.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "cli/console/block_limit.h"
#include "cli/console/interrupts.h"

namespace tavlo::cli {

bool StandardInput::IsTerminal() const {
  return isatty(STDIN_FILENO) == 1;
}

int StandardInput::Descriptor() const {
  return STDIN_FILENO;
}

std::optional<std::string> StandardInput::Read() {
  if (ended_) return std::nullopt;
  pollfd wait = {STDIN_FILENO, POLLIN, 0};
  if (poll(&wait, 1, 0) <= 0) return std::string();
  std::array<char, 4096> bytes{};
  ssize_t count = 0;
  {
    const BlockLimit limit;
    count = read(STDIN_FILENO, bytes.data(), bytes.size());
  }
  if (count > 0) return std::string(bytes.data(), static_cast<std::size_t>(count));
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return std::string();
  ended_ = true;
  return std::nullopt;
}

std::string ReadToEnd(Feed& feed, std::size_t limit) {
  std::string bytes;
  while (bytes.size() < limit) {
    const auto piece = feed.Read();
    if (!piece) break;
    bytes += *piece;
    if (!piece->empty()) continue;
    std::array<pollfd, 2> waits = {{{feed.Descriptor(), POLLIN, 0}, {Interrupts::Descriptor(), POLLIN, 0}}};
    poll(waits.data(), waits.size(), -1);
    if (waits[1].revents != 0) throw Interrupted();
  }
  if (bytes.size() > limit) bytes.resize(limit);
  return bytes;
}

}  // namespace tavlo::cli
