// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "forms/branch_table.h"

#include <algorithm>

namespace tavlo {

void BranchTable::AddTo(ControlTable& controls) {
  for (std::size_t i = 0; i < kKeys; ++i) {
    const int key = static_cast<int>(i) + 1;
    controls.Add(Element("Check1", key), &keys_[i].in_use);
    keys_[i].target.AddTo(controls,
                          {.text = Element("Addr", key), .spin = "", .line_text = Element("AddrText", key)});
  }
}

void BranchTable::Fill(const Program& program, const Instruction& record, int own_line) {
  for (std::size_t i = 0; i < kKeys; ++i) {
    keys_[i].in_use.value = record.MenuKey[i + 1];
    keys_[i].target.Fill(program, record.MenuLine[i + 1], own_line);
  }
}

void BranchTable::CleanUp() {
  for (Key& key : keys_) key.target.CleanUp();
}

bool BranchTable::NoValidKeys() const {
  return std::ranges::none_of(keys_, [](const Key& key) { return key.in_use.value; });
}

void BranchTable::Write(Instruction& record) const {
  for (std::size_t i = 0; i < kKeys; ++i) {
    record.MenuKey[i + 1] = keys_[i].in_use.value;
    record.MenuLine[i + 1] = keys_[i].target.Target();
  }
}

}  // namespace tavlo
