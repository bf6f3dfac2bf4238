// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "cli/commands/command.h"
#include "cli/console/json_text.h"
#include "cli/console/options.h"
#include "cli/desk/console_desk.h"
#include "codegen/compile.h"
#include "codegen/decode.h"
#include "link/drive_check.h"
#include "platform/number_format.h"
#include "session/source.h"

namespace tavlo::cli {
namespace {

/// Reading stops here: anything longer is no image anyway, and a device may have no end.
constexpr std::size_t kReadLimit = 1 << 20;

/// Reads a hub's memory. Returns nothing after a message if that fails.
std::optional<std::string> ReadImageFile(Console& console, const std::string& path) {
  std::string reason;
  auto image = ReadFile(console, path, kReadLimit, reason);
  if (!image) {
    console.Note("cannot read " + path + (reason.empty() ? "" : ": " + reason));
    return std::nullopt;
  }
  if (image->size() == kImageBytes) return image;
  const std::string size =
      (image->size() < kReadLimit ? "" : "at least ") + Joined(static_cast<int>(image->size()));
  console.Note(ShownName(path, kStandardInput) + ": has " + size + (image->size() == 1 ? " byte" : " bytes") +
               "; an image of the hub's memory has " + Joined(kImageBytes));
  return std::nullopt;
}

class DecodeCommand : public Command {
 public:
  [[nodiscard]] std::string_view Name() const override { return "decode"; }
  [[nodiscard]] std::string_view Description() const override {
    return "Turn an image of the hub's memory back into a program file";
  }
  void AddOptions(CLI::App& app) override {
    AddImageToRead(app, image_path_);
    AddNewFile(app, "-o,--output", path_);
    AddFirmware(app, revision_byte_);
    AddJson(app, json_);
  }

  [[nodiscard]] ExitCode Execute(Environment& environment) override {
    Console console(environment);
    if (ResultsCollide(console, json_, path_)) return ExitCode::Usage;
    if (IsSameFile(console, image_path_, path_)) return ExitCode::File;
    const auto image = ReadImageFile(console, image_path_);
    if (!image) return ExitCode::File;
    Source source;
    InitSession(source);
    source.program.HubVersion = RevisionOf(static_cast<unsigned char>(revision_byte_));
    try {
      DecodeImage(source.program, *image);
    } catch (const DecodeError& error) {
      console.Message(error.what());
      return ExitCode::File;
    }
    if (TellUnknownModels(console, ShownName(image_path_, kStandardInput), source.program)) {
      return ExitCode::File;
    }
    if (!SaveProgram(source, console, path_)) return ExitCode::File;
    if (json_) {
      console.Result(JsonLine({{"firmware", VersionOfByte(revision_byte_)},
                               {"lineCount", LinesInUse(source.program)},
                               {"file", path_}}));
    }
    return ExitCode::Done;
  }

 private:
  std::string image_path_;
  std::string path_;
  int revision_byte_ = 38;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeDecodeCommand() {
  return std::make_unique<DecodeCommand>();
}

}  // namespace tavlo::cli
