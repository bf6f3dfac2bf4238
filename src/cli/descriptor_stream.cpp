// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/descriptor_stream.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

#include "cli/interrupts.h"

namespace tavlo::cli {

DescriptorBuffer::int_type DescriptorBuffer::overflow(int_type c) {
  if (!Send()) return traits_type::eof();
  if (!traits_type::eq_int_type(c, traits_type::eof())) {
    *pptr() = traits_type::to_char_type(c);
    pbump(1);
  }
  return traits_type::not_eof(c);
}

bool DescriptorBuffer::Send() {
  const char* next = pbase();
  bool good = true;
  while (good && next < pptr()) {
    good = AwaitRoom();
    if (!good) break;
    const ssize_t written = write(descriptor_, next, static_cast<std::size_t>(pptr() - next));
    if (written > 0) {
      next += written;
    } else {
      good = written < 0 && (errno == EINTR || errno == EAGAIN);
    }
  }
  setp(buffer_.data(), buffer_.data() + buffer_.size());
  return good;
}

/// False when an interruption comes first.
bool DescriptorBuffer::AwaitRoom() const {
  std::array<pollfd, 2> waits = {{{descriptor_, POLLOUT, 0}, {Interrupts::Descriptor(), POLLIN, 0}}};
  for (;;) {
    const int ready = poll(waits.data(), waits.size(), -1);
    // Without a way to wait, the write itself has to tell.
    if (ready < 0 && errno != EINTR) return true;
    if (ready > 0 && waits[0].revents != 0) return true;
    if (ready > 0) return false;
  }
}

}  // namespace tavlo::cli
