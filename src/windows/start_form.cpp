// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/start_form.h"

#include <QCoreApplication>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "model/program_file.h"
#include "qt/gui/shown_text.h"
#include "session/desk.h"
#include "windows/logo.h"

namespace tavlo {
namespace {

constexpr int kSplashLogo = 64;
constexpr int kSplashPadding = 28;
constexpr double kSplashTitle = 2.0;

}  // namespace

StartForm::StartForm() : QFrame(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("StartForm"));
  setWindowTitle(FromText(kApplicationTitle));
  setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  auto* logo = new Logo(kSplashLogo, this);
  auto* title = new QLabel(FromText(kApplicationTitle), this);
  QFont large = font();
  large.setPixelSize(static_cast<int>(QFontInfo(large).pixelSize() * kSplashTitle));
  title->setFont(large);
  auto* version = new QLabel(QStringLiteral("Version %1").arg(FromText(VersionTextOf(kVersion))), this);
  version->setObjectName(QStringLiteral("ver"));

  auto* texts = new QVBoxLayout;
  texts->setSpacing(2);
  texts->addStretch(1);
  texts->addWidget(title);
  texts->addWidget(version);
  texts->addStretch(1);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kSplashPadding, kSplashPadding, kSplashPadding + kSplashPadding, kSplashPadding);
  row->setSpacing(kSplashPadding);
  row->addWidget(logo);
  row->addLayout(texts);
}

void StartForm::ShowAtOnce() {
  adjustSize();
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }
  show();
  // The window system must have mapped it before it can be painted.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  repaint();
}

}  // namespace tavlo
