// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <deque>
#include <string>
#include <vector>

#include "platform/services.h"

namespace tavlo {

// The services that need a screen. Tests can answer each modal one beforehand: it then returns that answer
// and shows nothing.

/// The message boxes on QMessageBox, with plain texts.
class GuiMessageBoxes : public MessageBoxes {
 public:
  /// Answers the next box instead of the operator. Several calls answer the next boxes in turn.
  void setNextAnswer(Answer answer) { answers_.push_back(answer); }
  /// The latest boxes, oldest first, whoever answered them.
  [[nodiscard]] const std::deque<Box>& Shown() const { return shown_; }

 protected:
  Answer Show(const Box& box) override;

 private:
  std::deque<Answer> answers_;
  std::deque<Box> shown_;
};

/// The file dialogs on QFileDialog. They open in the folder of the last one.
class GuiFileDialogs : public FileDialogs {
 public:
  std::optional<std::string> SaveFileName(const FileDialogSetup& setup) override;
  std::optional<std::string> OpenFileName(const FileDialogSetup& setup) override;

  /// Sets the path that the next dialog returns; nothing stands for a cancelled dialog.
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
