#!/usr/bin/env bash
# Fails where a Markdown file links to a file or a heading that is not there. Links to other places of the web are not
# followed.
# usage: check-links.sh SOURCE_DIR
set -euo pipefail
cd "$1"

anchors() { # file: its headings as they are linked to, and what it names
  grep -oE '<a id="[^"]+"' "$1" | cut -d '"' -f 2 || true
  grep -E '^#+ ' "$1" | sed -E 's/^#+ //' | tr '[:upper:]' '[:lower:]' | sed -e 's/[^a-z0-9 _-]//g' -e 's/ /-/g'
}

dead=0
count=0
for file in README.md CHANGELOG.md CONTRIBUTING.md docs/*.md android/*.md; do
  while IFS= read -r link; do
    case $link in http://* | https://*) continue ;; esac
    count=$((count + 1))
    path=${link%%#*}
    target=$file
    if [ -n "$path" ]; then target=$(dirname "$file")/$path; fi
    if [ ! -e "$target" ]; then
      echo "$file: no file for $link" >&2
      dead=1
    elif [[ $link == *'#'* ]] && ! grep -qxF -- "${link#*#}" <<<"$(anchors "$target")"; then
      echo "$file: no heading for $link" >&2
      dead=1
    fi
  done < <(grep -oE '\]\([^) ]+\)' "$file" | sed -e 's/^](//' -e 's/)$//')
done
[ "$count" -gt 0 ] || dead=1

# What the code says is kept has a row on the page that says why, and every row has its place in the code.
rows=$(grep -oE '<a id="[^"]+"' docs/compatibility.md | cut -d '"' -f 2 | sort)
kept=$(grep -rhoE '// kept: [a-z0-9-]+(, [a-z0-9-]+)*' effects foundation jni math shaders |
  sed -e 's/.*kept: //' | tr -s ', ' '\n' | sort -u)
differences=$(comm -3 <(echo "$rows") <(echo "$kept"))
if [ -n "$differences" ]; then
  echo "docs/compatibility.md has a row, or at the right the code a \"// kept:\", but not both: $differences" >&2
  dead=1
fi
echo "check-links: $count links"
exit "$dead"
