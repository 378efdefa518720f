#!/usr/bin/env bash
# A project that takes the sources in with add_subdirectory gets the library alone: it needs neither Java tools, nor what
# the headless component, the gallery and the tests need, and the install step is its own.
# usage: check-subdirectory.sh SOURCE_DIR WORK_DIR
set -euo pipefail
rm -rf "$2"
mkdir -p "$2"
cd "$2"

cat >CMakeLists.txt <<END
cmake_minimum_required(VERSION 3.21)
project(consumer CXX)
add_subdirectory($1 tidalume)
add_executable(consumer consumer.cpp)
target_link_libraries(consumer Tidalume::Tidalume)
END
cat >consumer.cpp <<'END'
#include "effects/comet/CometRenderer.h"

int main() {
    CometRenderer comets;
    comets.setScreenSize(200, 100);
    return comets.getCore1X() == 100.0f ? 0 : 1;
}
END
unneeded=()
for package in Java PNG JPEG WebP CLI11 GTest; do unneeded+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=ON"); done
JAVA_HOME=$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")") # for jni.h
export JAVA_HOME
cmake -G Ninja -B build --no-warn-unused-cli "${unneeded[@]}" >/dev/null
cmake --build build >/dev/null
build/consumer
cmake --install build --prefix installed >/dev/null
if [ -e installed ]; then echo "check-subdirectory: the library installs itself with its consumer" >&2; exit 1; fi
if grep -q Werror build/build.ninja; then echo "check-subdirectory: warnings are errors" >&2; exit 1; fi
