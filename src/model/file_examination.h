// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/file_repairs.h"
#include "model/program.h"

namespace tavlo {

/// The two kinds of files that hold a program: the Composer's own and those of the earlier programmer.
enum class FileKind { HubProg, OskelProg };

/// Returns the kind that the extension of a name stands for: `HubProg` for .TVH in upper or lower case. Any
/// other file is taken for one of the earlier programmer.
[[nodiscard]] FileKind KindByName(std::string_view path);

/// A drive model that does not exist, and the 0-based axis that has it.
struct UnknownModel {
  int axis = 0;
  int code = 0;
  bool operator==(const UnknownModel&) const = default;
};
[[nodiscard]] std::vector<UnknownModel> UnknownModelsOf(const Program& program);

/// What loading a file does not report: loading accepts any number as a version, a hub code or a drive model,
/// and stops after the last record.
struct FileFindings {
  /// Every item is there and good, if the file is read as the kind that was asked for.
  bool whole = false;
  /// The file is whole only if it is read as the other kind.
  bool other_kind = false;
  /// The first item, with which every program begins.
  std::string version;
  /// `has_version`: it has the form of a version. `known_version`: there has been such a version.
  bool has_version = false;
  bool known_version = false;
  std::optional<int> unknown_hub_code;
  /// The code of the one drive of the earlier programmer.
  std::optional<int> unknown_drive_code;
  std::vector<UnknownModel> unknown_models;
  /// Something follows the last record.
  bool goes_on = false;
  /// What loading a whole file changes in what it holds.
  Repairs repairs;
};

/// Examines the text of a file, which may be anything. Loads nothing.
[[nodiscard]] FileFindings Examine(std::string_view text, FileKind kind);

}  // namespace tavlo
