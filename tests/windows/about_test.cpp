// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "windows/about.h"

#include <QAbstractButton>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimer>

#include "model/program_file.h"
#include "windows/window_session.h"

namespace tavlo::testing {
namespace {

/// Clicks the logo and acts while the window stands.
void WhileAbout(RunningSession& session, const std::function<void(About&)>& act) {
  bool stood = false;
  QTimer::singleShot(0, &session.Main(), [&] {
    auto* about = session.Main().findChild<About*>(QStringLiteral("About"));
    ASSERT_NE(about, nullptr);
    about->activateWindow();
    QTest::qWait(0);
    stood = about->isVisible() && about->isModal();
    act(*about);
    EXPECT_FALSE(about->isVisible());
  });
  session.Find<QAbstractButton>("corplogo")->click();
  EXPECT_TRUE(stood);
}

QString TextOf(About& about, const char* name) {
  return about.findChild<QLabel*>(QLatin1String(name))->text();
}

TEST(AboutWindow, TellsTheVersionAndBothLicences) {
  RunningSession session;
  WhileAbout(session, [](About& about) {
    EXPECT_EQ(TextOf(about, "ver").toStdString(), "Version " + VersionTextOf(kVersion));
    const QString licence = about.findChild<QPlainTextEdit*>(QStringLiteral("licence"))->toPlainText();
    EXPECT_TRUE(licence.startsWith(QStringLiteral("MIT License\n"))) << licence.toStdString();
    EXPECT_TRUE(licence.contains(QStringLiteral("The Tavlo Composer authors")));
    EXPECT_TRUE(TextOf(about, "toolkit").contains(QStringLiteral("Qt ") + QLatin1String(qVersion())));
    EXPECT_TRUE(TextOf(about, "toolkit").contains(QStringLiteral("Lesser General Public License")));
    about.reject();
  });
}

TEST(AboutWindow, ClosesAtEnterAtEscapeAndAtItsButton) {
  RunningSession session;
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
    WhileAbout(session, [key](About& about) { QTest::keyClick(about.focusWidget(), key); });
    WhileAbout(session, [key](About& about) {
      auto* licence = about.findChild<QPlainTextEdit*>(QStringLiteral("licence"));
      licence->setFocus();
      QTest::keyClick(licence, key);
    });
  }
  WhileAbout(session, [](About& about) {
    QTest::mouseClick(about.findChild<QAbstractButton*>(QStringLiteral("Close")), Qt::LeftButton);
  });
}

TEST(AboutWindow, DoesNotComeUpUnderAnotherWindow) {
  RunningSession session;
  WhileAbout(session, [&](About& about) {
    // A screen reader can press what a click does not reach.
    session.Find<QAbstractButton>("corplogo")->click();
    EXPECT_EQ(session.Main().findChildren<About*>().size(), 1);
    about.reject();
  });
}

}  // namespace
}  // namespace tavlo::testing
