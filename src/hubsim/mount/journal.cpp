// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/mount/journal.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "hubsim/option_text.h"

namespace tavlo::hubsim {

Journal::Journal(const std::string& path, double start) : file_(path, std::ios::trunc), start_(start) {
  if (!file_) throw std::runtime_error("Cannot write the journal " + path + ".");
}

void Journal::Write(std::string_view direction, std::string_view bytes, double at) {
  if (!file_.is_open() || bytes.empty()) return;
  const nlohmann::ordered_json entry{{"t", at - start_}, {"dir", direction}, {"bytes", ToHex(bytes)}};
  file_ << entry.dump() << '\n';
}

void Journal::Flush() {
  if (file_.is_open()) file_.flush();
}

}  // namespace tavlo::hubsim
