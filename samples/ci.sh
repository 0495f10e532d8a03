#!/bin/sh
# Builds and tests a plug-in, as a job of continuous integration does: ci.sh PLUGIN VARNEL [BUILD]
# PLUGIN is the folder with the plug-in's CMakeLists.txt, VARNEL the directory of the installed program. BUILD is a directory
# for what is built, which then stays there. Further warnings can be set in CXXFLAGS.
set -eu
plugin=$1
varnel=$2
build=${3:-$(mktemp -d)}
[ $# -gt 2 ] || trap 'rm -rf "$build"' EXIT
cmake -S "$plugin" -B "$build" -DCMAKE_PREFIX_PATH="$varnel" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror ${CXXFLAGS:-}"
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure --no-tests=error
