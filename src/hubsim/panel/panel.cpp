// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors

#include "hubsim/panel/panel.h"

#include <QApplication>
#include <QFont>
#include <QStringList>
#include <stdexcept>

#include "hubsim/hub.h"
#include "hubsim/panel/hub_loop.h"
#include "hubsim/panel/hub_words.h"
#include "hubsim/panel/panel_window.h"

namespace tavlo::hubsim {
namespace {

constexpr qreal kPointSize = 10;

/// The toolkit ends the process on the spot when it finds no screen; this is told in order.
void WantScreen() {
  for (const char* variable : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
    if (!qEnvironmentVariableIsEmpty(variable)) return;
  }
  throw std::runtime_error("there is no display to show the panel on.");
}

/// The same letters as the Composer's where no desktop names others.
void SetLook() {
  const QStringList fallbacks{QStringLiteral("Sans Serif"), QStringLiteral("DejaVu Sans"), QString()};
  if (!fallbacks.contains(QApplication::font().family())) return;
  QFont font;
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  font.setPointSizeF(kPointSize);
  QApplication::setFont(font);
}

}  // namespace

int RunPanel(int& argc, char** argv, const HubOptions& hub_options, const ServerOptions& server_options) {
  WantScreen();
  // In front of the application, whose threads would otherwise take the signals.
  const StopSignals stop_signals;
  const QApplication application(argc, argv);
  QApplication::setDesktopFileName(QStringLiteral("tavlo-hubsim"));
  QApplication::setQuitOnLastWindowClosed(false);
  SetLook();

  Hub hub(hub_options);
  Server server(hub, server_options);
  HubLoop loop(server, stop_signals);
  PanelWindow window(hub, QString::fromLocal8Bit(TitleWords(server_options.link).c_str()), Server::Now,
                     [&loop] { loop.Serve(); });
  QObject::connect(&loop, &HubLoop::Ended, [] { QCoreApplication::exit(0); });
  QObject::connect(&window, &PanelWindow::Closed, [] { QCoreApplication::exit(0); });
  window.show();
  server.Announce();
  return QApplication::exec();
}

}  // namespace tavlo::hubsim
