# cmake -DBUILD=dir -P tidy.cmake: clang-tidy over the sources of ours that the build in BUILD compiles.
# The precompiled header is g++'s, so clang gets the commands without it.
file(READ "${BUILD}/compile_commands.json" commands)
string(REGEX REPLACE " -include [^ ]*cmake_pch.hxx" "" commands "${commands}")
string(REGEX REPLACE " -(Winvalid-pch|fpch-preprocess)" "" commands "${commands}")
file(WRITE "${BUILD}/tidy/compile_commands.json" "${commands}")
execute_process(COMMAND git ls-files -- source branding plugins benchmarks OUTPUT_VARIABLE files)
string(REGEX MATCHALL "[^\n]+\\.cpp" files "${files}")
execute_process(
    COMMAND run-clang-tidy -quiet -p "${BUILD}/tidy" ${files}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_QUIET)
string(REGEX MATCHALL "[^\n]+(warning|error): [^\n]+" findings "${output}")
if(findings OR result)
    list(JOIN findings "\n" text)
    message(FATAL_ERROR "${text}")
endif()
