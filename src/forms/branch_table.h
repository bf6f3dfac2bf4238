// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>

#include "forms/entries.h"

namespace tavlo {

/// The keys of a menu and the lines that they branch to: `Check1(1)` to `Check1(8)`, `Addr(1)` to `Addr(8)`,
/// with the texts of these lines as `AddrText(1)` to `AddrText(8)`.
class BranchTable {
 public:
  static constexpr int kKeys = 8;

  void AddTo(ControlTable& controls);
  void Fill(const Program& program, const Instruction& record, int own_line);
  void CleanUp();
  [[nodiscard]] bool NoValidKeys() const;
  void Write(Instruction& record) const;

 private:
  struct Key {
    CheckBox in_use;
    LineField target;
  };
  std::array<Key, kKeys> keys_;
};

}  // namespace tavlo
