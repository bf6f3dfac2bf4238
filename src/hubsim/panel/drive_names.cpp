// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/drive_names.h"

#include <array>
#include <cstddef>

namespace tavlo::hubsim {
namespace {

/// By model code.
constexpr std::array<std::string_view, 51> kNames{
    "none",       "Oskel-A",     "Tarn-A",     "Oskel-B",    "Oskel-C",     "Tarn-B",     "Oskel-D",
    "Tarn-C",     "Zenu-D",      "Zenu-E",     "Zenu-A-a",   "Zenu-A-x",    "Zenu-B-a",   "Zenu-B-x",
    "Zenu-B-p",   "Zenu-A-p",    "Zenu-C-a",   "Zenu-C-x",   "Zenu-C-p",    "Oskel-E",    "Zenu-A-ae",
    "Zenu-A-pe",  "Zenu-B-ae",   "Zenu-B-pe",  "Zenu-C-ae",  "Zenu-C-pe",   "Pelmar-L-a", "Pelmar-L-ae",
    "Pelmar-L-p", "Pelmar-L-pe", "Pelmar-L-x", "Pelmar-H-a", "Pelmar-H-ae", "Pelmar-H-p", "Pelmar-H-pe",
    "Pelmar-H-x", "Dresk-L-a",   "Dresk-L-m",  "Dresk-L-p",  "Dresk-L-x",   "Dresk-H-a",  "Dresk-H-m",
    "Dresk-H-p",  "Dresk-H-x",   "Mirel-p1",   "Mirel-p2",   "Mirel-a1",    "Mirel-a2",   "Vorn-a",
    "Vorn-p",     "Vorn-x",
};

}  // namespace

std::string_view DriveName(int model) {
  if (model < 0 || model >= static_cast<int>(kNames.size())) return "unknown type";
  return kNames[static_cast<std::size_t>(model)];
}

}  // namespace tavlo::hubsim
