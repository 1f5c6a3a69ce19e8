# SPDX-License-Identifier: MIT
# Qt and standard library headers, precompiled for many sources: parsing them takes most of the compile time. The tests
# always use them. The program uses them if CALVORN_PRECOMPILED is on; the release build does not, so that missing
# includes are detected.
option(CALVORN_PRECOMPILED "Compile the program with precompiled headers" OFF)

set(calvorn_headers_plain
    <QByteArray> <QCoreApplication> <QElapsedTimer> <QFile> <QFileInfo> <QList> <QObject> <QString> <QStringList>
    <QThread> <QTimer> <algorithm> <array> <atomic> <chrono> <cmath> <functional> <memory> <mutex> <optional> <ranges>
    <string> <thread> <utility> <variant> <vector>)
set(calvorn_headers_bus <QDBusConnection> <QDBusMessage> <QDBusPendingCall>)
set(calvorn_headers_windows
    <QAction> <QApplication> <QCheckBox> <QComboBox> <QDialog> <QDockWidget> <QGridLayout> <QGroupBox> <QHBoxLayout>
    <QLabel> <QLineEdit> <QMainWindow> <QMenuBar> <QMouseEvent> <QPainter> <QPushButton> <QRadioButton> <QScrollBar>
    <QSpinBox> <QTableView> <QTabWidget> <QToolButton> <QVBoxLayout>)
set(calvorn_headers_tests
    <QTest> <QSignalSpy> <QDir> <QLocale> <QProcess> <QRandomGenerator> <QRegularExpression> <QTemporaryDir> <random>)

# calvorn_headers(<name> HEADERS <header>... LINK <library>...)
function(calvorn_headers name)
    cmake_parse_arguments(ARG "" "" "HEADERS;LINK" ${ARGN})
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
    file(GENERATE OUTPUT "${source}" CONTENT "")
    add_library(${name} OBJECT "${source}")
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
    target_link_libraries(${name} PRIVATE calvorn_compiler ${ARG_LINK})
    target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# calvorn_headers_of_program(): for the program's folders. calvorn_headers_of_tests(): for the tests.
function(calvorn_headers_of_program)
    calvorn_headers(calvorn_headers_plain HEADERS ${calvorn_headers_plain}
        LINK calvorn_counting Qt6::Core)
    calvorn_headers(calvorn_headers_bus HEADERS ${calvorn_headers_plain} ${calvorn_headers_bus}
        LINK calvorn_counting Qt6::Core Qt6::DBus)
    calvorn_headers(calvorn_headers_windows HEADERS ${calvorn_headers_plain} ${calvorn_headers_windows}
        LINK calvorn_counting Qt6::Widgets)
endfunction()

function(calvorn_headers_of_tests)
    # Omit the definition of each test's folder, which would require separate precompiled headers.
    set_target_properties(Qt6::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
    calvorn_headers(calvorn_headers_tests HEADERS ${calvorn_headers_plain} ${calvorn_headers_tests}
        LINK calvorn_tests Qt6::Core Qt6::Test)
    calvorn_headers(calvorn_headers_window_tests
        HEADERS ${calvorn_headers_plain} ${calvorn_headers_windows} ${calvorn_headers_tests}
        LINK calvorn_tests Qt6::Test Qt6::Widgets)
endfunction()

# calvorn_take_headers(<target> <linked library>...): reuses the program's headers that match the linked libraries.
function(calvorn_take_headers target)
    if(NOT CALVORN_PRECOMPILED)
        return()
    endif()
    if("${ARGN}" MATCHES "Qt6::Widgets|calvorn_app")
        target_precompile_headers(${target} REUSE_FROM calvorn_headers_windows)
    elseif("${ARGN}" MATCHES "Qt6::DBus")
        target_precompile_headers(${target} REUSE_FROM calvorn_headers_bus)
    else()
        target_precompile_headers(${target} REUSE_FROM calvorn_headers_plain)
    endif()
endfunction()

function(calvorn_take_test_headers target)
    if("${ARGN}" MATCHES "Qt6::Network")
        return() # the precompiled headers would not match
    endif()
    if("${ARGN}" MATCHES "Qt6::Widgets|calvorn_(widgets|display|measure|controls|setup|app)")
        target_precompile_headers(${target} REUSE_FROM calvorn_headers_window_tests)
    elseif(NOT "${ARGN}" MATCHES "Qt6::Gui|calvorn_(plot|platform_desktop)")
        target_precompile_headers(${target} REUSE_FROM calvorn_headers_tests)
    endif()
endfunction()
