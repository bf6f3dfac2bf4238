// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#pragma once

#include "hubsim/mount/server.h"
#include "hubsim/options.h"

namespace tavlo::hubsim {

/// Serves a hub and shows it in a window, until that is closed, `quit` is typed or a stop signal comes. Gives
/// the exit code. Throws std::runtime_error as `Server` does, and where there is nothing to show a window on.
[[nodiscard]] int RunPanel(int& argc, char** argv, const HubOptions& hub_options,
                           const ServerOptions& server_options);

}  // namespace tavlo::hubsim
