// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <streambuf>
#include <string>

namespace tavlo::cli {

/// Output to a file descriptor whose reader may have stopped reading. Normally a write waits for the reader,
/// and an interruption breaks the wait off. While the output is held, nothing waits: what cannot be sent at
/// once is kept. If too much would have to be kept, everything written since the last flush is dropped.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {}
  ~DescriptorBuffer() override { static_cast<void>(sync()); }

  void Hold(bool held) { held_ = held; }
  /// Whether something is kept for the reader.
  [[nodiscard]] bool Waits() const { return !kept_.empty(); }
  /// Sends what the reader takes at once.
  void SendOn();
  /// Sends what is kept as long as the reader takes some of it every `patience` seconds. The rest is dropped.
  void Finish(double patience);
  /// Returns how many rows have been dropped.
  [[nodiscard]] int DroppedRows() const { return dropped_rows_; }

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  /// Returns -1 once the descriptor accepts nothing any more, and if an interruption broke off a wait.
  int sync() override;

 private:
  enum class Room { Yes, No, Interrupted };
  [[nodiscard]] Room AwaitRoom(int milliseconds) const;
  /// Returns false if an interruption broke off the wait.
  [[nodiscard]] bool SendPatiently();
  /// Writes a piece. If the descriptor accepts nothing any more, forgets all that is kept.
  void WriteSome();
  void Drop(std::string& bytes);

  int descriptor_;
  bool held_ = false;
  bool failed_ = false;
  std::string written_;
  std::string kept_;
  int dropped_rows_ = 0;
};

}  // namespace tavlo::cli
