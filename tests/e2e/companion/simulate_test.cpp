// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QJsonArray>

#include "road.h"

namespace tavlo::testing {
namespace {

/// How a simulation of an example ends.
struct ExampleCase {
  const char* name;
  bool has_script;
  int code;
  const char* ended;
  int lines_that_never_ran;
};

void PrintTo(const ExampleCase& example, std::ostream* out) {
  *out << example.name;
}

class SimulatedExample : public ::testing::TestWithParam<ExampleCase> {};

TEST_P(SimulatedExample, RunsToItsEnd) {
  const ExampleCase& example = GetParam();
  const QString path = QStringLiteral(TAVLO_EXAMPLES "/") + example.name;
  QStringList arguments = {"simulate", path + ".TVH"};
  if (example.has_script) arguments += {"--inputs", path + ".inputs"};
  const Ended rows = TavloProcess(arguments).Wait();
  EXPECT_EQ(rows.code, example.code) << rows.err;
  EXPECT_EQ(rows.err.empty(), example.code == 0) << rows.err;
  EXPECT_NE(rows.out.find("\nTotal\t"), std::string::npos);

  QTemporaryDir folder;
  const Ended document =
      TavloProcess(arguments + QStringList{"--json", "--svg", folder.filePath("a.svg")}).Wait();
  EXPECT_EQ(document.code, example.code);
  const QJsonObject json = QJsonDocument::fromJson(QByteArray::fromStdString(document.out)).object();
  EXPECT_EQ(json["ended"].toString().toStdString(), example.ended);
  EXPECT_GT(json["lines"].toArray().size(), 0);
  EXPECT_EQ(json["neverRan"].toArray().size(), example.lines_that_never_ran);
  QFile picture(folder.filePath("a.svg"));
  ASSERT_TRUE(picture.open(QIODevice::ReadOnly));
  EXPECT_TRUE(picture.readAll().endsWith("</svg>\n"));
}

INSTANTIATE_TEST_SUITE_P(Simulation, SimulatedExample,
                         ::testing::Values(ExampleCase{"cut-to-length", false, 0, "limit", 0},
                                           ExampleCase{"pick-and-place", true, 9, "waits", 2},
                                           ExampleCase{"menu", true, 9, "waits", 1},
                                           ExampleCase{"nested-repeats", false, 0, "end", 0},
                                           ExampleCase{"hub-quad", false, 9, "waits", 5},
                                           ExampleCase{"every-line", false, 9, "waits", 29}),
                         [](const auto& test) {
                           std::string name = test.param.name;
                           std::erase(name, '-');
                           return name;
                         });

class Simulation : public CompanionRoad {};

TEST_F(Simulation, CtrlCEndsARunThatIsPaced) {
  Line(1).Type = SO;
  Line(2).Type = WT;
  Line(2).Time = 32767;
  TavloProcess tavlo({"simulate", File(), "--speedup", "1"});
  ASSERT_TRUE(tavlo.Says("Ctrl-C ends it"));
  tavlo.Signal(SIGINT);
  const Ended ended = tavlo.Wait();
  EXPECT_EQ(ended.code, 130);
  EXPECT_EQ(ended.err, "tavlo: the simulation runs; Ctrl-C ends it\ntavlo: interrupted\n");
}

TEST_F(Simulation, TakesTheProgramOrTheScriptFromAPipe) {
  Line(1).Type = WI;
  Line(1).State = 1;
  const QString script = folder_.filePath("script");
  QFile file(script);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("at 1 axis 1 input 1 low\n");
  file.close();
  const Ended from_file = Tavlo({"simulate", File(), "--inputs", script});
  EXPECT_EQ(from_file.code, 0) << from_file.err;
  EXPECT_EQ(TavloProcess({"simulate", File(), "--inputs", "-"}, script).Wait(), from_file);
  EXPECT_EQ(TavloProcess({"simulate", "-", "--inputs", script}, File()).Wait(), from_file);
}

TEST_F(Simulation, AReaderThatHasSeenEnoughEndsIt) {
  Line(1).Type = WT;
  Line(1).Time = 1;
  Line(2).Type = GT;
  QProcess shell;
  shell.setStandardInputFile(QProcess::nullDevice());
  shell.start("/bin/sh",
              {"-c", QStringLiteral("{ " TAVLO_CLI " simulate ") + File() + "; echo $? >&2; } | head -1"});
  ASSERT_TRUE(shell.waitForFinished(20000));
  EXPECT_EQ(shell.readAllStandardOutput().count('\n'), 1);
  EXPECT_EQ(shell.readAllStandardError().toStdString(), "tavlo: the result could not be written\n1\n");
}

}  // namespace
}  // namespace tavlo::testing
