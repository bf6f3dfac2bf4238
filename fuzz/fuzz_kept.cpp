// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// What this program keeps for itself, with anything in it: a session's program, the lines of a clipboard, the
// log of a run. The sums that tell a torn text are made to agree: another program may put on a clipboard what
// it likes.
#include "commands/clipboard.h"
#include "image.h"
#include "model/kept_text.h"
#include "session/grid.h"
#include "session/run_rows.h"
#include "support/fake_clipboard.h"
#include "support/fake_desk.h"

namespace tavlo::fuzzing {
namespace {

void UseKeptProgram(const std::string& text) {
  const auto kept = ReadKeptProgram(text);
  if (!kept) return;
  const std::string again = KeptTextOf(*kept);
  const auto twice = ReadKeptProgram(again);
  Require(twice && KeptTextOf(*twice) == again, "a kept program comes back as it was");
  UseProgram(kept->program);
}

void UseKeptLines(const std::string& text, int row) {
  const auto kept = ReadKeptLines(text);
  if (!kept) return;
  const std::string again = KeptTextOf(*kept);
  const auto twice = ReadKeptLines(again);
  Require(twice && KeptTextOf(*twice) == again, "kept lines come back as they were");
  testing::FakeDesk d;
  testing::FakeClipboard clipboard;
  d.desk.clipboard = &clipboard;
  clipboard.kept = text;
  PasteRows(d.desk, row);
  UseProgram(d.source.program);
}

void UseRunRows(const std::string& csv) {
  const auto rows = ReadRunRows(csv);
  if (!rows) return;
  std::string again = CsvHeader();
  for (const RunRow& row : *rows) again += CsvOf(row);
  Require(ReadRunRows(again) == rows, "the log of a run comes back as it was");
}

}  // namespace
}  // namespace tavlo::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  fuzzing::Input input(data, size);
  const int row = input.Byte();
  const std::string text = input.Rest();
  fuzzing::UseKeptProgram(WithSum(text));
  fuzzing::UseKeptLines(WithSum(text), row % kLines);
  fuzzing::UseRunRows(text);
  return 0;
}
