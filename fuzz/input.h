// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tavlo::fuzzing {

/// Bytes of the fuzzer, taken one after another; zeros behind their end.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : bytes_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] bool Empty() const { return bytes_.empty(); }
  int Byte() { return Empty() ? 0 : static_cast<unsigned char>(Take(1)[0]); }
  /// At most so many.
  std::string Take(std::size_t count) {
    const std::string taken(bytes_.substr(0, count));
    bytes_.remove_prefix(taken.size());
    return taken;
  }
  std::string Rest() { return Take(bytes_.size()); }

 private:
  std::string_view bytes_;
};

/// What must hold whatever came in; a finding otherwise.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

}  // namespace tavlo::fuzzing
