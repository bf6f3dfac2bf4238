// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// The two kinds of files that hold a program: the Composer's own and those of the earlier programmer.
enum class FileKind { HubProg, OskelProg };

/// The kind that the ending of a name stands for: .TVH, in capitals or not. Any other file is taken for one
/// of the earlier programmer.
[[nodiscard]] FileKind KindByName(std::string_view path);

/// A drive model that there is not, and the axis that has it, 0-based.
struct UnknownModel {
  int axis = 0;
  int code = 0;
  bool operator==(const UnknownModel&) const = default;
};
[[nodiscard]] std::vector<UnknownModel> UnknownModelsOf(const Program& program);

/// What loading a file does not tell: it takes any number for a version, a hub code or a drive model, and it
/// stops behind the last record.
struct FileFindings {
  /// Every item is there and good, read as the kind that was looked for.
  bool whole = false;
  /// Only read as the other kind is it whole.
  bool other_kind = false;
  /// The first item, by which every program begins.
  std::string version;
  /// It has the form of a version, and it is one that has been.
  bool has_version = false;
  bool known_version = false;
  std::optional<int> unknown_hub_code;
  /// Of the earlier programmer's one drive.
  std::optional<int> unknown_drive_code;
  std::vector<UnknownModel> unknown_models;
  /// Something stands behind the last record.
  bool goes_on = false;
};

/// Looks through the text of a file, which may be anything. Loads nothing.
[[nodiscard]] FileFindings Examine(std::string_view text, FileKind kind);

}  // namespace tavlo
