# Functions that declare libraries, tests, benchmarks and plug-ins.

# varnel_add_library(NAME [SHARED] SOURCES ... LINK ...): the library of one source folder. It is static, or with SHARED a
# shared library in the staged tree that the program and its plug-ins use.
function(varnel_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "SHARED" "" "SOURCES;LINK")
    if(arg_SHARED)
        add_library(${name} SHARED ${arg_SOURCES})
        set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${VARNEL_STAGE}/lib")
        add_dependencies(varnel_stage ${name})
    else()
        add_library(${name} STATIC ${arg_SOURCES})
    endif()
    varnel_setup_target(${name})
    target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name} PUBLIC ${arg_LINK})
endfunction()

# varnel_add_test(NAME LIBRARIES...): NAME.cpp as a Qt Test program, offscreen, with a temporary home directory. The tests
# of a folder share one executable, whose first argument is the name of the test to run. Each test is one object file.
function(varnel_add_test name)
    varnel_add_test_source(${name} ${ARGN})
    varnel_test_executable(executable)
    varnel_register_test(${name} $<TARGET_FILE:${executable}> ${name})
endfunction()

# varnel_add_divided_test(NAME LIBRARIES ... PARTS part=functions...|COUNT n): the same for a test that takes long. Each part
# is a test of its own, NAME_part, with some of its functions, which are separated by "+". With COUNT there are n parts
# NAME_0, NAME_1..., to which all rows of the functions are dealt out by tests/part.
function(varnel_add_divided_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "COUNT" "LIBRARIES;PARTS")
    varnel_add_test_source(${name} ${arg_LIBRARIES})
    varnel_divide_test(${name} "${arg_COUNT}")
    varnel_test_executable(executable)
    foreach(entry ${arg_PARTS})
        string(REGEX MATCH "^([^=]+)=(.*)$" matched "${entry}")
        set(part ${CMAKE_MATCH_1})
        string(REPLACE "+" ";" functions "${CMAKE_MATCH_2}")
        varnel_register_test(${name}_${part} $<TARGET_FILE:${executable}> ${name} ${functions})
    endforeach()
endfunction()

# The parts of the test NAME, numbered from 0.
function(varnel_divide_test name count)
    varnel_test_executable(executable)
    set(number 0)
    while(number LESS count)
        varnel_register_test(${name}_${number}
            "${PROJECT_SOURCE_DIR}/tests/part" ${number} ${count} $<TARGET_FILE:${executable}> ${name})
        math(EXPR number "${number} + 1")
    endwhile()
endfunction()

# The object file of a test, linked into the executable of its folder.
function(varnel_add_test_source name)
    add_library(${name} OBJECT ${name}.cpp)
    varnel_setup_test(${name})
    target_link_libraries(${name} PUBLIC ${ARGN})
    varnel_moc_source(${name})
    varnel_test_executable(executable)
    target_link_libraries(${executable} PRIVATE ${name})
endfunction()

# Gives a target of tests the common options and the precompiled header of tests. What only tests run is not optimised.
function(varnel_setup_test target)
    target_link_libraries(${target} PUBLIC varnel_options varnel_testing)
    target_precompile_headers(${target} REUSE_FROM varnel_test_pch)
    target_compile_definitions(${target} PRIVATE
        VARNEL_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VARNEL_STAGE_DIR="${VARNEL_STAGE}")
endfunction()

# varnel_moc_source(NAME): makes NAME.moc for the target NAME if its one source, NAME.cpp, includes that. This is much
# quicker than to have the whole target looked through.
function(varnel_moc_source name)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF)
    file(STRINGS ${name}.cpp include REGEX "^#include \"${name}\\.moc\"")
    if(include)
        set(moc "${CMAKE_CURRENT_BINARY_DIR}/${name}.moc")
        qt_generate_moc(${name}.cpp "${moc}" TARGET ${name})
        set_property(SOURCE ${name}.cpp APPEND PROPERTY OBJECT_DEPENDS "${moc}")
        target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    endif()
endfunction()

# The executable of the tests of this folder: sets VARIABLE to its name.
function(varnel_test_executable variable)
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    string(MAKE_C_IDENTIFIER "${folder}" name)
    set(${variable} ${name} PARENT_SCOPE)
    if(TARGET ${name})
        return()
    endif()
    file(GLOB headers CONFIGURE_DEPENDS "*.h") # they may hold classes for moc
    add_executable(${name} ${headers} $<TARGET_OBJECTS:varnel_test_main>)
    varnel_setup_test(${name})
    if(NOT headers)
        set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    endif()
endfunction()

# varnel_register_test(NAME COMMAND...): a test program, run offscreen with a temporary home directory.
function(varnel_register_test name)
    add_test(NAME ${name} COMMAND "${PROJECT_SOURCE_DIR}/tests/in-fresh-home" ${ARGN})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=;LC_ALL=C.UTF-8;VARNEL_STAGE_DIR=${VARNEL_STAGE}")
endfunction()

# varnel_add_benchmark(NAME LIBRARIES...): NAME.cpp as a Google Benchmark program, run by `./dev bench`. It depends on the
# staged program: a window without its configuration is not the one to measure.
function(varnel_add_benchmark name)
    find_package(benchmark REQUIRED)
    add_executable(${name} ${name}.cpp)
    varnel_moc_source(${name})
    varnel_setup_target(${name})
    target_link_libraries(${name} PRIVATE ${ARGN} benchmark::benchmark)
    target_compile_definitions(${name} PRIVATE VARNEL_STAGE_DIR="${VARNEL_STAGE}")
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
    add_dependencies(${name} varnel_stage)
endfunction()

# varnel_add_fuzz_target(NAME LIBRARIES...): NAME.cpp defines LLVMFuzzerTestOneInput. The fuzz preset links it with
# libFuzzer; every other build links a driver that runs the corpus and a fixed number of changed inputs as a test.
function(varnel_add_fuzz_target name)
    add_executable(${name} ${name}.cpp)
    varnel_moc_source(${name})
    varnel_setup_target(${name})
    target_link_libraries(${name} PRIVATE ${ARGN})
    if(VARNEL_FUZZ)
        target_link_options(${name} PRIVATE -fsanitize=fuzzer,address)
        add_dependencies(varnel_fuzz ${name})
    else()
        target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/fuzz/shortrun.cpp")
        varnel_register_test(${name} $<TARGET_FILE:${name}> "${PROJECT_SOURCE_DIR}/tests/fuzz/corpus/${name}")
    endif()
endfunction()

# varnel_add_plugin(NAME SOURCES ... LINK ... [DIRECTORY dir]): a plug-in library, staged in plugins by default.
function(varnel_add_plugin name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DIRECTORY" "SOURCES;LINK")
    if(NOT arg_DIRECTORY)
        set(arg_DIRECTORY "${VARNEL_STAGE}/plugins")
        add_dependencies(varnel_stage ${name})
    endif()
    add_library(${name} MODULE ${arg_SOURCES})
    varnel_setup_target(${name})
    target_link_libraries(${name} PRIVATE varnel_interfaces ${arg_LINK})
    set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${arg_DIRECTORY}")
endfunction()
