// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tavlo {

inline constexpr int kAxes = 8;
/// Slots of the axis arrays. The ninth is never used; it catches an index that is one too high.
inline constexpr int kAxisSlots = 9;

/// Whether an axis index, which may be anything in a record or on the wire, has a slot.
[[nodiscard]] constexpr bool IsAxisSlot(int axis) {
  return axis >= 0 && axis < kAxisSlots;
}

enum HubModel : std::int16_t { HubOcto = 0, HubQuad = 1 };

/// A hub model as the operator, a file and the wire know it.
struct HubModelRow {
  std::string_view name;
  int code;
  int axes;
};
inline constexpr std::array<HubModelRow, 2> kHubModels = {{{"Tavlo Hub-Octo", 8, 8}, {"Hub Quad", 24, 4}}};

/// Returns the hub model with this code; nothing for a code that no hub has.
[[nodiscard]] constexpr std::optional<HubModel> HubOfCode(int code) {
  if (code == kHubModels[HubOcto].code) return HubOcto;
  if (code == kHubModels[HubQuad].code) return HubQuad;
  return std::nullopt;
}

/// The slot that stands for the Hub Quad's own inputs and outputs.
inline constexpr int kHubQuadIO = 4;

/// The settings of the axes, one array a setting. Slots 0..7 are axes, 0-based.
struct AxisConfig {
  template <class T>
  using Axes = std::array<T, kAxisSlots>;

  Axes<std::int16_t> DriveModel{};
  /// Amperes; the running current of the stepper drives.
  Axes<float> DriveCurrent{};
  Axes<std::int16_t> IdleCode{};
  /// 0..15 a fixed resolution, 16 the free one, which is in `StepsPerRev`.
  Axes<std::int16_t> StepResCode{};
  Axes<std::int32_t> StepsPerRev{};
  Axes<std::int32_t> StepsPerUnit{};
  Axes<std::string> UnitName{};
  /// Never cleared: every reader sets it, whatever the file or the image says.
  Axes<bool> UseUnits{};
  /// 0 closed, 1 open, 2 not used.
  Axes<std::int16_t> LimitKind{};
  Axes<std::string> AxisName{};
  /// Amperes rms of the digital servo drives. `SysString` writes the idle current of the stepper
  /// families into `PeakCurrent`.
  Axes<float> ContCurrent{};
  Axes<float> PeakCurrent{};
  /// Amperes of the integrated drives; in no file.
  Axes<float> RunCurrent{};
  Axes<float> AccelCurrent{};
  Axes<float> IdleCurrent{};

  bool SameUnits = false;
  bool SameLimits = false;
  bool SameSpare = false;

  bool operator==(const AxisConfig&) const = default;
};

/// Gives every axis its factory setting and `SameUnits`, `SameLimits` their defaults; `SameSpare`
/// is left alone.
void InitHardware(AxisConfig& axes);

/// Returns "none" for 0, "unknown type" outside 0..50.
[[nodiscard]] std::string_view ModelName(int code);
/// Returns the highest running current in amperes; 2.0 for a code that is not in the table.
[[nodiscard]] float MaxCurrent(int code);
/// Returns the model code of the identity that a drive reports; 100 for an unknown identity.
[[nodiscard]] int DriveIdToModel(int id);
inline constexpr int kUnknownModel = 100;

// Drive families. Each takes a model code; the sets overlap and have holes on purpose.
[[nodiscard]] bool ServoModel(int code);
[[nodiscard]] bool ZenuRmsModel(int code);
[[nodiscard]] bool ZenuModel(int code);
[[nodiscard]] bool ZenuACModel(int code);
[[nodiscard]] bool ZenuDCOxModel(int code);
[[nodiscard]] bool PelmarModel(int code);
[[nodiscard]] bool DreskModel(int code);
[[nodiscard]] bool MirelModel(int code);
[[nodiscard]] bool VornModel(int code);
[[nodiscard]] bool OxModel(int code);
[[nodiscard]] bool PlainModel(int code);
[[nodiscard]] bool ProgModel(int code);
[[nodiscard]] bool ProgNetModel(int code);
[[nodiscard]] bool PlainNetModel(int code);
[[nodiscard]] bool FourInputModel(int code);
/// Whether the running current of the drive is one number in amperes, which its row of the hardware settings
/// shows in `TxtCurrent`. The others have several, or there is no drive.
[[nodiscard]] bool ShowsTxtCurrent(int code);

/// The main window has tests of its own for two families. Its `ZENU_Ox` lacks code 30, which the editors'
/// includes.
[[nodiscard]] bool ZenuServo(int code);
[[nodiscard]] bool MainZENU_Ox(int code);

/// The editors' tests of the axis that is selected in a form.
[[nodiscard]] bool ZENU_a(int code);
[[nodiscard]] bool ZENU_Ox(int code);
[[nodiscard]] bool ZENUC_Ox(int code);
[[nodiscard]] bool ZENU_pe(int code);
[[nodiscard]] bool ZENU_ae(int code);
[[nodiscard]] bool ExtIO(int code);

struct ServoCurrentLimits {
  double continuous;
  double peak;
};
/// Highest continuous and peak current, A rms, of the servo drives.
[[nodiscard]] ServoCurrentLimits MaxServoCurrent(int code);

}  // namespace tavlo
