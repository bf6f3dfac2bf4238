// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "composer/command_line.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "model/program_file.h"

namespace tavlo {
namespace {

constexpr int kUsageError = 2;

constexpr std::string_view kHelp =
    "Usage: tavlo-composer [OPTION]... [FILE]\n"
    "Compose, download and run programs of a Tavlo motion hub.\n"
    "\n"
    "  FILE           a program file to open\n"
    "\n"
    "  -h, --help     show this text and leave\n"
    "      --version  show the version and leave\n"
    "\n"
    "Options of the window system, such as -display and -style, are handed to it.\n"
    "The command line companion is tavlo.\n";

/// What the window system takes, with one dash or two.
struct WindowSystemOption {
  std::string_view name;
  bool has_value = true;
};
constexpr std::array<WindowSystemOption, 14> kWindowSystemOptions = {{{"display"},
                                                                      {"geometry"},
                                                                      {"platform"},
                                                                      {"platformpluginpath"},
                                                                      {"platformtheme"},
                                                                      {"plugin"},
                                                                      {"qwindowgeometry"},
                                                                      {"qwindowicon"},
                                                                      {"qwindowtitle"},
                                                                      {"reverse", false},
                                                                      {"session"},
                                                                      {"style"},
                                                                      {"stylesheet"},
                                                                      {"widgetcount", false}}};

/// How many arguments an option of the window system is; 0 for anything else.
std::size_t WindowSystemArguments(std::string_view argument) {
  std::string_view name = argument.substr(std::min(argument.find_first_not_of('-'), argument.size()));
  const std::size_t dashes = argument.size() - name.size();
  if (dashes < 1 || dashes > 2) return 0;
  const std::size_t equals = name.find('=');
  name = name.substr(0, equals);
  const auto* option = std::ranges::find(kWindowSystemOptions, name, &WindowSystemOption::name);
  if (option == kWindowSystemOptions.end()) return 0;
  return option->has_value && equals == std::string_view::npos ? 2 : 1;
}

bool IsFile(std::string_view argument) {
  return !argument.empty() && !argument.starts_with('-');
}

CommandLineAnswer Unknown(std::string_view argument) {
  const bool is_option = !IsFile(argument);
  return {"tavlo-composer: " +
              (is_option ? "there is no option " + std::string(argument)
                         : "only one program can be opened, and " + std::string(argument) + " is another") +
              "\nTry tavlo-composer --help.\n",
          kUsageError};
}

}  // namespace

std::optional<CommandLineAnswer> AnswerCommandLine(std::span<const char* const> arguments) {
  bool has_file = false;
  for (std::size_t i = 0; i < arguments.size();) {
    const std::string_view argument = arguments[i];
    if (argument == "-h" || argument == "--help") return CommandLineAnswer{std::string(kHelp), 0};
    if (argument == "--version") {
      return CommandLineAnswer{"tavlo-composer " + VersionTextOf(kVersion) + "\n", 0};
    }
    std::size_t taken = WindowSystemArguments(argument);
    if (taken == 0 && IsFile(argument) && !std::exchange(has_file, true)) taken = 1;
    if (taken == 0) return Unknown(argument);
    i += taken;
  }
  return std::nullopt;
}

std::string FileToOpen(std::span<const char* const> arguments) {
  for (std::size_t i = 0; i < arguments.size();) {
    const std::size_t taken = WindowSystemArguments(arguments[i]);
    if (taken == 0) return arguments[i];
    i += taken;
  }
  return {};
}

}  // namespace tavlo
