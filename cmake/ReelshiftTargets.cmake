# What every target of the program shares, and the functions that make them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(REELSHIFT_RESOURCE_DIR "${CMAKE_BINARY_DIR}/share/reelshift")
# A folder a language, in which man would find it, too.
set(REELSHIFT_MANUAL_DIR "${CMAKE_BINARY_DIR}/man")

find_program(CCACHE_EXECUTABLE ccache)
if(CCACHE_EXECUTABLE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_EXECUTABLE}")
endif()

add_library(reelshift_options INTERFACE)
target_compile_features(reelshift_options INTERFACE cxx_std_20)
target_compile_options(reelshift_options INTERFACE
    -Wall -Wextra -Wpedantic -Wold-style-cast -Woverloaded-virtual -Wnon-virtual-dtor
    # In programs too, which precompile headers together with libraries.
    -fPIC
    $<$<BOOL:${REELSHIFT_WERROR}>:-Werror>)
target_compile_definitions(reelshift_options INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_USE_QSTRINGBUILDER
    QT_DISABLE_DEPRECATED_BEFORE=0x060400
    # What a later Qt advises against often has nothing in its place in 6.4.
    QT_WARN_DEPRECATED_UP_TO=0x060400)
target_include_directories(reelshift_options INTERFACE "${CMAKE_SOURCE_DIR}")
if(REELSHIFT_SANITIZE)
    target_compile_options(reelshift_options INTERFACE
        -fsanitize=${REELSHIFT_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(reelshift_options INTERFACE -fsanitize=${REELSHIFT_SANITIZE})
endif()

# What the precompiled headers hold: of the system and of Qt only, never our own. Every source still
# includes what it uses; scripts/lint compiles each without them.
set(REELSHIFT_CORE_HEADERS
    <algorithm> <chrono> <functional> <memory> <mutex> <optional> <stdexcept> <utility> <vector>
    <QByteArray> <QCoreApplication> <QDir> <QFileInfo> <QList> <QLoggingCategory> <QObject> <QPointer>
    <QString> <QStringList> <QThread> <QTimer> <QUrl>)
set(REELSHIFT_WIDGETS_HEADERS ${REELSHIFT_CORE_HEADERS}
    <QApplication> <QCheckBox> <QComboBox> <QLabel> <QLineEdit> <QMainWindow> <QPainter> <QPushButton>
    <QStyledItemDelegate> <QTableView>)

# reelshift_compile_together(NAME): most of what a file costs are Qt's headers. Whatever two files of a
# library use under one name stands in a header; scripts/lint compiles each file alone.
function(reelshift_compile_together name)
    set_target_properties(${name} PROPERTIES
        UNITY_BUILD ${REELSHIFT_UNITY}
        UNITY_BUILD_BATCH_SIZE ${REELSHIFT_UNITY_SIZE})
endfunction()

# reelshift_add_library(NAME SOURCES ... LINK ... [HEADERS header ...] [HEADERS_OF library]): the
# static library of one folder. It precompiles headers, or uses those of another library.
function(reelshift_add_library name)
    cmake_parse_arguments(ARG "" "HEADERS_OF" "SOURCES;LINK;HEADERS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC reelshift_options ${ARG_LINK} PRIVATE reelshift_hardening)
    reelshift_compile_together(${name})
    if(ARG_HEADERS_OF)
        target_precompile_headers(${name} REUSE_FROM ${ARG_HEADERS_OF})
    elseif(ARG_HEADERS)
        target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
    endif()
endfunction()
