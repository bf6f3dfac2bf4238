// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "text/cross_reference.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "model/kinds.h"
#include "model/program_queries.h"
#include "platform/number_format.h"
#include "text/line_words.h"

namespace tavlo {
namespace {

/// The lines under each key, in the order of the keys.
template <class Key>
class Uses {
 public:
  void Add(const Key& key, const std::string& name, int line) { AddTo(At(key, name).lines, line); }
  void AddFilling(const Key& key, const std::string& name, int line) {
    Add(key, name, line);
    AddTo(At(key, name).filled_by, line);
  }
  [[nodiscard]] std::vector<UseRow> Rows() const {
    std::vector<UseRow> rows;
    for (const auto& [key, row] : rows_) rows.push_back(row);
    return rows;
  }

 private:
  UseRow& At(const Key& key, const std::string& name) {
    return rows_.try_emplace(key, UseRow{name, {}}).first->second;
  }
  static void AddTo(std::vector<int>& lines, int line) {
    if (lines.empty() || lines.back() != line) lines.push_back(line);
  }

  std::map<Key, UseRow> rows_;
};

/// A drive's inputs or outputs sort by their number, those with a letter behind those without.
using IOKey = std::tuple<int, std::size_t, std::string>;

/// "Axis 2 (Cutter)", or "Axis 2" where that is its name too.
std::string AxisWords(const Program& program, int axis) {
  const std::string number = "Axis " + Joined(axis + 1);
  const std::string name = AxisNameOf(program, axis);
  return name.empty() || name == number ? number : number + " (" + name + ")";
}

/// The name of an output.
class Output : LineWords {
 public:
  using LineWords::LineWords;
  using LineWords::OutName;
};

/// Collects what the lines of a program use.
class Collector {
 public:
  explicit Collector(const Program& program) : program_(program) {
    for (int i = 0; i < kLines; ++i) {
      const Instruction& line = program.Prog[i];
      // It stands for nothing in a program.
      if (line.Type == MMImenu || line.Type < 0 || line.Type >= kTypes) continue;
      AddInputsAndOutputs(line, i);
      AddVariables(line, i + 1);
      AddAxes(line, i + 1);
    }
  }

  void Fill(CrossReference& reference) const {
    reference.inputs = inputs_.Rows();
    reference.outputs = outputs_.Rows();
    reference.variables = variables_.Rows();
    reference.axes = axes_.Rows();
  }

 private:
  void AddIO(Uses<IOKey>& uses, const Instruction& line, const std::string& what, const std::string& name,
             int index) {
    const bool hub = IsHubIO(program_, line.Drive);
    const std::string owner = hub ? "Hub" : AxisWords(program_, line.Drive);
    uses.Add({line.Drive, name.size(), name}, owner + ": " + what + name, index + 1);
  }
  void AddInput(const Instruction& line, int n, int index) {
    AddIO(inputs_, line, "input ", InputName(program_, n, line.Drive), index);
  }
  void AddInputs(const Instruction& line, int index) {
    for (int bit = 0; bit < 8; ++bit) {
      if ((line.InMask >> bit & 1) != 0) AddInput(line, bit, index);
      if ((line.DrvMask >> bit & 1) != 0) AddInput(line, kFirstDriveInput + bit, index);
    }
  }
  void AddInputsAndOutputs(const Instruction& line, int index) {
    switch (IOUseOf(line)) {
      case IOUse::None: break;
      case IOUse::Input:
        if (SeeksEncoderIndex(line)) {
          AddIO(inputs_, line, "", "encoder index", index);
        } else {
          AddInput(line, line.IONum, index);
        }
        break;
      case IOUse::Inputs: AddInputs(line, index); break;
      case IOUse::Output: AddIO(outputs_, line, "output ", Output(program_, index).OutName(), index); break;
    }
  }

  void AddVariables(const Instruction& line, int number) {
    const auto read = [&](int variable) {
      if (const std::string name = MMIVarName(variable); !name.empty())
        variables_.Add(variable, name, number);
    };
    for (const OperandRow& row : kOperands) {
      if (TakesFromVariable(line, row)) read(line.*row.variable);
    }
    const bool runs = line.Type == SS && (line.SubType == StartAxis || line.SubType == ChangeSpeed);
    if (runs && line.SpeedIsMMI) read(line.SpeedVar);
    const std::string filled = FillsVariable(line) ? MMIVarName(line.DistVar) : "";
    if (!filled.empty()) variables_.AddFilling(line.DistVar, filled, number);
  }

  void AddAxes(const Instruction& line, int number) {
    const bool by_terminal = AsksTerminal(line) && KindOf(line.Type).axis == AxisUse::DriveOrHub;
    const bool all = line.Type == SS && line.SubType == StopAll;
    if (by_terminal || all) return;
    for (const int axis : AxesOf(program_, line)) axes_.Add(axis, AxisWords(program_, axis), number);
  }

  const Program& program_;
  Uses<IOKey> inputs_;
  Uses<IOKey> outputs_;
  Uses<int> variables_;
  Uses<int> axes_;
};

/// How a line leads to the line that `LineNum` names; empty if it does not.
std::string HowOf(const Instruction& line) {
  switch (LeadOf(line)) {
    case Lead::Jump: return line.Type == CL ? "calls" : "goes to";
    case Lead::Branch: return line.Type == FSS ? "goes, beyond its safety distance, to" : "branches to";
    case Lead::LoopEnd: return line.LineNum == kNoRepeat ? "" : "repeats from";
    case Lead::Next: break;
  }
  return NamesLine(line) ? "resets the loop on" : "";
}

std::vector<JumpRow> JumpsOf(const Program& program) {
  std::vector<JumpRow> jumps;
  if (program.LimitList == BranchToLine) {
    const double line = std::clamp(RoundHalfEven(program.LimitBranch), -32768.0, 32767.0);
    jumps.push_back({std::nullopt, "goes to", static_cast<int>(line)});
  }
  for (int i = 0; i < kLines; ++i) {
    const Instruction& line = program.Prog[i];
    if (std::string how = HowOf(line); !how.empty()) {
      jumps.push_back({i + 1, std::move(how), line.LineNum + 1});
    }
    if (line.Type != MMI || line.SubType != Menu) continue;
    for (int key = 1; key <= 8; ++key) {
      if (!line.MenuKey[key]) continue;
      jumps.push_back({i + 1, "goes, on key " + Joined(key) + ", to", line.MenuLine[key] + 1});
    }
  }
  return jumps;
}

std::string Listed(const std::vector<int>& lines) {
  std::string text = lines.size() == 1 ? "line " : "lines ";
  for (std::size_t i = 0; i < lines.size(); ++i) text += (i > 0 ? ", " : "") + Joined(lines[i]);
  return text;
}

std::vector<std::string> RowsOf(const std::vector<UseRow>& uses) {
  std::vector<std::string> rows;
  for (const UseRow& use : uses) {
    std::string row = use.name + ": " + Listed(use.lines);
    if (!use.filled_by.empty()) row += "; filled by " + Listed(use.filled_by);
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::string> RowsOf(const std::vector<JumpRow>& jumps) {
  std::vector<std::string> rows;
  for (const JumpRow& jump : jumps) {
    const std::string from = jump.from ? "Line " + Joined(*jump.from) : "A limit switch";
    rows.push_back(from + " " + jump.how + " line " + Joined(jump.to));
  }
  return rows;
}

}  // namespace

CrossReference MakeCrossReference(const Program& program) {
  CrossReference reference;
  Collector(program).Fill(reference);
  reference.jumps = JumpsOf(program);
  return reference;
}

std::vector<ReferenceSection> SectionsOf(const CrossReference& reference) {
  std::vector<ReferenceSection> sections = {{"Inputs", RowsOf(reference.inputs)},
                                            {"Outputs", RowsOf(reference.outputs)},
                                            {"Variables", RowsOf(reference.variables)},
                                            {"Axes", RowsOf(reference.axes)},
                                            {"Jumps", RowsOf(reference.jumps)}};
  std::erase_if(sections, [](const ReferenceSection& section) { return section.rows.empty(); });
  return sections;
}

}  // namespace tavlo
