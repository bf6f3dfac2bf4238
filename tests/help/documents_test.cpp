// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPdfDocument>
#include <QRegularExpression>
#include <QTabWidget>
#include <map>
#include <set>

#include "forms/registry.h"
#include "windows/window_walk.h"

// What operators read is true of the windows that they see.

namespace tavlo::testing {
namespace {

/// As it is read on the screen.
QString Shown(QString text) {
  static const QString kAmpersand(QChar(1));
  text.replace(QStringLiteral("&&"), kAmpersand);
  text.remove(QLatin1Char('&'));
  return text.replace(kAmpersand, QStringLiteral("&")).simplified();
}

/// What stands on a control, or beside it to say what it is. Nothing for one whose text is a value.
QString CaptionOf(const QWidget& widget) {
  static const std::set<QString> kCaptions = {"CStoLabel", "LblClearance", "lblvarname", "LblFound"};
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    const bool is_value = !label->objectName().isEmpty() && !kCaptions.contains(label->objectName());
    return is_value ? QString() : label->text();
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) return group->title();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  return {};
}

/// Those that depend on the drive, and those that every dialog has.
bool IsOfEveryDialog(const QWidget& widget) {
  static const QRegularExpression kNames(
      QStringLiteral("^(OptIn|OptSum|optout|lblCurrent)|^(OK|Cancel|Help|invisible)$"));
  return kNames.match(widget.objectName()).hasMatch();
}

struct Captions {
  /// All that can be read in the window.
  std::set<QString> all;
  /// Those that its document must tell about.
  std::set<QString> own;
};

void Gather(const QWidget& window, Captions& captions) {
  captions.all.insert(window.windowTitle().simplified());
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) {
      for (int page = 0; page < tabs->count(); ++page) captions.own.insert(Shown(tabs->tabText(page)));
    }
    // One of the keys of a menu stands for all of them.
    static const QRegularExpression kKey(QStringLiteral("presses [2-8]"));
    const QString caption = Shown(CaptionOf(*widget)).replace(kKey, QStringLiteral("presses 1"));
    if (caption.isEmpty()) continue;
    captions.all.insert(caption);
    // Of numbers and units there is nothing to be told.
    if (caption.size() > 1 && !IsOfEveryDialog(*widget)) captions.own.insert(caption);
  }
  captions.all.insert(captions.own.begin(), captions.own.end());
}

/// By the object names of the windows.
const std::map<QString, Captions>& CaptionsOfWindows() {
  static const std::map<QString, Captions> captions = [] {
    std::map<QString, Captions> all;
    ForEachWindow([&](QWidget& window, const std::string&) { Gather(window, all[window.objectName()]); });
    return all;
  }();
  return captions;
}

struct Document {
  QString file;
  /// The window that it is about; empty for the two that are about several.
  QString window;
};

QList<Document> Documents() {
  std::map<QString, QString> found;
  for (int type = 0; type < kTypes; ++type) {
    if (const FormRow* row = FormOf(type)) {
      found[QString::fromUtf8(row->help.data(), static_cast<qsizetype>(row->help.size()))] =
          QString::fromUtf8(row->name.data(), static_cast<qsizetype>(row->name.size()));
    }
  }
  found["hardware.pdf"] = "Hardware";
  found["Hub Composer.pdf"] = found["Host Command Reference.pdf"] = QString();
  QList<Document> documents;
  for (const auto& [file, window] : found) documents.append({file, window});
  return documents;
}

QString ReadFile(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

QString SourceOf(const Document& document) {
  return ReadFile(QString(TAVLO_HELP_SOURCES) + "/" + QString(document.file).replace(".pdf", ".md"));
}

/// Without the messages that it quotes, and without what is marked in it.
QString PlainText(QString markdown) {
  static const QRegularExpression kLink(QStringLiteral(R"(!?\[([^\]]*)\]\([^)]*\))"));
  markdown.replace(kLink, "\\1");
  return markdown.remove("**").remove("`").simplified();
}

/// What is set in bold, as a control is; a remark that is a sentence is none.
QStringList BoldIn(const QString& markdown) {
  static const QRegularExpression kBold(QStringLiteral(R"(\*\*(.+?)\*\*)"),
                                        QRegularExpression::DotMatchesEverythingOption);
  static const QRegularExpression kQuotes(QStringLiteral("^>.*$"), QRegularExpression::MultilineOption);
  QStringList bold;
  QString text = markdown;
  text.remove(kQuotes);
  for (auto each = kBold.globalMatch(text); each.hasNext();) {
    const QString words = each.next().captured(1).simplified();
    static const QRegularExpression kSentence(QStringLiteral("[.,]$"));
    if (!kSentence.match(words).hasMatch()) bold += words;
  }
  return bold;
}

TEST(HelpDocuments, AreThereForEveryDialogUnderTheTitleOfItsWindow) {
  for (const Document& document : Documents()) {
    SCOPED_TRACE(document.file.toStdString());
    QPdfDocument pdf;
    ASSERT_EQ(pdf.load(QString(TAVLO_HELP_FOLDER) + "/" + document.file), QPdfDocument::Error::None);
    EXPECT_GE(pdf.pageCount(), 1);
    const QString title = pdf.metaData(QPdfDocument::MetaDataField::Title).toString();
    if (document.window.isEmpty()) {
      EXPECT_EQ(title + ".pdf", document.file);
    } else {
      EXPECT_TRUE(CaptionsOfWindows().at(document.window).all.contains(title)) << title.toStdString();
    }
  }
}

TEST(HelpDocuments, AreThereForNothingElse) {
  QStringList wanted;
  for (const Document& document : Documents()) wanted += document.file;
  wanted.sort();
  QStringList there = QDir(TAVLO_HELP_FOLDER).entryList({"*.pdf"}, QDir::Files);
  there.sort();
  EXPECT_EQ(there, wanted);
}

TEST(HelpDocuments, NameNoControlThatThereIsNot) {
  std::set<QString> anywhere;
  for (const auto& [window, captions] : CaptionsOfWindows()) {
    anywhere.insert(captions.all.begin(), captions.all.end());
  }
  for (const Document& document : Documents()) {
    const QStringList named = BoldIn(SourceOf(document));
    EXPECT_GT(named.size(), 0) << document.file.toStdString();
    for (const QString& words : named) {
      EXPECT_TRUE(anywhere.contains(words)) << document.file.toStdString() << ": " << words.toStdString();
    }
  }
}

TEST(HelpDocuments, NameInTheirTablesTheControlsOfTheirOwnDialog) {
  static const QRegularExpression kRow(QStringLiteral(R"(^\|(.*)\|$)"), QRegularExpression::MultilineOption);
  for (const Document& document : Documents()) {
    if (document.window.isEmpty()) continue;
    const Captions& captions = CaptionsOfWindows().at(document.window);
    for (auto each = kRow.globalMatch(SourceOf(document)); each.hasNext();) {
      for (const QString& words : BoldIn(each.next().captured(1))) {
        EXPECT_TRUE(captions.all.contains(words))
            << document.file.toStdString() << ": " << words.toStdString();
      }
    }
  }
}

TEST(HelpDocuments, TellAboutEveryControlOfTheirDialog) {
  for (const Document& document : Documents()) {
    if (document.window.isEmpty()) continue;
    const QString text = PlainText(SourceOf(document));
    for (const QString& caption : CaptionsOfWindows().at(document.window).own) {
      EXPECT_TRUE(text.contains(caption)) << document.file.toStdString() << ": " << caption.toStdString();
    }
  }
}

TEST(HelpDocuments, NameEachOtherByTheirTitles) {
  static const QRegularExpression kLink(QStringLiteral(R"((?<!!)\[([^\]]*)\]\(<?([^)>]*)\.md>?\))"));
  for (const Document& document : Documents()) {
    for (auto each = kLink.globalMatch(SourceOf(document)); each.hasNext();) {
      const QRegularExpressionMatch link = each.next();
      const QString title =
          ReadFile(QString(TAVLO_HELP_SOURCES) + "/" + link.captured(2) + ".md").section('\n', 0, 0);
      // The picker has a shorter name for one of them.
      const QString words =
          link.captured(1).simplified().replace("Feed & Set Output", "Feed to Length & Set Output");
      EXPECT_EQ("# " + words, title) << document.file.toStdString();
    }
  }
}

}  // namespace
}  // namespace tavlo::testing
