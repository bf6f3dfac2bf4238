// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "model/file_examination.h"

#include <algorithm>

#include "model/file_items.h"
#include "model/legacy_import.h"
#include "model/program_file.h"

namespace tavlo {
namespace {

/// Written but never read: the reader takes it for that of the Hub-Octo.
constexpr int kOldHubCode = 1;

bool IsDriveModel(int code) {
  return ModelName(code) != ModelName(kUnknownModel);
}

bool IsHubCode(int code) {
  return code == kOldHubCode || HubOfCode(code).has_value();
}

/// One to three numbers with points between them: "1.29.1", "1.29", "0".
bool HasVersionForm(std::string_view text) {
  constexpr std::size_t kMostDigits = 3;
  constexpr int kMostNumbers = 3;
  for (int number = 1; number <= kMostNumbers; ++number) {
    const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
    if (digits == 0 || digits > kMostDigits) return false;
    text.remove_prefix(digits);
    if (text.empty()) return true;
    if (text.front() != '.') return false;
    text.remove_prefix(1);
  }
  return false;
}

/// Nobody knows the last version of the earlier programmer, so any version of it counts as known.
bool IsKnown(std::string_view version, FileKind kind) {
  return HasVersionForm(version) &&
         (kind == FileKind::OskelProg || ParseRevision(version) <= ParseRevision(VersionTextOf(kVersion)));
}

FileKind OtherThan(FileKind kind) {
  return kind == FileKind::HubProg ? FileKind::OskelProg : FileKind::HubProg;
}

/// A program to read a file into, apart from the live one.
struct Trial {
  Trial(std::string_view text, FileKind kind) : items(text) {
    InitHardware(program.Axis);
    InitProg(program);
    std::string version;
    items.Read(version);
    // A file without a readable version may be whole apart from that.
    const float r = ParseRevision(HasVersionForm(version) ? version : VersionTextOf(kVersion));
    whole = kind == FileKind::HubProg ? LoadHubProg(items, r, program, &repairs)
                                      : LoadOskelProg(items, r, program, &repairs);
    int unread = kind == FileKind::HubProg ? UnreadItems(r) : UnreadOldItems(r);
    for (std::string item; unread > 0 && !items.AtEnd(); --unread) items.Read(item);
  }

  ItemReader items;
  Program program;
  Repairs repairs;
  bool whole = false;
};

/// Returns the number after the version if it is not a known code.
std::optional<int> UnknownCode(std::string_view text, bool (*is_known)(int)) {
  ItemReader items(text);
  std::string version;
  std::int16_t code = 0;
  items.ReadAll(version, code);
  return items.Failed() || is_known(code) ? std::nullopt : std::optional<int>(code);
}

}  // namespace

FileKind KindByName(std::string_view path) {
  constexpr std::string_view kExtension = ".tvh";
  if (path.size() < kExtension.size()) return FileKind::OskelProg;
  const bool own = std::ranges::equal(
      path.substr(path.size() - kExtension.size()), kExtension,
      [](char c, char low) { return (c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c) == low; });
  return own ? FileKind::HubProg : FileKind::OskelProg;
}

std::vector<UnknownModel> UnknownModelsOf(const Program& program) {
  std::vector<UnknownModel> unknown;
  for (int axis = 0; axis < kAxes; ++axis) {
    const int code = program.Axis.DriveModel[axis];
    if (!IsDriveModel(code)) unknown.push_back({axis, code});
  }
  return unknown;
}

FileFindings Examine(std::string_view text, FileKind kind) {
  FileFindings found;
  ItemReader(text).Read(found.version);
  found.has_version = HasVersionForm(found.version);
  found.known_version = IsKnown(found.version, kind);
  const Trial trial(text, kind);
  found.whole = trial.whole;
  if (!trial.whole) {
    found.other_kind = Trial(text, OtherThan(kind)).whole;
    return found;
  }
  found.goes_on = !trial.items.AtEnd();
  found.repairs = trial.repairs;
  if (kind == FileKind::HubProg) {
    found.unknown_hub_code = UnknownCode(text, IsHubCode);
    found.unknown_models = UnknownModelsOf(trial.program);
  } else if (HasDriveCode(ParseRevision(found.version))) {
    found.unknown_drive_code = UnknownCode(text, IsDriveModel);
  }
  return found;
}

}  // namespace tavlo
