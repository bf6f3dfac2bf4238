// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <benchmark/benchmark.h>

#include "codegen/compile.h"
#include "commands/undo.h"
#include "forms/feed_length.h"
#include "forms/feed_set_out.h"
#include "full_program.h"
#include "model/program_file.h"
#include "session/edit_step.h"
#include "support/fake_desk.h"
#include "text/short_desc.h"

namespace tavlo::bench {
namespace {

void BM_Load(benchmark::State& state) {
  const std::string text = WriteHubProg(FullProgram(), 0);
  Program program;
  for (auto _ : state) {
    ItemReader items(text);
    std::string version;
    items.Read(version);
    benchmark::DoNotOptimize(LoadHubProg(items, ParseRevision(version), program));
  }
}
BENCHMARK(BM_Load)->Unit(benchmark::kMicrosecond);

void BM_ShortDescOf200Lines(benchmark::State& state) {
  const Program program = FullProgram();
  for (auto _ : state) {
    for (int line = 0; line < kLines; ++line) benchmark::DoNotOptimize(ShortDesc(program, line));
  }
}
BENCHMARK(BM_ShortDescOf200Lines)->Unit(benchmark::kMicrosecond);

void BM_CompileOf200Lines(benchmark::State& state) {
  Program program = FullProgram();
  program.HubVersion = 1.38F;
  for (auto _ : state) benchmark::DoNotOptimize(CompileProgram(program));
}
BENCHMARK(BM_CompileOf200Lines)->Unit(benchmark::kMicrosecond);

/// The analysis page of the dialog of a move, worked out anew.
template <class WhichForm>
void BM_UpdateAnalysis(benchmark::State& state) {
  Program program;
  InitHardware(program.Axis);
  InitProg(program);
  program.Prog[0].Type = FLCS;
  WhichForm form;
  form.Load(program, 0);
  const Bound& over_time = form.Controls().Find("OptTime");
  for (auto _ : state) form.Click(over_time);
}
BENCHMARK(BM_UpdateAnalysis<FeedLength>)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UpdateAnalysis<FeedSetOut>)->Unit(benchmark::kMicrosecond);

/// Taking back an edit that has changed every line and every setting, with all that the rows then show.
void BM_Undo(benchmark::State& state) {
  testing::FakeDesk fakes;
  fakes.source.program = FullProgram();
  {
    const EditStep step(fakes.desk, "clear", EditStep::Hub::Edited);
    InitProg(fakes.source.program);
    InitHardware(fakes.source.program.Axis);
  }
  for (auto _ : state) {
    Undo(fakes.desk);
    state.PauseTiming();
    Redo(fakes.desk);
    fakes.view.rows.clear();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Undo)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tavlo::bench

BENCHMARK_MAIN();
