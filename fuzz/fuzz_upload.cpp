// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// An upload from a hub that answers whatever the input says, whenever it says. In front stands how each
// command is answered; the memory stands behind.
#include "image.h"
#include "link/com_port.h"
#include "link/polled.h"
#include "link/upload.h"
#include "watched_desk.h"

namespace tavlo::fuzzing {
namespace {

constexpr double kLatest = 2.0;

/// The memory and its sum; by `choice` cut, longer, or with a byte changed.
std::string Answer(Input& input, int choice, int where) {
  std::string image = MakeImage(input);
  image.resize(kImageBytes, '\0');
  const int sum = static_cast<int>(SumStr(image) % 65536);
  image += static_cast<char>(sum / 256);
  image += static_cast<char>(sum % 256);
  const std::size_t at = static_cast<std::size_t>(where) * 33 % image.size();
  if (choice % 8 == 1) image.erase(at, 1);
  if (choice % 8 == 2) image.insert(at, 1, 'Y');
  if (choice % 8 == 3) image[at] = static_cast<char>(image[at] ^ 16);
  if (choice % 8 == 4) image.resize(at);
  return image;
}

/// Answers "C" and "U".
struct WildHub {
  WildHub(WatchedDesk& desk, Input& bytes) : d(desk), input(bytes) {
    for (int& choice : identity) choice = input.Byte();
    for (int& choice : upload) choice = input.Byte();
    d.port.on_output = [this](const std::string& sent) {
      if (sent == "C") Identify();
      if (sent == "U") Upload();
    };
    d.loop.on_yield = [this] {
      if (upload[3] % 16 == 1 && d.loop.yields > upload[2]) d.port.is_open = false;
    };
  }

  void Identify() {
    const int choice = identity[asked++ % identity.size()];
    const double delay = choice % 16 == 15 ? kLatest : 0;
    if (choice % 16 == 14) return;
    std::string reply = {static_cast<char>(choice), choice % 2 == 0 ? '\x08' : '\x18'};
    if (choice % 16 == 13) reply = input.Take(3);
    d.port.Reply(reply, delay);
  }
  void Upload() {
    const std::string answer = Answer(input, upload[0], upload[1]);
    const std::size_t half = static_cast<std::size_t>(upload[2]) * 33 % (answer.size() + 1);
    d.port.Reply(answer.substr(0, half));
    d.port.Reply(answer.substr(half), upload[3] % 16 == 2 ? 3 * kLatest : kLatest);
  }

  WatchedDesk& d;
  Input& input;
  std::array<int, 3> identity{};
  std::array<int, 4> upload{};
  std::size_t asked = 0;
};

}  // namespace
}  // namespace tavlo::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace tavlo;
  fuzzing::Input input(data, size);
  fuzzing::WatchedDesk d(input);
  fuzzing::WildHub hub(d, input);
  d.Line(0).Type = FL;
  d.Line(0).Text = "stays";
  d.source.Changed = true;
  const Program before = d.source.program;
  const double start = d.clock.now;
  const auto result = Upload(d.desk);
  // The event loop's next turn.
  if (PortHasGone(d.desk.link())) TellPortLost(d.desk);
  const Program& after = d.source.program;
  const bool same = after.Prog == before.Prog && after.Axis == before.Axis;
  fuzzing::Require(result == UploadResult::Done || same, "a failed upload leaves the program as it was");
  fuzzing::Require(result == UploadResult::Done || !d.boxes.shown.empty(), "a failed upload is told");
  fuzzing::Require(d.source.Changed == (result != UploadResult::Done), "only a whole upload is unchanged");
  fuzzing::Require(!d.source.link.Busy && !d.upbox.visible, "an upload ends");
  fuzzing::Require(d.clock.now - start < 60, "an upload ends in time");
  fuzzing::UseProgram(after);
  d.RequireInRange();
  return 0;
}
