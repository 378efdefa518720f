#!/usr/bin/env bash
# Fails where something says another version than CMakeLists.txt.
# usage: check-version.sh SOURCE_DIR BUILD_DIR VERSION JAR
set -euo pipefail
source=$1
build=$2
version=$3
jar=$4
wrong=0
expect() { # where, what it says
  [ "$2" = "$version" ] || { echo "check-version: $1 says \"$2\", not \"$version\"" >&2; wrong=1; }
}

for macros in TIDALUME_VERSION TIDALUME_VERSION_MAJOR.TIDALUME_VERSION_MINOR.TIDALUME_VERSION_PATCH; do
  expect "$macros in tidalume/version.h" \
    "$(echo "$macros" | c++ -E -P -include "$source/tidalume/version.h" -x c++ - | tr -d '" \n')"
done
expect "CHANGELOG.md" "$(sed -n 's/^## \[\([0-9.]*\)\] - .*/\1/p' "$source/CHANGELOG.md" | head -n 1)"
expect "docs/android.md" \
  "$(sed -n 's/.*com\.vyn\.effect:tidalume:\([0-9.]*\).*/\1/p' "$source/docs/android.md" | sort -u)"
for file in "$build"/*.pc; do
  expect "$(basename "$file")" "$(sed -n 's/^Version: //p' "$file")"
done
expect "Tidalume.java" \
  "$(javap -constants -cp "$jar" com.vyn.effect.tidalume.Tidalume | sed -n 's/.*VERSION = "\(.*\)";/\1/p')"

# The module reads CMakeLists.txt; its POM has its version.
export JAVA_HOME=$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")")
gradle=$source/android/tidalume/build.gradle
expect "android/tidalume/build.gradle" \
  "$(groovy -e "def tidalume = new File('$source')"$'\n'"$(grep '^version = ' "$gradle")"$'\n'"println version")"
exit "$wrong"
