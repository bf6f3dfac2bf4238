// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The Tavlo Composer authors
#pragma once

#include "windows/window_session.h"

namespace tavlo::testing {

inline QPoint IconPoint(WindowSession& session, int line) {
  return session.Pane().Geometry().Icon(line).center();
}

/// The pointer goes to this point of the pane with the left button down.
inline void MoveTo(WindowSession& session, QPoint to, Qt::MouseButtons buttons = Qt::LeftButton) {
  ProgWindow& pane = session.Pane();
  QMouseEvent move(QEvent::MouseMove, to, pane.mapToGlobal(to), Qt::NoButton, buttons, Qt::NoModifier);
  QApplication::sendEvent(&pane, &move);
}

/// Takes an icon up and holds it over this point of the pane.
inline void DragTo(WindowSession& session, int from, QPoint to) {
  QTest::mousePress(&session.Pane(), Qt::LeftButton, Qt::NoModifier, IconPoint(session, from));
  // Moved in two steps, as a hand would; the second goes beyond the distance that makes a drag.
  MoveTo(session, IconPoint(session, from) + QPoint(3, 3));
  MoveTo(session, to);
}

inline void Release(WindowSession& session, QPoint at) {
  QTest::mouseRelease(&session.Pane(), Qt::LeftButton, Qt::NoModifier, at);
}

inline void Drag(WindowSession& session, int from, QPoint to) {
  DragTo(session, from, to);
  Release(session, to);
}

}  // namespace tavlo::testing
