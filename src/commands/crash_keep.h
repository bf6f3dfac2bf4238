// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "model/kept_text.h"
#include "platform/state_folder.h"
#include "session/desk.h"

namespace tavlo {

/// Keeps what no file holds in the user's state folder, after each edit, until the session is ended in the
/// usual way. Each session has a file of its own, as long as there is something to keep.
class CrashKeep : public SessionKeeper {
 public:
  /// `own_name` is the name of this session's file; no other session may have it. `now` returns seconds since
  /// 1970.
  CrashKeep(StateFolder& folder, std::string own_name, std::function<std::int64_t()> now);

  void Keep(const Source& source) override;
  /// The session has been ended by the operator: nothing is kept any more.
  void End();

  /// What a session left that was not ended.
  struct Left {
    std::string name;
    std::string text;
    /// Nothing if that cannot be read.
    std::optional<KeptProgram> kept;
  };
  /// Returns the last one that has not been found before, and makes it this session's to remove; nothing if
  /// there is none. Those of sessions that are still up are not found.
  [[nodiscard]] std::optional<Left> FindLeft();
  void Remove(const Left& left);
  /// What should be kept now is not.
  [[nodiscard]] bool Failing() const { return failing_; }

  /// Called when something cannot be kept, once until it can be again.
  std::function<void(const std::string& why)> OnFailure;

 private:
  [[nodiscard]] Outcome Write(const Source& source);

  StateFolder& folder_;
  std::string own_name_;
  std::function<std::int64_t()> now_;
  bool written_ = false;
  bool failing_ = false;
};

/// Offers what the last session left, if it was not ended in the usual way, and removes it. For when the main
/// window is up, before the operator does anything.
void OfferLeft(Desk& desk, CrashKeep& keep);

}  // namespace tavlo
