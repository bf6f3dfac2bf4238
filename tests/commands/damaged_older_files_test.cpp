// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "commands/program_files.h"
#include "model/every_field.h"
#include "model/hand_file.h"
#include "model/items_of_file.h"
#include "oskel_writer.h"
#include "support/fake_desk.h"

namespace tavlo::testing {
namespace {

struct Whole {
  std::string name;
  FileKind kind;
  std::string text;
};

/// A whole file of each version of both programs.
std::vector<Whole> EachVersion() {
  std::vector<Whole> wholes;
  const Program program = ProgramOfDifferentValues(1);
  HandFile file = HandFileOf(program);
  for (const HubRevision& revision : kHubRevisions) {
    file.As(revision);
    const std::string version(revision.version);
    wholes.push_back({"/p/" + version + ".TVH", FileKind::HubProg, version + "\r\n" + file.Body()});
  }
  for (const examples::OskelRevision& revision : examples::kOskelRevisions) {
    wholes.push_back({"/p/" + std::string(revision.version) + ".OSK", FileKind::OskelProg,
                      WriteOskelProg(revision, program, {})});
  }
  return wholes;
}

std::string Wide(const std::string& text) {
  std::string wide = "\xff\xfe";
  for (const char c : text) wide += {c, '\0'};
  return wide;
}

/// The text without its last quote.
std::string WithoutQuote(std::string text) {
  return text.erase(text.rfind('"'), 1);
}

struct Damage {
  const char* what;
  std::string (*to)(const std::string& whole);
};
const Damage kDamages[] = {
    {"empty", [](const std::string&) { return std::string(); }},
    {"version alone", [](const std::string& whole) { return whole.substr(0, whole.find('\n') + 1); }},
    {"cut in a line", [](const std::string& whole) { return whole.substr(0, whole.size() / 3); }},
    {"cut before its end", [](const std::string& whole) { return whole.substr(0, whole.size() - 16); }},
    {"an item replaced by text",
     [](const std::string& whole) {
       return ItemsOfFile(whole).With({{9, "text"}});
     }},
    {"an item left out",
     [](const std::string& whole) {
       return ItemsOfFile(whole).With({{8, ""}});
     }},
    {"a number too large",
     [](const std::string& whole) {
       return ItemsOfFile(whole).With({{8, "1E99"}});
     }},
    {"a quote left out", [](const std::string& whole) { return WithoutQuote(whole); }},
    {"a NUL byte in a number",
     [](const std::string& whole) {
       return ItemsOfFile(whole).With({{8, std::string("1\0", 2)}});
     }},
    {"two bytes a character", [](const std::string& whole) { return Wide(whole); }},
    {"a picture", [](const std::string&) { return std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16); }},
};

/// A desk on which another program stands, not yet saved.
struct DeskWithProgram : FakeDesk {
  explicit DeskWithProgram(const std::vector<int>& jumps) {
    for (const int line : jumps) Line(line).Type = GT;
    source.program.Axis.StepsPerUnit[3] = 77;
    source.file_name = "/p/before.TVH";
    source.Changed = true;
  }
};

TEST(DamagedOlderFile, OfAnyVersionGivesTheOneMessageAndAnEmptyProgramWithoutAName) {
  for (const Whole& whole : EachVersion()) {
    for (const Damage& damage : kDamages) {
      SCOPED_TRACE(whole.name + ", " + damage.what);
      DeskWithProgram d({0, 150});
      d.files.files[whole.name] = damage.to(whole.text);
      EXPECT_FALSE(LoadFile(d.desk, whole.name));
      const ShownBox told{"Can't read file " + whole.name + ".  File may be damaged.", "", Buttons::OK,
                          Icon::None};
      EXPECT_EQ(d.boxes.shown, std::vector<ShownBox>{told});
      EXPECT_EQ(d.loading.log, (std::vector<std::string>{"show", "hide"}));
      EXPECT_FALSE(d.source.Changed);
      EXPECT_EQ(Caption(d.source), "Tavlo Composer  V1.29.1 - untitled");
      for (int line = 0; line < kLines; ++line) {
        EXPECT_EQ(d.Line(line).Type, NO);
        EXPECT_EQ(d.source.shown.rows[static_cast<std::size_t>(line)].desc, "");
        EXPECT_EQ(d.source.shown.rows[static_cast<std::size_t>(line)].frame, kPlainFrame);
      }
      EXPECT_TRUE(d.source.shown.arrows.empty());
      AxisConfig defaults;
      InitHardware(defaults);
      if (whole.kind == FileKind::HubProg) {
        EXPECT_EQ(d.source.program.Axis, defaults);
      } else {
        EXPECT_EQ(d.source.program.Axis.StepsPerUnit[3], 77) << "the other axes keep their settings";
      }
    }
  }
}

TEST(DamagedOlderFile, LeavesADeskOnWhichTheWholeOneLoadsAndIsSaved) {
  for (const Whole& whole : EachVersion()) {
    SCOPED_TRACE(whole.name);
    DeskWithProgram d({0});
    d.files.files[whole.name] = whole.text.substr(0, whole.text.size() / 2);
    EXPECT_FALSE(LoadFile(d.desk, whole.name));
    d.files.files[whole.name] = whole.text;
    EXPECT_TRUE(LoadFile(d.desk, whole.name));
    EXPECT_EQ(d.source.file_name, whole.name);
    EXPECT_EQ(SaveFile(d.desk, "/p/saved.TVH").Why(), "");
    EXPECT_TRUE(LoadFile(d.desk, "/p/saved.TVH"));
    EXPECT_EQ(d.boxes.shown.size(), 1U);
  }
}

}  // namespace
}  // namespace tavlo::testing
