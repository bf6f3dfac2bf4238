// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Makes the corpus of each target from the examples and from runs of the simulated hub: `make-corpus
// fuzz/corpus`.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "codegen/compile.h"
#include "hubsim/hub.h"
#include "model/every_field.h"
#include "model/hand_file.h"
#include "model/kept_text.h"
#include "model/line_blocks.h"
#include "model/program_file.h"
#include "oskel_writer.h"
#include "programs.h"
#include "session/run_rows.h"

namespace tavlo {
namespace {

constexpr std::size_t kPiece = 120;
constexpr std::size_t kMostTraffic = 2000;

std::filesystem::path root;

void Write(const std::string& target, const std::string& name, const std::string& bytes) {
  const auto folder = root / target;
  std::filesystem::create_directories(folder);
  std::ofstream(folder / name, std::ios::binary) << bytes;
}

/// Only the slots that hold something, as records over an empty memory.
std::string Records(const std::string& image) {
  std::string records;
  for (std::size_t slot = 0; slot < image.size() / kSlotBytes; ++slot) {
    const std::string bytes = image.substr(slot * kSlotBytes, kSlotBytes);
    const bool empty = slot < kLines ? bytes[0] == 11 : bytes == std::string(kSlotBytes, '\0');
    if (!empty) records += static_cast<char>(slot) + bytes;
  }
  return records;
}

/// What the hub says while this program runs and is acknowledged.
std::string Traffic(const CompiledProgram& compiled, char start) {
  hubsim::Hub hub({});
  std::string sent = "F";
  for (const std::string& line : compiled.lines) sent += line;
  hub.Receive(sent + compiled.system + compiled.pool, 0);
  static_cast<void>(hub.TakeOutput());
  hub.Receive({&start, 1}, 1);
  std::string traffic;
  for (int step = 0; step < 400 && traffic.size() < kMostTraffic; ++step) {
    hub.Receive("I", 1 + step * 0.1);
    if (step == 200) hub.HitLimit(0, 1 + step * 0.1);
    if (step == 300) hub.Fail(1, 33, 1 + step * 0.1);
    traffic += hub.TakeOutput();
  }
  return traffic.substr(0, kMostTraffic);
}

std::string Pieces(const std::string& traffic) {
  std::string pieces;
  for (std::size_t at = 0; at < traffic.size(); at += kPiece) {
    const std::string piece = traffic.substr(at, kPiece);
    pieces += static_cast<char>(piece.size()) + piece;
  }
  return pieces;
}

/// A file of the version with this number, whole or cut, with other items in it.
std::string FileOf(std::size_t version, int cut, const std::vector<std::pair<int, std::string>>& items) {
  std::string file(1, static_cast<char>(version));
  const auto add = [&](int number) {
    file += static_cast<char>(number / 256);
    file += static_cast<char>(number % 256);
  };
  add(cut);
  for (const auto& [item, text] : items) {
    add(item);
    file += static_cast<char>(text.size()) + text;
  }
  return file;
}

/// What an item may hold instead, some of it good in some place.
const std::vector<std::string> kTellingItems = {
    "",      "0",          "-1",          "5",           "13",
    "14",    "18",         "19",          "24",          "26",
    "32767", "32768",      "-32768",      "200",         "201",
    "1000",  "2147483647", "-2147483648", "99999999999", "1E+38",
    "1E39",  "1E-40",      ".5",          "2.5",         "-.5",
    "1.2.3", "#TRUE#",     "#FALSE#",     "#true#",      "\"\"",
    "\"",    "\"a,b\"",    "\"a\r\nb\"",  "nan",         "1,2",
    "\r\n",  "\"a\"b\"",   " 7 ",         "\xff\xfe",    std::string(3, '\0')};

/// Each version whole, some of them cut, and the telling items in places all over a file.
void MakeFiles(const std::string& target, std::size_t versions) {
  constexpr std::size_t kInOneFile = 5;
  constexpr int kItemsApart = 37;
  for (std::size_t version = 0; version < versions; ++version) {
    const std::string number = std::to_string(version);
    Write(target, "version-" + number, FileOf(version, 0, {}));
    if (version % 4 == 0)
      Write(target, "cut-" + number, FileOf(version, 100 + 900 * static_cast<int>(version), {}));
  }
  for (std::size_t first = 0; first < kTellingItems.size(); first += kInOneFile) {
    std::vector<std::pair<int, std::string>> items;
    for (std::size_t i = first; i < std::min(first + kInOneFile, kTellingItems.size()); ++i) {
      for (int place = 0; place < 6; ++place) {
        items.emplace_back(static_cast<int>(i) + 1 + place * kItemsApart, kTellingItems[i]);
      }
    }
    Write(target, "items-" + std::to_string(first), FileOf(first % versions, 0, items));
  }
}

/// A kept text without the sum that the target puts in its place.
std::string WithoutSum(const std::string& text) {
  return text.substr(0, text.rfind('\n', text.size() - 2) + 1);
}

/// For a paste at line 3.
void MakeKept() {
  constexpr char kAt = 2;
  constexpr int kLinesKept = 12;
  for (const auto& example : examples::ExamplePrograms()) {
    const std::string name = std::filesystem::path(example.file_name).stem().string();
    const KeptLines lines = LinesOf(example.program, {.first = 1, .count = 6});
    Write("kept", name + "-lines", kAt + WithoutSum(KeptTextOf(lines)));
  }
  const Program all = testing::ProgramOfDifferentValues(1);
  Program some;
  some.Axis = all.Axis;
  std::copy_n(all.Prog.begin(), kLinesKept, some.Prog.begin());
  Write("kept", "program", kAt + WithoutSum(KeptTextOf({.program = some, .file_name = "some"})));
  RunRow row;
  for (std::string& cell : row.cells) cell = "=\"a\r\n,b\"";
  Write("kept", "run", kAt + CsvHeader() + CsvOf(row) + CsvOf(RunRow()) + "1.000,begin,\"torn");
}

void MakeAll() {
  MakeKept();
  MakeFiles("hubprog", testing::kHubRevisions.size());
  MakeFiles("oskel", examples::kOskelRevisions.size());
  Write("oskel", "old-feeder", examples::OldExampleFile());
  for (const auto& example : examples::ExamplePrograms()) {
    Program program = example.program;
    program.HubVersion = 1.38F;
    const CompiledProgram compiled = CompileProgram(program);
    const std::string image = ImageOf(compiled);
    const std::string name = std::filesystem::path(example.file_name).stem().string();
    const std::string hub = {38, static_cast<char>(program.HubIndex)};
    Write("decoder", name, hub + '\1' + Records(image));
    Write("upload", name, std::string("\x26\x26\x26\0\0\0\0", 7) + '\1' + Records(image));
    Write("receive", name + "-status", "\x81" + Pieces(Traffic(compiled, 'X')));
    Write("receive", name + "-terminal", "\x86" + Pieces(Traffic(compiled, 'M')));
    if (name == "menu") {
      Write("decoder", name + "-whole", hub + '\0' + image);
      Write("hubprog", name, WriteHubProg(example.program, 0));
    }
  }
  const std::string greeting = {'\xFF', 38, 8, 0};
  Write("receive", "greeting-and-faults",
        "\x81\x10" + greeting + std::string("\xFC\x01\0\0\xD3\x02\x01\x05\xEF\x7F\0\0", 12));
  Write("receive", "escapes", "\x86\x12\x1BYE\x1BY# text\b\n\x1BKmore");
  Write("terminal", "answers", "\x0C*OK\r\n12345\r\n" + std::string("\x83\x05") + "1PR1\r" + "\x81\x80");
  Write("terminal", "greeting", std::string("\x08") + "ab" + greeting + "cd" + "\x82\x80");
  Write("terminal", "long-command",
        "\x83\xC8" + std::string(200, 'x') + "\x84\x60" + "\x7F" + std::string(127, 7));
}

}  // namespace
}  // namespace tavlo

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make-corpus FOLDER\n";
    return 2;
  }
  tavlo::root = argv[1];
  tavlo::MakeAll();
  return 0;
}
