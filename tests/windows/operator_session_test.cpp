// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Sessions of an operator who does anything, on the real main window with its real dialogs and boxes.
//
// TAVLO_SEED and TAVLO_ACTS choose another session and a longer one.
#include <QEventLoop>
#include <QMenu>
#include <QTimer>
#include <deque>
#include <iostream>

#include "codegen/compile.h"
#include "editors/editor_dialog.h"
#include "editors/hardware_dialog.h"
#include "editors/pick_prog.h"
#include "model/kept_text.h"
#include "model/program_file.h"
#include "model/wire.h"
#include "qt/gui/gui_services.h"
#include "session/edit_step.h"
#include "session/grid.h"
#include "support/fake_clipboard.h"
#include "support/fake_desk.h"
#include "support/fake_help.h"
#include "support/fake_printer.h"
#include "support/fake_state_folder.h"
#include "support/record_ranges.h"
#include "windows/composer_windows.h"
#include "windows/random_operator.h"

namespace tavlo::testing {
namespace {

/// Turns of the event loop.
constexpr int kPatience = 100000;
/// ms
constexpr std::int32_t kShortestPulse = 5;
constexpr const char* kSessionFile = "program.TVH";

/// The desktop with real boxes; its line, files and file dialogs are fakes.
struct Desktop {
  Desktop() {
    fakes.port.is_open = false;
    windows.Main().Begin(windows.Handlers());
    windows.Main().show();
    windows.Main().activateWindow();
    QObject::connect(&windows.Main(), &LongForm::Ended, &windows.Main(), [this] { ended = true; });
  }

  /// Axes of any kind, and lines of every kind to begin with.
  void Furnish(RandomOperator& random) {
    AxisConfig& axes = Lines().Axis;
    for (int axis = 0; axis < kAxes; ++axis) {
      axes.DriveModel[axis] = static_cast<std::int16_t>(random.Below(51));
      axes.StepResCode[axis] = static_cast<std::int16_t>(random.Below(17));
      axes.StepsPerRev[axis] = random.OneOf(std::to_array({200, 399, 400, 1999, 8000}));
      axes.StepsPerUnit[axis] = random.OneOf(std::to_array({1, 56, 200, 1000, 20000, 16000000}));
      axes.UseUnits[axis] = random.OneIn(2);
      axes.LimitKind[axis] = static_cast<std::int16_t>(random.Below(3));
    }
    for (int line = 0; line < 60; ++line) {
      Lines().Prog[line].Type = static_cast<std::int16_t>(random.Below(kTypes));
      Lines().Prog[line].Drive = static_cast<std::int16_t>(random.Below(kAxes));
    }
    ScanLoops(Lines());
    ShowAllDescs(windows.Handlers().grid());
    for (int line = 0; line < kLines; ++line) SetIcon(windows.Handlers().grid(), line);
    windows.Main().AllRowsChanged();
  }

  [[nodiscard]] Program& Lines() { return windows.Handlers().source.program; }

  FakeDesk fakes;
  FakeComms comms;
  FakeHelp help;
  FakePrinter printer;
  FakeClipboard clipboard;
  FakeStateDisk disk;
  FakeStateFolder sessions{disk};
  GuiMessageBoxes boxes;
  bool ended = false;
  ComposerWindows windows{{fakes.port, boxes, fakes.clock, fakes.loop, fakes.beeper, fakes.settings,
                           fakes.dialogs, fakes.files, comms, help, printer, sessions, clipboard}};
};

/// What may be seen of the dialogs of a line at a moment.
struct LineDialogsSeen {
  LineDialogsSeen() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      if (auto* dialog = qobject_cast<EditorDialog*>(window)) editors.push_back(dialog);
      if (qobject_cast<PickProg*>(window) != nullptr || qobject_cast<HardwareDialog*>(window) != nullptr)
        ++others;
      hardware = hardware || qobject_cast<HardwareDialog*>(window) != nullptr;
    }
  }
  std::vector<EditorDialog*> editors;
  /// The picker and the hardware settings.
  int others = 0;
  bool hardware = false;
};

/// Reads the program back from its own file. False if it reads as damaged.
bool ReadBack(const Program& program, Program& read) {
  const std::string text = WriteHubProg(program, 0);
  ItemReader items(text);
  std::string version;
  items.Read(version);
  return LoadHubProg(items, ParseRevision(version), read);
}

/// What is wrong if the program does not come back from its file, whatever stands in it.
std::string NotKept(const Program& program) {
  Program read = program;
  const bool good = ReadBack(program, read);
  for (int line = 0; line < kLines; ++line) {
    Instruction wanted = program.Prog[line];
    wanted.LoopIndex = read.Prog[line].LoopIndex;
    // Two things a reader mends.
    if (wanted.Type == SO || wanted.Type == FLSO) wanted.Time = std::max(wanted.Time, kShortestPulse);
    if (wanted.Type == CM) wanted.Text.resize(std::min(wanted.Text.size(), kLongestComment));
    if (read.Prog[line] != wanted) return "line " + std::to_string(line + 1) + " comes back changed";
  }
  if (!good) return "the file reads as damaged";
  try {
    static_cast<void>(CompileProgram(read));
  } catch (const EncodeError&) {
    // A target that was pushed beyond the end. A download tells it.
  }
  return {};
}

/// A session: one act after the other, each in the event loop that runs at that moment, and what must be true
/// after each.
class OperatorSession : public QObject {
 public:
  OperatorSession(std::uint32_t seed, int acts) : random_(seed), acts_(acts) {
    QCoreApplication::instance()->installEventFilter(this);
  }

  /// Until the acts are done or the operator has left the program. Returns how many acts there were.
  int Run() {
    desktop_.Furnish(random_);
    Remember();
    Post();
    loop_.exec();
    return done_;
  }

 protected:
  /// A window that runs a loop of its own takes the next act in it.
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Show || !object->isWidgetType()) return false;
    const auto* window = static_cast<QWidget*>(object);
    if (window->isModal() || qobject_cast<const QMenu*>(window) != nullptr) Post();
    return false;
  }

 private:
  void Post() {
    if (posted_) return;
    posted_ = true;
    QTimer::singleShot(0, this, [this] {
      posted_ = false;
      Tick();
    });
  }

  void Tick() {
    // An act whose window is gone has yet to end; one that has brought up a menu goes on in it.
    if (!IsSettled() && QApplication::activePopupWidget() == nullptr) {
      EXPECT_LT(++waited_, kPatience) << "an act does not end" << Story();
      return waited_ < kPatience ? Post() : Leave();
    }
    waited_ = 0;
    ExpectNothingHappenedBetween();
    if (done_ >= acts_ || desktop_.ended || ::testing::Test::HasFailure()) return Leave();
    ++done_;
    ++depth_;
    Act();
    --depth_;
    ExpectOrder();
    Remember();
    Post();
  }

  void Act() {
    LongForm& main = desktop_.windows.Main();
    QWidget* front = &InFront(main);
    if (!front->isActiveWindow()) front->activateWindow();
    const bool repeats = random_.HoldsEnter();
    // An act that Enter let go on has written since the last one ended, and may have asked again.
    const Program at_press = Lines();
    desktop_.fakes.dialogs.next_file_name =
        random_.OneIn(2) ? std::optional<std::string>(kSessionFile) : std::nullopt;
    random_.Act(main);
    told_.push_back(random_.Last());
    if (told_.size() > 12) told_.pop_front();
    if (!repeats) return;
    EXPECT_EQ(&InFront(main), front) << "a held Enter opens and closes nothing" << Story();
    EXPECT_EQ(ChangedSince(at_press), "") << "a held Enter writes nothing" << Story();
  }

  /// Each act that has not ended has a window of its own.
  [[nodiscard]] bool IsSettled() const {
    const auto windows = QApplication::topLevelWidgets();
    return depth_ ==
           std::ranges::count_if(windows, [](const QWidget* w) { return w->isVisible() && w->isModal(); });
  }

  /// No act takes its effect later, when another window may be in front.
  void ExpectNothingHappenedBetween() {
    if (!settled_before_ || depth_ != depth_before_) return;
    EXPECT_EQ(ChangedSince(before_), "") << "lines change by themselves" << Story();
  }

  /// The lines that are no longer what they were.
  [[nodiscard]] std::string ChangedSince(const Program& before) {
    std::string lines;
    for (int line = 0; line < kLines; ++line) {
      if (Lines().Prog[line] != before.Prog[line]) lines += " " + std::to_string(line + 1);
    }
    return lines;
  }

  /// A kill at this moment loses nothing, unless a dialog or a question is up or has yet to return.
  void ExpectKept() {
    if (depth_ > 0) return;
    const Source& source = desktop_.windows.Handlers().source;
    std::optional<KeptProgram> kept;
    for (const auto& [name, bytes] : desktop_.disk.files) kept = ReadKeptProgram(bytes);
    EXPECT_EQ(kept.has_value(), Unsaved(source)) << Story();
    if (!kept) return;
    Program wanted = source.program;
    ScanLoops(wanted);
    ScanLoops(kept->program);
    EXPECT_TRUE(kept->program.Prog == wanted.Prog) << "other lines are kept" << Story();
    EXPECT_TRUE(kept->program.Axis == wanted.Axis) << "other settings are kept" << Story();
    EXPECT_EQ(kept->program.LimitBranch, wanted.LimitBranch) << Story();
    EXPECT_EQ(kept->file_name, source.file_name) << Story();
  }

  void ExpectOrder() {
    for (int line = 0; line < kLines; ++line) {
      if (Lines().Prog[line] == before_.Prog[line]) continue;
      const std::string field = FieldOutOfRange(Lines().Prog[line]);
      EXPECT_EQ(field, "") << "line " << line + 1 << Story();
    }
    const LineDialogsSeen seen;
    EXPECT_LE(seen.editors.size() + static_cast<std::size_t>(seen.others), 1U) << Story();
    ExpectKept();
    FollowEditing(seen);
    if (done_ % 50 == 0) {
      EXPECT_EQ(NotKept(Lines()), "") << Story();
    }
  }

  void FollowEditing(const LineDialogsSeen& seen) {
    const Source& source = desktop_.windows.Handlers().source;
    // No line is edited then, and all may be rescaled at the end.
    if (seen.hardware) return;
    if (source.Editing) {
      if (!edited_) edited_ = {source.CurLine, Lines().Prog[source.CurLine], nullptr};
      EXPECT_EQ(source.CurLine, edited_->line) << Story();
      if (!seen.editors.empty()) edited_->dialog = seen.editors.front();
      const std::string changed = seen.editors.empty() || !settled_before_ ? "" : ChangedSince(before_);
      EXPECT_TRUE(changed.empty() || changed == " " + std::to_string(edited_->line + 1))
          << changed << Story();
      return;
    }
    if (edited_ && edited_->dialog != nullptr && edited_->dialog->result() == QDialog::Rejected) {
      EXPECT_EQ(Lines().Prog[edited_->line].Type, edited_->record.Type) << Story();
      EXPECT_EQ(Lines().Prog[edited_->line].Text, edited_->record.Text) << Story();
      EXPECT_EQ(Lines().Prog[edited_->line].Dist, edited_->record.Dist) << Story();
    }
    edited_.reset();
  }

  void Remember() {
    before_ = Lines();
    depth_before_ = depth_;
    settled_before_ = IsSettled();
  }

  /// Closes what is still up, the innermost first.
  void Leave() {
    random_.LetGo(desktop_.windows.Main());
    QWidget& front = InFront(desktop_.windows.Main());
    if (&front == &desktop_.windows.Main()) return loop_.quit();
    front.close();
    Post();
  }

  [[nodiscard]] std::string Story() const {
    std::string story = ", after act " + std::to_string(done_) + ":";
    for (const std::string& act : told_) story += "\n  " + act;
    return story;
  }
  [[nodiscard]] Program& Lines() { return desktop_.Lines(); }

  struct Edited {
    int line;
    Instruction record;
    EditorDialog* dialog;
  };

  Desktop desktop_;
  RandomOperator random_;
  QEventLoop loop_;
  int acts_;
  int done_ = 0;
  bool posted_ = false;
  int depth_ = 0;
  std::optional<Edited> edited_;
  Program before_;
  int depth_before_ = 0;
  bool settled_before_ = false;
  int waited_ = 0;
  std::deque<std::string> told_;
};

int FromEnvironment(const char* name, int otherwise) {
  bool is_number = false;
  const int value = qEnvironmentVariableIntValue(name, &is_number);
  return is_number ? value : otherwise;
}

TEST(OperatorSessions, LeaveEveryLineInRangeAndOneDialogAtATime) {
  const int acts = FromEnvironment("TAVLO_ACTS", 10000);
  auto seed = static_cast<std::uint32_t>(FromEnvironment("TAVLO_SEED", 9));
  std::cout << "seed " << seed << ", " << acts << " acts\n";
  int done = 0;
  int sessions = 0;
  while (done < acts && !HasFailure()) {
    OperatorSession session(seed++, acts - done);
    done += session.Run();
    ++sessions;
  }
  std::cout << sessions << " sessions\n";
  EXPECT_GE(done, acts);
}

}  // namespace
}  // namespace tavlo::testing
