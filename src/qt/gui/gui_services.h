// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <deque>
#include <string>
#include <vector>

#include "platform/services.h"

namespace tavlo {

// The services that need a screen. Each modal one has a seam: an answer that is set beforehand is given
// without anything being shown.

/// The message boxes on QMessageBox, their texts plain.
class GuiMessageBoxes : public MessageBoxes {
 public:
  /// Answers the next box, or the next but one if called twice, in place of the operator.
  void setNextAnswer(Answer answer) { answers_.push_back(answer); }
  /// The latest boxes, oldest first, answered by whomever.
  [[nodiscard]] const std::deque<Box>& Shown() const { return shown_; }

 protected:
  Answer Show(const Box& box) override;

 private:
  std::deque<Answer> answers_;
  std::deque<Box> shown_;
};

/// The file dialogs on QFileDialog. They open where the last one was left.
class GuiFileDialogs : public FileDialogs {
 public:
  std::optional<std::string> SaveFileName(const FileDialogSetup& setup) override;
  std::optional<std::string> OpenFileName(const FileDialogSetup& setup) override;

  /// The path that the next dialog gives; nothing for a cancelled one.
  void setNextFileName(std::optional<std::string> path) { answers_.push_back(std::move(path)); }

 private:
  enum class Kind { Open, Save };
  std::optional<std::string> Ask(Kind kind, const FileDialogSetup& setup);

  std::deque<std::optional<std::string>> answers_;
  QString folder_;
};

class GuiBeeper : public Beeper {
 public:
  void Beep() override;
};

}  // namespace tavlo
