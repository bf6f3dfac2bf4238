// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include <stdexcept>

#include "hubsim/panel/panel.h"

namespace tavlo::hubsim {

int RunPanel(int& /*argc*/, char** /*argv*/, const HubOptions& /*hub_options*/,
             const ServerOptions& /*server_options*/) {
  throw std::runtime_error("this build has no panel.");
}

}  // namespace tavlo::hubsim
