// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/desk/comparison.h"

#include <algorithm>

#include "codegen/decode.h"
#include "codegen/image_match.h"
#include "model/kinds.h"
#include "model/wire.h"
#include "platform/encoding.h"
#include "platform/number_format.h"
#include "session/rows.h"
#include "text/short_desc.h"

namespace tavlo::cli {
namespace {

/// How much of a difference in the pool is shown.
constexpr std::size_t kPoolShown = 16;

std::string TextOf(const Program& program, int line) {
  if (const auto text = ShortDesc(program, line)) return ShownCaption(*text);
  const int type = program.Prog[line].Type;
  const std::string_view mnemonic = Mnemonic(type);
  return mnemonic == "?" ? "unknown type " + Joined(type) : std::string(mnemonic);
}

/// What an upload makes of an image, line by line, whether or not each of them can be read.
class ReadBack {
 public:
  ReadBack(const Program& onto, std::string_view image) : program_(onto), image_(image) {
    DecodeSystem(program_, image.substr(kSystemAt, kSystemBytes));
  }

  [[nodiscard]] std::string_view Slot(int line) const {
    return image_.substr(static_cast<std::size_t>(line) * kSlotBytes, kSlotBytes);
  }
  /// The line's short text.
  std::string Read(int line) {
    try {
      Decode(program_, line, Slot(line), image_.substr(kPoolAt, kPoolBytes));
    } catch (const DecodeError& error) {
      return "cannot be read: " + std::string(error.what());
    }
    return TextOf(program_, line);
  }
  /// The line's prompt text; nothing on a line that is no prompt.
  [[nodiscard]] std::string_view Prompt(int line) const {
    const Instruction& record = program_.Prog[line];
    return record.Type == MMI ? std::string_view(record.Text) : std::string_view();
  }

 private:
  Program program_;
  std::string_view image_;
};

/// The hub's bytes of a line without the zeros behind it.
std::string_view Used(std::string_view slot, std::size_t at_least) {
  return slot.substr(0, std::max(slot.find_last_not_of('\0') + 1, at_least));
}

class Comparer {
 public:
  Comparer(const Program& program, const CompiledProgram& compiled, std::string_view image)
      : program_(program), compiled_(compiled), image_(image), own_image_(ImageOf(compiled)) {}

  Comparison Run() {
    Comparison found;
    found.lines = CompareLines();
    found.settings = CompareSettings(std::string_view(own_image_).substr(kSystemAt, kSystemBytes),
                                     image_.substr(kSystemAt, kSystemBytes));
    ComparePool(found);
    return found;
  }

 private:
  std::vector<LineDifference> CompareLines() {
    std::vector<LineDifference> found;
    ReadBack own(program_, own_image_);
    ReadBack hub(program_, image_);
    for (int line = 0; line < kLines; ++line) {
      const std::string bytes = compiled_.lines[line].substr(0, kSlotBytes);
      static_cast<void>(own.Read(line));
      const std::string hub_text = hub.Read(line);
      const bool prompts_differ = own.Prompt(line) != hub.Prompt(line);
      prompts_told_ = prompts_told_ || prompts_differ;
      if (SlotHolds(image_, line, bytes) && !prompts_differ) continue;
      found.push_back({line + 1, TextOf(program_, line), hub_text, bytes,
                       std::string(Used(hub.Slot(line), bytes.size()))});
    }
    return found;
  }

  /// Differing texts of prompts are reported with their lines. This reports the pool only if none of them
  /// was.
  void ComparePool(Comparison& found) const {
    if (PoolHolds(image_, compiled_.pool) || prompts_told_) return;
    const std::string_view own =
        std::string_view(own_image_)
            .substr(kPoolAt, std::min<std::size_t>(compiled_.pool.size(), kPoolBytes));
    const std::string_view hub = image_.substr(kPoolAt, own.size());
    const auto first = static_cast<std::size_t>(std::ranges::mismatch(own, hub).in1 - own.begin());
    found.settings.push_back({std::nullopt,
                              "prompt texts from byte " + Joined(static_cast<int>(first) + 1) + " on",
                              HexOf(own.substr(first, kPoolShown)), HexOf(hub.substr(first, kPoolShown))});
  }

  const Program& program_;
  const CompiledProgram& compiled_;
  std::string_view image_;
  std::string own_image_;
  bool prompts_told_ = false;
};

std::string Counted(std::size_t count, std::string_view what) {
  return Joined(static_cast<int>(count)) + " " + std::string(what) + (count == 1 ? "" : "s");
}

}  // namespace

std::string Comparison::InWords() const {
  return "The hub holds another program: " + Counted(lines.size(), "line") + " and " +
         Counted(settings.size(), "setting") + " differ";
}

Comparison CompareWithHub(const Program& program, const CompiledProgram& compiled, std::string_view image) {
  return Comparer(program, compiled, image).Run();
}

}  // namespace tavlo::cli
