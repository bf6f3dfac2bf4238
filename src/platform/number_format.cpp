// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "platform/blanks.h"

namespace tavlo {
namespace {

/// value = 0.d1d2d3... * 10^point, digits without leading zeros; empty digits mean zero.
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

/// Reads what to_chars gives in scientific form, "-1.2345e+03".
Decimal FromScientific(std::string_view text) {
  Decimal result;
  if (text.starts_with('-')) {
    result.negative = true;
    text.remove_prefix(1);
  }
  const auto e = text.find('e');
  int exponent = 0;
  auto exponent_text = text.substr(e + 1);
  if (exponent_text.starts_with('+')) exponent_text.remove_prefix(1);
  std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
  for (const char c : text.substr(0, e)) {
    if (c != '.') result.digits += c;
  }
  result.point = exponent + 1;
  while (!result.digits.empty() && result.digits.back() == '0') result.digits.pop_back();
  if (result.digits.empty()) result.point = 0;
  return result;
}

Decimal WithDigits(double value, int significant) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::scientific, significant - 1);
  return FromScientific({buffer.data(), end.ptr});
}

template <class Float>
Decimal Shortest(Float value) {
  std::array<char, 64> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific);
  return FromScientific({buffer.data(), end.ptr});
}

/// Rounds half away from zero to `places` digits behind the point.
void RoundTo(Decimal& number, int places) {
  const int keep = number.point + places;
  if (keep >= static_cast<int>(number.digits.size())) return;
  const bool up = keep >= 0 && number.digits[static_cast<std::size_t>(keep)] >= '5';
  number.digits.resize(static_cast<std::size_t>(std::max(keep, 0)));
  if (up) {
    int i = keep - 1;
    while (i >= 0 && number.digits[static_cast<std::size_t>(i)] == '9') {
      number.digits[static_cast<std::size_t>(i)] = '0';
      --i;
    }
    if (i >= 0) {
      ++number.digits[static_cast<std::size_t>(i)];
    } else {
      number.digits.insert(number.digits.begin(), '1');
      ++number.point;
    }
  }
  while (!number.digits.empty() && number.digits.back() == '0') number.digits.pop_back();
  if (number.digits.empty()) number.point = 0;
}

/// The digits before the point, none for a value below 1, and those behind it.
struct Sides {
  std::string whole;
  std::string fraction;
};

Sides Split(const Decimal& number) {
  Sides sides;
  if (number.point <= 0) {
    if (!number.digits.empty()) sides.fraction.assign(static_cast<std::size_t>(-number.point), '0');
    sides.fraction += number.digits;
    return sides;
  }
  const auto point = static_cast<std::size_t>(number.point);
  if (number.digits.size() <= point) {
    sides.whole = number.digits + std::string(point - number.digits.size(), '0');
  } else {
    sides.whole = number.digits.substr(0, point);
    sides.fraction = number.digits.substr(point);
  }
  return sides;
}

struct Picture {
  int whole_forced = 0;
  int fraction_forced = 0;
  int fraction_most = 0;
  bool point = false;
  bool grouped = false;
};

Picture ReadPicture(std::string_view text) {
  Picture picture;
  for (const char c : text) {
    if (c == '.') {
      picture.point = true;
    } else if (c == ',') {
      picture.grouped = true;
    } else if (picture.point) {
      ++picture.fraction_most;
      if (c == '0') picture.fraction_forced = picture.fraction_most;
    } else if (c == '0' || picture.whole_forced > 0) {
      ++picture.whole_forced;
    }
  }
  return picture;
}

std::string Grouped(const std::string& digits) {
  std::string result;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) result += ',';
    result += digits[i];
  }
  return result;
}

std::string PlainText(const Decimal& number, bool leading_zero) {
  const Sides sides = Split(number);
  std::string text = number.negative && !number.digits.empty() ? "-" : "";
  if (sides.whole.empty() && (leading_zero || sides.fraction.empty())) text += '0';
  text += sides.whole;
  if (!sides.fraction.empty()) text += '.' + sides.fraction;
  return text;
}

std::string ExponentText(const Decimal& number) {
  std::string text = number.negative ? "-" : "";
  text += number.digits[0];
  if (number.digits.size() > 1) text += '.' + number.digits.substr(1);
  const int exponent = number.point - 1;
  text += exponent < 0 ? "E-" : "E+";
  const std::string digits = std::to_string(std::abs(exponent));
  return text + (digits.size() < 2 ? "0" + digits : digits);
}

/// `exponent_from` is the number of whole digits from which the E form is taken.
std::string NumberText(const Decimal& number, int exponent_from, bool leading_zero) {
  return number.point > exponent_from ? ExponentText(number) : PlainText(number, leading_zero);
}

constexpr int kSingleWholeDigits = 7;
constexpr int kDoubleWholeDigits = 15;

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Length of the longest number at the start of `text`, 0 if there is none.
std::size_t NumberLength(std::string_view text) {
  std::size_t i = 0;
  const auto digits = [&] {
    const std::size_t start = i;
    while (i < text.size() && IsDigit(text[i])) ++i;
    return i - start;
  };
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  std::size_t count = digits();
  if (i < text.size() && text[i] == '.') {
    ++i;
    count += digits();
  }
  if (count == 0) return 0;
  const std::size_t mantissa = i;
  if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    if (digits() == 0) i = mantissa;
  }
  return i;
}

/// from_chars does not say in which direction a number left the range of a double, so this looks for its
/// first digit above 0.
bool IsTiny(std::string_view text) {
  const auto e = std::min(text.find('e'), text.find('E'));
  const std::string_view mantissa = text.substr(0, e);
  const auto first = static_cast<double>(mantissa.find_first_of("123456789"));
  const auto point = static_cast<double>(std::min(mantissa.find('.'), mantissa.size()));
  double exponent = 0;
  if (e != std::string_view::npos) {
    const bool negative = text[e + 1] == '-';
    for (const char c : text.substr(e + 1)) {
      if (IsDigit(c)) exponent = exponent * 10 + (c - '0');
    }
    if (negative) exponent = -exponent;
  }
  return point - first + exponent < 0;
}

/// `text` is a number in the form that NumberLength accepts.
double ToDouble(std::string_view text) {
  std::string plain(text);
  std::ranges::replace(plain, 'D', 'e');
  std::ranges::replace(plain, 'd', 'e');
  const char* first = plain.data() + (plain.starts_with('+') ? 1 : 0);
  double value = 0;
  const auto [end, error] = std::from_chars(first, plain.data() + plain.size(), value);
  if (error != std::errc::result_out_of_range) return value;
  if (IsTiny(plain)) return 0;
  return plain.starts_with('-') ? -HUGE_VAL : HUGE_VAL;
}

}  // namespace

std::string Format(double value, std::string_view picture_text) {
  if (!std::isfinite(value)) return Joined(value);
  const Picture picture = ReadPicture(picture_text);
  Decimal number = WithDigits(value, kDoubleWholeDigits);
  RoundTo(number, picture.fraction_most);
  Sides sides = Split(number);
  const auto forced = static_cast<std::size_t>(picture.whole_forced);
  if (sides.whole.size() < forced) sides.whole.insert(0, forced - sides.whole.size(), '0');
  if (picture.grouped) sides.whole = Grouped(sides.whole);
  const auto fraction_forced = static_cast<std::size_t>(picture.fraction_forced);
  if (sides.fraction.size() < fraction_forced) sides.fraction.resize(fraction_forced, '0');
  std::string text = number.negative && !number.digits.empty() ? "-" : "";
  text += sides.whole;
  if (picture.point) text += '.' + sides.fraction;
  return text;
}

std::string Joined(double value) {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
  return NumberText(WithDigits(value, kDoubleWholeDigits), kDoubleWholeDigits, true);
}

std::string Joined(float value) {
  if (!std::isfinite(value)) return Joined(static_cast<double>(value));
  return NumberText(WithDigits(static_cast<double>(value), kSingleWholeDigits), kSingleWholeDigits, true);
}

std::string Joined(int value) {
  return std::to_string(value);
}

std::string Printed(double value) {
  if (!std::isfinite(value)) return " " + Joined(value) + " ";
  const std::string text = NumberText(WithDigits(value, kDoubleWholeDigits), kDoubleWholeDigits, false);
  return (text.starts_with('-') ? "" : " ") + text + " ";
}

std::string Written(float value) {
  if (!std::isfinite(value)) return "0";
  return NumberText(Shortest(value), kSingleWholeDigits, false);
}

std::string Written(double value) {
  if (!std::isfinite(value)) return "0";
  return NumberText(Shortest(value), kDoubleWholeDigits, false);
}

double Val(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  const std::size_t length = NumberLength(text);
  return length == 0 ? 0 : ToDouble(text.substr(0, length));
}

std::optional<double> ParseNumber(std::string_view text) {
  text = TrimBlanks(text);
  const std::size_t length = NumberLength(text);
  if (length == 0 || length != text.size()) return std::nullopt;
  const double value = ToDouble(text);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

double RoundHalfEven(double value) {
  const double below = std::floor(value);
  const double rest = value - below;
  if (rest < 0.5) return below;
  if (rest > 0.5) return below + 1;
  return std::fmod(below, 2.0) == 0 ? below : below + 1;
}

}  // namespace tavlo
