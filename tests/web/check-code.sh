#!/usr/bin/env bash
# Fails where what the page's code tab shows does not compile, or sets something else than the page does: layouts go
# through Android's packaging tool, Kotlin and Java are compiled against the library and Android.Project's declarations
# of the platform, renderers in Java are made and asked for their settings, those in C++ are linked and draw.
# usage: check-code.sh SOURCE_DIR TIDALUME_JAR LIBRARY HEADLESS_LIBRARY ANDROID_WORK_DIR WORK_DIR
set -euo pipefail
source=$1
class_path=$2:$5/classes:snippets
library=$3
headless=$4
work=$6
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$work"
mkdir -p "$work"/res/{layout,drawable-nodpi} "$work"/{java,snippets}
cd "$work"
node "$here/write-code.mjs" "$source/out/web" .

cp "$source/android/sample/src/main/res/drawable-nodpi/pebbles.webp" res/drawable-nodpi/picture.webp
echo '<manifest package="snippets" />' >AndroidManifest.xml
aapt package -m -M AndroidManifest.xml -S res -S "$source/android/tidalume/src/main/res" -J java --auto-add-overlay \
  -I /usr/share/android-framework-res/framework-res.apk -F snippets.apk

for file in case*.java; do
  mkdir -p "java/${file%%.*}"
  mv "$file" "java/${file/.//}"
done
find java -name '*.java' >sources
javac --release 11 -Xlint:all -Werror -cp "$class_path" -d snippets @sources
javac -cp "$class_path" -d snippets "$here/CodeTest.java"
java -Xcheck:jni -Djava.library.path="$(dirname "$library")" -cp "$class_path" CodeTest expected

kotlin=$source/node_modules/kotlin-compiler/bin/kotlinc
if [ -e "$kotlin" ]; then
  "$kotlin" -Werror -no-reflect -jvm-target 11 -cp "$class_path" -d kotlin case*.kt
else
  echo "check-code: npm has not brought a Kotlin compiler; it is left out"
fi

printf '%s\n' case*.cpp | xargs -P "$(nproc)" -I FILE c++ -std=c++17 -Wall -Wextra -Wpedantic -Werror -I"$source" \
  FILE "$headless" "$library" -Wl,-rpath,"$(dirname "$library")" -lEGL -lGLESv2 -o FILE.program
for program in *.program; do
  "./$program" >log 2>&1 || { echo "check-code: $program fails" >&2; cat log >&2; exit 1; }
  [ ! -s log ] || { echo "check-code: $program has something to say" >&2; cat log >&2; exit 1; }
done
echo "check-code: layouts, Java, Kotlin and C++ pass"
