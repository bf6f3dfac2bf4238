// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

namespace tavlo::hubsim {

inline constexpr int kAxisCount = 8;
inline constexpr int kLineCount = 200;
inline constexpr int kSlotSize = 32;
inline constexpr int kSystemOffset = kLineCount * kSlotSize;
inline constexpr int kAxisBlockSize = 32;
inline constexpr int kSystemSize = kAxisCount * kAxisBlockSize;
inline constexpr int kPoolOffset = kSystemOffset + kSystemSize;
inline constexpr int kPoolSize = 1536;
inline constexpr int kMemorySize = kPoolOffset + kPoolSize;
static_assert(kMemorySize == 8192);

using Slot = std::span<const std::uint8_t, kSlotSize>;
using AxisBlock = std::span<const std::uint8_t, kAxisBlockSize>;
using MemoryView = std::span<const std::uint8_t, kMemorySize>;

/// Numbers in it begin with their highest byte.
[[nodiscard]] inline int Read2(std::span<const std::uint8_t> bytes, std::size_t at) {
  return bytes[at] * 256 + bytes[at + 1];
}
[[nodiscard]] inline int Read3(std::span<const std::uint8_t> bytes, std::size_t at) {
  return Read2(bytes, at) * 256 + bytes[at + 2];
}

/// The program memory of the hub: 200 line slots, the axis blocks and the string pool. It survives a power
/// cut.
class Memory {
 public:
  [[nodiscard]] MemoryView Bytes() const { return bytes_; }
  /// `line` is 0..199.
  [[nodiscard]] Slot Line(int line) const;
  /// `axis` is 0..7.
  [[nodiscard]] AxisBlock Axis(int axis) const;
  /// Returns the text that begins at an offset of the pool and goes to a byte 255, a byte 0 or the pool's
  /// end. Empty if the offset is not in the pool.
  [[nodiscard]] std::string PoolText(int offset) const;

  /// Keeps the first 32 bytes of `bytes` in the slot of `line` and clears the rest of the slot.
  void StoreLine(int line, std::span<const std::uint8_t> bytes);
  /// Stores one byte of the axis blocks; `index` is 0..255.
  void StoreSystemByte(int index, std::uint8_t byte);
  void ClearPool();
  /// Bytes beyond the pool's 1536 are dropped: the hub has no place for them.
  void StorePoolByte(std::int64_t index, std::uint8_t byte);

  /// Sum of all 8192 bytes modulo 65536, as it follows them in an upload.
  [[nodiscard]] std::uint16_t Sum() const;

 private:
  std::array<std::uint8_t, kMemorySize> bytes_{};
};

}  // namespace tavlo::hubsim
