// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// Runs a fuzz target where the compiler brings no fuzzer: every file of its corpus, then a fixed number of
// mutations of them, always the same ones. A finding ends the run; its input is left in crash-TARGET.
#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace {

constexpr unsigned kSeed = 20;
constexpr std::size_t kMostChanges = 6;
constexpr std::size_t kLongestPiece = 64;

std::string* running = nullptr;
std::string crash_file;

void SaveInput() {
  if (std::FILE* file = std::fopen(crash_file.c_str(), "wb")) {
    static_cast<void>(std::fwrite(running->data(), 1, running->size(), file));
    std::fclose(file);
    std::fprintf(stderr, "The input is in %s\n", crash_file.c_str());
  }
}

void Die(int signal) {
  SaveInput();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void Run(std::string& input) {
  running = &input;
  static_cast<void>(
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size()));
}

std::vector<std::string> ReadCorpus(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
  std::ranges::sort(files);
  std::vector<std::string> corpus;
  for (const auto& file : files) {
    std::ifstream stream(file, std::ios::binary);
    corpus.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  return corpus;
}

class Mutator {
 public:
  explicit Mutator(const std::vector<std::string>& corpus) : corpus_(corpus) {}

  std::string Next() {
    std::string bytes = corpus_[Below(corpus_.size())];
    for (std::size_t changes = 1 + Below(kMostChanges); changes > 0; --changes) Change(bytes);
    return bytes;
  }

 private:
  std::size_t Below(std::size_t limit) { return engine_() % limit; }
  char AnyByte() {
    constexpr std::string_view kTelling("\x00\x01\x07\x08\x0f\x10\x1b\x7f\x80\xd3\xfe\xff", 12);
    return Below(2) == 0 ? kTelling[Below(kTelling.size())] : static_cast<char>(Below(256));
  }
  void Change(std::string& bytes) {
    const std::size_t at = Below(bytes.size() + 1);
    const std::size_t piece = 1 + Below(kLongestPiece);
    const std::string& other = corpus_[Below(corpus_.size())];
    switch (Below(6)) {
      case 0:
        if (at < bytes.size()) bytes[at] = AnyByte();
        break;
      case 1:
        if (at < bytes.size()) bytes[at] = static_cast<char>(bytes[at] ^ (1 << Below(8)));
        break;
      case 2: bytes.insert(at, 1, AnyByte()); break;
      case 3: bytes.erase(at, piece); break;
      case 4: bytes.insert(at, bytes.substr(std::min(bytes.size(), Below(bytes.size() + 1)), piece)); break;
      default: bytes.insert(at, other.substr(Below(other.size() + 1), piece)); break;
    }
  }

  const std::vector<std::string>& corpus_;
  std::mt19937 engine_{kSeed};
};

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv, argv + argc);
  int runs = 0;
  if (arguments.size() != 3 ||
      std::from_chars(arguments[2].data(), arguments[2].data() + arguments[2].size(), runs).ec !=
          std::errc()) {
    std::fprintf(stderr, "usage: %s CORPUS_FOLDER MUTATIONS\n", argv[0]);
    return 2;
  }
  const std::string target = std::filesystem::path(arguments[0]).filename().string();
  crash_file = "crash-" + target;
  std::signal(SIGABRT, Die);
  std::signal(SIGSEGV, Die);
  if (__sanitizer_set_death_callback != nullptr) __sanitizer_set_death_callback(SaveInput);
  std::vector<std::string> corpus = ReadCorpus(arguments[1]);
  if (corpus.empty()) {
    std::fprintf(stderr, "No corpus in %s\n", argv[1]);
    return 2;
  }
  for (std::string& input : corpus) Run(input);
  Mutator mutator(corpus);
  for (int run = 0; run < runs; ++run) {
    std::string input = mutator.Next();
    Run(input);
  }
  std::printf("%s: %zu inputs of its corpus, %d mutations, no finding\n", target.c_str(), corpus.size(),
              runs);
  return 0;
}
