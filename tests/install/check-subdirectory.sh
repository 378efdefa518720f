#!/usr/bin/env bash
# A project that takes the sources in with add_subdirectory gets the library alone: of a JDK it needs jni.h only, of what
# the headless component, the gallery and the tests need nothing, and the install step is its own.
# Neither its configure step warns, nor that of `./run` on a new machine, which lacks what web page and package take.
# usage: check-subdirectory.sh SOURCE_DIR WORK_DIR
set -euo pipefail
fail() { echo "check-subdirectory: $1" >&2; exit 1; }
rm -rf "$2"
mkdir -p "$2"
cd "$2"

cat >CMakeLists.txt <<EOF
cmake_minimum_required(VERSION 3.21)
project(consumer CXX)
add_subdirectory($1 tidalume)
add_executable(consumer consumer.cpp)
target_link_libraries(consumer Tidalume::Tidalume)
EOF
cat >consumer.cpp <<'EOF'
#include "effects/comet/CometRenderer.h"

int main() {
    CometRenderer comets;
    comets.setScreenSize(200, 100);
    return comets.getCore1X() == 100.0f ? 0 : 1;
}
EOF
unneeded=()
for package in Java JNI PNG JPEG WebP CLI11 GTest; do unneeded+=("-DCMAKE_DISABLE_FIND_PACKAGE_$package=ON"); done
cmake -G Ninja -B build --no-warn-unused-cli "${unneeded[@]}" >/dev/null 2>messages
cmake --build build >/dev/null
build/consumer
cmake --install build --prefix installed >/dev/null
if [ -e installed ]; then fail "the library installs itself with its consumer"; fi
if grep -q Werror build/build.ninja; then fail "warnings are errors"; fi

headers=$(printf '%s;' /usr/lib/jvm/*/include)
if JAVA_HOME=absent cmake -B without -DCMAKE_IGNORE_PATH="$headers" >/dev/null 2>stop; then
  fail "it is configured without jni.h"
fi
grep -q 'jni.h is missing.*openjdk-17-jdk-headless' <(tr '\n' ' ' <stop) || fail "no package is named: $(cat stop)"

env -u CI cmake -S "$1" --preset release -B "$2/run" -DTIDALUME_{EMCC,CHROMIUM,NODE,SHLIBDEPS}=OFF >says 2>>messages
if [ -s messages ]; then fail "cmake warns: $(cat messages)"; fi
grep -q 'cpack is left out.*dpkg-dev' says || fail "nothing says what the package takes: $(cat says)"
