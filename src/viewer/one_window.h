// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QLocalServer>
#include <QString>
#include <functional>

class QLocalSocket;

namespace tavlo::viewer {

/// Keeps the viewer to one window for each user: a viewer that is started later hands its document to the one
/// that runs.
class OneWindow {
 public:
  /// `folder` is one that belongs to this user alone; it is made if it does not exist. Where it cannot be
  /// used, each viewer has a window of its own.
  explicit OneWindow(QString folder);

  /// Returns whether a viewer that runs already shows the document now, an absolute path. If there is none,
  /// or if it does not answer within two seconds, this one is what later viewers hand theirs to.
  [[nodiscard]] bool HandOver(const QString& document);

  /// What a later viewer hands over; empty if it was started without a document.
  std::function<void(const QString& document)> OnDocument;

 private:
  [[nodiscard]] bool HandedTo(const QString& server, const QString& document) const;
  void Serve(const QString& server);
  void Take(QLocalSocket& later);

  QString folder_;
  QLocalServer server_;
};

/// Returns the folder for it: tavlo-composer in the folder that the system keeps for this user, empty if
/// there is none.
[[nodiscard]] QString FolderOfThisUser();

}  // namespace tavlo::viewer
