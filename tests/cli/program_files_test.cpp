// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/program_files.h"

#include <unistd.h>

#include <array>

#include "cli/companion.h"
#include "cli/console/standard_input.h"
#include "cli/piecewise_feed.h"
#include "model/hand_file.h"
#include "model/old_file.h"

namespace tavlo::testing {
namespace {

class ProgramFiles : public Companion {
 protected:
  static std::string OldProgram(const std::string& drive_code = "1") {
    return "1.2\r\n" + OldFile(drive_code, 100, {13, "\"from before\""}, {}, "51,0,8,1,100");
  }
  std::string Image() {
    EXPECT_EQ(Tavlo({"compile", File(), "-o", folder.Path("image")}).code, 0);
    return folder.Path("image");
  }
  /// What a command that reads the file tells of it.
  Outcome Show(const std::string& name, const std::string& contents) {
    return Tavlo({"show", folder.Write(name, contents)});
  }
  Outcome Refused(const std::string& name, const std::string& reason) const {
    return {4, "", "tavlo: " + folder.Path(name) + ": " + reason + "\n"};
  }
  /// Gives the commands this as their standard input, in pieces.
  void Feed(const std::string& bytes) {
    constexpr std::size_t kPiece = 1000;
    input = PiecewiseFeed();
    for (std::size_t at = 0; at < bytes.size(); at += kPiece)
      input.pieces.push_back(bytes.substr(at, kPiece));
    input.ended = true;
    feed = &input;
  }

  PiecewiseFeed input;
};

TEST_F(ProgramFiles, AFileThatIsNoProgramSaysSo) {
  for (const char* name : {"a.TVH", "a.OSK", "a.txt"}) {
    for (const std::string& contents :
         {std::string(), std::string("rubbish"), std::string("\x89PNG\r\n\x1a\n"), std::string(8192, '\0'),
          std::string("1.5 litres, 3 eggs\n"), std::string("\r\n1.29.1\r\n 8 \r\n")}) {
      EXPECT_EQ(Show(name, contents), Refused(name, "is not a program file"));
    }
  }
  Image();
  EXPECT_EQ(Tavlo({"compile", folder.Path("image")}), Refused("image", "is not a program file"));
}

TEST_F(ProgramFiles, ADamagedFileHasTheWordsOfTheComposersBox) {
  const std::string own = folder.Read(std::filesystem::path(File()).filename());
  for (const std::string& contents : {own.substr(0, own.size() - 40), OldProgram().substr(0, 500)}) {
    for (const char* name : {"a.TVH", "a.OSK"}) {
      EXPECT_EQ(Show(name, contents),
                (Outcome{4, "", "Can't read file " + folder.Path(name) + ".  File may be damaged.\n"}));
    }
  }
}

TEST_F(ProgramFiles, ANameWhoseEndingIsTheCauseIsTold) {
  const std::string own = folder.Read(std::filesystem::path(File()).filename());
  for (const char* name : {"a.OSK", "a.txt", "a", "a.TVH.bak"}) {
    EXPECT_EQ(Show(name, own),
              Refused(name, "is a program of the Composer, but its name does not end in .TVH"));
  }
  EXPECT_EQ(Show("a.TVH", OldProgram()),
            Refused("a.TVH", "is a program of the earlier programmer, but its name does not end in .OSK"));
  EXPECT_EQ(Show("a.OSK", OldProgram()).code, 0);
}

TEST_F(ProgramFiles, WhatFollowsTheLastRecordIsWorthAWarning) {
  Line(1).Type = WT;
  Line(1).Time = 500;
  const std::string own = folder.Read(std::filesystem::path(File()).filename());
  EXPECT_EQ(
      Show("a.TVH", own + "0,11\r\n"),
      (Outcome{0, "1\tWait 0.5 seconds\n",
               "tavlo: " + folder.Path("a.TVH") + ": something follows the last record; it is not read\n"}));
  EXPECT_EQ(Show("a.TVH", own + "\r\n\x1a"), (Outcome{0, "1\tWait 0.5 seconds\n", ""}));
}

TEST_F(ProgramFiles, AVersionThatThereIsNotIsRefusedWithItsValue) {
  const std::string own = HandFile().Body();
  const auto there_is_no = [](const std::string& version) {
    return "there is no version '" + version + "'; the newest is 1.29.1";
  };
  for (const char* version : {"1.30", "1.29.2", "2.0", "-1", "1E999", "new"}) {
    EXPECT_EQ(Show("a.TVH", std::string(version) + "\r\n" + own), Refused("a.TVH", there_is_no(version)));
  }
  EXPECT_EQ(Show("a.TVH", std::string(1000, '9') + "\r\n" + own),
            Refused("a.TVH", "there is no version '" + std::string(40, '9') + "...'; the newest is 1.29.1"));
  EXPECT_EQ(Show("a.TVH", "1.31\r\nin a form that nobody knows"), Refused("a.TVH", there_is_no("1.31")))
      << "a newer file is not told as damaged";
  EXPECT_EQ(Show("a.TVH", "1.29.1\r\n" + own).code, 0);
}

TEST_F(ProgramFiles, AHubCodeAndADriveModelThatThereAreNotAreRefusedWithTheirValues) {
  HandFile file;
  for (const char* code : {"0", "7", "-8", "255"}) {
    file.hub = code;
    EXPECT_EQ(Show("a.TVH", "1.29.1\r\n" + file.Body()),
              Refused("a.TVH", "there is no hub with the code " + std::string(code)));
  }
  for (const char* code : {"1", "8", "24"}) {
    file.hub = code;
    EXPECT_EQ(Show("a.TVH", "1.29.1\r\n" + file.Body()).code, 0) << code;
  }
  file.axes[2].settings.replace(0, 1, "51");
  file.axes[7].settings.replace(0, 1, "-1");
  const std::string name = "tavlo: " + folder.Path("a.TVH");
  EXPECT_EQ(Show("a.TVH", "1.29.1\r\n" + file.Body()),
            (Outcome{4, "",
                     name + ": axis 3 has the drive model 51, which there is not\n" + name +
                         ": axis 8 has the drive model -1, which there is not\n"}));
  EXPECT_EQ(Show("a.OSK", OldProgram("77")), Refused("a.OSK", "there is no drive model 77"));
}

TEST_F(ProgramFiles, EveryCommandThatReadsAProgramRefusesWhatIsNone) {
  const std::string file = folder.Write("a.TVH", "rubbish");
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"show", file},
                                             {"check", file},
                                             {"compile", file},
                                             {"download", file, "--port", "1"},
                                             {"verify", file, "--port", "1"},
                                             {"run", file, "--port", "1"}}) {
    EXPECT_EQ(Tavlo(arguments), Refused("a.TVH", "is not a program file")) << arguments[0];
    EXPECT_EQ(hub.port.sent, "");
  }
}

TEST_F(ProgramFiles, AProgramComesFromStandardInputAsFromAFile) {
  Line(1).Type = CM;
  Line(1).Text = "a\xB5";
  const std::string file = File();
  for (const char* command : {"show", "check", "compile"}) {
    Feed(folder.Read("program.TVH"));
    EXPECT_EQ(Tavlo({command, "-"}), Tavlo({command, file})) << command;
  }
  Feed(folder.Read("program.TVH"));
  EXPECT_EQ(Tavlo({"download", "-", "--port", "1"}).code, 0);
  Feed(folder.Read("program.TVH"));
  EXPECT_EQ(Tavlo({"verify", "-", "--port", "1"}).out, "The hub holds this program\n");
}

TEST_F(ProgramFiles, WhatStandardInputHoldsInsteadIsTold) {
  const std::string name = "tavlo: standard input: ";
  feed = nullptr;
  EXPECT_EQ(Tavlo({"show", "-"}), (Outcome{4, "", name + "is not a program file\n"}));
  Feed("");
  EXPECT_EQ(Tavlo({"show", "-"}), (Outcome{4, "", name + "is not a program file\n"}));
  Feed(OldProgram());
  EXPECT_EQ(Tavlo({"show", "-"}), (Outcome{4, "",
                                           name + "is a program of the earlier programmer, but its name does "
                                                  "not end in .OSK\n"}));
  Feed("1.29.1\r\n 8 \r\n");
  EXPECT_EQ(Tavlo({"show", "-"}),
            (Outcome{4, "", "Can't read file standard input.  File may be damaged.\n"}));
  Feed(std::string(8191, '\0'));
  EXPECT_EQ(Tavlo({"decode", "-", "-o", folder.Path("b.TVH")}),
            (Outcome{4, "", name + "has 8191 bytes; an image of the hub's memory has 8192\n"}));
}

TEST_F(ProgramFiles, ImagesAndProgramsPassThroughStandardInputAndOutputByteForByte) {
  Line(1).Type = MMI;
  Line(1).Text = "\xB5 \x01";
  Line(2).Type = FL;
  const std::string image = [&] { return Image(), folder.Read("image"); }();
  const Outcome compiled = Tavlo({"compile", File(), "-o", "-"});
  EXPECT_TRUE(compiled == (Outcome{0, image, ""}));
  ASSERT_EQ(Tavlo({"decode", folder.Path("image"), "-o", folder.Path("decoded.TVH")}).code, 0);
  Feed(image);
  EXPECT_TRUE(Tavlo({"decode", "-", "-o", "-"}) == (Outcome{0, folder.Read("decoded.TVH"), ""}));
  PutIntoHub();
  ASSERT_EQ(Tavlo({"upload", folder.Path("up.TVH"), "--port", "1"}).code, 0);
  const Outcome uploaded = Tavlo({"upload", "-", "--port", "1"});
  EXPECT_EQ(uploaded.code, 0);
  EXPECT_TRUE(uploaded.out == folder.Read("up.TVH"));
  EXPECT_EQ(uploaded.err, "Uploaded 2 lines from the Tavlo Hub-Octo, firmware 1.38, to standard output\n");
}

TEST_F(ProgramFiles, ResultsAndAnOutputDoNotShareStandardOutput) {
  const Outcome refused{
      2, "{\"error\":{\"code\":2,\"message\":\"--json and an output of - both want standard output\"}}\n",
      "tavlo: --json and an output of - both want standard output\n"};
  EXPECT_EQ(Tavlo({"compile", File(), "-o", "-", "--json"}), refused);
  EXPECT_EQ(Tavlo({"decode", Image(), "-o", "-", "--json"}), refused);
  EXPECT_EQ(Tavlo({"upload", "-", "--port", "1", "--json"}), refused);
  EXPECT_EQ(hub.port.sent, "");
}

TEST_F(ProgramFiles, AnOutputThatIsTheInputIsRefusedByWhateverNameItGoes) {
  const std::string file = File();
  const std::string before = folder.Read("program.TVH");
  std::filesystem::create_directory(folder.Path("sub"));
  std::filesystem::create_symlink("program.TVH", folder.Path("link.TVH"));
  std::filesystem::create_hard_link(file, folder.Path("hard.TVH"));
  std::filesystem::create_symlink(folder.Path(), folder.Path("sub/up"));
  const std::vector<std::string> names = {file,
                                          folder.Path("./program.TVH"),
                                          folder.Path("sub/../program.TVH"),
                                          folder.Path("sub/up/program.TVH"),
                                          folder.Path("link.TVH"),
                                          folder.Path("hard.TVH"),
                                          std::filesystem::relative(file).string()};
  for (const std::string& name : names) {
    const Outcome refused{4, "", "tavlo: cannot write " + name + ": it is the file that is read\n"};
    EXPECT_EQ(Tavlo({"compile", file, "-o", name}), refused);
    EXPECT_EQ(Tavlo({"compile", name, "-o", file}).code, 4);
    EXPECT_EQ(Tavlo({"decode", file, "-o", name}), refused);
    EXPECT_TRUE(folder.Read("program.TVH") == before);
  }
  EXPECT_EQ(Tavlo({"compile", file, "-o", folder.Path("other")}).code, 0);
  EXPECT_EQ(Tavlo({"compile", "/dev/null", "-o", "/dev/null"}).err,
            "tavlo: /dev/null: is not a program file\n")
      << "a device is no file that could be lost";
}

TEST_F(ProgramFiles, AnOutputOntoADeviceThatTakesNothingIsToldAndAFolderToo) {
  EXPECT_EQ(Tavlo({"compile", File(), "-o", "/dev/full"}),
            (Outcome{4, "", "tavlo: cannot write /dev/full: No space left on device\n"}));
  EXPECT_EQ(Tavlo({"compile", File(), "-o", folder.Path()}),
            (Outcome{4, "", "tavlo: cannot write " + folder.Path() + ": Is a directory\n"}));
}

TEST(ReadToEnd, WaitsForEachPieceOfAPipeAndTakesNoMoreThanAskedFor) {
  class PipeFeed : public cli::Feed {
   public:
    explicit PipeFeed(int descriptor) : descriptor_(descriptor) {}
    [[nodiscard]] bool IsTerminal() const override { return false; }
    [[nodiscard]] int Descriptor() const override { return descriptor_; }
    [[nodiscard]] std::optional<std::string> Read() override {
      // Nothing is there yet at every other look.
      if (std::exchange(looked_, !looked_)) return "";
      std::array<char, 100> bytes{};
      const ssize_t count = read(descriptor_, bytes.data(), bytes.size());
      return count > 0 ? std::optional(std::string(bytes.data(), static_cast<std::size_t>(count)))
                       : std::nullopt;
    }

   private:
    int descriptor_;
    bool looked_ = true;
  };
  const std::string sent(250, '\0');
  for (const std::size_t limit : {std::size_t{1000}, std::size_t{250}, std::size_t{130}, std::size_t{0}}) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ASSERT_EQ(write(ends[1], sent.data(), sent.size()), static_cast<ssize_t>(sent.size()));
    close(ends[1]);
    PipeFeed feed(ends[0]);
    EXPECT_EQ(cli::ReadToEnd(feed, limit), sent.substr(0, limit));
    close(ends[0]);
  }
}

}  // namespace
}  // namespace tavlo::testing
