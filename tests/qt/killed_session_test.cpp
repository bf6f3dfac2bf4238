// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <random>
#include <thread>

#include "commands/crash_keep.h"
#include "commands/hub_choices.h"
#include "commands/lines.h"
#include "commands/program_files.h"
#include "commands/undo.h"
#include "qt/qt_state_folder.h"
#include "session/edit_step.h"
#include "support/fake_desk.h"
#include "support/fake_editors.h"
#include "support/fake_state_folder.h"
#include "support/temp_folder.h"

namespace tavlo::testing {
namespace {

/// How often a session is killed; more with TAVLO_KILLS.
int Kills() {
  const char* told = std::getenv("TAVLO_KILLS");
  return told == nullptr ? 1000 : std::atoi(told);
}

/// A session that goes through the same random edits for the same seed.
class RandomSession {
 public:
  RandomSession(StateFolder& folder, const std::string& name, unsigned seed)
      : random_(seed), keep_(folder, name, [] { return std::int64_t{1}; }) {
    desk_.desk.keeper = &keep_;
    desk_.desk.editors = &editors_;
    editors_.confirms = true;
  }

  void Edit() {
    Desk& desk = desk_.desk;
    const int line = Below(kLines);
    switch (Below(9)) {
      case 0: return Undo(desk);
      case 1: return Redo(desk);
      case 2: return SelectLimitAction(desk, Below(3));
      case 3: return LeaveLimitBranch(desk, std::to_string(1 + Below(kLines)));
      case 4: return Pick(line, {.what = Picked::What::Insert});
      case 5: return Pick(line, {.what = Picked::What::Delete});
      case 6: return DropIcon(desk, line, Below(kLines), false);
      case 7:
        if (Below(20) == 0) Clear(desk);
        return;
      default: return Pick(line, {.what = Picked::What::Kind, .type = Below(kTypes)});
    }
  }
  [[nodiscard]] const Source& State() const { return desk_.source; }

 private:
  int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
  void Pick(int line, const Picked& pressed) {
    editors_.presses = {pressed};
    DropIcon(desk_.desk, line, line, false);
  }

  std::mt19937 random_;
  FakeDesk desk_;
  FakeEditors editors_;
  CrashKeep keep_;
};

/// Another process that edits until it is killed, and says after each edit that it is done.
class EditingProcess {
 public:
  EditingProcess(const std::string& folder, unsigned seed) {
    int ends[2];
    if (pipe(ends) != 0) return;
    done_ = ends[0];
    pid_ = fork();
    if (pid_ == 0) {
      QtStateFolder state(folder);
      RandomSession session(state, "killed", seed);
      for (;;) {
        session.Edit();
        if (write(ends[1], ".", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
  }
  ~EditingProcess() { close(done_); }
  EditingProcess(const EditingProcess&) = delete;
  EditingProcess& operator=(const EditingProcess&) = delete;

  /// Ends it between two of its instructions, and returns how many edits it had finished.
  int Kill() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    int edits = 0;
    for (char c = 0; read(done_, &c, 1) == 1;) ++edits;
    return edits;
  }

 private:
  pid_t pid_ = -1;
  int done_ = -1;
};

bool Holds(const std::optional<CrashKeep::Left>& left, const Source& state) {
  // An empty file is one that was only begun.
  if (!left || left->text.empty()) return !Unsaved(state);
  if (!left->kept) return false;
  // Loops are paired anew when a program is shown.
  Program kept = left->kept->program;
  Program wanted = state.program;
  ScanLoops(kept);
  ScanLoops(wanted);
  return kept.Prog == wanted.Prog && kept.LimitList == wanted.LimitList &&
         kept.LimitBranch == wanted.LimitBranch && left->kept->file_name == state.file_name;
}

TEST(KilledSession, HasKeptEveryEditThatWasFinishedWhicheverMomentItIsKilledAt) {
  std::mt19937 random(20261122);
  int with_edits = 0;
  for (int i = 0; i < Kills(); ++i) {
    const TempFolder folder;
    const unsigned seed = random();
    EditingProcess process(folder.Path(), seed);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
    const int edits = process.Kill();
    with_edits += edits > 0 ? 1 : 0;

    QtStateFolder state(folder.Path());
    CrashKeep keep(state, "next", [] { return std::int64_t{2}; });
    const auto left = keep.FindLeft();
    FakeStateDisk disk;
    FakeStateFolder unused(disk);
    RandomSession again(unused, "again", seed);
    for (int edit = 0; edit < edits; ++edit) again.Edit();
    if (Holds(left, again.State())) continue;
    // The edit that was under way had been kept, and not been told yet.
    again.Edit();
    ASSERT_TRUE(Holds(left, again.State())) << "seed " << seed << ", killed after edit " << edits;
  }
  EXPECT_GT(with_edits, Kills() / 4) << "most must be killed while they edit";
}

}  // namespace
}  // namespace tavlo::testing
