#!/usr/bin/env bash
# Fails where the natives that a release build exports are not those of the Java classes, and where the library is not
# what Android asks for.
# usage: check-exports.sh LIBRARY [JAR]
set -euo pipefail
library=$1
jar=${2:-}
fail() { echo "check-exports: $1" >&2; exit 1; }

if [ -n "$jar" ]; then
  classes=$(jar tf "$jar" | sed -n 's/\.class$//p')
  # shellcheck disable=SC2086 # one argument a class
  natives=$(javap -p -cp "$jar" $classes | awk '/ class / { sub(/.* class /, ""); gsub(/\./, "_"); class = $1 }
    / native / { sub(/\(.*/, ""); print "Java_" class "_" $NF }' | sort)
  exported=$(nm -D --defined-only "$library" | awk '$3 ~ /^Java_/ { sub(/@.*/, "", $3); print $3 }' | sort)
  differences=$(comm -3 <(echo "$exported") <(echo "$natives"))
  [ -z "$differences" ] || fail "exported, or at the right declared in Java, but not both: $differences"
fi
readelf -lW "$library" | awk '$1 == "LOAD" && $NF != "0x4000" {exit 1}' || fail "a LOAD segment is not aligned to 16 KB"
readelf -dW "$library" | grep -q 'soname: \[libTidalume.so\]' || fail "the soname is not libTidalume.so"
if readelf -SW "$library" | grep -q gcc_except_table; then fail "the library has code for exceptions"; fi
if nm -C "$library" | grep -q 'typeinfo for [A-Z]'; then fail "the library has run-time type information"; fi
