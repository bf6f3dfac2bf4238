// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "codegen/encodings.h"

#include <limits>

#include "model/wire.h"
#include "platform/number_format.h"

namespace tavlo {
namespace {

void RefuseNegative(std::int32_t x, std::string_view what) {
  if (x < 0) throw EncodeError(std::string(what) + " is negative");
}

char Byte(std::int32_t x) {
  return static_cast<char>(static_cast<unsigned char>(x % 256));
}

}  // namespace

std::string Raw2(std::int32_t x, std::string_view what) {
  RefuseNegative(x, what);
  return {Byte(x / 256), Byte(x)};
}

std::string Pack2NZ(std::int32_t x, std::string_view what) {
  return Raw2(x == 0 ? 1 : x, what);
}

std::string PackSpeed(float rev_s, std::string_view what) {
  return Pack2NZ(WholeLong(RoundHalfEven(rev_s * kSpeedUnits), what), what);
}

std::string Pack3(std::int32_t x, std::string_view what) {
  RefuseNegative(x, what);
  return {Byte(x / 65536), Byte(x / 256), Byte(x)};
}

char WholeByte(std::int32_t x, std::string_view what) {
  RefuseNegative(x, what);
  if (x > 255) throw EncodeError(std::string(what) + " is above 255");
  return Byte(x);
}

std::int32_t WholeLong(double x, std::string_view what) {
  if (!(x >= std::numeric_limits<std::int32_t>::min() && x <= std::numeric_limits<std::int32_t>::max())) {
    throw EncodeError(std::string(what) + " is too large");
  }
  return static_cast<std::int32_t>(x);
}

int RotDrv(int x) {
  return x % 2 * 128 + x / 2;
}

std::int32_t SumStr(std::string_view bytes) {
  std::uint32_t sum = 0;
  for (const char c : bytes) sum += static_cast<unsigned char>(c);
  return static_cast<std::int32_t>(sum);
}

}  // namespace tavlo
