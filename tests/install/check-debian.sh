#!/usr/bin/env bash
# Packs what check-samples.sh has built, unpacks the package into a folder, builds and runs the README's programs there,
# and has lintian look at it. In continuous integration, as root, it is installed and removed too.
# usage: check-debian.sh SAMPLES_DIR WORK_DIR
set -euo pipefail
samples=$1
work=$2
fail() { echo "check-debian: $1" >&2; exit 1; }
rm -rf "$work"
mkdir -p "$work/root"
build=$samples/repository/build-package
cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/log" || fail "$(cat "$work/log")"
package=$(echo "$work"/*.deb)
dpkg-deb --extract "$package" "$work/root"

run_programs() { # root of the system that the package is in
  local step
  for step in Java CMake pkg-config; do
    echo "== $step"
    rm -rf "$work/project"
    cp -r "$samples/files" "$work/project"
    (cd "$work/project" && sed "s#\$HOME/tidalume#$1/usr#g" "$samples/commands/$step" | bash -euo pipefail)
    cmp "$work/project/water.png" "$samples/water-Java.png" || fail "the package's water is another with \"$step\""
  done
}
run_programs "$work/root"

if [[ -n ${CI:-} && $EUID == 0 ]]; then
  trap 'dpkg --purge tidalume' EXIT
  dpkg --install "$package"
  run_programs ""
  dpkg --purge tidalume
  trap - EXIT
  while IFS= read -r file; do
    [[ ! -e /$file ]] || fail "the package leaves /$file behind"
  done < <(cd "$work/root" && find usr -type f)
else
  echo "Not installed: that is for root in continuous integration"
fi

if command -v lintian >/dev/null; then
  lintian --allow-root --fail-on error "$package" || fail "lintian finds errors"
else
  echo "lintian is missing: not asked"
fi
