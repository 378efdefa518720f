#!/usr/bin/env bash
# Fails where the library's binary interface is not the one that was written down: functions, their types, the layout of
# the exported classes. After a change that is meant, scripts/renew-abi writes it down anew.
# usage: check-abi.sh LIBRARY ABI_FILE
set -euo pipefail
if ! abidiff --no-show-locs "$2" "$1"; then
  echo "check-abi: the binary interface has changed. If that is meant: scripts/renew-abi, and a line in CHANGELOG.md" >&2
  exit 1
fi
echo "check-abi: as written down"
