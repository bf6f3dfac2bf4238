// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <string_view>
#include <tuple>
#include <utility>

#include "model/program.h"

namespace tavlo {

/// A field of a record by its name.
template <class Record, class Value>
struct Field {
  constexpr Field(std::string_view field_name, Value Record::*member) : name(field_name), field(member) {}
  std::string_view name;
  Value Record::*field;
};

// Every field of the records that make up a program, for what must not lose any: a program file has places
// for some of them only.

inline constexpr auto kInstructionFields = std::tuple{
    Field{"Type", &Instruction::Type},
    Field{"Dist", &Instruction::Dist},
    Field{"Dist2", &Instruction::Dist2},
    Field{"SafetyDist", &Instruction::SafetyDist},
    Field{"Speed", &Instruction::Speed},
    Field{"Speed2", &Instruction::Speed2},
    Field{"RetSpeed", &Instruction::RetSpeed},
    Field{"Dir", &Instruction::Dir},
    Field{"Accel", &Instruction::Accel},
    Field{"Decel", &Instruction::Decel},
    Field{"State", &Instruction::State},
    Field{"Time", &Instruction::Time},
    Field{"LineNum", &Instruction::LineNum},
    Field{"IONum", &Instruction::IONum},
    Field{"Count", &Instruction::Count},
    Field{"Text", &Instruction::Text},
    Field{"SubType", &Instruction::SubType},
    Field{"Reserved1", &Instruction::Reserved1},
    Field{"UpperInt", &Instruction::UpperInt},
    Field{"UpperFrac", &Instruction::UpperFrac},
    Field{"LowerInt", &Instruction::LowerInt},
    Field{"LowerFrac", &Instruction::LowerFrac},
    Field{"DistVar", &Instruction::DistVar},
    Field{"SpeedVar", &Instruction::SpeedVar},
    Field{"Dist2Var", &Instruction::Dist2Var},
    Field{"Speed2Var", &Instruction::Speed2Var},
    Field{"DistIsMMI", &Instruction::DistIsMMI},
    Field{"SpeedIsMMI", &Instruction::SpeedIsMMI},
    Field{"Dist2IsMMI", &Instruction::Dist2IsMMI},
    Field{"Speed2IsMMI", &Instruction::Speed2IsMMI},
    Field{"CountIsMMI", &Instruction::CountIsMMI},
    Field{"Blank1", &Instruction::Blank1},
    Field{"Wrap1", &Instruction::Wrap1},
    Field{"Blank2", &Instruction::Blank2},
    Field{"Wrap2", &Instruction::Wrap2},
    Field{"Blank3", &Instruction::Blank3},
    Field{"Wrap3", &Instruction::Wrap3},
    Field{"Reserved2", &Instruction::Reserved2},
    Field{"Reserved3", &Instruction::Reserved3},
    Field{"InState", &Instruction::InState},
    Field{"InMask", &Instruction::InMask},
    Field{"DrvState", &Instruction::DrvState},
    Field{"DrvMask", &Instruction::DrvMask},
    Field{"WaitAND", &Instruction::WaitAND},
    Field{"MotorOn", &Instruction::MotorOn},
    Field{"Current", &Instruction::Current},
    Field{"IdlePct", &Instruction::IdlePct},
    Field{"MenuLine", &Instruction::MenuLine},
    Field{"MenuKey", &Instruction::MenuKey},
    Field{"Drive", &Instruction::Drive},
    Field{"JogLRDrive", &Instruction::JogLRDrive},
    Field{"JogUDDrive", &Instruction::JogUDDrive},
    Field{"Proceed", &Instruction::Proceed},
    Field{"JogSpeed", &Instruction::JogSpeed},
    Field{"JogLRSpeed", &Instruction::JogLRSpeed},
    Field{"JogUDSpeed", &Instruction::JogUDSpeed},
    Field{"JogAccel", &Instruction::JogAccel},
    Field{"JogLRAccel", &Instruction::JogLRAccel},
    Field{"JogUDAccel", &Instruction::JogUDAccel},
    Field{"JogOn", &Instruction::JogOn},
    Field{"JogLR", &Instruction::JogLR},
    Field{"JogUD", &Instruction::JogUD},
    Field{"LoopIndex", &Instruction::LoopIndex},
    Field{"WaitThis", &Instruction::WaitThis},
    Field{"KP", &Instruction::KP},
    Field{"KI", &Instruction::KI},
    Field{"KD", &Instruction::KD},
    Field{"KAFF", &Instruction::KAFF},
    Field{"KV", &Instruction::KV},
    Field{"KVFF", &Instruction::KVFF},
    Field{"Acont", &Instruction::Acont},
    Field{"Apeak", &Instruction::Apeak},
    Field{"ChangesKP", &Instruction::ChangesKP},
    Field{"ChangesKI", &Instruction::ChangesKI},
    Field{"ChangesKD", &Instruction::ChangesKD},
    Field{"ChangesKAFF", &Instruction::ChangesKAFF},
    Field{"ChangesKV", &Instruction::ChangesKV},
    Field{"ChangesKVFF", &Instruction::ChangesKVFF},
    Field{"ChangesAcont", &Instruction::ChangesAcont},
    Field{"ChangesApeak", &Instruction::ChangesApeak},
};

inline constexpr auto kAxisFields = std::tuple{
    Field{"DriveModel", &AxisConfig::DriveModel},   Field{"DriveCurrent", &AxisConfig::DriveCurrent},
    Field{"IdleCode", &AxisConfig::IdleCode},       Field{"StepResCode", &AxisConfig::StepResCode},
    Field{"StepsPerRev", &AxisConfig::StepsPerRev}, Field{"StepsPerUnit", &AxisConfig::StepsPerUnit},
    Field{"UnitName", &AxisConfig::UnitName},       Field{"UseUnits", &AxisConfig::UseUnits},
    Field{"LimitKind", &AxisConfig::LimitKind},     Field{"AxisName", &AxisConfig::AxisName},
    Field{"ContCurrent", &AxisConfig::ContCurrent}, Field{"PeakCurrent", &AxisConfig::PeakCurrent},
    Field{"RunCurrent", &AxisConfig::RunCurrent},   Field{"AccelCurrent", &AxisConfig::AccelCurrent},
    Field{"IdleCurrent", &AxisConfig::IdleCurrent}, Field{"SameUnits", &AxisConfig::SameUnits},
    Field{"SameLimits", &AxisConfig::SameLimits},   Field{"SameSpare", &AxisConfig::SameSpare},
};

inline constexpr auto kProgramFields = std::tuple{
    Field{"HubIndex", &Program::HubIndex},       Field{"LimitList", &Program::LimitList},
    Field{"LimitBranch", &Program::LimitBranch}, Field{"HubVersion", &Program::HubVersion},
    Field{"MMIused", &Program::MMIused},
};

namespace record_fields {

/// Stands for a value of any type, to count how many a record takes.
struct Any {
  template <class T>
  constexpr operator T() const;  // NOLINT(google-explicit-constructor)
};
template <class Record, std::size_t... kIndex>
constexpr bool Takes(std::index_sequence<kIndex...>) {
  return requires {
    Record{(static_cast<void>(kIndex), Any{})...};
  };
}

}  // namespace record_fields

/// Whether a record has this number of fields.
template <class Record, std::size_t kCount>
inline constexpr bool kHasFields = record_fields::Takes<Record>(std::make_index_sequence<kCount>{}) &&
                                   !record_fields::Takes<Record>(std::make_index_sequence<kCount + 1>{});

// Lines and axes are the two that are told apart of a program.
static_assert(kHasFields<Instruction, std::tuple_size_v<decltype(kInstructionFields)>>,
              "a field of a line is missing among those that are kept");
static_assert(kHasFields<AxisConfig, std::tuple_size_v<decltype(kAxisFields)>>,
              "a field of the axes is missing among those that are kept");
static_assert(kHasFields<Program, std::tuple_size_v<decltype(kProgramFields)> + 2>,
              "a field of a program is missing among those that are kept");

}  // namespace tavlo
