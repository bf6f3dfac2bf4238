// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "commands/print_listing.h"

#include "text/shown_listing.h"

namespace tavlo {

void PrintListing(Desk& desk) {
  if (desk.printer == nullptr || !desk.printer->AskPrinter()) return;
  const std::string& name = desk.source.file_name;
  const Outcome printed = desk.printer->Print(OnPaper(MakeListing(desk.program(), name), name));
  if (printed) return;
  desk.boxes.MsgBox({.text = "The listing could not be printed: " + printed.Why(),
                     .title = "Print",
                     .icon = Icon::Exclamation});
}

}  // namespace tavlo
