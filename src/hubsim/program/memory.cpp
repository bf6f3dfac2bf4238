// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/program/memory.h"

#include <algorithm>
#include <numeric>

namespace tavlo::hubsim {

Slot Memory::Line(int line) const {
  return Slot(bytes_.data() + static_cast<std::ptrdiff_t>(line) * kSlotSize, kSlotSize);
}

AxisBlock Memory::Axis(int axis) const {
  return AxisBlock(bytes_.data() + kSystemOffset + static_cast<std::ptrdiff_t>(axis) * kAxisBlockSize,
                   kAxisBlockSize);
}

std::string Memory::PoolText(int offset) const {
  const auto pool = std::span(bytes_).subspan(kPoolOffset);
  if (offset < 0 || offset >= kPoolSize) return {};
  const auto start = pool.begin() + offset;
  const auto end =
      std::find_if(start, pool.end(), [](std::uint8_t byte) { return byte == 0xFF || byte == 0; });
  return {start, end};
}

void Memory::StoreLine(int line, std::span<const std::uint8_t> bytes) {
  auto* slot = bytes_.data() + static_cast<std::ptrdiff_t>(line) * kSlotSize;
  std::fill_n(slot, kSlotSize, std::uint8_t{0});
  std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), kSlotSize), slot);
}

void Memory::StoreSystemByte(int index, std::uint8_t byte) {
  bytes_[kSystemOffset + static_cast<std::size_t>(index)] = byte;
}

void Memory::ClearPool() {
  std::fill(bytes_.begin() + kPoolOffset, bytes_.end(), std::uint8_t{0});
}

void Memory::StorePoolByte(std::int64_t index, std::uint8_t byte) {
  if (index < kPoolSize) bytes_[kPoolOffset + static_cast<std::size_t>(index)] = byte;
}

std::uint16_t Memory::Sum() const {
  return static_cast<std::uint16_t>(std::accumulate(bytes_.begin(), bytes_.end(), 0U));
}

}  // namespace tavlo::hubsim
