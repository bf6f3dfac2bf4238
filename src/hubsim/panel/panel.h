// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include "hubsim/mount/server.h"
#include "hubsim/options.h"

namespace tavlo::hubsim {

/// Serves a hub and shows it in a window, until the window is closed, `quit` is typed or a stop signal comes.
/// Returns the exit code. Throws std::runtime_error where `Server` does, and if there is no display to show a
/// window on.
[[nodiscard]] int RunPanel(int& argc, char** argv, const HubOptions& hub_options,
                           const ServerOptions& server_options);

}  // namespace tavlo::hubsim
