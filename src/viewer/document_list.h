// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include <QListWidget>
#include <QStringList>
#include <QTimer>
#include <utility>

namespace tavlo::viewer {

/// The titles of the documents of a folder, in the order of the alphabet.
class DocumentList : public QListWidget {
  Q_OBJECT

 public:
  explicit DocumentList(QWidget* parent);
  /// Marks the document that is shown, an absolute path, and lists the folder that it is in if that is
  /// another one than before.
  void ShowDocument(const QString& path);
  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void Chosen(const QString& path);

 private:
  void List(const QString& folder);
  void ReadTitle();
  void Mark();

  QString folder_;
  QString shown_;
  /// Files whose titles are still to be read, one at each turn of the event loop.
  QStringList waiting_;
  QTimer next_;
};

}  // namespace tavlo::viewer
