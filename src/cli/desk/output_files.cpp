// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/output_files.h"

#include <cerrno>
#include <filesystem>
#include <fstream>

#include "qt/qt_services.h"
#include "qt/system_reason.h"

namespace tavlo::cli {
namespace {

/// A device such as /dev/null cannot be replaced by a file.
Outcome WriteDevice(const std::string& path, const std::string& bytes) {
  errno = 0;
  std::ofstream device(path, std::ios::binary);
  device << bytes << std::flush;
  return device ? Outcome() : Outcome::Failed(SystemReason(errno));
}

}  // namespace

bool WriteOutput(Console& console, const std::string& path, const std::string& bytes) {
  if (IsStandard(path)) {
    console.Bytes(bytes);
    return true;
  }
  std::error_code error;
  const bool is_device =
      std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error);
  const Outcome written = is_device ? WriteDevice(path, bytes) : QtFileStore().Replace(path, bytes);
  if (!written) console.Note("cannot write " + path + ": " + written.Why());
  return static_cast<bool>(written);
}

}  // namespace tavlo::cli
