// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "session/hub_runs.h"

#include <utility>

namespace tavlo {

void NoteHubRuns(const Link& link, bool runs) {
  if (std::exchange(link.state.HubRuns, runs) == runs) return;
  link.view.StopChanged();
  if (link.keeper != nullptr) link.keeper->Keep(link.source);
}

}  // namespace tavlo
