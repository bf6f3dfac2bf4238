// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tavlo {

/// A value has no bytes on the wire. what() is a clause for the operator, such as
/// "the distance is negative".
class EncodeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  /// The value stands in this line, 0-based.
  EncodeError(const std::string& what, int line) : std::runtime_error(what), line_(line) {}

  /// Nothing where the value belongs to no line.
  [[nodiscard]] std::optional<int> Line() const { return line_; }

 private:
  std::optional<int> line_;
};

// The hub is big-endian. Bits above a field are dropped without a word; a negative value has no encoding
// and throws EncodeError, `what` naming the value in it.

/// Two bytes; 0 goes out as 1, because the hub never sees a zero in speeds, rates, times and counts.
[[nodiscard]] std::string Pack2NZ(std::int32_t x, std::string_view what = "a value");
/// rev/s in units of 1/40, rounded half to even, then as `Pack2NZ`.
[[nodiscard]] std::string PackSpeed(float rev_s, std::string_view what = "a speed");
/// Three bytes; 0 stays 0.
[[nodiscard]] std::string Pack3(std::int32_t x, std::string_view what = "a value");
/// Two bytes; 0 stays 0.
[[nodiscard]] std::string Raw2(std::int32_t x, std::string_view what = "a value");
/// One whole byte: throws above 255 too.
[[nodiscard]] char WholeByte(std::int32_t x, std::string_view what = "a value");
/// A floating value that has been rounded, as a 32-bit integer; throws when it does not fit.
[[nodiscard]] std::int32_t WholeLong(double x, std::string_view what);

/// The byte rotated right by one bit: the order in which the hub holds a drive's own inputs.
[[nodiscard]] int RotDrv(int x);

/// Sum of the byte values.
[[nodiscard]] std::int32_t SumStr(std::string_view bytes);

}  // namespace tavlo
