// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/companion.h"
#include "support/allowed_size.h"
#include "support/failing_disk.h"

namespace tavlo::testing {
namespace {

/// A command that writes a file, and the file.
struct Writer {
  std::vector<std::string> arguments;
  std::string output;
};

class FullDisk : public Companion {
 protected:
  FullDisk() {
    Line(1).Type = FL;
    PutIntoHub();
    EXPECT_EQ(Tavlo({"compile", File(), "-o", folder.Path("image")}).code, 0);
  }
  [[nodiscard]] std::vector<Writer> Writers() {
    return {{{"compile", File(), "-o", folder.Path("new-image")}, "new-image"},
            {{"decode", folder.Path("image"), "-o", folder.Path("decoded.TVH")}, "decoded.TVH"},
            {{"convert", File(), folder.Path("converted.TVH")}, "converted.TVH"},
            {{"upload", folder.Path("uploaded.TVH"), "--port", "1"}, "uploaded.TVH"}};
  }
  void PutOld(const Writer& writer) const { folder.Write(writer.output, "what is there"); }
  /// Runs the command and holds it to its message and to leaving the old file.
  void ExpectOldFile(const Writer& writer, const std::string& reason) {
    EXPECT_EQ(Tavlo(writer.arguments),
              (Outcome{4, "", "tavlo: cannot write " + folder.Path(writer.output) + ": " + reason + "\n"}));
    EXPECT_EQ(folder.Read(writer.output), "what is there");
  }
  [[nodiscard]] std::ptrdiff_t Files() const {
    return std::distance(std::filesystem::directory_iterator(folder.Path()),
                         std::filesystem::directory_iterator());
  }
};

TEST_F(FullDisk, AtAnyKilobyteTheOldFileStaysWholeAndTheReasonIsTold) {
  for (const Writer& writer : Writers()) {
    ASSERT_EQ(Tavlo(writer.arguments).code, 0);
    const std::string whole = folder.Read(writer.output);
    const auto files = Files();
    for (std::size_t room = 0; room < whole.size(); room += kKilobyte) {
      SCOPED_TRACE(writer.arguments[0] + " with room for " + std::to_string(room));
      PutOld(writer);
      {
        const FailingDisk full({.room = room});
        ExpectOldFile(writer, "No space left on device");
      }
      const AllowedSize allowed(room);
      ExpectOldFile(writer, "File too large");
    }
    const FailingDisk roomy({.room = whole.size()});
    EXPECT_EQ(Tavlo(writer.arguments).code, 0);
    EXPECT_TRUE(folder.Read(writer.output) == whole);
    EXPECT_EQ(Files(), files);
  }
}

TEST_F(FullDisk, EachStepThatFailsLeavesTheOldFileAndIsTold) {
  for (const Writer& writer : Writers()) {
    for (const DiskFaultRow& row : DiskFaultRows()) {
      SCOPED_TRACE(writer.arguments[0] + ": " + row.name);
      PutOld(writer);
      const FailingDisk failing(row.faults);
      ExpectOldFile(writer, row.reason);
      EXPECT_GT(FailingDisk::Failures(), 0);
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
