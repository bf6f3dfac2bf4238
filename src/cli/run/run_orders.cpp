// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/run/run_orders.h"

#include <algorithm>
#include <array>
#include <string>

namespace tavlo::cli {
namespace {

struct KeyRow {
  char typed;
  MmiKey key;
};
/// Keys that make up an entry.
constexpr std::array kEntryKeys = {
    KeyRow{'0', MmiKey::Digit0}, KeyRow{'1', MmiKey::Digit1}, KeyRow{'2', MmiKey::Digit2},
    KeyRow{'3', MmiKey::Digit3}, KeyRow{'4', MmiKey::Digit4}, KeyRow{'5', MmiKey::Digit5},
    KeyRow{'6', MmiKey::Digit6}, KeyRow{'7', MmiKey::Digit7}, KeyRow{'8', MmiKey::Digit8},
    KeyRow{'9', MmiKey::Digit9}, KeyRow{'.', MmiKey::dot},    KeyRow{'+', MmiKey::yes},
    KeyRow{'-', MmiKey::no}};
/// A terminal has two codes for each of Enter and Backspace.
constexpr std::array kOtherKeys = {KeyRow{'\r', MmiKey::enter}, KeyRow{'\n', MmiKey::enter},
                                   KeyRow{'\b', MmiKey::bksp},  KeyRow{'\x7F', MmiKey::bksp},
                                   KeyRow{'y', MmiKey::yes},    KeyRow{'n', MmiKey::no}};
/// Last bytes of the arrows' sequences. Right and left are the other way about than on the hub's wire.
constexpr std::array kArrows = {KeyRow{'A', MmiKey::arrowup}, KeyRow{'B', MmiKey::arrowdown},
                                KeyRow{'C', MmiKey::arrowright}, KeyRow{'D', MmiKey::arrowleft}};

struct ControlRow {
  char typed;
  std::string_view word;
  RunAct act;
};
constexpr std::array kControls = {
    ControlRow{'p', "pause", RunAct::Pause}, ControlRow{'r', "resume", RunAct::Play},
    ControlRow{'t', "step", RunAct::SingleStep}, ControlRow{'z', "reset", RunAct::Reset},
    ControlRow{'s', "stop", RunAct::Stop}};

struct WordRow {
  std::string_view word;
  MmiKey key;
};
/// A sign alone answers a question of yes or no, which takes no Enter.
constexpr std::array kWords = {WordRow{"yes", MmiKey::yes},        WordRow{"y", MmiKey::yes},
                               WordRow{"+", MmiKey::yes},          WordRow{"no", MmiKey::no},
                               WordRow{"n", MmiKey::no},           WordRow{"-", MmiKey::no},
                               WordRow{"up", MmiKey::arrowup},     WordRow{"down", MmiKey::arrowdown},
                               WordRow{"left", MmiKey::arrowleft}, WordRow{"right", MmiKey::arrowright},
                               WordRow{"bksp", MmiKey::bksp},      WordRow{"enter", MmiKey::enter}};

template <class Rows>
std::optional<MmiKey> KeyIn(const Rows& rows, char c) {
  const auto row = std::ranges::find(rows, c, &KeyRow::typed);
  return row == rows.end() ? std::nullopt : std::optional(row->key);
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

std::optional<RunOrder> OrderOf(std::optional<MmiKey> key) {
  return key ? std::optional(RunOrder{RunAct::Key, *key}) : std::nullopt;
}

std::string_view Trimmed(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

std::optional<RunOrder> OrderOfWord(std::string_view text) {
  std::string word(text);
  std::ranges::transform(word, word.begin(), Lower);
  const auto control = std::ranges::find(kControls, word, &ControlRow::word);
  if (control != kControls.end()) return RunOrder{control->act, {}};
  const auto key = std::ranges::find(kWords, word, &WordRow::word);
  if (key != kWords.end()) return RunOrder{RunAct::Key, key->key};
  // A menu takes a digit without Enter.
  constexpr std::string_view kOneKey = "key ";
  if (word.size() != kOneKey.size() + 1 || !word.starts_with(kOneKey)) return std::nullopt;
  return OrderOf(KeyIn(kEntryKeys, word.back()));
}

}  // namespace

std::optional<RunOrder> TypedKeys::Take(char c) {
  constexpr char kEscape = 27;
  switch (phase_) {
    case Phase::Sequence:
      // Everything up to a letter tells which modifier keys were held.
      if (c >= '0' && c <= '?') return std::nullopt;
      phase_ = Phase::Plain;
      return OrderOf(KeyIn(kArrows, c));
    case Phase::Escape:
      phase_ = c == '[' || c == 'O' ? Phase::Sequence : Phase::Plain;
      if (phase_ == Phase::Sequence) return std::nullopt;
      break;
    case Phase::Plain: break;
  }
  if (c == kEscape) {
    phase_ = Phase::Escape;
    return std::nullopt;
  }
  const char low = Lower(c);
  const auto control = std::ranges::find(kControls, low, &ControlRow::typed);
  if (control != kControls.end()) return RunOrder{control->act, {}};
  const auto entry = KeyIn(kEntryKeys, low);
  return OrderOf(entry ? entry : KeyIn(kOtherKeys, low));
}

std::optional<std::vector<RunOrder>> OrdersOfLine(std::string_view line) {
  line = Trimmed(line);
  if (const auto order = OrderOfWord(line)) return std::vector{*order};
  std::vector<RunOrder> orders;
  for (const char c : line) {
    const auto key = OrderOf(KeyIn(kEntryKeys, c));
    if (!key) return std::nullopt;
    orders.push_back(*key);
  }
  orders.push_back({RunAct::Key, MmiKey::enter});
  return orders;
}

}  // namespace tavlo::cli
