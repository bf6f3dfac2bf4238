// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <string>
#include <string_view>

#include "hubsim/mount/unique_fd.h"

namespace tavlo::hubsim {

/// A raw pseudo terminal. The hub holds both ends: its own, and the PC's, so that the line stays up and raw
/// while no PC has it open. None of the calls blocks.
class Pty {
 public:
  /// Throws std::runtime_error.
  Pty();

  /// The path that the PC opens.
  [[nodiscard]] const std::string& Path() const { return path_; }
  /// Can be read while Read() has something to do.
  [[nodiscard]] int Fd() const { return waiting_.Get(); }
  /// What has come from the PC; may be empty. A program on the PC that was killed has left the line to itself
  /// alone: others can open it again from here on.
  [[nodiscard]] std::string Read();
  /// Gives the number of bytes taken, which may be 0: what the PC does not read does not pile up in the
  /// kernel, for the next program to open the line would be fed old news. Nothing tells when there is room
  /// again.
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
