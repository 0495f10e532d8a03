# Compile options of all targets: link varnel_options.

option(VARNEL_TESTS "Build the tests" ON)
option(VARNEL_BENCHMARKS "Build the benchmarks" OFF)
option(VARNEL_FUZZ "Build the fuzz targets for libFuzzer (needs clang)" OFF)
set(VARNEL_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")

# Debian's Python, even if there is another one on the path: the embedded interpreter must match the installed library.
set(Python3_ROOT_DIR /usr)
set(Python3_FIND_STRATEGY LOCATION)
find_package(Python3 3.11 REQUIRED COMPONENTS Interpreter Development)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Network Xml Svg)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF) # moc reads sources: it need not wait for the libraries to be linked
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Compile executables like libraries, so that both can use the same precompiled header.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE -fPIC)
# Relative library paths, so that the staged tree can be copied to another directory.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_DEPEND=true     # no run of the preprocessor for what is new
        CCACHE_INODECACHE=true # the precompiled headers are large, and read again for each file otherwise
        ${CCACHE})
endif()

add_library(varnel_options INTERFACE)
target_compile_features(varnel_options INTERFACE cxx_std_20)
target_include_directories(varnel_options INTERFACE "${PROJECT_SOURCE_DIR}/source/base")
target_compile_definitions(varnel_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
target_compile_options(varnel_options INTERFACE
    -Wall -Wextra -Wpedantic -Woverloaded-virtual -Wcast-align -Werror
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
# Functions of other libraries are looked up at the start (about a millisecond), not by the first key or command that
# needs them, and their table is read-only then.
target_link_options(varnel_options INTERFACE LINKER:-z,now)
if(CMAKE_BUILD_TYPE STREQUAL "Release") # no path of the build gets into packages
    target_compile_options(varnel_options INTERFACE "-ffile-prefix-map=${PROJECT_BINARY_DIR}/=" "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")
endif()
if(VARNEL_SANITIZE)
    target_compile_options(varnel_options INTERFACE -fsanitize=${VARNEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(varnel_options INTERFACE -fsanitize=${VARNEL_SANITIZE})
endif()
if(VARNEL_FUZZ)
    add_custom_target(varnel_fuzz) # every fuzz target
    target_compile_options(varnel_options INTERFACE -fsanitize=fuzzer-no-link,address)
    target_link_options(varnel_options INTERFACE -fsanitize=address)
endif()

# One precompiled header for all targets. Each file pays for its size: it has what most files need, and no whole module.
set(VARNEL_PCH_HEADERS <algorithm> <functional> <memory> <optional> <utility> <vector>
    <QtCore/QCoreApplication> <QtCore/QDir> <QtCore/QFileInfo> <QtCore/QHash> <QtCore/QMap> <QtCore/QPointer> <QtCore/QSet>
    <QtCore/QStringList> <QtCore/QTimer> <QtCore/QVariant>
    <QtGui/QAction> <QtGui/QTextCursor> <QtWidgets/QWidget>)
add_library(varnel_pch OBJECT "${CMAKE_CURRENT_LIST_DIR}/pch.cpp")
set_target_properties(varnel_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF)
target_link_libraries(varnel_pch PRIVATE varnel_options Qt6::Gui)
# Not the library: what it defines would keep targets without windows from using the header.
target_include_directories(varnel_pch SYSTEM PRIVATE $<TARGET_PROPERTY:Qt6::Widgets,INTERFACE_INCLUDE_DIRECTORIES>)
target_precompile_headers(varnel_pch PRIVATE ${VARNEL_PCH_HEADERS})

# Adds the common options and the precompiled header to a target.
function(varnel_setup_target target)
    target_link_libraries(${target} PUBLIC varnel_options Qt6::Gui)
    target_precompile_headers(${target} REUSE_FROM varnel_pch)
endfunction()
