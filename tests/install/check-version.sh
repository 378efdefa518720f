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
# The version is the newest that has a date, or a later one whose changes are unreleased.
changes=$source/CHANGELOG.md
dated='^## \[([0-9]+\.[0-9]+\.[0-9]+)\] - [0-9]{4}-[0-9]{2}-[0-9]{2}$'
others=$(grep '^## ' "$changes" | grep -vE "$dated") || true
[ "$others" = "## [Unreleased]" ] || { echo "check-version: odd headings in CHANGELOG.md: $others" >&2; wrong=1; }
newest=$(sed -nE "/$dated/{s//\1/p;q}" "$changes")
unreleased=$(sed '1,/^## \[Unreleased/d; /^## /,$d' "$changes")
[ -z "$unreleased" ] || newest=$(printf '%s\n' "$newest" "$version" | sort -V | tail -n 1)
expect "CHANGELOG.md" "$newest"
expect "docs/android.md" \
  "$(sed -n 's/.*com\.vyn\.effect:tidalume:\([0-9.]*\).*/\1/p' "$source/docs/android.md" | sort -u)"
for file in "$build"/*.pc; do
  expect "$(basename "$file")" "$(sed -n 's/^Version: //p' "$file")"
done
expect "TidalumeConfigVersion.cmake" \
  "$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")/\1/p' "$build/TidalumeConfigVersion.cmake")"
expect "Tidalume.java" \
  "$(javap -constants -cp "$jar" com.vyn.effect.tidalume.Tidalume | sed -n 's/.*VERSION = "\(.*\)";/\1/p')"

# Module and sample read CMakeLists.txt; the POM has the module's version.
export JAVA_HOME=$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")")
for module in tidalume sample; do
  gradle=$source/android/$module/build.gradle
  expect "android/$module/build.gradle" "$(groovy -e "
    def tidalume = new File('$source')
    def version = $(sed -nE 's/^(version| *versionName) = //p' "$gradle")
    print version")"
done

# Tools and platforms are named wherever they are needed.
alike() { # pattern, whose second group is what must be alike; files, each of which says it
  local found
  found=$(cd "$source" && for file in "${@:2}"; do
    sed -nE "s/.*$1.*/\2/p" "$file" | sort -u | grep . || echo "nothing in $file"
  done | sort -u)
  [ "$(wc -l <<<"$found")" = 1 ] || { echo "check-version: \"$1\" is not alike:" $found >&2; wrong=1; }
}
module=android/tidalume/build.gradle
sample=android/sample/build.gradle
alike '(minSdk = |-DANDROID_PLATFORM=|\(API )([0-9]+)' $module $sample android/README.md docs/android.md
alike '(compileSdk = |targetSdk = |platform |platforms.android-)([0-9]+)' $module $sample android/README.md
alike "(ndkVersion = '|NDK )([0-9.]+[0-9])" $module android/README.md
alike "(version = .|CMake )([0-9.]*[0-9])" $module android/README.md
alike '(ANDROID_STL=)([a-z+_]+)' $module android/README.md
for abi in arm64-v8a armeabi-v7a x86_64; do
  alike "(abiFilters.*|machines=.*|for .*)($abi)" $module scripts/build-aar android/README.md docs/android.md
done
alike "(version '|plug-in )([0-9]+)" android/build.gradle docs/android.md
alike '(Gradle )([0-9.]+[0-9])' android/README.md docs/android.md
alike '(openjdk-|JDK )([0-9]+)' android/README.md scripts/install-dependencies cmake/{FindJniHeaders,TidalumeJava}.cmake
alike '(Java |VERSION_|--release )([0-9]+)' cmake/TidalumeJava.cmake java/CMakeLists.txt $module $sample \
  tests/android/check-android.sh

# What the configure step asks for is installed.
for package in $(grep -rhoE '\blib[a-z0-9.-]+-(dev|java)\b' "$source/cmake" "$source"/{,*/}CMakeLists.txt | sort -u); do
  grep -qE "[ -]$package( |\$)" "$source/scripts/install-dependencies" ||
    { echo "check-version: scripts/install-dependencies does not install $package" >&2; wrong=1; }
done
exit "$wrong"
