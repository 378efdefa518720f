#!/usr/bin/env bash
# Packs what check-samples.sh has built, installs the package into a folder, builds and runs the README's programs
# there, removes it, and has lintian look at it. In continuous integration, as root, it is installed on the system too,
# where the programs get no path but that of the jars.
# usage: check-debian.sh SAMPLES_DIR WORK_DIR VERSION
set -euo pipefail
samples=$1
work=$2
version=$3
folder=$work/system
fail() { echo "check-debian: $1" >&2; exit 1; }
rm -rf "$work"
mkdir -p "$work/bin" "$folder"/var/lib/dpkg/{info,updates,triggers}
build=$samples/repository/build-package
chmod -R go= "$build"/{debian,triggers}
(umask 077 && cpack --config "$build/CPackConfig.cmake" -B "$work" >"$work/log") || fail "$(cat "$work/log")"
package=$(echo "$work"/*.deb)
[[ $(dpkg-deb --field "$package" Version) == "$version-1" ]] || fail "the version is another: $package"
for name in $(PKG_CONFIG_PATH=$build pkg-config --print-requires tidalume tidalume-headless); do
  owner=$(dpkg -S "/usr/lib/*/pkgconfig/$name.pc" | sed 's/:.*//; s/62-turbo//') # which libjpeg-dev depends on
  grep -qwe "$owner" <(dpkg-deb --field "$package" Depends) || fail "the package does not depend on $owner"
done
modes=$(for part in ctrl fsys; do dpkg-deb --$part-tarfile "$package" | tar -tv; done |
  grep -vE '^([d-]rwxr-xr-x|-rw-r--r--) ') || true
[[ -z $modes ]] || fail "modes depend on who packs: $modes"

run_programs() { # sed's script, which says where the package is
  local step
  for step in Java CMake pkg-config; do
    echo "== $step"
    rm -rf "$work/project"
    cp -r "$samples/files" "$work/project"
    (cd "$work/project" && sed "$1" "$samples/commands/$step" | HOME=$work sh -eu)
    cmp "$work/project/water.png" "$samples/water-Java.png" || fail "the package's water is another with \"$step\""
  done
}

# In the folder are this system's packages by name, so that what the package depends on is looked up. Its scripts call
# ldconfig, which would be this system's.
cp /var/lib/dpkg/status "$folder/var/lib/dpkg"
install /dev/stdin "$work/bin/ldconfig" <<<'#!/bin/sh'
dpkg_in_folder() {
  PATH=$work/bin:$PATH:/usr/sbin:/sbin dpkg --root="$folder" --log=/dev/null --force-not-root \
    --force-script-chrootless --no-triggers "$@" >"$work/log" 2>&1 ||
    fail "dpkg $*: $(grep -v 'files list file' "$work/log")"
}
dpkg_in_folder --install "$package"
files=$(cd "$folder" && find usr -type f)
run_programs "s#\$HOME/tidalume#$folder/usr#g"
dpkg_in_folder --purge tidalume
[[ ! -e $folder/usr ]] || fail "the package leaves behind: $(find "$folder/usr")"

if [[ -n ${CI:-} && $EUID == 0 ]]; then
  trap 'dpkg --purge tidalume' EXIT
  dpkg --install "$package"
  run_programs 's#"$HOME/tidalume/share/java#"/usr/share/java#; s# -[^ ]*"$HOME/tidalume[^ ]*##g; /PKG_CONFIG_PATH/d'
  dpkg --purge tidalume
  trap - EXIT
  for file in $files; do
    [[ ! -e /$file ]] || fail "the package leaves /$file behind"
  done
else
  echo "Not installed on the system: that is for root in continuous integration"
fi

if command -v lintian >/dev/null; then
  lintian --allow-root --fail-on error "$package" || fail "lintian finds errors"
else
  echo "lintian is missing: its look at the package is left out. See scripts/install-dependencies."
  [[ -z ${CI:-} ]] || exit 1
fi
