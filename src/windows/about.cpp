// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/about.h"

#include <QFile>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QVBoxLayout>

#include "model/program_file.h"
#include "qt/gui/shown_text.h"
#include "session/desk.h"
#include "widgets/font_size.h"
#include "windows/logo.h"

namespace tavlo {
namespace {

constexpr int kAboutLogo = 48;
constexpr int kAboutPadding = 16;
constexpr int kTextWidth = 430;
constexpr int kLicenceRows = 9;
constexpr double kAboutTitle = 1.6;

QLabel* MakeText(const QString& text, const char* name, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(QLatin1String(name));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setMinimumWidth(ByFont(parent->fontMetrics(), kTextWidth));
  return label;
}

/// Its lines end where the box has room, not where those of the file do.
QString Licence() {
  static const QRegularExpression line_end(QStringLiteral("(?<!\\n)\\n(?!\\n)"));
  QFile file(QStringLiteral(":/LICENSE"));
  static_cast<void>(file.open(QIODevice::ReadOnly));
  return QString::fromUtf8(file.readAll()).trimmed().replace(line_end, QStringLiteral(" "));
}

QPlainTextEdit* MakeLicence(QWidget* parent) {
  auto* licence = new QPlainTextEdit(Licence(), parent);
  licence->setObjectName(QStringLiteral("licence"));
  licence->setAccessibleName(QStringLiteral("Licence of the program"));
  for (QScrollBar* bar : {licence->verticalScrollBar(), licence->horizontalScrollBar()}) {
    bar->setAccessibleName(QStringLiteral("Scroll licence"));
  }
  licence->setReadOnly(true);
  licence->setTabChangesFocus(true);
  licence->setFixedHeight(licence->fontMetrics().lineSpacing() * kLicenceRows);
  return licence;
}

QVBoxLayout* MakeNames(QWidget* parent) {
  auto* title = new QLabel(FromText(kApplicationTitle), parent);
  QFont large = parent->font();
  large.setPixelSize(static_cast<int>(QFontInfo(large).pixelSize() * kAboutTitle));
  title->setFont(large);
  auto* version = new QLabel(QStringLiteral("Version %1").arg(FromText(VersionTextOf(kVersion))), parent);
  version->setObjectName(QStringLiteral("ver"));
  auto* names = new QVBoxLayout;
  names->addWidget(title);
  names->addWidget(version);
  return names;
}

}  // namespace

About::About(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("About"));
  setWindowTitle(QStringLiteral("About"));
  auto* head = new QHBoxLayout;
  head->setSpacing(kAboutPadding);
  head->addWidget(new Logo(kAboutLogo, this));
  head->addLayout(MakeNames(this));
  head->addStretch(1);
  auto* close = new QPushButton(QStringLiteral("&Close"), this);
  close->setObjectName(QStringLiteral("Close"));
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(close);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kAboutPadding, kAboutPadding, kAboutPadding, kAboutPadding);
  column->setSpacing(kAboutPadding / 2);
  column->addLayout(head);
  column->addWidget(
      MakeText(QStringLiteral("This program is free software under the MIT licence:"), "own", this));
  column->addWidget(MakeLicence(this));
  column->addWidget(MakeText(
      QStringLiteral("It uses Qt %1, copyright The Qt Company Ltd. and other contributors, under the GNU "
                     "Lesser General Public License, version 3 (https://www.gnu.org/licenses/lgpl-3.0).")
          .arg(QLatin1String(qVersion())),
      "toolkit", this));
  column->addLayout(buttons);
  column->setSizeConstraint(QLayout::SetFixedSize);
  close->setFocus();
}

}  // namespace tavlo
