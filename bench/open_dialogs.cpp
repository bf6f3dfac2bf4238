// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
// How long the dialogs of the lines take to stand on the screen, and how long an empty one does.
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include "editors/line_dialogs.h"
#include "forms/registry.h"
#include "model/program.h"
#include "qt/gui/gui_services.h"
#include "qt/qt_help.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kTimes = 7;

/// Closes a dialog as soon as it has been painted, and keeps when that was.
class Closer : public QObject {
 public:
  bool eventFilter(QObject* object, QEvent* event) override {
    auto* dialog = qobject_cast<QDialog*>(object);
    if (dialog == nullptr || event->type() != QEvent::Paint || closing_) return false;
    closing_ = true;
    // Behind the paints of all that stands in it.
    QTimer::singleShot(0, dialog, [this, dialog] {
      painted = Clock::now();
      closing_ = false;
      dialog->reject();
    });
    return false;
  }
  Clock::time_point painted;

 private:
  bool closing_ = false;
};

struct Opening {
  double first = 0;
  std::vector<double> later;

  [[nodiscard]] double Later() {
    std::ranges::sort(later);
    return later[later.size() / 2];
  }
};

/// In ms.
Opening Measure(const Closer& closer, const std::function<void()>& open) {
  Opening opening;
  for (int time = 0; time < kTimes; ++time) {
    const auto start = Clock::now();
    open();
    const double ms = std::chrono::duration<double, std::milli>(closer.painted - start).count();
    if (time == 0) {
      opening.first = ms;
    } else {
      opening.later.push_back(ms);
    }
  }
  return opening;
}

}  // namespace

/// Prints {"firstMs":..,"laterMs":..,"emptyFirstMs":..,"emptyLaterMs":..}: the slowest dialog of each, and an
/// empty one.
int main(int argc, char** argv) {
  QApplication application(argc, argv);
  // What the program's own main window has brought to the screen before any dialog.
  QWidget main_window;
  auto* column = new QVBoxLayout(&main_window);
  column->addWidget(new QComboBox(&main_window));
  column->addWidget(new QLineEdit(&main_window));
  column->addWidget(new QRadioButton(QStringLiteral("&Option"), &main_window));
  main_window.show();
  tavlo::GuiMessageBoxes boxes;
  tavlo::QtHelp help(QApplication::applicationDirPath());
  tavlo::LineDialogs dialogs(boxes, help, &main_window);
  Closer closer;
  application.installEventFilter(&closer);

  // The first window of all loads what the others find.
  QDialog warm_up(&main_window);
  static_cast<void>(Measure(closer, [&] { warm_up.exec(); }));
  std::unique_ptr<QDialog> empty;
  Opening nothing = Measure(closer, [&] {
    if (!empty) empty = std::make_unique<QDialog>(&main_window);
    empty->exec();
  });

  tavlo::Program program;
  tavlo::InitHardware(program.Axis);
  tavlo::InitProg(program);
  std::map<std::string_view, Opening> openings;
  for (int type = 0; type < tavlo::kTypes; ++type) {
    const tavlo::FormRow* form = tavlo::FormOf(type);
    if (form == nullptr || openings.contains(form->name)) continue;
    program.Prog[0].Type = static_cast<std::int16_t>(type);
    openings[form->name] =
        Measure(closer, [&] { static_cast<void>(dialogs.Edit(program, 0, tavlo::DialogPage::AsLeft)); });
  }
  double first = 0;
  double later = 0;
  for (auto& [name, opening] : openings) {
    std::cerr << name << ": " << opening.first << " ms, then " << opening.Later() << " ms\n";
    first = std::max(first, opening.first);
    later = std::max(later, opening.Later());
  }
  std::cout << "{\"firstMs\":" << first << ",\"laterMs\":" << later << ",\"emptyFirstMs\":" << nothing.first
            << ",\"emptyLaterMs\":" << nothing.Later() << "}\n";
  return 0;
}
