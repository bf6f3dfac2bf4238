// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#include "viewer/help_window.h"

#include <QAccessible>
#include <QFile>
#include <QImage>
#include <QToolButton>
#include <set>

#include "viewer/viewer_bench.h"
#include "widgets/contrast.h"

namespace tavlo::testing {
namespace {

QStringList Numbered(int pages) {
  QStringList texts;
  for (int page = 1; page <= pages; ++page) texts += QStringLiteral("This is page %1").arg(page);
  return texts;
}

TEST(HelpWindow, ShowsADocumentFromItsFirstPageUnderItsTitle) {
  ViewerBench bench;
  bench.Open(bench.Make("WT.pdf", Numbered(5), "Wait Time"));
  EXPECT_EQ(bench.window.windowTitle(), "Wait Time - Help");
  EXPECT_EQ(bench.Page(), "1");
  EXPECT_EQ(bench.Text("OfPages"), "of 5");
  EXPECT_EQ(bench.Message(), "");
}

TEST(HelpWindow, TurnsPagesByButtonsAndByKeys) {
  struct Turn {
    const char* what;
    std::function<void(ViewerBench&)> act;
    const char* page;
  };
  const auto key = [](Qt::Key which, Qt::KeyboardModifiers with = Qt::NoModifier) {
    return [which, with](ViewerBench& bench) { bench.Press(which, with); };
  };
  const auto button = [](const char* name) {
    return [name](ViewerBench& bench) { bench.Find<QAbstractButton>(name).click(); };
  };
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(5)));
  const Turn turns[] = {{"next", button("Next"), "2"},
                        {"next by key", key(Qt::Key_PageDown, Qt::ControlModifier), "3"},
                        {"end", key(Qt::Key_End, Qt::ControlModifier), "5"},
                        {"next at the end", key(Qt::Key_PageDown, Qt::ControlModifier), "5"},
                        {"previous", button("Previous"), "4"},
                        {"previous by key", key(Qt::Key_PageUp, Qt::ControlModifier), "3"},
                        {"home", key(Qt::Key_Home, Qt::ControlModifier), "1"},
                        {"previous at the beginning", key(Qt::Key_PageUp, Qt::ControlModifier), "1"}};
  for (const Turn& turn : turns) {
    turn.act(bench);
    EXPECT_EQ(bench.Page(), QLatin1String(turn.page)) << turn.what;
    EXPECT_EQ(bench.Find<QAbstractButton>("Previous").isEnabled(), bench.Page() != "1") << turn.what;
    EXPECT_EQ(bench.Find<QAbstractButton>("Next").isEnabled(), bench.Page() != "5") << turn.what;
  }
}

TEST(HelpWindow, PageDownReadsOnAndSkipsNothing) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(3)));
  const QScrollBar& bar = *bench.Pages().verticalScrollBar();
  std::set<int> met = {bar.value()};
  for (int press = 0; press < 12; ++press) {
    const int before = bar.value();
    bench.Press(Qt::Key_PageDown);
    EXPECT_LE(bar.value() - before, bench.Pages().viewport()->height());
    met.insert(bar.value());
  }
  EXPECT_EQ(bar.value(), bar.maximum());
  // Each page was met from its top on.
  for (int page = 0; page < 3; ++page) {
    EXPECT_TRUE(met.contains(bench.Pages().PlaceOf(page).top() - 8)) << page;
  }
  for (int press = 0; press < 12; ++press) bench.Press(Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 0);
}

TEST(HelpWindow, GoesToThePageThatIsTyped) {
  struct Entry {
    const char* typed;
    const char* page;
  };
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(9)));
  for (const auto& [typed, page] :
       {Entry{"7", "7"}, Entry{"0", "1"}, Entry{"99999999999", "9"}, Entry{"-3", "1"}, Entry{" 4 ", "4"},
        Entry{"x", "4"}, Entry{"", "4"}, Entry{"1e400", "4"}, Entry{"nan", "4"}, Entry{"2.7", "2"}}) {
    auto& box = bench.Find<QLineEdit>("Page");
    box.setFocus();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QTest::keyClicks(&box, QLatin1String(typed));
    QTest::keyClick(&box, Qt::Key_Return);
    bench.Pages().setFocus();
    EXPECT_EQ(bench.Page(), QLatin1String(page)) << typed;
  }
}

TEST(HelpWindow, ZoomsInStepsAndFitsTheWidthAgain) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(3)));
  const QString fitted = bench.Text("Scale");
  bench.Press(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(bench.Pages().Scale() * 100, fitted.chopped(1).toInt() + 1);
  for (int press = 0; press < 20; ++press) bench.Find<QAbstractButton>("Larger").click();
  EXPECT_EQ(bench.Text("Scale"), "400%");
  for (int press = 0; press < 20; ++press) bench.Find<QAbstractButton>("Smaller").click();
  EXPECT_EQ(bench.Text("Scale"), "25%");
  bench.Press(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(bench.Text("Scale"), fitted);
}

TEST(HelpWindow, StaysOnThePageWhenItsSizeChanges) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(9)));
  bench.Pages().GoTo(5);
  for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Plus, Qt::Key_Minus, Qt::Key_0}) {
    bench.Press(key, Qt::ControlModifier);
    EXPECT_EQ(bench.Page(), "6");
  }
}

TEST(HelpWindow, FindsATextAndGoesFromPlaceToPlace) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", {"wait", "nothing", "Wait and WAIT", "awaited"}));
  bench.Search("wait");
  EXPECT_EQ(bench.SearchState(), "1 of 4");
  std::vector<std::string> pages;
  for (int press = 0; press < 4; ++press) {
    bench.Press(Qt::Key_F3);
    pages.push_back((bench.SearchState() + ", page " + bench.Page()).toStdString());
  }
  EXPECT_EQ(pages, (std::vector<std::string>{"2 of 4, page 3", "3 of 4, page 3", "4 of 4, page 4",
                                             "1 of 4, page 1"}));
  bench.Press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(bench.SearchState(), "4 of 4");
  bench.Press(Qt::Key_Return);
  EXPECT_EQ(bench.SearchState(), "1 of 4") << "Enter in the text goes on too";
}

TEST(HelpWindow, BeginsASearchAtThePageThatIsRead) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", {"here", "nothing", "here", "here"}));
  bench.Pages().GoTo(2);
  bench.Search("here");
  EXPECT_EQ(bench.SearchState(), "2 of 3");
  EXPECT_EQ(bench.Page(), "3");
}

TEST(HelpWindow, FindsWordsAcrossTheEndOfALineAndTakesEveryCharacterAsItIs) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", {"the end\nof the line (a+b) [x] 1.5", "1x5"}));
  for (const char* text : {"end of", "  end   of ", "(A+B)", "[x]", "1.5"}) {
    bench.Search(QLatin1String(text));
    EXPECT_EQ(bench.SearchState(), "1 of 1") << text;
  }
}

TEST(HelpWindow, SaysThatATextWasNotFound) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(3)));
  bench.Search("missing");
  EXPECT_EQ(bench.SearchState(), "Not found");
  EXPECT_FALSE(bench.Find<QAbstractButton>("NextMatch").isEnabled());
  EXPECT_EQ(bench.window.focusWidget()->accessibleDescription(), "Not found");
  bench.Press(Qt::Key_F3);
  EXPECT_EQ(bench.Page(), "1");
}

/// The dots of a colour near a mark's in the place of a page.
int MarkedDots(ViewerBench& bench, QRgb wanted) {
  const QImage picture = bench.Pages().viewport()->grab().toImage();
  int dots = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if ((picture.pixel(x, y) & 0xffffff) == (wanted & 0xffffff)) ++dots;
    }
  }
  return dots;
}

TEST(HelpWindow, MarksEveryPlaceAndThePresentOneInAColourOfItsOwn) {
  constexpr QRgb kMark = qRgb(255, 236, 120);
  constexpr QRgb kCurrentMark = qRgb(255, 170, 60);
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", {"word\nother\nword"}));
  EXPECT_EQ(MarkedDots(bench, kMark) + MarkedDots(bench, kCurrentMark), 0);
  bench.Search("word");
  // The page is drawn aside and comes a little later.
  EXPECT_TRUE(QTest::qWaitFor([&] { return MarkedDots(bench, kMark) > 100; }));
  EXPECT_GT(MarkedDots(bench, kCurrentMark), 100);
  bench.Press(Qt::Key_Escape);
  EXPECT_TRUE(
      QTest::qWaitFor([&] { return MarkedDots(bench, kMark) + MarkedDots(bench, kCurrentMark) == 0; }));
}

/// The darkest dot of a place.
int Darkest(const QImage& picture, const QRect& place) {
  int darkest = 255;
  for (int y = place.top(); y <= place.bottom(); ++y) {
    for (int x = place.left(); x <= place.right(); ++x) {
      if (picture.rect().contains(x, y)) darkest = std::min(darkest, qGray(picture.pixel(x, y)));
    }
  }
  return darkest;
}

TEST(HelpWindow, KnowsWhereTheToolkitHasPutThePages) {
  // Words at 72 points from the left and the top, at every size and on every page.
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", {"HHHHHH", "HHHHHH"}));
  for (const Qt::Key key : {Qt::Key_0, Qt::Key_Plus, Qt::Key_Plus, Qt::Key_Minus}) {
    bench.Press(key, Qt::ControlModifier);
    for (const int page : {0, 1}) {
      bench.Pages().GoTo(page);
      const QPoint corner(bench.Pages().horizontalScrollBar()->value(),
                          bench.Pages().verticalScrollBar()->value());
      const QRect words =
          bench.Pages().PlaceOf(page, QRectF(72, 72, 40, 20)).toAlignedRect().translated(-corner);
      const QRect beside =
          bench.Pages().PlaceOf(page, QRectF(40, 72, 30, 20)).toAlignedRect().translated(-corner);
      const auto drawn = [&] {
        const QImage picture = bench.Pages().viewport()->grab().toImage();
        return Darkest(picture, words) < 80 && Darkest(picture, beside) > 240;
      };
      EXPECT_TRUE(QTest::qWaitFor(drawn)) << page << " at " << bench.Text("Scale").toStdString();
    }
  }
}

TEST(HelpWindow, ListsTheDocumentsOfTheFolderByTheirTitles) {
  ViewerBench bench;
  bench.Make("WT.pdf", {"x"}, "Wait Time");
  bench.Make("untitled.pdf", {"x"}, " ");
  QFile(bench.Path("damaged.pdf")).open(QIODevice::WriteOnly);
  QFile(bench.Path("notes.txt")).open(QIODevice::WriteOnly);
  const QString first = bench.Make("CM.pdf", {"x"}, "Comment");
  bench.Open(first);
  EXPECT_TRUE(QTest::qWaitFor([&] { return bench.Documents().count() == 4; }));
  QStringList titles;
  for (int row = 0; row < 4; ++row) titles += bench.Documents().item(row)->text();
  EXPECT_EQ(titles, (QStringList{"Comment", "damaged", "untitled", "Wait Time"}));
  EXPECT_EQ(bench.Documents().currentItem()->text(), "Comment");
}

TEST(HelpWindow, OpensADocumentOfTheListAndKeepsTheSearch) {
  ViewerBench bench;
  bench.Make("b.pdf", {"nothing", "word word"}, "Second");
  bench.Open(bench.Make("a.pdf", {"word"}, "First"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return bench.Documents().count() == 2; }));
  bench.Search("word");
  EXPECT_EQ(bench.SearchState(), "1 of 1");
  bench.Documents().setFocus();
  QTest::keyClick(&bench.Documents(), Qt::Key_Down);
  EXPECT_EQ(bench.window.windowTitle(), "Second - Help");
  EXPECT_TRUE(QTest::qWaitFor([&] { return bench.SearchState() == "1 of 2"; }));
  EXPECT_EQ(bench.window.focusWidget(), &bench.Documents());
}

TEST(HelpWindow, SaysWhyADocumentCannotBeShownAndGoesOnWithTheNext) {
  ViewerBench bench;
  const QString good = bench.Make("good.pdf", Numbered(2), "Good");
  QFile whole(good);
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  const QByteArray bytes = whole.readAll();
  const auto write = [&](const QString& name, const QByteArray& content) {
    QFile file(bench.Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return bench.Path(name);
  };
  QFile huge(bench.Path("huge.pdf"));
  ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
  // Without a byte of it on the disk.
  ASSERT_TRUE(huge.resize(qint64{3} * 1024 * 1024 * 1024));
  QDir(bench.folder.path()).mkpath("folder.pdf");
  const auto of_size = [&](const QString& name, const QSizeF& points) {
    WriteDocument(bench.Path(name), name, {"x"}, QPageSize(points, QPageSize::Point));
    return bench.Path(name);
  };
  struct Case {
    QString path;
    const char* why;
  };
  const Case cases[] = {
      {bench.Path("missing.pdf"), "there is no such file"},
      {bench.Path("folder.pdf"), "it is no file"},
      {huge.fileName(), "it is too large for a help document"},
      {write("empty.pdf", {}), "it is damaged, or it is no PDF file"},
      {write("text.pdf", "This is no PDF."), "it is damaged, or it is no PDF file"},
      {write("zeros.pdf", QByteArray(100000, '\0')), "it is damaged, or it is no PDF file"},
      {of_size("wall.pdf", {14000, 14000}), "a page of it is too large or too small"},
      {of_size("hair.pdf", {4, 800}), "a page of it is too large or too small"},
      {write("head.pdf", bytes.left(40)), "it is damaged, or it is no PDF file"},
  };
  for (const Case& each : cases) {
    bench.Open(each.path);
    EXPECT_EQ(bench.Message(), each.path + " cannot be shown: " + QLatin1String(each.why) + ".");
    EXPECT_EQ(bench.Text("OfPages"), "of 0");
    bench.Search("page");
    EXPECT_EQ(bench.SearchState(), "Not found");
    bench.Press(Qt::Key_PageDown);
    bench.Press(Qt::Key_Plus, Qt::ControlModifier);
    bench.Press(Qt::Key_Escape);
    bench.Open(good);
    EXPECT_EQ(bench.Message(), "");
    EXPECT_EQ(bench.Text("OfPages"), "of 2");
  }
}

TEST(HelpWindow, SurvivesADocumentCutAtEveryPlace) {
  ViewerBench bench;
  QFile whole(bench.Make("whole.pdf", Numbered(2)));
  ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
  const QByteArray bytes = whole.readAll();
  const QString path = bench.Path("cut.pdf");
  for (qsizetype length = 0; length < bytes.size(); length += 97) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes.left(length));
    file.close();
    bench.Open(path);
    // What is left of it may still be read; otherwise it says why not.
    EXPECT_NE(bench.Message().isEmpty(), bench.Pages().PageCount() == 0) << length;
    bench.Pages().grab();
  }
}

TEST(HelpWindow, EscapeClosesTheSearchAndThenTheWindow) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(2)));
  bench.Search("page");
  bench.Press(Qt::Key_Escape);
  EXPECT_FALSE(bench.Find<QWidget>("SearchBar").isVisible());
  EXPECT_TRUE(bench.window.isVisible());
  EXPECT_EQ(bench.window.focusWidget(), &bench.Pages());
  bench.Press(Qt::Key_Escape);
  EXPECT_FALSE(bench.window.isVisible());
}

TEST(HelpWindow, ReadsItsPagesToThoseWhoDoNotSeeThem) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(3)));
  EXPECT_EQ(bench.Pages().accessibleName(), "Page 1 of 3");
  EXPECT_TRUE(bench.Pages().accessibleDescription().contains("This is page 1"));
  bench.Press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(bench.Pages().accessibleName(), "Page 2 of 3");
  EXPECT_TRUE(bench.Pages().accessibleDescription().contains("This is page 2"));
}

TEST(HelpWindow, EverythingInItHasAName) {
  ViewerBench bench;
  bench.Open(bench.Make("a.pdf", Numbered(3)));
  bench.Search("page");
  for (QWidget* widget : bench.window.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
    if (widget->objectName().startsWith("qt_")) continue;
    QAccessibleInterface* thing = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(thing, nullptr);
    EXPECT_FALSE(thing->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << " " << widget->objectName().toStdString();
  }
}

/// A palette and a size of the text that a desktop may bring.
struct Look {
  QColor ground;
  QColor ink;
  double points;
};

/// Gives the application a look and takes it back.
class WearingLook {
 public:
  explicit WearingLook(const Look& look) {
    QPalette palette(look.ground);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
      palette.setColor(role, look.ink);
    }
    QApplication::setPalette(palette);
    QFont font = font_;
    font.setPointSizeF(look.points);
    QApplication::setFont(font);
  }
  ~WearingLook() {
    QApplication::setPalette(palette_);
    QApplication::setFont(font_);
  }
  WearingLook(const WearingLook&) = delete;
  WearingLook& operator=(const WearingLook&) = delete;

 private:
  QPalette palette_ = QApplication::palette();
  QFont font_ = QApplication::font();
};

/// How far the picture of a button stands out from what is around it.
double ContrastOf(QWidget& button) {
  const QImage picture = button.grab().toImage();
  const QColor ground = picture.pixelColor(3, 3);
  double most = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      most = std::max(most, Contrast(picture.pixelColor(x, y), ground));
    }
  }
  return most;
}

TEST(HelpWindow, IsSeenWholeLightAndDarkSmallAndLarge) {
  const QColor light(240, 240, 240);
  const QColor dark(45, 45, 45);
  for (const Look& look : {Look{light, Qt::black, 9}, Look{light, Qt::black, 16}, Look{dark, Qt::white, 9},
                           Look{dark, Qt::white, 16}}) {
    SCOPED_TRACE(look.ground.name().toStdString() + " " + std::to_string(look.points));
    const WearingLook wearing(look);
    ViewerBench bench;
    bench.Open(bench.Make("a.pdf", Numbered(12)));
    bench.Pages().GoTo(3);
    bench.Search("page");
    bench.Press(Qt::Key_F3);
    int buttons = 0;
    for (auto* button : bench.window.findChildren<QToolButton*>()) {
      if (!button->isVisible() || button->objectName().isEmpty()) continue;
      ++buttons;
      EXPECT_GE(ContrastOf(*button), kSymbolContrast) << button->objectName().toStdString();
      EXPECT_LE(button->sizeHint().width(), button->width()) << button->objectName().toStdString();
    }
    EXPECT_EQ(buttons, 9);
    for (const char* label : {"OfPages", "Scale", "SearchState"}) {
      auto& shown = bench.Find<QLabel>(label);
      EXPECT_LE(shown.sizeHint().width(), shown.width()) << label;
      EXPECT_GE(shown.height(), shown.fontMetrics().height()) << label;
    }
    // The number of the last page that a document may have.
    auto& page = bench.Find<QLineEdit>("Page");
    EXPECT_LT(page.fontMetrics().horizontalAdvance("2000"), page.width());
  }
}

}  // namespace
}  // namespace tavlo::testing
