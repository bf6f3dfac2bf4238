// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/viewer_options.h"

#include <string_view>

#include "model/program_file.h"

namespace tavlo::viewer {
namespace {

constexpr std::string_view kUsage =
    "Usage: OskelHelp [DOCUMENT.pdf]\n"
    "Show the help of Tavlo Composer, in the window that is open already if there is one.\n"
    "\n"
    "  -h, --help     show this text and leave\n"
    "      --version  show the version and leave\n";

}  // namespace

std::optional<PrintedAnswer> AnswerOptions(std::span<const char* const> arguments) {
  for (const std::string_view argument : arguments) {
    if (argument == "-h" || argument == "--help") return PrintedAnswer{std::string(kUsage)};
    if (argument == "--version") return PrintedAnswer{"OskelHelp " + VersionTextOf(kVersion) + "\n"};
  }
  return std::nullopt;
}

}  // namespace tavlo::viewer
