// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavlo {

/// Thrown for a value that cannot be encoded for the hub. what() is a clause for the operator, such as "the
/// distance is negative".
class EncodeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  /// `line` is the 0-based line that holds the value.
  EncodeError(const std::string& what, int line) : std::runtime_error(what), line_(line) {}

  /// Empty if the value does not belong to a line.
  [[nodiscard]] std::optional<int> Line() const { return line_; }

 private:
  std::optional<int> line_;
};

// The hub is big-endian. Bits above a field are dropped silently. A negative value has no encoding: it throws
// EncodeError, whose text calls the value `what`.

/// Two bytes; 0 goes out as 1, because the hub never sees a zero in speeds, rates, times and counts.
[[nodiscard]] std::string Pack2NZ(std::int32_t x, std::string_view what = "a value");
/// rev/s in units of 1/40, rounded half to even, then encoded as `Pack2NZ` does.
[[nodiscard]] std::string PackSpeed(float rev_s, std::string_view what = "a speed");
/// Three bytes; 0 stays 0.
[[nodiscard]] std::string Pack3(std::int32_t x, std::string_view what = "a value");
/// Two bytes; 0 stays 0.
[[nodiscard]] std::string Raw2(std::int32_t x, std::string_view what = "a value");
/// One byte; a value above 255 throws too.
[[nodiscard]] char WholeByte(std::int32_t x, std::string_view what = "a value");
/// A floating-point value that has been rounded, as a 32-bit integer; throws if it does not fit.
[[nodiscard]] std::int32_t WholeLong(double x, std::string_view what);

/// The byte rotated right by one bit: the order in which the hub holds a drive's own inputs.
[[nodiscard]] int RotDrv(int x);

/// Sum of the byte values.
[[nodiscard]] std::int32_t SumStr(std::string_view bytes);

}  // namespace tavlo
