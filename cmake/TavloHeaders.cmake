# What the files of a kind have in common. A header stands here when a good part of them includes it.
set(standard
  <algorithm> <array> <cmath> <cstdint> <functional> <map> <memory> <optional> <ranges> <set> <span> <string>
  <string_view> <utility> <vector>)
tavlo_headers(standard HEADERS ${standard})
if(BUILD_TESTING)
  find_package(GTest REQUIRED)
  tavlo_headers(tests LINKS GTest::gtest HEADERS <gtest/gtest.h> ${standard} TESTS)
endif()

if(NOT TAVLO_CORE_ONLY)
  find_package(nlohmann_json REQUIRED)
  set(qt
    <QAbstractButton> <QAccessible> <QApplication> <QBoxLayout> <QComboBox> <QDialog> <QEvent> <QGridLayout>
    <QGroupBox> <QKeyEvent> <QLabel> <QPainter> <QPlainTextEdit> <QPushButton> <QScreen> <QScrollBar> <QString>
    <QStringList> <QTimer> <QToolButton> <QWidget>)
  tavlo_headers(qt LINKS Qt6::Widgets HEADERS ${qt} ${standard})
  tavlo_headers(devices LINKS Qt6::Core HEADERS <QFile> <QString> <QTimer> ${standard})
  tavlo_headers(companion LINKS Qt6::Core nlohmann_json::nlohmann_json HEADERS <nlohmann/json.hpp> ${standard})
  if(BUILD_TESTING)
    tavlo_headers(qt_tests LINKS Qt6::Widgets GTest::gtest HEADERS <gtest/gtest.h> ${qt} ${standard} TESTS)
    tavlo_headers(companion_tests
      LINKS Qt6::Core GTest::gtest nlohmann_json::nlohmann_json
      HEADERS <gtest/gtest.h> <nlohmann/json.hpp> ${standard}
      TESTS)
  endif()
endif()
