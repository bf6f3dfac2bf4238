// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace tavlo::hubsim {

/// Everything that passed over the line, one JSON object a line: {"t":seconds,"dir":"rx"|"tx","bytes":"hex"}.
/// The seconds count from the hub's start; rx is what the hub received from the PC, tx what it sent.
class Journal {
 public:
  /// Writes nothing.
  Journal() = default;
  /// Throws std::runtime_error if the file cannot be written.
  Journal(const std::string& path, double start);

  void Received(std::string_view bytes, double at) { Write("rx", bytes, at); }
  void Sent(std::string_view bytes, double at) { Write("tx", bytes, at); }
  /// Hands what was written to the system.
  void Flush();

 private:
  void Write(std::string_view direction, std::string_view bytes, double at);

  std::ofstream file_;
  double start_ = 0;
};

}  // namespace tavlo::hubsim
