// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/environment.h"

namespace tavlo::cli {

/// Keeps the keys in the order in which they are documented.
using Json = nlohmann::ordered_json;

/// One line of UTF-8. Bytes of a file name that are none show as U+FFFD.
[[nodiscard]] inline std::string JsonLine(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Adds where the line leads, for a line that leads to a device.
[[nodiscard]] inline Json WithPort(Json json, const OpenedPort& opened) {
  if (!opened.device.empty()) json.update({{"port", opened.port}, {"device", opened.device}});
  return json;
}

/// A version as its two places read: 38 is 1.38.
[[nodiscard]] inline double VersionOfByte(int revision_byte) {
  return (100 + revision_byte) / 100.0;
}

}  // namespace tavlo::cli
