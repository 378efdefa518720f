#!/usr/bin/env bash
# Fails where the page about looks does not show the presets and parameters that the gallery lists, as they are listed,
# and where ./run, which says so before the first build, does not name the scenes and grounds that the gallery takes.
# usage: check-looks.sh SOURCE_DIR GALLERY_PROGRAM
set -euo pipefail
page=$1/docs/looks.md
wrong=0

# The scenes that are looks, each as its row of presets and its rows of parameters, ending in an empty line.
rows=$("$2" --list | awk '
  /^[a-z]/ { isLook = $1 != "vector"; if (isLook && NR > 1) print "" }
  !isLook || /^[a-z]/ { next }
  /^  presets:/ { row = "|"; for (i = 2; i <= NF; i++) row = row " " $i " |"; print row; next }
  {
    name = $1
    sub(/^ +[^ ]+ +/, "")
    end = index($0, ". ")
    sentence = substr($0, 1, end)
    values = substr($0, end + 2)
    unit = ""
    if (values ~ / at first$/) {
      split(values, parts, / to |, | at first/)
      split(parts[2], range, " ")
      unit = substr(parts[2], length(range[1]) + 2)
      initial = parts[3]
      values = parts[1] " to " range[1]
    } else {
      initial = "the first"
      gsub(/ /, ", ", values)
    }
    row = "| `" name "` | " values " | " unit " | " initial " | " sentence " |"
    gsub(/  +/, " ", row)
    print row
  }')

while IFS= read -r presets; do
  parameters=
  while IFS= read -r row && [ -n "$row" ]; do parameters+=$row$'\n'; done
  grep -qxF -- "$presets" "$page" || { echo "not in $page: $presets" >&2; wrong=1; }
  table=$'\n|---|---|---|---|---|\n'$parameters$'\n'
  [[ $(<"$page") == *"$table"* ]] || { echo "no such table in $page:$table" >&2; wrong=1; }
done <<<"$rows"

for kind in scene ground; do
  names=$("$2" --$kind none 2>&1 | sed 's/.* are: //' || true)
  grep -qxF "# The ${kind}s: $names" "$1/run" || { echo "not in $1/run: the ${kind}s: $names" >&2; wrong=1; }
done
"$2" --help | grep -- --background >/dev/null || { echo "--help does not help" >&2; wrong=1; }
exit "$wrong"
