// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "commands/program_files.h"
#include "image.h"
#include "model/items_of_file.h"
#include "model/program_file.h"
#include "support/fake_desk.h"

namespace tavlo::fuzzing {

/// Either the input as it stands, if it begins as a text, or, which mutates better, a whole file of some
/// version with other items: the version; where the file is cut, if at all, in two bytes; then records of an
/// item's number in two bytes, its length and its text.
inline std::string MakeFile(Input& input, const std::vector<testing::ItemsOfFile>& wholes) {
  constexpr int kFirstOfText = ' ';
  const int version = input.Byte();
  if (version >= kFirstOfText) return static_cast<char>(version) + input.Rest();
  const auto number = [&] {
    const int high = input.Byte();
    return static_cast<std::size_t>(high * 256 + input.Byte());
  };
  const testing::ItemsOfFile& whole = wholes[static_cast<std::size_t>(version) % wholes.size()];
  const std::size_t cut = number();
  std::map<std::size_t, std::string> others;
  while (!input.Empty()) {
    const std::size_t item = number() % whole.Count();
    others[item] = input.Take(static_cast<std::size_t>(input.Byte()));
  }
  const std::string text = whole.With(others);
  return cut == 0 ? text : text.substr(0, cut);
}

/// What must hold of a file that has been loaded. It takes as long as loading some more of them.
inline void ExamineAndSave(const std::string& text, FileKind kind, bool loaded, const Program& program) {
  const FileFindings found = Examine(text, kind);
  Require(found.whole == loaded || !found.has_version, "a file is examined as it is loaded");
  const auto read_back = [](Program& into, const std::string& file) {
    ItemReader items(file);
    std::string version;
    items.Read(version);
    return LoadHubProg(items, ParseRevision(version), into);
  };
  // What is saved can be read, and from then on it stays as it is.
  Program saved = program;
  Require(read_back(saved, WriteHubProg(program, 0)), "what was loaded can be saved and read");
  const std::string again = WriteHubProg(saved, 0);
  Require(read_back(saved, again) && WriteHubProg(saved, 0) == again, "a saved file comes back as it was");
}

/// Loads the file as the desktop does; what must hold then, whatever the file was.
inline void LoadAndUse(const std::string& text, FileKind kind) {
  constexpr std::size_t kSeldom = 8;
  testing::FakeDesk d;
  const AxisConfig defaults = d.source.program.Axis;
  d.source.Changed = true;
  const bool loaded = LoadText(d.desk, "name", kind, text);
  const Program& program = d.source.program;
  Require(!d.source.Changed, "nothing is unsaved after a load");
  Require(d.source.file_name == (loaded ? "name" : "untitled"), "the caption names what was loaded");
  Require(d.boxes.shown.size() == (loaded ? 0U : 1U), "a damaged file is told once");
  if (!loaded) {
    Require(d.boxes.shown[0].text == "Can't read file name.  File may be damaged.", "in the told words");
    for (int line = 0; line < kLines; ++line) Require(program.Prog[line].Type == NO, "it leaves no lines");
    Require(kind == FileKind::OskelProg || program.Axis == defaults, "nor settings, if it is our own");
  }
  UseProgram(program);
  if (text.size() % kSeldom == 0) ExamineAndSave(text, kind, loaded, program);
}

}  // namespace tavlo::fuzzing
