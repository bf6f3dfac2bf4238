// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Downloads and uploads over a line on which each byte in turn suffers each fault, in simulated time. What
// comes of it is the proof or a told failure, and the next operation works.
#include <gtest/gtest.h>

#include <cmath>
#include <iostream>

#include "codegen/compile.h"
#include "codegen/generated_program.h"
#include "link/com_port.h"
#include "link/download.h"
#include "link/drive_check.h"
#include "link/polled.h"
#include "link/upload.h"
#include "model/program_queries.h"
#include "programs.h"
#include "road/faulty_line.h"
#include "support/send_program.h"

namespace tavlo::testing {
namespace {

/// What a hub of firmware 1.38 with eight axes says of itself.
const std::string kIdentity = {38, 8};
constexpr float kFirmware = 1.38F;
/// Longer than the hub and the PC wait for anything in a download, and in an upload.
constexpr double kDownloadDelay = 1.3;
constexpr double kUploadDelay = 6;
/// After a fault the line is left alone until everything late has come, a whole memory included.
constexpr double kQuietSeconds = 8;
constexpr double kLongestOperation = 15;
constexpr int kCleanOperationEvery = 10;
constexpr int kComplaintsShown = 5;

enum class Operation { Download, Upload };
enum class Size { Tiny, Example, Big };

struct Sweep {
  const char* name;
  Operation operation;
  Way way;
  Size size;
};

constexpr std::array kSweeps = {
    Sweep{"DownloadOfATinyProgramToTheHub", Operation::Download, Way::ToHub, Size::Tiny},
    Sweep{"DownloadOfATinyProgramFromTheHub", Operation::Download, Way::FromHub, Size::Tiny},
    Sweep{"DownloadOfAnExampleToTheHub", Operation::Download, Way::ToHub, Size::Example},
    Sweep{"DownloadOfAnExampleFromTheHub", Operation::Download, Way::FromHub, Size::Example},
    Sweep{"DownloadOfABigProgramToTheHub", Operation::Download, Way::ToHub, Size::Big},
    Sweep{"DownloadOfABigProgramFromTheHub", Operation::Download, Way::FromHub, Size::Big},
    Sweep{"UploadOfATinyProgramToTheHub", Operation::Upload, Way::ToHub, Size::Tiny},
    Sweep{"UploadOfATinyProgramFromTheHub", Operation::Upload, Way::FromHub, Size::Tiny},
    Sweep{"UploadOfAnExampleToTheHub", Operation::Upload, Way::ToHub, Size::Example},
    Sweep{"UploadOfAnExampleFromTheHub", Operation::Upload, Way::FromHub, Size::Example},
    Sweep{"UploadOfABigProgramToTheHub", Operation::Upload, Way::ToHub, Size::Big},
    Sweep{"UploadOfABigProgramFromTheHub", Operation::Upload, Way::FromHub, Size::Big},
};

constexpr std::array kPlainFaults = {LineFault::Drop,      LineFault::Duplicate, LineFault::Echo,
                                     LineFault::ExtraByte, LineFault::ExtraZero, LineFault::Delay,
                                     LineFault::PortGone};

/// Where the wire itself cannot do better. docs/hub-protocol.md tells each with its case.
enum class Blind {
  ZeroByte,          ///< a 0 more or less does not change the sum, and a text takes it in
  MisheardIdentity,  ///< the answer to "C" carries no sum
  BehindTheSum,      ///< what comes behind the proof is not proven: noise there may be an "F"
  LeftPassing,  ///< the end of the drives' set-up got lost: the hub hears nothing until its next power-up
  LateCommand,  ///< bytes of a transfer that the hub has given up are commands to it
};
constexpr std::array<const char*, 5> kBlindNames = {"zero byte", "misheard identity", "behind the sum",
                                                    "left passing", "late command"};

Program ProgramOf(Size size) {
  Program program = NewProgram();
  switch (size) {
    case Size::Tiny:
      program.Prog[0].Type = FL;
      program.Prog[0].Dist = 70000;
      program.Prog[1].Type = WT;
      break;
    case Size::Example:
      for (const auto& example : examples::ExamplePrograms()) {
        if (example.file_name == "menu.TVH") program = example.program;
      }
      break;
    case Size::Big:
      program = ProgramGenerator(7).Make();
      for (Instruction& line : program.Prog) {
        // The wire cannot tell the text form of a knob line from the plain one in every case.
        if (line.Type == FE) line.Type = CM;
      }
      break;
  }
  program.HubVersion = kFirmware;
  program.HubIndex = HubOcto;
  program.MMIused = ProgHasMMI(program);
  return program;
}

int SentBy(const CompiledProgram& compiled) {
  std::size_t bytes = compiled.system.size() + compiled.pool.size();
  for (const std::string& line : compiled.lines) bytes += line.size();
  return static_cast<int>(bytes);
}

class FaultSweep : public ::testing::TestWithParam<Sweep> {
 protected:
  void SetUp() override {
    program_ = ProgramOf(GetParam().size);
    // Late bytes may read as a halt; the operator does not reset the hub for it.
    d_.boxes.on_box = [this](const ShownBox& box) {
      if (box.buttons == Buttons::YesNo) d_.boxes.answers.assign(1, Answer::No);
    };
    // Fields that an upload does not carry keep these.
    before_.Prog[0].Dist = 12345;
    before_.Prog[0].LineNum = 99;
    const CompiledProgram compiled = CompileProgram(program_);
    image_ = ImageOf(compiled);
    // "F", the program, "K", and before them the handler's "S" and "C".
    set_up_at_ = static_cast<std::size_t>(SentBy(compiled) + 2 + (ByHandler() ? 2 : 0));
  }

  [[nodiscard]] bool Uploads() const { return GetParam().operation == Operation::Upload; }
  /// The generated program is none that the checks let through, so only its transfer is swept.
  [[nodiscard]] bool ByHandler() const { return GetParam().size != Size::Big; }
  [[nodiscard]] double Delay() const { return Uploads() ? kUploadDelay : kDownloadDelay; }

  /// A wait across midnight lasts until its answer comes, whatever the line does; the sweep keeps out of its
  /// way.
  void KeepOffMidnight() {
    constexpr double kDay = 86400;
    constexpr double kMargin = 200;
    if (std::fmod(d_.clock.now, kDay) > kDay - kMargin) d_.clock.now += 2 * kMargin;
  }

  /// A hub that holds the program for an upload, one that holds nothing for a download.
  void Prepare() {
    KeepOffMidnight();
    if (!Uploads()) {
      d_.line.FreshHub();
    } else if (d_.ImageInHub() != image_) {
      d_.line.FreshHub();
      d_.source.program = program_;
      ASSERT_EQ(SendProgram(d_.road, kFirmware), DownloadResult::Done);
    }
    if (!Uploads()) {
      d_.source.program = program_;
    } else if (!as_before_) {
      d_.source.program = before_;
    }
    as_before_ = false;
    d_.line.Start(std::nullopt);
    d_.Forget();
  }

  bool Operate() {
    if (Uploads()) return Upload(d_.road) == UploadResult::Done;
    if (ByHandler()) return Download(d_.road) == DownloadResult::Done;
    return SendProgram(d_.road, kFirmware) == DownloadResult::Done;
  }

  [[nodiscard]] bool Same(const Program& read, const Program& expected) const {
    return read.Prog == expected.Prog && read.Axis == expected.Axis && read.LimitList == expected.LimitList &&
           read.LimitBranch == expected.LimitBranch;
  }
  bool Proven() { return Uploads() ? Same(d_.source.program, uploaded_) : d_.ImageInHub() == image_; }

  /// The fault falls on a question who the hub is or on its answer, or into what is taken for the answer.
  [[nodiscard]] bool AtIdentity(const FaultPlan& plan) const {
    if (!Uploads()) return ByHandler() && plan.at < 2;
    return plan.way == Way::ToHub || plan.at < 4 || plan.at >= 4 + kUploadBytes - 1 ||
           plan.fault == LineFault::Echo;
  }
  [[nodiscard]] bool InSetUp(const FaultPlan& plan) const {
    return !Uploads() && plan.way == Way::ToHub && plan.at >= set_up_at_;
  }
  [[nodiscard]] bool ZeroMoreOrLess(const FaultPlan& plan) const {
    const bool copies = plan.fault == LineFault::Duplicate || plan.fault == LineFault::Drop;
    return !Uploads() && plan.way == Way::ToHub &&
           (plan.fault == LineFault::ExtraZero || (copies && d_.line.Struck() == '\0'));
  }

  /// An echo comes in front of the next answer, so it needs one that is waited for.
  [[nodiscard]] bool EchoMatters(std::size_t at) const {
    if (GetParam().way == Way::ToHub) return false;
    return !Uploads() || at < 4 || at >= 4 + kUploadBytes - 1;
  }

  void Complain(const FaultPlan& plan, const std::string& what) {
    if (++complaints_ > kComplaintsShown) return;
    ADD_FAILURE() << what << ": byte " << plan.at << ", fault " << static_cast<int>(plan.fault) << ", bit "
                  << plan.bit;
  }
  void Met(Blind blind) { ++blind_[static_cast<std::size_t>(blind)]; }

  void JudgeSuccess(const FaultPlan& plan) {
    ++proven_;
    // An upload asks once more who the hub is when the program is there already.
    if (!d_.boxes.shown.empty() && !Uploads()) Complain(plan, "done, and a failure told");
    const bool misheard = d_.source.program.HubVersion != kFirmware || d_.source.program.HubIndex != HubOcto;
    if (Proven() && !misheard) return;
    --proven_;
    if (AtIdentity(plan)) {
      Met(Blind::MisheardIdentity);
    } else if (InSetUp(plan)) {
      Met(Blind::BehindTheSum);
    } else if (ZeroMoreOrLess(plan)) {
      Met(Blind::ZeroByte);
    } else {
      Complain(plan, "false success");
    }
  }

  void JudgeFailure(const FaultPlan& plan) {
    ++told_;
    const bool gone = PortHasGone(d_.road.link());
    // What the event loop tells at its next turn.
    if (gone) TellPortLost(d_.road);
    if (d_.boxes.shown.empty()) Complain(plan, "failed without a word");
    if (gone && d_.boxes.shown.size() != 1) Complain(plan, "a port that has gone was told twice");
    if (!Uploads()) return;
    const bool same = Same(d_.source.program, before_);
    as_before_ = same && d_.source.program.HubIndex == before_.HubIndex;
    if (!same) Complain(plan, "failed, and the program changed");
  }

  void ExpectUsable(const FaultPlan& plan) {
    d_.line.Start(std::nullopt);
    d_.Forget();
    if (!d_.line.PortOpen()) static_cast<void>(d_.line.PortOpen(true));
    d_.source.link.ComNum = 1;
    d_.line.RunEventLoop(Delay() + kQuietSeconds);
    if (d_.source.link.Busy || d_.downbox.visible || d_.upbox.visible) Complain(plan, "still busy");
    d_.line.Output("S");
    if (CheckDrive(d_.road) != kIdentity) {
      if (d_.line.TheHub().State() != hubsim::HubState::Passthrough) {
        Complain(plan, "the hub does not answer afterwards");
      } else if (InSetUp(plan)) {
        Met(Blind::LeftPassing);
      } else if (plan.fault == LineFault::Delay) {
        Met(Blind::LateCommand);
      } else {
        Complain(plan, "the hub was left passing everything through");
      }
      // "Perhaps cycling power will help": it does.
      d_.line.TheHub().PowerUp(d_.clock.now);
      d_.line.RunEventLoop(1);
      if (CheckDrive(d_.road) != kIdentity) Complain(plan, "the hub does not answer after a power-up");
    }
    if (cases_ % kCleanOperationEvery != 0) return;
    Prepare();
    if (!Operate() || !Proven()) Complain(plan, "the next operation fails");
  }

  void Case(const FaultPlan& plan) {
    ++cases_;
    Prepare();
    const double start = d_.clock.now;
    d_.line.Start(plan, Delay());
    const bool done = Operate();
    if (!d_.line.Struck()) Complain(plan, "the fault did not come up");
    if (d_.clock.now - start > kLongestOperation) Complain(plan, "took too long");
    done ? JudgeSuccess(plan) : JudgeFailure(plan);
    ExpectUsable(plan);
  }

  /// A clean operation; gives the number of bytes that it takes.
  std::size_t CleanBytes() {
    Prepare();
    EXPECT_TRUE(Operate());
    EXPECT_TRUE(d_.boxes.shown.empty());
    uploaded_ = d_.source.program;
    EXPECT_TRUE(Proven());
    return d_.line.Carried(GetParam().way);
  }

  void Report() {
    std::cout << GetParam().name << ": " << cases_ << " cases, " << proven_ << " proven, " << told_
              << " told";
    for (std::size_t i = 0; i < kBlindNames.size(); ++i) {
      if (blind_[i] > 0) std::cout << ", " << kBlindNames[i] << ' ' << blind_[i];
    }
    std::cout << '\n';
    RecordProperty("cases", cases_);
    if (complaints_ > kComplaintsShown) std::cout << complaints_ << " complaints\n";
  }

  FaultyDesk d_;
  Program program_;
  std::string image_;
  /// What stands in the session before an upload, and what a clean one makes of it.
  Program before_ = NewProgram();
  Program uploaded_;
  /// The first byte behind a download's sum.
  std::size_t set_up_at_ = 0;
  /// The session's program need not be put back for the next case.
  bool as_before_ = false;
  int cases_ = 0;
  int proven_ = 0;
  int told_ = 0;
  int complaints_ = 0;
  std::array<int, kBlindNames.size()> blind_{};
};

TEST_P(FaultSweep, EachFaultAtEachByteEndsInTheProofOrIsToldAndTheLinkStaysUsable) {
  const Way way = GetParam().way;
  const std::size_t positions = CleanBytes();
  const bool long_answer = Uploads() && way == Way::FromHub;
  for (std::size_t at = 0; at < positions; ++at) {
    for (const LineFault fault : kPlainFaults) {
      if (fault != LineFault::Echo || EchoMatters(at)) Case({way, at, fault});
    }
    for (int bit = 0; bit < 8; ++bit) {
      // One bit of each byte of a whole memory, every bit of all else.
      const bool chosen = bit == static_cast<int>((at * 5 + 3) % 8);
      if (chosen || !long_answer || AtIdentity({way, at})) Case({way, at, LineFault::FlipBit, bit});
    }
  }
  EXPECT_GE(cases_, 7 * static_cast<int>(positions));
  EXPECT_GT(told_, 0);
  Report();
}

INSTANTIATE_TEST_SUITE_P(Line, FaultSweep, ::testing::ValuesIn(kSweeps),
                         [](const auto& sweep) { return std::string(sweep.param.name); });

}  // namespace
}  // namespace tavlo::testing
