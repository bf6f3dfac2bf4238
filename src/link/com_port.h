// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

inline constexpr int kPorts = 8;
inline constexpr std::string_view kLineSettings = "19200,N,8,1";

/// Opens the port of the last session or, if that fails, the first port that opens. Reports each failure. If
/// no port opens, the program goes on without one.
void StartComm(Desk& desk);
/// The operator chose `OptCom` of this index, 0..7. Choosing the port in use does nothing, unless it is
/// closed or its number now leads to another device: then it is opened again. A line that did not receive
/// events receives them once the new port is open.
void ClickOptCom(Desk& desk, int index);
/// Writes the port's number to the settings store.
void RememberPort(Desk& desk);
/// The port has vanished: reports it once and frees the choice of port. The program stays as it is. During an
/// operation this only takes note; the operation reports it at its end.
void TellPortLost(Desk& desk);

}  // namespace tavlo
