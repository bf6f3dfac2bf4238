// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstddef>
#include <streambuf>
#include <string>

namespace tavlo::cli {

/// Output to a file descriptor whose reader may have stopped taking. Patient, it waits for that reader, and
/// an interruption breaks the wait off. Held, it waits for nobody: what cannot leave at once is kept, and
/// what would be too much to keep is dropped, each time all that was written since the last flush.
class DescriptorBuffer : public std::streambuf {
 public:
  explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {}
  ~DescriptorBuffer() override { static_cast<void>(sync()); }

  void Hold(bool held) { held_ = held; }
  /// Something is kept for the reader.
  [[nodiscard]] bool Waits() const { return !kept_.empty(); }
  /// Sends what the reader takes at once.
  void SendOn();
  /// Sends what is kept for as long as the reader takes something every `patience` seconds; the rest is
  /// dropped.
  void Finish(double patience);
  /// How many rows have been dropped.
  [[nodiscard]] int DroppedRows() const { return dropped_rows_; }

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char* bytes, std::streamsize count) override;
  /// -1 once the descriptor takes no more at all, and if an interruption broke a wait off.
  int sync() override;

 private:
  enum class Room { Yes, No, Interrupted };
  [[nodiscard]] Room AwaitRoom(int milliseconds) const;
  /// False if an interruption broke the wait off.
  [[nodiscard]] bool SendPatiently();
  /// Writes a piece. Where the descriptor takes no more at all, everything kept is forgotten.
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
