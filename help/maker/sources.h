// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QString>
#include <QStringList>

namespace tavlo::help {

/// A help document as it is written.
struct Source {
  /// The file, and its name without folder and ending, which the finished document keeps.
  QString path;
  QString name;
  QString markdown;
  /// The text of its first heading.
  QString title;
};

/// Returns the document in this file. What is wrong with it is added to `complaints`.
[[nodiscard]] Source ReadSource(const QString& path, QStringList& complaints);

/// Returns a sentence, with file and line, for each picture that cannot be read, each link that leads to none
/// of the documents of this folder, and each document without a title.
[[nodiscard]] QStringList ComplaintsAbout(const Source& source);

}  // namespace tavlo::help
