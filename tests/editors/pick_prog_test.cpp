// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "editors/pick_prog.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <set>

#include "forms/registry.h"
#include "model/kinds.h"

namespace tavlo::testing {
namespace {

/// The picker on the screen, with an operator before it.
struct PickBench {
  /// Brings the picker up and acts; what still stands then is cancelled.
  void While(const std::function<void()>& act) {
    QTimer::singleShot(0, &picker, [this, act] {
      picker.activateWindow();
      QTest::qWait(0);
      act();
      closed_by_itself = !picker.isVisible();
      picker.reject();
    });
    picker.Run(11, [this](const Picked& picked) {
      presses.push_back(picked);
      return may_close;
    });
  }
  [[nodiscard]] QAbstractButton& Button(const QString& name) {
    return *picker.findChild<QAbstractButton*>(name);
  }
  void Click(const QString& name) { QTest::mouseClick(&Button(name), Qt::LeftButton); }

  PickProg picker{nullptr};
  std::vector<Picked> presses;
  bool may_close = true;
  bool closed_by_itself = false;
};

/// Something is drawn there.
bool HasInk(const QImage& image) {
  const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < pixels.height(); ++y) {
    for (int x = 0; x < pixels.width(); ++x) {
      if (qAlpha(pixels.pixel(x, y)) > 0) return true;
    }
  }
  return false;
}

TEST(PickProg, HasOneButtonForEachDialogAndForEachKindThatIsItsWholeLine) {
  PickBench d;
  d.may_close = false;
  std::set<int> types;
  std::set<std::string_view> forms;
  d.While([&] {
    for (auto* button : d.picker.findChildren<QToolButton*>()) {
      d.presses.clear();
      button->click();
      ASSERT_EQ(d.presses.size(), 1U);
      EXPECT_EQ(d.presses[0].what, Picked::What::Kind);
      const int type = d.presses[0].type;
      EXPECT_TRUE(types.insert(type).second) << "two buttons for " << Mnemonic(type);
      const FormRow* form = FormOf(type);
      EXPECT_TRUE(form == nullptr || forms.insert(form->name).second) << "two buttons for " << form->name;
      EXPECT_FALSE(button->accessibleName().isEmpty()) << Mnemonic(type);
      EXPECT_TRUE(HasInk(button->icon().pixmap(24, 24).toImage())) << Mnemonic(type) << " has no icon";
    }
  });
  EXPECT_EQ(types.size(), 25U);
  for (const Kind& kind : kKinds) {
    const FormRow* form = FormOf(kind.type);
    const bool is_picked = types.contains(kind.type) || (form != nullptr && forms.contains(form->name));
    // The knob comes from a file or a hub alone.
    EXPECT_NE(is_picked, kind.type == FE)
        << "The kind " << kind.mnemonic << " (" << int{kind.type} << ") has no button in the picker, "
        << "and no button brings up a dialog for it.";
  }
}

TEST(PickProg, APressClosesItAndIsPassedOn) {
  PickBench d;
  d.While([&] { d.Click(QStringLiteral("BtnWT")); });
  ASSERT_EQ(d.presses.size(), 1U);
  EXPECT_EQ(d.presses[0].type, WT);
  EXPECT_TRUE(d.closed_by_itself);
}

TEST(PickProg, InsertsAndDeletes) {
  const std::pair<const char*, Picked::What> rows[] = {{"BtnInsert", Picked::What::Insert},
                                                       {"BtnDelete", Picked::What::Delete}};
  for (const auto& [name, what] : rows) {
    PickBench d;
    d.While([&, button = name] { d.Click(QLatin1String(button)); });
    ASSERT_EQ(d.presses.size(), 1U);
    EXPECT_EQ(d.presses[0].what, what);
  }
}

TEST(PickProg, StaysWhenItsQuestionWasCancelled) {
  PickBench d;
  d.may_close = false;
  d.While([&] {
    d.Click(QStringLiteral("BtnDelete"));
    EXPECT_TRUE(d.picker.isVisible());
    d.Click(QStringLiteral("BtnInsert"));
  });
  EXPECT_EQ(d.presses.size(), 2U);
  EXPECT_FALSE(d.closed_by_itself);
}

TEST(PickProg, IsLeftByCancelByEscapeAndByItsFrameWithoutAPress) {
  const std::function<void(PickBench&)> ways[] = {
      [](PickBench& d) { d.Click(QStringLiteral("BtnCancel")); },
      [](PickBench& d) { QTest::keyClick(&d.picker, Qt::Key_Escape); },
      [](PickBench& d) { d.picker.close(); }};
  for (const auto& way : ways) {
    PickBench d;
    d.While([&] { way(d); });
    EXPECT_TRUE(d.closed_by_itself);
    EXPECT_TRUE(d.presses.empty());
  }
}

TEST(PickProg, BeginsAtItsFirstKindEachTime) {
  PickBench d;
  for (int time = 0; time < 2; ++time) {
    d.While([&] {
      EXPECT_EQ(d.picker.focusWidget(), &d.Button(QStringLiteral("BtnFL")));
      d.Button(QStringLiteral("BtnCM")).setFocus();
      QTest::keyClick(&d.Button(QStringLiteral("BtnCM")), Qt::Key_Space);
    });
  }
  EXPECT_EQ(d.presses.size(), 2U);
}

TEST(PickProg, SaysWhichLineItIsFor) {
  PickBench d;
  d.While([&] { EXPECT_EQ(d.picker.windowTitle(), QStringLiteral("Program Line 12")); });
}

TEST(PickProg, SaysOfEachKindWhatItDoes) {
  PickBench d;
  std::set<QString> said;
  for (const auto* button : d.picker.findChildren<QToolButton*>()) {
    EXPECT_FALSE(button->toolTip().isEmpty());
    EXPECT_TRUE(said.insert(button->toolTip()).second) << button->toolTip().toStdString();
    EXPECT_EQ(button->accessibleDescription(), button->toolTip());
  }
}

TEST(PickProg, LettersGoToTheKindThatBeginsWithThem) {
  const struct {
    const char* typed;
    const char* button;
  } rows[] = {{"g", "BtnGT"},      {"w", "BtnWT"},   {"ww", "BtnWI"},      {"www", "BtnWT"},
              {"waiti", "BtnWI"},  {"C", "BtnCC"},   {"cal", "BtnCL"},     {"com", "BtnCM"},
              {"f", "BtnFLSO"},    {"ff", "BtnFR"},  {"feedtol", "BtnFL"}, {"feedtosensorr", "BtnFSR"},
              {"re", "BtnReturn"}, {"rep", "BtnRP"}, {"res", "BtnRL"},     {"x", "BtnFL"},
              {"wx", "BtnWT"},     {"n", "BtnNO"}};
  for (const auto& row : rows) {
    PickBench d;
    d.While([&] {
      QTest::keyClicks(d.picker.focusWidget(), QLatin1String(row.typed));
      EXPECT_EQ(d.picker.focusWidget()->objectName(), QLatin1String(row.button)) << row.typed;
    });
    EXPECT_TRUE(d.presses.empty()) << row.typed;
  }
}

TEST(PickProg, LettersFindTheirKindWhenNothingHasTheFocus) {
  PickBench d;
  d.While([&] {
    d.picker.focusWidget()->clearFocus();
    QTest::keyClicks(&d.picker, QStringLiteral("g"));
    EXPECT_EQ(d.picker.focusWidget()->objectName(), QStringLiteral("BtnGT"));
  });
}

TEST(PickProg, LettersBeginAnewAfterAPauseAndAtEachOpening) {
  PickBench d;
  d.While([&] {
    QTest::keyClicks(&d.picker, QStringLiteral("c"));
    QTest::qWait(1100);
    QTest::keyClicks(&d.picker, QStringLiteral("m"));
    EXPECT_EQ(d.picker.focusWidget()->objectName(), QStringLiteral("BtnMMI"));
    QTest::keyClicks(&d.picker, QStringLiteral("x"));
  });
  d.While([&] {
    QTest::keyClicks(&d.picker, QStringLiteral("m"));
    EXPECT_EQ(d.picker.focusWidget()->objectName(), QStringLiteral("BtnMMI"));
  });
}

TEST(PickProg, StaysUnderItsQuestionWhateverAScreenReaderPresses) {
  PickBench d;
  d.While([&] {
    QDialog question(&d.picker);
    question.setModal(true);
    question.show();
    for (const char* button : {"BtnFL", "BtnInsert", "BtnCancel"}) {
      d.Button(QLatin1String(button)).click();
      EXPECT_TRUE(d.picker.isVisible()) << button;
    }
    question.close();
  });
  EXPECT_FALSE(d.closed_by_itself);
  EXPECT_TRUE(d.presses.empty());
}

TEST(PickProg, EnterPicksNothingByItself) {
  PickBench d;
  d.While([&] {
    for (auto* button : d.picker.findChildren<QAbstractButton*>()) {
      button->setFocus();
      QTest::keyClick(button, Qt::Key_Return);
    }
    EXPECT_TRUE(d.picker.isVisible());
  });
  EXPECT_TRUE(d.presses.empty());
}

}  // namespace
}  // namespace tavlo::testing
