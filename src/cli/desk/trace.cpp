// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/trace.h"

#include "platform/encoding.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr std::size_t kBytesPerRow = 16;
constexpr std::size_t kSecondsWidth = 9;

std::string Readable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) text += c >= ' ' && c <= '~' ? c : '.';
  return text;
}

std::string Spaced(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i > 0) text += ' ';
    text += HexOf(bytes.substr(i, 1));
  }
  text.resize(kBytesPerRow * 3 - 1, ' ');
  return text;
}

}  // namespace

std::string TraceRows(double seconds, bool out, std::string_view bytes) {
  std::string time = Format(seconds, "0.000");
  if (time.size() < kSecondsWidth) time.insert(0, kSecondsWidth - time.size(), ' ');
  std::string rows;
  for (; !bytes.empty(); bytes.remove_prefix(std::min(kBytesPerRow, bytes.size()))) {
    const std::string_view row = bytes.substr(0, kBytesPerRow);
    rows += time + (out ? " -> " : " <- ") + Spaced(row) + "  " + Readable(row) + '\n';
  }
  return rows;
}

Trace::Trace(HubLine& line, std::ostream& err) : line_(line), err_(err), watch_(line.Time()) {
  line_.OnTraffic = [this](bool out, std::string_view bytes) {
    err_ << TraceRows(watch_.Seconds(), out, bytes) << std::flush;
  };
}

Trace::~Trace() {
  line_.OnTraffic = nullptr;
}

}  // namespace tavlo::cli
