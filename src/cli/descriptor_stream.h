// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <streambuf>

namespace tavlo::cli {

/// Output to a file descriptor that an interruption breaks off. A reader that has stopped taking would
/// otherwise keep a stop from a running machine.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
  }
  ~DescriptorBuffer() override { static_cast<void>(Send()); }

 protected:
  int_type overflow(int_type c) override;
  int sync() override { return Send() ? 0 : -1; }

 private:
  /// Writes what is buffered and forgets what could not be written. False if something could not.
  [[nodiscard]] bool Send();
  [[nodiscard]] bool AwaitRoom() const;

  int descriptor_;
  // No larger than what a pipe that has any room takes at once.
  std::array<char, 4096> buffer_;
};

}  // namespace tavlo::cli
