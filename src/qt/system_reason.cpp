// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "qt/system_reason.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace tavlo {
namespace {

struct ReasonRow {
  int error;
  std::string_view text;
};

constexpr std::array kReasons = {
    ReasonRow{EACCES, "Permission denied"},
    ReasonRow{EBUSY, "It is in use"},
#ifdef EDQUOT
    ReasonRow{EDQUOT, "Disk quota exceeded"},
#endif
    ReasonRow{EEXIST, "It is there already"},
    ReasonRow{EFBIG, "File too large"},
    ReasonRow{EIO, "Input/output error"},
    ReasonRow{EISDIR, "Is a directory"},
    ReasonRow{ELOOP, "Its links lead in a circle"},
    ReasonRow{EMFILE, "Too many open files"},
    ReasonRow{ENAMETOOLONG, "File name too long"},
    ReasonRow{ENFILE, "Too many open files"},
    ReasonRow{ENODEV, "No such device"},
    ReasonRow{ENOENT, "No such file or directory"},
    ReasonRow{ENOMEM, "Not enough memory"},
    ReasonRow{ENOSPC, "No space left on device"},
    ReasonRow{ENOTDIR, "Not a directory"},
    ReasonRow{ENXIO, "No such device"},
    ReasonRow{EPERM, "Operation not permitted"},
    ReasonRow{EPIPE, "Its reader has gone"},
    ReasonRow{EROFS, "Read-only file system"},
#ifdef ESTALE
    ReasonRow{ESTALE, "The network's file has gone"},
#endif
    ReasonRow{ETXTBSY, "It is in use"},
    ReasonRow{EXDEV, "It is on another disk"},
};

}  // namespace

std::string SystemReason(int error) {
  const auto* const row = std::ranges::find(kReasons, error, &ReasonRow::error);
  return row != kReasons.end() ? std::string(row->text) : "System error " + std::to_string(error);
}

}  // namespace tavlo
