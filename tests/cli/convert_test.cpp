// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <nlohmann/json.hpp>

#include "cli/companion.h"
#include "model/hand_file.h"
#include "oskel_writer.h"
#include "programs.h"

namespace tavlo::testing {
namespace {

using examples::kOskelRevisions;
using examples::OskelRevision;

class ConvertCommand : public Companion {
 protected:
  [[nodiscard]] std::string New() const { return folder.Path("new.TVH"); }
  Outcome Convert(const std::string& old_file, std::vector<std::string> more = {}) {
    std::vector<std::string> arguments = {"convert", old_file, New()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Tavlo(arguments);
  }
  /// The program in a file of an older version of the Composer.
  std::string Older(const HubRevision& revision) {
    HandFile file = HandFileOf(program);
    file.As(revision);
    return folder.Write("old.TVH", std::string(revision.version) + "\r\n" + file.Body());
  }
  std::string Old(const OskelRevision& revision = kOskelRevisions.back(),
                  const examples::OskelSettings& settings = {}) {
    return folder.Write("old.OSK", WriteOskelProg(revision, program, settings));
  }
  /// What the Composer makes of a file.
  std::string Shown(const std::string& path) { return Tavlo({"show", path}).out; }

  const std::string drive_note =
      "tavlo: axis 1: the file does not name its drive model; Oskel-A was taken: choose the machine's in the "
      "Composer\n";
};

TEST_F(ConvertCommand, LiftsEachVersionOfTheComposerToTheProgramThatItLoadsAs) {
  Line(1).Type = FL;
  Line(5).Type = GT;
  Line(200).Type = WT;
  for (const HubRevision& revision : kHubRevisions) {
    if (ParseRevision(revision.version) > ParseRevision("1.29.1")) continue;
    SCOPED_TRACE(revision.version);
    const std::string old_file = Older(revision);
    EXPECT_EQ(Convert(old_file), (Outcome{0,
                                          "Converted 3 lines of version " + std::string(revision.version) +
                                              " to " + New() + " without a change\n",
                                          ""}));
    EXPECT_EQ(folder.Read("new.TVH"), WriteHubProg(program, 0));
    EXPECT_EQ(Shown(New()), Shown(old_file));
  }
}

TEST_F(ConvertCommand, GivesAFileThatWasSavedWithoutAPortOneAndTakesNoOtherDamage) {
  Line(1).Type = FL;
  const std::string text = WriteHubProg(program, std::nullopt);
  const std::string old_file = folder.Write("old.TVH", text);
  EXPECT_EQ(Tavlo({"show", old_file}).code, 4) << "it reads as damaged";
  EXPECT_EQ(Convert(old_file),
            (Outcome{0, "Converted 1 line of version 1.29.1 to " + New() + " with 1 change\n",
                     "tavlo: the file was saved without a comm port, and holds Comm 1 now\n"}));
  EXPECT_EQ(folder.Read("new.TVH"), WriteHubProg(program, 0));
  const auto result = nlohmann::json::parse(Convert(old_file, {"--json"}).out);
  EXPECT_EQ(result["changes"][0]["line"], nullptr);
  EXPECT_EQ(result["changes"][0]["axis"], nullptr);
  for (std::size_t end = text.size() - 200; end < text.size(); ++end) {
    EXPECT_EQ(Convert(folder.Write("cut.TVH", text.substr(0, end))).code, 4) << end;
  }
  const std::string with_port = WriteHubProg(program, 3);
  for (std::size_t end = with_port.size() - 200; end < with_port.size() - 2; ++end) {
    EXPECT_EQ(Convert(folder.Write("cut.TVH", with_port.substr(0, end))).code, 4) << end;
  }
}

TEST_F(ConvertCommand, LiftsEachVersionOfTheEarlierProgrammerToTheProgramThatItLoadsAs) {
  Line(1).Type = FL;
  Line(29).Type = CM;
  Line(29).Text = "the end";
  for (const OskelRevision& revision : kOskelRevisions) {
    SCOPED_TRACE(revision.version);
    const std::string old_file = Old(revision);
    EXPECT_EQ(Convert(old_file), (Outcome{0,
                                          "Converted 2 lines of version " + std::string(revision.version) +
                                              " to " + New() + " without a change\n",
                                          drive_note}));
    EXPECT_TRUE(folder.Read("new.TVH").starts_with("1.29.1\r\n 8 \r\n0,0\r\n"));
    EXPECT_EQ(Shown(New()), Shown(old_file));
  }
}

TEST_F(ConvertCommand, WhatItWritesIsTheSameByteForByteOnceItHasBeenLoadedAndSaved) {
  Line(1).Type = FE;
  Line(2).Type = CM;
  Line(2).Text = std::string(40, 'c');
  Line(3).Type = MMI;
  Line(3).Text = "a\r\nb";
  EXPECT_EQ(Convert(Old()).code, 0);
  const std::string first = folder.Read("new.TVH");
  EXPECT_EQ(Tavlo({"convert", New(), folder.Path("again.TVH")}).err, "");
  EXPECT_EQ(folder.Read("again.TVH"), first);
}

TEST_F(ConvertCommand, TellsEachLineAndSettingOfAnOldFileWhoseMeaningChanged) {
  Line(3).Type = FE;
  Line(4).Type = CM;
  Line(4).Text = std::string(28, 'c');
  Line(8).Type = SO;
  Line(8).Time = 4;
  Line(9).Type = FLSO;
  Line(9).Time = 5;
  const std::string old_file =
      Old(kOskelRevisions.back(), {.drive_code = 2, .current = 255, .use_units = false});
  EXPECT_EQ(Convert(old_file),
            (Outcome{0, "Converted 4 lines of version 10.2 to " + New() + " with 5 changes\n",
                     "tavlo: line 3: the hand wheel instruction became a comment\n"
                     "tavlo: line 4: the comment was cut to 27 characters\n"
                     "tavlo: line 8: the pulse became 5 ms, the shortest there is\n"
                     "tavlo: axis 1: lengths count in units, no longer in steps\n"
                     "tavlo: axis 1: the current became 5.50 A, the highest of the drive model Oskel-A\n" +
                         drive_note}));
}

TEST_F(ConvertCommand, TellsEachLineAndSettingOfAnOlderFileWhoseMeaningChanged) {
  Line(1).Type = SH;
  Line(1).IONum = 6;
  Line(2).Type = FS;
  Line(2).IONum = 8;
  Line(3).Type = CM;
  Line(3).Text = std::string(40, 'c');
  Line(4).Type = FE;
  program.Axis.DriveModel[6] = 7;
  program.Axis.DriveCurrent[6] = 9;
  program.Axis.UseUnits[1] = false;
  const std::string notes =
      "tavlo: line 1: the input became X0, as the drive's own inputs are counted now\n"
      "tavlo: line 2: the input became X0, as the drive's own inputs are counted now\n"
      "tavlo: line 3: the comment was cut to 27 characters\n"
      "tavlo: axis 2: lengths count in units, no longer in steps\n"
      "tavlo: axis 7: the current became 1.20 A, the highest of the drive model Tarn-C\n";
  EXPECT_EQ(Convert(Older({"1.22", 9, 3, true, true, true})),
            (Outcome{0, "Converted 4 lines of version 1.22 to " + New() + " with 5 changes\n", notes}));
  const auto json = nlohmann::json::parse(Convert(Older({"1.22", 9, 3, true, true, true}), {"--json"}).out);
  EXPECT_EQ(json["version"], "1.22");
  EXPECT_EQ(json["lineCount"], 4);
  EXPECT_EQ(json["file"], New());
  ASSERT_EQ(json["changes"].size(), 5U);
  EXPECT_EQ(
      json["changes"][0].dump(),
      R"({"axis":null,"change":"the input became X0, as the drive's own inputs are counted now","line":1})");
  EXPECT_EQ(json["changes"][4]["axis"], 7);
  EXPECT_EQ(json["changes"][4]["line"], nullptr);
}

TEST_F(ConvertCommand, ADamagedFileIsToldAndWritesNothing) {
  const struct {
    std::string name;
    std::string text;
  } files[] = {{"old.OSK", WriteOskelProg(kOskelRevisions.back(), program, {})},
               {"old.TVH", WriteHubProg(program, 0)}};
  for (const auto& file : files) {
    for (const bool replaces : {false, true}) {
      if (replaces) folder.Write("new.TVH", "what is there");
      const std::string old_file = folder.Write(file.name, file.text.substr(0, file.text.size() / 2));
      EXPECT_EQ(Convert(old_file),
                (Outcome{4, "", "Can't read file " + old_file + ".  File may be damaged.\n"}));
      EXPECT_EQ(std::filesystem::exists(New()), replaces);
      if (replaces) {
        EXPECT_EQ(folder.Read("new.TVH"), "what is there");
      }
    }
    std::filesystem::remove(New());
  }
}

TEST_F(ConvertCommand, WhatIsNoProgramOrIsUnderTheOthersNameIsRefused) {
  const std::string picture = folder.Write("picture.OSK", "\x89PNG\r\n");
  EXPECT_EQ(Convert(picture), (Outcome{4, "", "tavlo: " + picture + ": is not a program file\n"}));
  const std::string own = folder.Write("own.OSK", WriteHubProg(program, 0));
  EXPECT_EQ(
      Convert(own),
      (Outcome{4, "",
               "tavlo: " + own + ": is a program of the Composer, but its name does not end in .TVH\n"}));
  const std::string later = folder.Write("later.TVH", "2" + WriteHubProg(program, 0).substr(1));
  EXPECT_EQ(Convert(later).code, 4);
  EXPECT_EQ(Convert(folder.Path("none.OSK")).code, 4);
  EXPECT_FALSE(std::filesystem::exists(New()));
}

TEST_F(ConvertCommand, NeitherWritesOntoItsSourceNorUnderAnotherEnding) {
  const std::string file = File();
  const std::string before = folder.Read("program.TVH");
  EXPECT_EQ(Tavlo({"convert", file, file}),
            (Outcome{4, "", "tavlo: cannot write " + file + ": it is the file that is read\n"}));
  EXPECT_EQ(folder.Read("program.TVH"), before);
  EXPECT_EQ(Tavlo({"convert", file, folder.Path("new.OSK")}).code, 2);
  EXPECT_EQ(Tavlo({"convert", file}).code, 2);
  EXPECT_EQ(Tavlo({"convert", file, "-", "--json"}).code, 2);
}

TEST_F(ConvertCommand, WritesToStandardOutputAndTellsElsewhere) {
  Line(1).Type = FL;
  const Outcome outcome = Tavlo({"convert", File(), "-"});
  EXPECT_EQ(outcome.out, WriteHubProg(program, 0));
  EXPECT_EQ(outcome.err, "Converted 1 line of version 1.29.1 to standard output without a change\n");
}

TEST_F(ConvertCommand, TheOldExampleLoadsUnderItsNewName) {
  EXPECT_EQ(Convert(folder.Write("feeder.OSK", examples::OldExampleFile())),
            (Outcome{0, "Converted 11 lines of version 1.5 to " + New() + " with 2 changes\n",
                     "tavlo: line 3: the hand wheel instruction became a comment\n"
                     "tavlo: line 8: the pulse became 5 ms, the shortest there is\n" +
                         drive_note}));
  EXPECT_EQ(Tavlo({"check", New()}).code, 0);
}

}  // namespace
}  // namespace tavlo::testing
