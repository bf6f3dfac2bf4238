// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <string_view>

#include "hubsim/mount/unique_fd.h"

namespace tavlo::hubsim {

/// A raw pseudo terminal. The hub holds its own end, and the PC's too, so that the line stays up and raw
/// while no PC has it open. No call blocks.
class Pty {
 public:
  /// Throws std::runtime_error.
  Pty();

  /// The path that the PC opens.
  [[nodiscard]] const std::string& Path() const { return path_; }
  /// Is readable while `Read` has something to do.
  [[nodiscard]] int Fd() const { return waiting_.Get(); }
  /// Returns what has come from the PC, which may be nothing. If a program on the PC that kept the line to
  /// itself was killed, others can open the line again after this call.
  [[nodiscard]] std::string Read();
  /// Returns the number of bytes taken, which may be 0: what the PC does not read must not pile up in the
  /// kernel, where the next program to open the line would find it. There is no event for room that becomes
  /// free.
  [[nodiscard]] std::size_t Write(std::string_view bytes);
  /// Bytes written that the PC has not read. Those of the last milliseconds may be missing.
  [[nodiscard]] std::size_t Unread() const;

 private:
  void AwaitClosings();
  [[nodiscard]] bool HasBeenClosed();

  UniqueFd hub_end_;
  UniqueFd pc_end_;
  UniqueFd closings_;  ///< not valid where the system gives none
  UniqueFd waiting_;   ///< for both
  std::string path_;
};

}  // namespace tavlo::hubsim
