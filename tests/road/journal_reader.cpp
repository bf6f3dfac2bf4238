// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "road/journal_reader.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>
#include <utility>

namespace tavlo::testing {
namespace {

/// The lights of the drives used here, by hand: what is called so, and the bit that carries it.
struct Light {
  std::string event;
  std::string name;
  int bit;
};
using Lights = std::vector<Light>;

Lights Row(const std::string& event, const std::string& letter, int first_bit, int count,
           int first_limit = 99) {
  Lights lights;
  for (int i = 0; i < count; ++i) {
    const std::string limit = i + 1 >= first_limit ? " (limit)" : "";
    lights.push_back({event, letter + std::to_string(i + 1) + limit, first_bit + i});
  }
  return lights;
}

/// Which lights a message tells of: those of the inputs and those of the outputs.
struct DriveLights {
  Lights inputs;
  Lights x_inputs;
  Lights outputs;
};

Lights Joined(Lights a, const Lights& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

const std::map<int, DriveLights>& DrivesHere() {
  static const Lights four_outputs = Joined(Row("output", "", 0, 4), Row("output", "Y", 4, 3));
  static const std::map<int, DriveLights> drives = {
      {0, {Row("input", "", 0, 8, 7), Row("input", "X", 0, 7, 6), four_outputs}},  // model 20
      {1, {Row("input", "", 0, 3), {}, Row("output", "", 0, 3)}},                  // model 40
      {2, {Row("input", "", 0, 8, 7), Row("input", "X", 0, 7), four_outputs}},     // model 11
  };
  return drives;
}

/// Reads the journal of one run into the rows that its log must have.
class JournalReader {
 public:
  explicit JournalReader(const std::vector<std::string>& texts) : texts_(texts) {}

  std::vector<ExpectedRow> Rows(const std::vector<JournalEntry>& journal) {
    for (const JournalEntry& entry : journal) {
      if (entry.to_hub) {
        for (const char c : entry.bytes) Taken(c, entry);
      } else {
        for (const char c : entry.bytes) Said(static_cast<unsigned char>(c), entry);
      }
    }
    EndText();
    return rows_;
  }

 private:
  void Add(const std::string& rest) {
    EndText();
    rows_.push_back({now_ - start_, rest});
  }

  void Taken(char c, const JournalEntry& entry) {
    now_ = entry.at;
    if (!running_) {
      if (c == 'M' || c == 'X') running_ = true, terminal_ = c == 'M', start_ = now_;
      return;
    }
    if (c == 'I' || c == '*') {
      star_ = c == '*';
      return;
    }
    if (c == '0' && star_) return;
    if (c == 'R') {
      if (ended_ && !std::exchange(reset_, true)) Add("control|||reset hub|");
      return;
    }
    static const std::map<char, std::string> controls = {
        {'P', "pause"}, {'r', "play"}, {'T', "single step"}, {'S', "stop"}};
    static const std::map<char, std::string> keys = {
        {'.', "dot"},      {'+', "yes"},        {'-', "no"},         {'\r', "enter"},     {'\b', "backspace"},
        {'A', "arrow up"}, {'B', "arrow down"}, {'C', "arrow left"}, {'D', "arrow right"}};
    if (controls.contains(c)) {
      Add("control|||" + controls.at(c) + "|");
      if (c == 'S') End("stopped");
    } else if (c == '0' && !entry.asks_for_digits) {
      Add("control|||reset|");
    } else if (terminal_ && keys.contains(c)) {
      Add("key|||" + keys.at(c) + "|");
    } else if (terminal_ && c >= '0' && c <= '9') {
      Add("key|||" + std::string(1, c) + "|");
    } else {
      ADD_FAILURE() << "nobody sends " << static_cast<int>(c);
    }
  }

  void Said(int byte, const JournalEntry& entry) {
    now_ = entry.at;
    if (!running_) return;
    if (byte >= 128) {
      message_ = {byte};
    } else if (message_.empty()) {
      Text(entry);
    } else {
      message_.push_back(byte);
      if (message_.size() == 4) Message(std::exchange(message_, {}));
    }
  }

  void Text(const JournalEntry& entry) {
    if (!terminal_ || ended_) return;
    if (text_ && entry.at - text_at_ >= 0.05) EndText();
    text_ = true;
    text_at_ = entry.at;
    shown_ = entry.display;
  }

  void EndText() {
    if (!std::exchange(text_, false)) return;
    std::string shown;
    std::string breaks;
    for (std::string row : shown_) {
      while (row.ends_with(' ')) row.pop_back();
      if (!row.empty()) shown += std::exchange(breaks, "") + row;
      breaks += " / ";
    }
    rows_.push_back({text_at_ - start_, "display||||" + shown});
  }

  void Message(const std::vector<int>& m) {
    const auto line = [](int high, int low) { return std::to_string(high * 16 + low + 1) + "||"; };
    const auto text = [this](int high, int low) {
      return texts_[static_cast<std::size_t>(high * 16 + low)] + "|";
    };
    const std::string axis = std::to_string(m[1] + 1);
    switch (m[0]) {
      case 254: return Add("line started|" + line(m[1], m[2]) + text(m[1], m[2]));
      case 236: return Add("line goes on|" + line(m[1], m[2]) + text(m[1], m[2]));
      case 237: return Add("line finished|" + line(m[1], m[2]) + text(m[1], m[2]));
      case 235:
        return Add("program counter|" + (m[1] == 1 ? line(m[2], m[3]) : "||") + "|" +
                   (m[1] == 1 ? "shown" : "hidden"));
      case 253: return Add("step done||||");
      case 252: Add("limit||" + axis + "||"); return End("halted");
      case 251: Add("stop button||||"); return End("halted");
      case 211: Add("drive fault||" + axis + "|over voltage|32"); return End("halted");
      case 255: Add("hub switched on||||Tavlo Hub-Octo, firmware 1.38"); return End("hub switched on");
      default: break;
    }
    if (m[0] >= 241) return Status(m[0] - 241, true, true, m[1] + 16 * m[2], m[3]);
    if (m[0] >= 221 && m[0] <= 228) return Status(m[0] - 221, false, true, 0, m[1]);
    if (m[0] >= 213 && m[0] <= 220) return XStatus(m[0] - 213, m[1] + 16 * m[2]);
    ADD_FAILURE() << "the hub says " << m[0];
  }

  void Status(int axis, bool has_inputs, bool has_outputs, int inputs, int outputs) {
    const auto drive = DrivesHere().find(axis);
    if (drive == DrivesHere().end() || ended_) return;
    std::vector<std::pair<Light, bool>> told;
    if (has_inputs) Tell(told, drive->second.inputs, inputs);
    if (has_outputs) Tell(told, drive->second.outputs, outputs);
    Lit(axis, told);
  }
  void XStatus(int axis, int inputs) {
    const auto drive = DrivesHere().find(axis);
    if (drive == DrivesHere().end() || ended_) return;
    std::vector<std::pair<Light, bool>> told;
    Tell(told, drive->second.x_inputs, inputs);
    Lit(axis, told);
  }

  /// A clear bit means on.
  static void Tell(std::vector<std::pair<Light, bool>>& told, const Lights& lights, int bits) {
    for (const Light& light : lights) told.emplace_back(light, (bits >> light.bit & 1) == 0);
  }

  void Lit(int axis, const std::vector<std::pair<Light, bool>>& told) {
    std::string on;
    bool fresh = false;
    for (const auto& [light, is_on] : told) {
      const std::string short_name = light.name.substr(0, light.name.find(' '));
      const auto key = std::make_tuple(axis, light.event, short_name);
      const auto known = lit_.find(key);
      if (known == lit_.end()) {
        fresh = true;
        if (is_on) on += (on.empty() ? "" : "; ") + light.event + " " + short_name;
      } else if (known->second != is_on) {
        Add(light.event + "||" + std::to_string(axis + 1) + "|" + light.name + "|" + (is_on ? "on" : "off"));
      }
      lit_[key] = is_on;
    }
    if (fresh) Add("state||" + std::to_string(axis + 1) + "||" + (on.empty() ? "nothing" : on));
  }

  void End(const std::string& why) {
    if (!std::exchange(ended_, true)) Add("end|||" + why + "|");
  }

  const std::vector<std::string>& texts_;
  std::vector<ExpectedRow> rows_;
  double start_ = 0;
  double now_ = 0;
  bool running_ = false;
  bool terminal_ = false;
  bool ended_ = false;
  bool reset_ = false;
  bool star_ = false;
  std::vector<int> message_;
  bool text_ = false;
  double text_at_ = 0;
  hubsim::DisplayLines shown_;
  std::map<std::tuple<int, std::string, std::string>, bool> lit_;
};

}  // namespace

std::vector<ExpectedRow> RowsOfJournal(const std::vector<JournalEntry>& journal,
                                       const std::vector<std::string>& texts) {
  return JournalReader(texts).Rows(journal);
}

}  // namespace tavlo::testing
