// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "platform/encoding.h"

namespace tavlo {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

unsigned Code(char c) {
  return static_cast<unsigned char>(c);
}

bool IsControl(unsigned code_point) {
  return code_point < 0x20 || (code_point >= 0x7F && code_point < 0xA0);
}

void AppendHex(std::string& text, unsigned code) {
  text += kHexDigits[code >> 4U];
  text += kHexDigits[code & 15U];
}

void AppendShown(std::string& text, unsigned code_point) {
  if (!IsControl(code_point)) {
    text += Utf8FromLatin1(std::string(1, static_cast<char>(code_point)));
    return;
  }
  text += "\\x";
  AppendHex(text, code_point);
}

/// Length of the UTF-8 sequence at the start, 2..4; 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const unsigned lead = Code(text.front());
  const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                             : lead >= 0xE0 && lead < 0xF0 ? 3
                             : lead >= 0xF0 && lead < 0xF5 ? 4
                                                           : 0;
  if (length == 0 || text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((Code(text[i]) & 0xC0U) != 0x80) return 0;
  }
  const unsigned second = Code(text[1]);
  const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool surrogate = lead == 0xED && second >= 0xA0;
  const bool too_high = lead == 0xF4 && second >= 0x90;
  return overlong || surrogate || too_high ? 0 : length;
}

/// U+0080..U+009F are controls in either encoding.
bool IsControlSequence(std::string_view sequence) {
  return sequence.size() == 2 && Code(sequence[0]) == 0xC2 && Code(sequence[1]) < 0xA0;
}

}  // namespace

std::string Utf8FromLatin1(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char c : text) {
    const unsigned code = Code(c);
    if (code < 0x80) {
      utf8 += c;
    } else {
      utf8 += static_cast<char>(0xC0U | (code >> 6U));
      utf8 += static_cast<char>(0x80U | (code & 0x3FU));
    }
  }
  return utf8;
}

std::string ShownText(std::string_view latin1) {
  std::string shown;
  for (const char c : latin1) AppendShown(shown, Code(c));
  return shown;
}

std::string ShownMessage(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    if (length == 0) {
      AppendShown(shown, Code(text.front()));
    } else if (IsControlSequence(text.substr(0, length))) {
      AppendShown(shown, Code(text[1]));
    } else {
      shown += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return shown;
}

std::string HexOf(std::string_view bytes) {
  std::string hex;
  hex.reserve(bytes.size() * 2);
  for (const char c : bytes) AppendHex(hex, Code(c));
  return hex;
}

}  // namespace tavlo
