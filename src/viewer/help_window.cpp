// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/help_window.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPdfSelection>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "viewer/document_file.h"
#include "viewer/document_list.h"
#include "viewer/page_bar.h"
#include "viewer/page_view.h"
#include "viewer/search_bar.h"
#include "widgets/font_size.h"

namespace tavlo::viewer {
namespace {

constexpr QSize kOpeningSize(980, 860);
constexpr int kMargin = 8;
constexpr int kFrame = 40;
const QString kWindowTitle = QStringLiteral("Help");

QLabel* MakeMessage(QWidget* parent) {
  auto* message = new QLabel(parent);
  message->setObjectName(QStringLiteral("Message"));
  message->setTextFormat(Qt::PlainText);
  message->setWordWrap(true);
  message->setAlignment(Qt::AlignCenter);
  message->setMargin(4 * kMargin);
  message->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  return message;
}

}  // namespace

HelpWindow::HelpWindow()
    : search_(document_),
      documents_(new DocumentList(this)),
      panes_(new QStackedWidget(this)),
      pages_(new PageView(document_, panes_)),
      message_(MakeMessage(panes_)),
      page_bar_(new PageBar(*pages_, this)),
      search_bar_(new SearchBar(search_, this)) {
  setObjectName(QStringLiteral("HelpWindow"));
  setWindowTitle(kWindowTitle);
  LayOut();
  Connect();
  AddKeys();
}

// The children go after the document that they show.
HelpWindow::~HelpWindow() {
  search_bar_->disconnect(this);
  pages_->disconnect(this);
  document_.disconnect(pages_);
  pages_->setDocument(nullptr);
}

void HelpWindow::LayOut() {
  panes_->addWidget(pages_);
  panes_->addWidget(message_);
  auto* right = new QWidget(this);
  auto* column = new QVBoxLayout(right);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(4);
  column->addWidget(page_bar_);
  column->addWidget(search_bar_);
  column->addWidget(panes_, 1);
  search_bar_->hide();
  auto* both = new QSplitter(this);
  both->addWidget(documents_);
  both->addWidget(right);
  both->setStretchFactor(1, 1);
  both->setChildrenCollapsible(false);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  row->addWidget(both);
  const QSize wanted(ByFont(fontMetrics(), kOpeningSize.width()),
                     ByFont(fontMetrics(), kOpeningSize.height()));
  resize(wanted.boundedTo(screen()->availableSize() - QSize(kFrame, kFrame)));
  pages_->setFocus();
}

void HelpWindow::Connect() {
  connect(documents_, &DocumentList::Chosen, this, &HelpWindow::Open);
  connect(page_bar_, &PageBar::FindPressed, search_bar_, &SearchBar::Begin);
  connect(search_bar_, &SearchBar::Typed, this,
          [this](const QString& text) { search_.Find(text, pages_->CurrentPage()); });
  connect(search_bar_, &SearchBar::Closed, this, &HelpWindow::EndSearch);
  connect(&search_, &TextSearch::Changed, this,
          [this] { pages_->SetMarks(search_.Matches(), search_.Current()); });
  connect(&search_, &TextSearch::Reached, pages_, &PageView::Show);
  connect(pages_, &PageView::PageChanged, this, &HelpWindow::SpeakPage);
}

void HelpWindow::AddKeys() {
  const auto on = [this](const QKeySequence& key, auto act) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, act);
  };
  on(QKeySequence::Find, [this] { search_bar_->Begin(); });
  on(Qt::Key_F3, [this] { search_.Step(1); });
  on(Qt::SHIFT | Qt::Key_F3, [this] { search_.Step(-1); });
  on(Qt::CTRL | Qt::Key_PageUp, [this] { pages_->GoTo(pages_->CurrentPage() - 1); });
  on(Qt::CTRL | Qt::Key_PageDown, [this] { pages_->GoTo(pages_->CurrentPage() + 1); });
  on(Qt::CTRL | Qt::Key_Plus, [this] { pages_->Zoom(1); });
  on(Qt::CTRL | Qt::Key_Equal, [this] { pages_->Zoom(1); });
  on(Qt::CTRL | Qt::Key_Minus, [this] { pages_->Zoom(-1); });
  on(Qt::CTRL | Qt::Key_0, [this] { pages_->FitWidth(); });
  on(Qt::CTRL | Qt::Key_Q, [this] { close(); });
  on(Qt::CTRL | Qt::Key_W, [this] { close(); });
  on(Qt::Key_Escape, [this] {
    if (search_bar_->isVisible()) return search_bar_->hide();
    close();
  });
}

void HelpWindow::Open(const QString& path) {
  const QString absolute = QFileInfo(path).absoluteFilePath();
  const QString why = OpenDocument(document_, absolute);
  setWindowTitle(QStringLiteral("%1 - %2").arg(TitleOf(document_, absolute), kWindowTitle));
  message_->setText(why);
  panes_->setCurrentWidget(why.isEmpty() ? static_cast<QWidget*>(pages_) : message_);
  pages_->verticalScrollBar()->setValue(0);
  search_.Find(search_bar_->Text(), 0);
  page_bar_->ShowState();
  SpeakPage();
  documents_->ShowDocument(absolute);
}

void HelpWindow::ComeToFront() {
  if (isMinimized()) showNormal();
  show();
  raise();
  activateWindow();
}

void HelpWindow::EndSearch() {
  search_.Find({}, 0);
  pages_->setFocus();
}

void HelpWindow::SpeakPage() {
  if (pages_->PageCount() == 0) return pages_->setAccessibleDescription({});
  const int page = pages_->CurrentPage();
  pages_->setAccessibleName(QStringLiteral("Page %1 of %2").arg(page + 1).arg(pages_->PageCount()));
  pages_->setAccessibleDescription(document_.getAllText(page).text());
}

/// Keys that the control in which they were pressed has no use for.
void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_PageDown) return pages_->Turn(1);
  if (event->key() == Qt::Key_PageUp) return pages_->Turn(-1);
  QWidget::keyPressEvent(event);
}

}  // namespace tavlo::viewer
