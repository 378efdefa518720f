#!/usr/bin/env bash
# Fails where a release build does not export what is listed (nothing else can be: the linker takes the list), where the
# natives are not those of the Java classes, and where the library is not what Android asks for.
# usage: check-exports.sh LIBRARY EXPORTS_MAP [JAR]
set -euo pipefail
library=$1
map=$2
jar=${3:-}
fail() { echo "check-exports: $1" >&2; exit 1; }

exported=$(nm -D --defined-only "$library" | awk '{print $3}' | sed 's/@.*//' | c++filt | sort -u)
listed=$(sed -n '/global:/,/local:/p' "$map" | sed -e 's/#.*//' -e 's/^ *//' -e 's/;.*//' -e 's/^"\(.*\)"$/\1/' |
  grep -E '^(Java_|[A-Za-z0-9_:~]+.*\(|[A-Za-z]+(\*|::[A-Z_]+)$)' | sort -u)

while IFS= read -r name; do
  case $name in
    *'*') grep -q "^${name%\*}" <<<"$exported" || fail "listed but not exported: $name" ;;
    *) grep -qxF -- "$name" <<<"$exported" || fail "listed but not exported: $name" ;;
  esac
done <<<"$listed"

if [ -n "$jar" ]; then
  classes=$(jar tf "$jar" | sed -n 's/\.class$//p')
  # shellcheck disable=SC2086 # one argument a class
  natives=$(javap -p -cp "$jar" $classes | awk '/ class / { sub(/.* class /, ""); gsub(/\./, "_"); class = $1 }
    / native / { sub(/\(.*/, ""); print "Java_" class "_" $NF }' | sort)
  differences=$(comm -3 <(grep '^Java_' <<<"$exported" | sort) <(echo "$natives"))
  [ -z "$differences" ] || fail "exported, or at the right declared in Java, but not both: $differences"
fi
readelf -lW "$library" | awk '$1 == "LOAD" && $NF != "0x4000" {exit 1}' || fail "a LOAD segment is not aligned to 16 KB"
readelf -dW "$library" | grep -q 'soname: \[libTidalume.so\]' || fail "the soname is not libTidalume.so"
if readelf -SW "$library" | grep -q gcc_except_table; then fail "the library has code for exceptions"; fi
if nm -C "$library" | grep -q 'typeinfo for [A-Z]'; then fail "the library has run-time type information"; fi
echo "check-exports: $(wc -l <<<"$exported") names, as listed"
