// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "road.h"

namespace tavlo::testing {
namespace {

/// The real companion in the hands of a shell.
class Files : public CompanionRoad {
 protected:
  Files() {
    Line(1).Type = GT;
    Line(1).LineNum = 4;
  }
  /// Runs a script in which $TAVLO is the companion, $FILE a program and $DIR a folder.
  Ended Shell(const char* script) {
    QProcess shell;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TAVLO", QStringLiteral(TAVLO_CLI));
    environment.insert("FILE", File());
    environment.insert("DIR", folder_.path());
    shell.setProcessEnvironment(environment);
    shell.setStandardInputFile(QProcess::nullDevice());
    shell.start("/bin/sh", {"-c", script});
    EXPECT_TRUE(shell.waitForFinished(20000));
    const int code = shell.exitStatus() == QProcess::NormalExit ? shell.exitCode() : -1;
    return {code, shell.readAllStandardOutput().toStdString(), shell.readAllStandardError().toStdString()};
  }
  [[nodiscard]] std::string Path(const char* name) const { return folder_.filePath(name).toStdString(); }
};

TEST_F(Files, ProgramsAndImagesGoThroughPipes) {
  EXPECT_EQ(Shell("$TAVLO compile - -o - <$FILE | $TAVLO decode - -o - | $TAVLO show -"),
            (Ended{0, "1\tGo to line 5\n", ""}));
  EXPECT_EQ(Shell("$TAVLO compile $FILE -o $DIR/image && $TAVLO compile $FILE -o - | cmp - $DIR/image"),
            (Ended{0, "", ""}));
}

TEST_F(Files, AnOldProgramIsLiftedAndComesBackFromItsFileByteForByte) {
  const std::string old_file = std::string(TAVLO_EXAMPLES) + "/old-feeder.OSK";
  const Ended converted = Shell(("$TAVLO convert " + old_file + " $DIR/new.TVH").c_str());
  EXPECT_EQ(converted.code, 0);
  EXPECT_EQ(converted.out, "Converted 11 lines of version 1.5 to " + Path("new.TVH") + " with 2 changes\n");
  EXPECT_EQ(Shell("$TAVLO convert - - <$DIR/new.TVH 2>$DIR/told | cmp - $DIR/new.TVH"), (Ended{0, "", ""}));
  EXPECT_EQ(Shell("cp $DIR/new.TVH $DIR/cut.TVH; truncate -s 9000 $DIR/cut.TVH; "
                  "$TAVLO convert $DIR/cut.TVH $DIR/new.TVH 2>/dev/null || $TAVLO show $DIR/new.TVH | wc -l"),
            (Ended{0, "11\n", ""}));
}

TEST_F(Files, ALimitOnTheSizeOfFilesLeavesTheOldOneAndEndsWithAMessage) {
  EXPECT_EQ(Shell("echo old >$DIR/image; ulimit -f 4; $TAVLO compile $FILE -o $DIR/image"),
            (Ended{4, "", "tavlo: cannot write " + Path("image") + ": File too large\n"}));
  EXPECT_EQ(Shell("cat $DIR/image; ls $DIR"), (Ended{0, "old\nimage\nprogram.TVH\n", ""}));
}

TEST_F(Files, AnOutputThatIsStandardInputIsRefusedAndTheFileStays) {
  EXPECT_EQ(Shell("$TAVLO compile - -o $FILE <$FILE"),
            (Ended{4, "", "tavlo: cannot write " + Path("program.TVH") + ": it is the file that is read\n"}));
  EXPECT_EQ(Shell("$TAVLO compile $FILE -o - >>$FILE"),
            (Ended{4, "", "tavlo: cannot write standard output: it is the file that is read\n"}));
  EXPECT_EQ(Tavlo({"show", folder_.filePath("program.TVH")}), (Ended{0, "1\tGo to line 5\n", ""}));
}

TEST_F(Files, AReasonReadsTheSameInEveryLocale) {
  EXPECT_EQ(Shell("LC_ALL=de_DE.UTF-8 LANGUAGE=de $TAVLO compile $FILE -o $DIR/none/image"),
            (Ended{4, "", "tavlo: cannot write " + Path("none/image") + ": No such file or directory\n"}));
}

TEST_F(Files, AListingOnPagesNeedsNoDisplayAndNoHome) {
  const Ended text = Shell("$TAVLO list $FILE");
  EXPECT_EQ(text.code, 0);
  EXPECT_EQ(Shell("cd / && env -i $TAVLO list $FILE --pdf $DIR/listing.pdf"), text);
  EXPECT_EQ(Shell("head -c 7 $DIR/listing.pdf; tail -c 6 $DIR/listing.pdf"),
            (Ended{0, "%PDF-1.%%EOF\n", ""}));
}

TEST_F(Files, AListingOnPagesTakesThePaperOfTheCountry) {
  constexpr const char* kWidth = "| grep -a -o 'MediaBox .0 0 [0-9]*' | sort -u";
  for (const auto& [locale, width] :
       {std::pair("en_US.UTF-8", "612"), std::pair("de_DE.UTF-8", "595"), std::pair("C", "595")}) {
    const std::string script = std::string("LC_ALL=") + locale + " $TAVLO list $FILE --pdf - " + kWidth;
    EXPECT_EQ(Shell(script.c_str()), (Ended{0, std::string("MediaBox [0 0 ") + width + "\n", ""})) << locale;
  }
}

}  // namespace
}  // namespace tavlo::testing
