// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/simulate/input_script.h"

#include <utility>

#include "cli/run/run_orders.h"
#include "hubsim/option_text.h"
#include "model/instruction.h"
#include "platform/number_format.h"

namespace tavlo::cli {
namespace {

constexpr double kLongest = 1e9;
constexpr std::string_view kEntryLetters = "0123456789.+-";
/// A word of a message, which may come from any file.
constexpr std::size_t kShownWord = 40;

/// The names of the keys are those of a run's.
std::optional<char> KeyOf(const std::string& word) {
  if (word.empty()) return std::nullopt;
  for (const std::string& line : {"key " + word, word}) {
    const auto orders = OrdersOfLine(line);
    if (orders && orders->size() == 1 && orders->front().act == RunAct::Key) {
      return KeyByte(orders->front().key);
    }
  }
  return std::nullopt;
}

/// Reads the words of one row. The first word that does not fit is the row's error; what is read after it
/// means nothing.
class RowReader {
 public:
  RowReader(std::string_view row, int number) : words_(hubsim::SplitWords(row)), number_(number) {}

  [[nodiscard]] const std::optional<std::string>& Error() const { return error_; }
  [[nodiscard]] bool Empty() const { return words_.empty(); }

  /// Reads the cue, and the acts into it; a row that begins with "after" goes on with the cue before it.
  void Read(std::vector<Cue>& cues) {
    Cue cue;
    double delay = 0;
    const bool follows = Takes("after");
    if (follows) {
      if (cues.empty()) return Fail("a row before it, which it follows");
      delay = cues.back().steps.back().delay + Seconds();
    } else if (Takes("at")) {
      cue.seconds = Seconds();
    } else if (const bool each = Takes("when"); each || Takes("once")) {
      cue.at = each ? CueAt::EachWait : CueAt::OneWait;
      if (!Takes("line")) return Fail("line");
      cue.line = LineNumber();
      if (Takes("after")) delay = Seconds();
    } else {
      return Fail("at, when, once or after");
    }
    std::vector<Step> steps = Steps(delay);
    if (!error_ && next_ < words_.size()) Fail("nothing more");
    if (error_) return;
    Cue& to = follows ? cues.back() : cues.emplace_back(std::move(cue));
    for (Step& step : steps) to.steps.push_back(std::move(step));
  }

 private:
  void Fail(const std::string& expected) {
    if (error_) return;
    error_ = "expected " + expected;
    if (next_ < words_.size()) *error_ += ", not '" + std::string(words_[next_].substr(0, kShownWord)) + "'";
  }
  [[nodiscard]] std::string_view Word() const {
    return next_ < words_.size() ? words_[next_] : std::string_view();
  }
  [[nodiscard]] bool Takes(std::string_view word) {
    const bool is = Word() == word;
    if (is) ++next_;
    return is;
  }
  template <class T>
  T Taken(const std::optional<T>& value, const std::string& expected) {
    if (!value) Fail(expected);
    ++next_;
    return value.value_or(T());
  }

  double Seconds() {
    const double seconds = ParseNumber(Word()).value_or(-1);
    const bool fits = seconds >= 0 && seconds <= kLongest;
    return Taken(fits ? std::optional(seconds) : std::nullopt, "seconds, 0 or more");
  }
  int LineNumber() {
    const int number = hubsim::ParseWhole(Word()).value_or(0);
    const bool fits = number >= 1 && number <= kLines;
    return Taken(fits ? std::optional(number) : std::nullopt, "a line from 1 to " + Joined(kLines)) - 1;
  }

  std::vector<Step> Steps(double delay) {
    Act act;
    act.row = number_;
    if (Takes("axis")) return StepsOfAxis(delay, std::move(act));
    if (Takes("stop")) return {Step{delay, Texted(std::move(act), "stop")}};
    if (Takes("key")) {
      act.doing = Doing::Keys;
      std::string text = "key";
      do {
        const std::string word(Word());
        act.keys += Taken(KeyOf(word), "a key: 0 to 9, ., yes, no, enter, bksp, up, down, left or right");
        text += " " + word;
      } while (!error_ && next_ < words_.size());
      return {Step{delay, Texted(std::move(act), text)}};
    }
    if (Takes("type")) return {Step{delay, Typed(std::move(act))}};
    Fail("axis, key, type or stop");
    return {};
  }

  Act Typed(Act act) {
    const std::string word(Word());
    std::optional<std::string> keys;
    if (!word.empty() && word.find_first_not_of(kEntryLetters) == std::string::npos) keys.emplace();
    for (const char c : keys ? word : std::string()) *keys += KeyOf(std::string(1, c)).value_or(c);
    act.doing = Doing::Keys;
    act.keys = Taken(keys, "a number as it is typed on the keypad") + KeyByte(MmiKey::enter);
    return Texted(std::move(act), "type " + word);
  }

  std::vector<Step> StepsOfAxis(double delay, Act act) {
    std::string text = "axis " + std::string(Word());
    act.axis = Taken(hubsim::ParseAxis(Word()), "an axis from 1 to 8");
    const std::string what(Word());
    text += " " + what;
    if (Takes("input")) return StepsOfInput(delay, std::move(act), text);
    if (Takes("limit")) {
      act.doing = Doing::Limit;
    } else if (Takes("fault")) {
      act.doing = Doing::Fault;
      text += " " + std::string(Word());
      act.code = Taken(hubsim::ParseFault(Word()), "a fault's code from 0 to 16383, or its name");
    } else if (Takes("wheel")) {
      act.doing = Doing::Wheel;
      text += " " + std::string(Word());
      act.counts = Taken(hubsim::ParseCounts(Word()), "counts from -10000 to 10000");
    } else {
      Fail("input, limit, fault or wheel");
    }
    return {Step{delay, Texted(std::move(act), text)}};
  }

  /// With a duration the input goes back afterwards.
  std::vector<Step> StepsOfInput(double delay, Act act, std::string text) {
    act.doing = Doing::Input;
    text += " " + std::string(Word()) + " ";
    act.input = Taken(hubsim::ParseInput(Word()), "an input: 1 to 8, or X0 to X7");
    const bool high = Takes("high");
    if (!high && !Takes("low")) Fail("high or low");
    const auto level = [&](bool is_high) {
      act.high = is_high;
      return Texted(act, text + (is_high ? "high" : "low"));
    };
    std::vector<Step> steps = {Step{delay, level(high)}};
    if (Takes("for")) steps.push_back({delay + Seconds(), level(!high)});
    return steps;
  }

  [[nodiscard]] static Act Texted(Act act, const std::string& text) {
    act.text = text;
    return act;
  }

  std::vector<std::string_view> words_;
  std::size_t next_ = 0;
  int number_;
  std::optional<std::string> error_;
};

}  // namespace

InputScript ReadInputScript(std::string_view text, std::vector<ScriptError>& errors) {
  InputScript script;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = text.find('\n');
    const std::string_view row = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    RowReader reader(row.substr(0, row.find('#')), number);
    if (reader.Empty()) continue;
    reader.Read(script.cues);
    if (reader.Error()) errors.push_back({number, *reader.Error()});
  }
  return script;
}

}  // namespace tavlo::cli
