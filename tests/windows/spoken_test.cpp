// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include <QAccessible>
#include <QLabel>
#include <set>
#include <utility>

#include "session/grid.h"
#include "windows/window_walk.h"

// What a screen reader meets.

namespace tavlo::testing {
namespace {

/// Writes down what screen readers are told of the rows.
class Ears {
 public:
  using Told = std::multiset<std::pair<QAccessible::Event, int>>;

  explicit Ears(const ProgWindow& pane) {
    QObject::connect(&pane, &ProgWindow::SpeechChanged, &context_,
                     [this](int line, QAccessible::Event what) { told_.emplace(what, line); });
  }
  /// Since this was asked last.
  [[nodiscard]] Told Heard() { return std::exchange(told_, {}); }

 private:
  QObject context_;
  Told told_;
};

QString Description(WindowSession& session, int line) {
  return QAccessible::queryAccessibleInterface(&session.Pane())->child(line)->text(QAccessible::Description);
}

TEST(SpokenRows, SayWhatElseIsToBeSeen) {
  RunningSession session;
  EXPECT_EQ(Description(session, 4), "");
  session.Lines().Prog[0].Type = FL;
  session.Lines().Prog[0].Proceed = true;
  session.Lines().Prog[1].Type = WT;
  session.Lines().Prog[2].Type = CL;
  session.Lines().Prog[2].LineNum = 5;
  MarkChains(session.Handlers().grid());
  DrawArrows(session.Handlers().grid());
  EXPECT_EQ(Description(session, 1), "thick frame: runs while an axis moves");
  EXPECT_EQ(Description(session, 5), "number in red: target of a call");
  session.Session().shown.rows[7].label = LabelColour::Blue;
  EXPECT_EQ(Description(session, 7), "number in blue: target of a menu");
  session.Main().ProgCounter(5);
  EXPECT_EQ(Description(session, 5), "program counter; number in red: target of a call");
  session.Main().ProgCounter(6);
  EXPECT_EQ(Description(session, 5), "number in red: target of a call");
  EXPECT_EQ(Description(session, 6), "program counter");
  session.Main().ProgCounter(std::nullopt);
  EXPECT_EQ(Description(session, 6), "");
}

TEST(SpokenRows, AreToldOneByOneWhenAllOfThemChanged) {
  RunningSession session;
  Ears ears(session.Pane());
  for (int line = 0; line < 3; ++line) session.Session().shown.rows[line].desc = "Go to line 9";
  session.Main().AllRowsChanged();
  EXPECT_EQ(ears.Heard(), (Ears::Told{{QAccessible::NameChanged, 0},
                                      {QAccessible::NameChanged, 1},
                                      {QAccessible::NameChanged, 2}}));
  session.Main().AllRowsChanged();
  EXPECT_EQ(ears.Heard(), Ears::Told{}) << "what did not change is not told again";
}

TEST(SpokenRows, TellWhenTheMarkerTheFrameOrTheColourOfTheNumberChanges) {
  RunningSession session;
  Ears ears(session.Pane());
  session.Main().ProgCounter(3);
  EXPECT_EQ(ears.Heard(), (Ears::Told{{QAccessible::DescriptionChanged, 3}}));
  session.Main().ProgCounter(4);
  EXPECT_EQ(ears.Heard(),
            (Ears::Told{{QAccessible::DescriptionChanged, 3}, {QAccessible::DescriptionChanged, 4}}));
  session.Session().shown.rows[9].frame = kChainFrame;
  session.Main().RowChanged(9);
  EXPECT_EQ(ears.Heard(), (Ears::Told{{QAccessible::DescriptionChanged, 9}}));
  session.Lines().Prog[2].Type = CL;
  session.Lines().Prog[2].LineNum = 5;
  DrawArrows(session.Handlers().grid());
  EXPECT_EQ(ears.Heard(), (Ears::Told{{QAccessible::DescriptionChanged, 5}}));
}

/// Calls `look_at` with everything that a screen reader finds in a window, but for the rows of the program.
void ForEachThing(QAccessibleInterface& thing, const std::function<void(QAccessibleInterface&)>& look_at) {
  if (thing.state().invisible) return;
  look_at(thing);
  if (qobject_cast<ProgWindow*>(thing.object()) != nullptr) return;
  for (int i = 0; i < thing.childCount(); ++i) {
    if (QAccessibleInterface* child = thing.child(i)) ForEachThing(*child, look_at);
  }
}

/// Kinds of things that mean nothing without a name. A pane that only holds others is not among them.
bool MustHaveAName(QAccessibleInterface& thing) {
  switch (thing.role()) {
    case QAccessible::Window:
    case QAccessible::Dialog:
    case QAccessible::ScrollBar:
    case QAccessible::ProgressBar:
    case QAccessible::EditableText:
    case QAccessible::ComboBox:
    case QAccessible::PushButton:
    case QAccessible::RadioButton:
    case QAccessible::StaticText:
    case QAccessible::List:
    case QAccessible::Grouping: return true;
    default:
      // A tab is no object of its own.
      return thing.object() != nullptr && thing.object()->isWidgetType() &&
             (static_cast<QWidget*>(thing.object())->isWindow() ||
              thing.object()->inherits("QAbstractScrollArea"));
  }
}

TEST(SpokenWindows, EverythingInThemHasAName) {
  std::multiset<QAccessible::Role> met;
  ForEachWindow([&](QWidget& window, const std::string& state) {
    // The window's picture for those who do not see it must not depend on the hub's display, which may be
    // empty.
    ForEachThing(*QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface& thing) {
      if (!MustHaveAName(thing)) return;
      met.insert(thing.role());
      const QObject* object = thing.object();
      const bool display_row = object->objectName().startsWith(QLatin1String("textline"));
      const QString says = thing.text(display_row ? QAccessible::Description : QAccessible::Name);
      EXPECT_FALSE(says.trimmed().isEmpty())
          << state << ": " << object->metaObject()->className() << " " << object->objectName().toStdString()
          << " in " << object->parent()->objectName().toStdString();
    });
  });
  EXPECT_GT(met.count(QAccessible::ScrollBar), 3u);
  EXPECT_GT(met.count(QAccessible::ProgressBar), 2u);
}

TEST(SpokenWindows, TheDriveRowsThatTheQuadDoesNotHaveAreNotRead) {
  RunningSession session;
  const auto drives_read = [&] {
    std::multiset<std::string> read;
    ForEachThing(*QAccessible::queryAccessibleInterface(&session.Main()), [&](QAccessibleInterface& thing) {
      if (thing.object()->objectName().startsWith(QLatin1String("LblDriveDesc"))) {
        read.insert(thing.text(QAccessible::Name).toStdString());
      }
    });
    return read;
  };
  EXPECT_EQ(drives_read().size(), 8u);
  const int height = session.Find<QLabel>("LblDriveDesc0")->parentWidget()->height();
  SelectModel(session.Handlers(), HubQuad);
  session.Settle();
  EXPECT_EQ(drives_read().size(), 4u);
  EXPECT_EQ(drives_read().count(""), 0u);
  EXPECT_EQ(session.Find<QLabel>("LblDriveDesc0")->parentWidget()->height(), height)
      << "the rows keep their place";
  SelectModel(session.Handlers(), HubOcto);
  session.Settle();
  EXPECT_EQ(drives_read().size(), 8u);
}

}  // namespace
}  // namespace tavlo::testing
