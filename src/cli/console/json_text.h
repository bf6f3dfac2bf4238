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

/// Keeps the keys in their documented order.
using Json = nlohmann::ordered_json;

/// Returns one line of UTF-8. Bytes of a file name that are not UTF-8 show as U+FFFD.
[[nodiscard]] inline std::string JsonLine(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Adds where the line leads to, if it leads to a device.
[[nodiscard]] inline Json WithPort(Json json, const OpenedPort& opened) {
  if (!opened.device.empty()) json.update({{"port", opened.port}, {"device", opened.device}});
  return json;
}

/// Returns a version as it is written everywhere: "1.40" for 40.
[[nodiscard]] inline std::string VersionOfByte(int revision_byte) {
  return Format((100 + revision_byte) / 100.0, "0.00");
}

/// Returns a failure as JSON, for the end of a result or as a result of its own: the exit code and all
/// messages. A failure is reported in JSON only once.
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
