// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>

#include "platform/help.h"

namespace tavlo {

/// The viewer `OskelHelp` and the folder Help, both beside the program.
class QtHelp : public Help {
 public:
  /// `folder` is that of the program.
  explicit QtHelp(QString folder) : folder_(std::move(folder)) {}

 protected:
  [[nodiscard]] int StartViewer() override;
  [[nodiscard]] bool SetIndex(std::string_view file) override;

 private:
  [[nodiscard]] QString Viewer() const;
  /// `HelpPath`: what comes before the name of a document.
  [[nodiscard]] QString HelpPath() const;

  QString folder_;
  /// The viewer was seen to run.
  bool runs_ = false;
};

}  // namespace tavlo
