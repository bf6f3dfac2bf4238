// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/program.h"

namespace tavlo {

/// Why the program counts as unchanged.
enum class Unchanged {
  Saved,        ///< a file holds it now
  Loaded,       ///< it came from a file
  Transferred,  ///< a hub holds it
  Uploaded,     ///< it came from a hub
  Cleared,      ///< there is nothing in it
  Otherwise,    ///< it counts as such although nothing else holds it
};

/// What an edit works on.
struct Edited {
  Program program;
  std::string file_name;
};

/// The edits of a session that the operator can take back and do again. Positions lie between the edits; one
/// of them is the present one. The position that was last saved, loaded or sent counts as unchanged,
/// whichever way it is reached.
///
/// Lines are kept once, however many edits they outlast.
class History {
 public:
  static constexpr std::size_t kSteps = 200;

  /// Adds an edit, named for example "delete line 12", behind the present position; what lay behind that is
  /// forgotten, and so is the oldest of more than kSteps. Does nothing if nothing differs.
  void Record(std::string name, const Edited& before, const Program& after, const std::string& file_after);

  /// Return the names of the edits that Undo() would take back and Redo() would do again; empty if there are
  /// none.
  [[nodiscard]] std::string_view UndoName() const;
  [[nodiscard]] std::string_view RedoName() const;

  /// Take an edit back, or do it again. Only what it changed is written. The hub's model and firmware are
  /// left alone if the hub has changed them since. Return the first line that has changed; nothing if none
  /// has. There must be such an edit.
  std::optional<int> Undo(Program& program, std::string& file_name);
  std::optional<int> Redo(Program& program, std::string& file_name);

  /// The program at the present position counts as unchanged from now on.
  void MarkUnchanged(Unchanged why, const std::string& file_name);
  /// It counts as changed from now on.
  void MarkChanged();
  [[nodiscard]] bool CountsAsUnchanged() const { return Here().unchanged; }
  /// Whether a file of this name holds the program, or there is nothing in it that a file could hold.
  [[nodiscard]] bool InFile(const std::string& file_name) const;
  /// Whether the program goes back to one that came from a hub, and not to a file or an empty one.
  [[nodiscard]] bool FromHub() const { return Here().from_hub; }

 private:
  using Kept = std::shared_ptr<const Instruction>;
  struct Line {
    int line;
    Kept before;
    Kept after;
  };
  /// All of a program but its lines.
  struct Settings {
    AxisConfig Axis;
    std::int16_t HubIndex = HubOcto;
    std::int16_t LimitList = HaltProgram;
    double LimitBranch = 1;
    float HubVersion = 0;
    bool operator==(const Settings&) const = default;
  };
  struct Step {
    std::string name;
    std::vector<Line> lines;
    /// Before and after; null if they are the same.
    std::unique_ptr<const std::pair<Settings, Settings>> settings;
    std::string file_before;
    std::string file_after;
  };
  struct Position {
    bool unchanged = false;
    bool empty = false;
    bool from_hub = false;
    /// The file that holds the program as it is here.
    std::string saved_as;
  };

  [[nodiscard]] static Settings SettingsOf(const Program& program);
  static void Apply(const Settings& from, const Settings& to, Program& program);
  [[nodiscard]] std::vector<Line> LinesThatDiffer(const Program& before, const Program& after);
  /// Returns the record as one that is kept already near this line, or newly kept.
  [[nodiscard]] Kept Keep(const Instruction& record, int line) const;
  [[nodiscard]] const Position& Here() const { return positions_[at_]; }
  [[nodiscard]] Position& Here() { return positions_[at_]; }

  std::vector<Step> steps_;
  /// One more than the steps.
  std::vector<Position> positions_ = {{.unchanged = true, .empty = true, .from_hub = false, .saved_as = {}}};
  std::size_t at_ = 0;
  /// The lines at the present position, as far as edits have touched them.
  std::array<Kept, kLines + 1> kept_;
};

}  // namespace tavlo
