// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/document_list.h"

#include <QDir>
#include <QFileInfo>
#include <QPdfDocument>
#include <QScrollBar>
#include <QSignalBlocker>

#include "viewer/document_file.h"
#include "widgets/font_size.h"

namespace tavlo::viewer {
namespace {

/// A folder with more is none of help documents.
constexpr qsizetype kMostFiles = 200;
constexpr int kWidth = 210;
constexpr int kPathRole = Qt::UserRole;

class TitleItem : public QListWidgetItem {
 public:
  using QListWidgetItem::QListWidgetItem;
  bool operator<(const QListWidgetItem& other) const override {
    return text().compare(other.text(), Qt::CaseInsensitive) < 0;
  }
};

}  // namespace

DocumentList::DocumentList(QWidget* parent) : QListWidget(parent) {
  setObjectName(QStringLiteral("Documents"));
  setAccessibleName(QStringLiteral("Documents"));
  verticalScrollBar()->setAccessibleName(QStringLiteral("Scroll documents"));
  horizontalScrollBar()->setAccessibleName(QStringLiteral("Scroll documents sideways"));
  setSortingEnabled(true);
  setTextElideMode(Qt::ElideRight);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(&next_, &QTimer::timeout, this, &DocumentList::ReadTitle);
  connect(this, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item != nullptr) emit Chosen(item->data(kPathRole).toString());
  });
}

QSize DocumentList::sizeHint() const {
  return {ByFont(fontMetrics(), kWidth), QListWidget::sizeHint().height()};
}

void DocumentList::ShowDocument(const QString& path) {
  shown_ = path;
  const QString folder = QFileInfo(path).absolutePath();
  if (folder != folder_) List(folder);
  Mark();
}

void DocumentList::List(const QString& folder) {
  const QSignalBlocker quiet(this);
  clear();
  folder_ = folder;
  const QDir dir(folder);
  waiting_.clear();
  for (const QString& name : dir.entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name)) {
    waiting_ += dir.absoluteFilePath(name);
  }
  if (waiting_.size() > kMostFiles) waiting_.clear();
  next_.start(0);
}

void DocumentList::ReadTitle() {
  if (waiting_.isEmpty()) return next_.stop();
  const QString path = waiting_.takeFirst();
  QPdfDocument document;
  // One that cannot be shown stands there too: who chooses it is told why.
  static_cast<void>(OpenDocument(document, path));
  const QSignalBlocker quiet(this);
  auto* item = new TitleItem(TitleOf(document, path));
  item->setData(kPathRole, path);
  item->setToolTip(item->text().toHtmlEscaped());
  addItem(item);
  Mark();
}

void DocumentList::Mark() {
  const QSignalBlocker quiet(this);
  for (int row = 0; row < count(); ++row) {
    if (item(row)->data(kPathRole).toString() != shown_) continue;
    setCurrentRow(row);
    scrollToItem(item(row));
    return;
  }
  setCurrentRow(-1);
}

}  // namespace tavlo::viewer
