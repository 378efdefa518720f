#!/usr/bin/env bash
# Writes the C++ reference, and fails where Doxygen warns. (The Java half is written by the build, which fails likewise.)
# usage: check-reference.sh SOURCE_DIR OUTPUT_DIR
set -euo pipefail
cd "$1"
mkdir -p "$2"
{
  cat docs/Doxyfile
  echo "OUTPUT_DIRECTORY = $2"
  echo "WARN_AS_ERROR = FAIL_ON_WARNINGS"
} | doxygen -
