// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "cli/console/environment.h"
#include "cli/console/exit_code.h"
#include "platform/number_format.h"

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

/// A version as it reads everywhere: 40 is "1.40".
[[nodiscard]] inline std::string VersionOfByte(int revision_byte) {
  return Format((100 + revision_byte) / 100.0, "0.00");
}

/// What a failure is told as, at the end of a result or as one of its own: its exit code, and all that was
/// said of it. Told once.
[[nodiscard]] inline Json ErrorOf(Environment& environment, ExitCode code) {
  std::string message;
  for (const std::string& said : std::exchange(environment.failures, {})) {
    message += (message.empty() ? "" : "\n") + said;
  }
  if (message.empty()) message = MeaningOf(code);
  environment.error_told = true;
  return {{"code", static_cast<int>(code)}, {"message", message}};
}

}  // namespace tavlo::cli
