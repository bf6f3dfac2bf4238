// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "hubsim/hub.h"
#include "hubsim/program/memory.h"
#include "hubsim/wire/failure.h"

namespace tavlo::hubsim {

// What the panel says of the hub. Texts are single bytes; lines and axes count from 0 here and from 1 in the
// texts.

/// "Simulated hub on Comm 1" for the link of a Comm, else "Simulated hub on " and the link's path.
[[nodiscard]] std::string TitleWords(const std::string& link);
/// The meaning of a failure mode as a sentence of its own.
[[nodiscard]] std::string FailureWords(const FailureRow& row);
/// "idle", "running line 12", "halted".
[[nodiscard]] std::string StateWords(HubState state, std::optional<int> line);
/// "feed to length, axis 3"; "nothing" for a slot that was never filled.
[[nodiscard]] std::string LineWords(Slot slot, std::uint8_t firmware);
/// The bytes of a slot that belong to its line.
[[nodiscard]] std::span<const std::uint8_t> LineBytes(Slot slot, std::uint8_t firmware);
/// "0b 7f", in lower case.
[[nodiscard]] std::string HexWords(std::span<const std::uint8_t> bytes);
/// The eight blocks of axis settings, 16 bytes a row.
[[nodiscard]] std::string SettingsText(MemoryView memory);
/// The texts of the pool, one a row, each after its offset. Bytes that are not letters are spelled, as \x1b.
[[nodiscard]] std::string PoolText(MemoryView memory);

}  // namespace tavlo::hubsim
