#!/usr/bin/env bash
# Builds and runs what the documentation shows: the README's programs from an empty folder against an installed
# library, the pages' fragments in a context without a window; and looks excerpts up in the files that they are from.
# A failure does not keep the others from being found.
# usage: check-samples.sh SOURCE_DIR WORK_DIR
set -euo pipefail
source=$1
work=$2
here=$(cd "$(dirname "$0")" && pwd)
failed=0
fail() { echo "check-samples: $1" >&2; failed=1; }

rm -rf "$work"
mkdir -p "$work"/{files,commands,fragments,android,excerpts,repository,project}
cp "$source/android/sample/src/main/res/drawable-nodpi/pebbles.webp" "$work/files/picture.webp"
awk -v out="$work" -f "$here/extract-samples.awk" "$source"/README.md "$source"/docs/*.md "$source"/android/*.md ||
  fail "the blocks above cannot be taken"

for excerpt in "$work"/excerpts/*; do
  [ -e "$excerpt" ] || break
  path=$(head -n 1 "$excerpt")
  tail -n +2 "$excerpt" | sed 's/^ *//' >"$work/excerpt"
  sed 's/^ *//' "$source/$path" >"$work/original"
  # One line per file, so that the excerpt is looked up as a whole.
  grep -qF -- "$(tr '\n' '\r' <"$work/excerpt")" <(tr '\n' '\r' <"$work/original") || fail "not in $path: $(cat "$excerpt")"
done

export HOME=$work
ln -s "$source"/* "$work/repository"
rm -f "$work"/repository/build* # what the source folder has built is not what its commands build here
run() { # step: its commands in a fresh folder that holds the sample files
  echo "== $1"
  rm -rf "$work/project"
  cp -r "$work/files" "$work/project"
  (cd "$work/project" && sh -eu "$work/commands/$1") || fail "the commands of \"$1\" fail"
}
(cd "$work/repository" && sh -eu "$work/commands/repository" >/dev/null) || { fail "installing fails"; exit 1; }
for step in Java CMake pkg-config; do
  run "$step"
  mv "$work/project/water.png" "$work/water-$step.png" || fail "\"$step\" draws no water.png"
  cmp "$work/water-$step.png" "$work/water-Java.png" || fail "\"$step\" draws other water than Java"
done
run looks
[ -s "$work/project/layers.png" ] || fail "\"looks\" draws no layers.png"
# However a program is built, it and the library have one copy of the settings.
for flags in "" -fvisibility=hidden "-fPIE -pie" "-fno-pie -no-pie"; do
  CXXFLAGS=$flags run cache >"$work/log" 2>&1
  grep -q 'VectorGraphicRenderer Shader Init' "$work/log" || fail "with \"$flags\" no time is logged: $(<"$work/log")"
  [ "$(grep -c '^VectorGraphicRenderer.*dat$' "$work/log")" = 5 ] || fail "with \"$flags\" programs are not saved"
done
# Without the touch the water is flat, and the picture another.
cp "$work/files/Water.java" "$work/project/Flat.java"
sed -i -e 's/class Water/class Flat/' -e '/touch/d' "$work/project/Flat.java"
sed 's/Water.java/Flat.java/' "$work/commands/Java" >"$work/commands/Flat"
(cd "$work/project" && sh -eu "$work/commands/Flat") || fail "the README's program fails without its touch"
if cmp -s "$work/project/water.png" "$work/water-Java.png"; then fail "the README's water does not ripple"; fi

installed=$HOME/tidalume
for header in $(find "$installed/include/tidalume" -name '*.h'); do
  c++ -std=c++17 -fsyntax-only -x c++ -I"$installed/include/tidalume" -include "$header" /dev/null ||
    fail "an installed header needs what is not installed: $header"
done
pages=$installed/share/tidalume/docs
linked=$(
  grep -rhoP 'docs/\K[a-z-]+\.md' "$installed/include/tidalume"
  grep -hoP '\]\(\K[^)#]+' "$pages"/*.md
)
for page in $(sort -u <<<"$linked"); do
  [ -e "$pages/$page" ] || fail "an installed header or page points to what is not installed: $page"
done
for file in docs/{life-cycle,threads}.md ../../include/tidalume/tidalume/version.h \
  ../java/tidalume{,-headless,-javadoc,-sources}.jar; do
  [ -e "$installed/share/tidalume/$file" ] || fail "not installed: $file"
done

# CMake takes this version for what asks for it, and not for what asks for an older one, which may differ, nor without a
# component that is asked for.
cmake --install "$work/repository/build-package" --component Tidalume --prefix "$work/library" >/dev/null
parts=$(find "$work/library" -iname '*headless*')
[ -z "$parts" ] || fail "the library alone brings of the headless component: $parts"
mkdir "$work/versions"
cat >"$work/versions/CMakeLists.txt" <<EOF
cmake_minimum_required(VERSION 3.21)
project(versions CXX)
find_package(Tidalume 0.1 QUIET)
if(Tidalume_FOUND)
  message(SEND_ERROR "0.1 is found")
endif()
find_package(Tidalume QUIET COMPONENTS Headless PATHS "$work/library" NO_DEFAULT_PATH)
if(Tidalume_FOUND OR CMAKE_MODULE_PATH)
  message(SEND_ERROR "found without Headless, or it changes the project's module path: \${CMAKE_MODULE_PATH}")
endif()
find_package(Tidalume $(PKG_CONFIG_PATH=$installed/lib/pkgconfig pkg-config --modversion tidalume) REQUIRED)
EOF
cmake -S "$work/versions" -B "$work/versions/build" -DCMAKE_PREFIX_PATH="$installed" >/dev/null || fail "another version"

names=()
methods=
for fragment in "$work"/fragments/*; do
  name=$(basename "$fragment")
  names+=("$name")
  methods+="
    private static void $name(HeadlessContext context, int picture) throws Exception {
$(cat "$fragment")
    }"$'\n'
done
mkdir "$work/samples"
cp "$work/files/picture.webp" "$work/samples"
template=$(<"$here/Samples.java.in")
echo "${template/@METHODS@/"$methods"}" >"$work/samples/Samples.java"
cd "$work/samples"
echo "== fragments"
java -Xcheck:jni -cp "$installed/share/java/*" -Djava.library.path="$installed/lib" \
  Samples.java "${names[@]}" 2>&1 | tee log ||
  fail "the fragments fail"
if grep -E 'glError|Could not|WARNING|FATAL' log; then fail "the samples' log has errors"; fi
echo "check-samples: $(ls "$work/fragments" | wc -l) fragments and 4 programs"
exit $failed
