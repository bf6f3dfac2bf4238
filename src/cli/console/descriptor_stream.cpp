// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/console/descriptor_stream.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "cli/console/block_limit.h"
#include "cli/console/interrupts.h"

namespace tavlo::cli {
namespace {

/// A pipe that has any room takes this much at once.
constexpr std::size_t kPiece = 4096;
/// More than the result of any command, except a run that nobody reads.
constexpr std::size_t kMostKept = 1 << 20;

}  // namespace

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type c) {
  if (!traits_type::eq_int_type(c, traits_type::eof())) written_ += traits_type::to_char_type(c);
  return traits_type::not_eof(c);
}

std::streamsize DescriptorBuffer::xsputn(const char* bytes, std::streamsize count) {
  written_.append(bytes, static_cast<std::size_t>(count));
  return count;
}

int DescriptorBuffer::sync() {
  if (held_ && kept_.size() + written_.size() > kMostKept) Drop(written_);
  kept_ += std::exchange(written_, {});
  bool waited = true;
  if (held_) {
    SendOn();
  } else {
    waited = SendPatiently();
  }
  return waited && !failed_ ? 0 : -1;
}

void DescriptorBuffer::SendOn() {
  while (!kept_.empty() && AwaitRoom(0) == Room::Yes) WriteSome();
}

bool DescriptorBuffer::SendPatiently() {
  while (!kept_.empty()) {
    if (AwaitRoom(-1) == Room::Interrupted) {
      Drop(kept_);
      return false;
    }
    WriteSome();
  }
  return true;
}

void DescriptorBuffer::Finish(double patience) {
  const int milliseconds = static_cast<int>(patience * 1000);
  while (!kept_.empty() && AwaitRoom(milliseconds) == Room::Yes) WriteSome();
  Drop(kept_);
}

void DescriptorBuffer::WriteSome() {
  ssize_t written = 0;
  {
    const BlockLimit limit;
    written = write(descriptor_, kept_.data(), std::min(kept_.size(), kPiece));
  }
  if (written >= 0) {
    kept_.erase(0, static_cast<std::size_t>(written));
  } else if (errno != EINTR && errno != EAGAIN) {
    failed_ = true;
    kept_.clear();
  }
}

DescriptorBuffer::Room DescriptorBuffer::AwaitRoom(int milliseconds) const {
  std::array<pollfd, 2> waits = {{{descriptor_, POLLOUT, 0}, {Interrupts::Descriptor(), POLLIN, 0}}};
  for (;;) {
    const int ready = poll(waits.data(), waits.size(), milliseconds);
    if (ready < 0 && errno == EINTR) continue;
    // If poll fails, the write itself has to show whether there is room.
    if (ready < 0 || waits[0].revents != 0) return Room::Yes;
    return ready > 0 ? Room::Interrupted : Room::No;
  }
}

void DescriptorBuffer::Drop(std::string& bytes) {
  dropped_rows_ += static_cast<int>(std::ranges::count(bytes, '\n'));
  bytes.clear();
}

}  // namespace tavlo::cli
