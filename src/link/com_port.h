// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "session/desk.h"

namespace tavlo {

inline constexpr int kPorts = 8;
inline constexpr std::string_view kLineSettings = "19200,N,8,1";

/// Opens the port of the last session or, failing that, the first that opens, telling each failure.
/// Goes on without one when none does.
void StartComm(Desk& desk);
/// The operator chose `OptCom` of this index, 0..7. Choosing the port in use does nothing, unless its port is
/// closed or its number leads to another device by now: then it is opened again. A line that was deaf hears
/// from the port that opens.
void ClickOptCom(Desk& desk, int index);
/// Writes the port's number to the settings store.
void RememberPort(Desk& desk);
/// The port has vanished: says so once and frees the choice of port. The program stays as it is. In the
/// middle of an operation this only takes note; the operation tells it at its end.
void TellPortLost(Desk& desk);

}  // namespace tavlo
