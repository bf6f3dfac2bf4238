// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/terminal/value_entry.h"

#include <algorithm>

namespace tavlo::hubsim {
namespace {

constexpr std::ptrdiff_t kMostWholeDigits = 9;
constexpr std::ptrdiff_t kMostDecimals = 4;
constexpr char kRubOut = '\b';

bool IsDigit(char key) {
  return key >= '0' && key <= '9';
}

std::string FourDigits(Fixed4 fraction) {
  std::string digits = std::to_string(fraction);
  return std::string(kMostDecimals - digits.size(), '0') + digits;
}

}  // namespace

std::string FormatFixed4(Fixed4 value) {
  const Fixed4 magnitude = value < 0 ? -value : value;
  std::string text = (value < 0 ? "-" : "") + std::to_string(magnitude / kFixed4One);
  if (magnitude % kFixed4One == 0) return text;
  text += '.' + FourDigits(magnitude % kFixed4One);
  text.erase(text.find_last_not_of('0') + 1);
  return text;
}

bool ValueEntry::Key(char key) {
  if (IsDigit(key)) return Digit(key);
  if (key == '.') return Point();
  if (key == '+' || key == '-') return Sign(key);
  if (key != kRubOut || text_.empty()) return false;
  text_.pop_back();
  return true;
}

void ValueEntry::Clear() {
  text_.clear();
}

bool ValueEntry::Empty() const {
  return std::ranges::none_of(text_, IsDigit);
}

bool ValueEntry::Digit(char digit) {
  const std::size_t point = text_.find('.');
  const bool behind_point = point != std::string::npos;
  const std::ptrdiff_t count = std::count_if(
      text_.begin() + (behind_point ? static_cast<std::ptrdiff_t>(point) : 0), text_.end(), IsDigit);
  if (count >= (behind_point ? kMostDecimals : kMostWholeDigits)) return false;
  text_ += digit;
  return true;
}

bool ValueEntry::Point() {
  if (!rules_.decimals || text_.find('.') != std::string::npos) return false;
  text_ += '.';
  return true;
}

/// The sign may come at any time, for the operator often thinks of it last.
bool ValueEntry::Sign(char sign) {
  if (!rules_.sign) return false;
  const bool negative = text_.starts_with('-');
  if (negative == (sign == '-')) return false;
  if (negative) {
    text_.erase(0, 1);
  } else {
    text_.insert(0, 1, '-');
  }
  return true;
}

Fixed4 ValueEntry::Value() const {
  Fixed4 value = 0;
  std::ptrdiff_t decimals = -1;
  for (const char key : text_) {
    if (key == '.') decimals = 0;
    if (!IsDigit(key)) continue;
    value = value * 10 + (key - '0');
    if (decimals >= 0) ++decimals;
  }
  for (std::ptrdiff_t missing = std::max<std::ptrdiff_t>(decimals, 0); missing < kMostDecimals; ++missing) {
    value *= 10;
  }
  return text_.starts_with('-') ? -value : value;
}

}  // namespace tavlo::hubsim
