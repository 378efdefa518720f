#!/usr/bin/env bash
# Fails where a folder includes one that stands above it, where GL names are made outside foundation/, or where a header does not
# compile alone.
# usage: check-includes.sh SOURCE_DIR COMPILER FLAGS...
set -euo pipefail
cd "$1"
compiler=("${@:2}")
fail() { echo "check-includes: $1" >&2; exit 1; }

# folder: the folders that it may include
allowed='math: math
shaders: shaders
foundation: foundation
effects: effects foundation math shaders
looks: looks effects foundation math shaders
jni: jni looks effects foundation
headless: headless
commandline: commandline
gallery: gallery commandline headless looks effects foundation math
reference: reference effects math shaders
testing: testing headless looks effects foundation math
bench: bench commandline reference testing headless looks effects foundation math shaders'
while IFS=': ' read -r folder may; do
  [ -d "$folder" ] || continue
  pattern=$(tr ' ' '|' <<<"$may")
  bad=$(grep -rnE '^#include "[a-z]+/' "$folder" --include='*.h' --include='*.cpp' | grep -vE "#include \"($pattern)/" || true)
  [ -z "$bad" ] || fail "upward include: $bad"
done <<<"$allowed"

bad=$(grep -rnE '\bgl(Gen|Create|Delete)[A-Za-z]+\(' math effects looks jni --include='*.h' --include='*.cpp' || true)
[ -z "$bad" ] || fail "GL names are made and deleted in foundation/ only: $bad"

for header in $(find math shaders foundation effects looks tidalume reference testing -name '*.h'); do
  "${compiler[@]}" -fsyntax-only -x c++ -I. "$header" || fail "does not compile alone: $header"
done
echo "check-includes: all headers compile alone, no upward include"
