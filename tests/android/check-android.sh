#!/usr/bin/env bash
# Checks of the Android module what can be checked without Android's SDK: XML, resources and manifest by the platform's
# own packaging tool, the syntax of the Gradle files, and the Java of views and sample against declarations of the few
# platform classes that they use. What those declare is looked up in the platform's own, if npm has brought them.
# Leaves the classes and a test in WORK_DIR/classes.
# usage: check-android.sh SOURCE_DIR TIDALUME_JAR CLASS_PATH WORK_DIR
set -euo pipefail
source=$1
jar=$2
class_path=$3
work=$4
here=$(cd "$(dirname "$0")" && pwd)
sample=$source/android/sample/src/main
library=$source/android/tidalume/src/main
min_sdk=$(sed -n 's/^ *minSdk = //p' "$source/android/tidalume/build.gradle")
rm -rf "$work"
mkdir -p "$work"/{gradle,generated,classes,stubs}
cd "$work"

find "$source/android" -name '*.xml' -not -path '*/build/*' -exec xmllint --noout {} +

# The recipes: layouts join the sample's, Java and Kotlin are compiled with it.
mkdir -p recipes/{files,commands,fragments,excerpts,android,res/layout}
awk -v out=recipes -f "$source/tests/docs/extract-samples.awk" "$source"/docs/android*.md
mv recipes/android/*.xml recipes/res/layout

# The manifest's package is the namespace of build.gradle, which Gradle puts in.
package() { # module, its namespace and folders of resources
  sed "s/<manifest /<manifest package=\"$2\" /" "$source/android/$1/src/main/AndroidManifest.xml" >AndroidManifest.xml
  aapt package -f -m -M AndroidManifest.xml "${@:3}" -J generated -F "$1.apk" --min-sdk-version "$min_sdk" \
    --auto-add-overlay --non-constant-id -I /usr/share/android-framework-res/framework-res.apk
}
namespace() { sed -n "s/^    namespace \(= \)\?'\(.*\)'/\2/p" "$source/android/$1/build.gradle"; }
package tidalume "$(namespace tidalume)" -S "$library/res"
package sample "$(namespace sample)" -S recipes/res -S "$sample/res" -S "$library/res"

export JAVA_HOME=$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")")
for file in "$source"/android/{settings,build,tidalume/build,sample/build}.gradle; do
  groovyc -d gradle "$file"
done

# Each stub stands below a line with its file name.
awk '/^=== / { file = "stubs/" $2; folder = file; sub("/[^/]*$", "", folder); system("mkdir -p " folder); next } { print > file }' \
  "$here/platform-stubs.txt"
find stubs generated recipes "$library/java" "$sample/java" -name '*.java' >sources
javac --release 11 -Xlint:all -Werror -implicit:none -d classes -cp "$jar:$class_path" @sources
jar cf views.jar -C classes com/vyn/effect/tidalume/views
expect_alike() { # what; two files
  diff "${@:2}" || { echo "check-android: $1 differ" >&2; exit 1; }
}
expect_alike "values of effectTouches and of TouchMode" \
  <(sed -nE 's/.*<enum name="(.*)" value="(.*)".*/\2 \U\1/p' "$library/res/values/attrs.xml") \
  <(javap -cp "$jar" com.vyn.effect.tidalume.views.TouchMode | sed -n 's/.*[.]TouchMode \([A-Z]*\);/\1/p' |
    awk '{ print NR - 1, $0 }')
# The keep rule's pattern as a regular expression: ** goes below the package, * does not.
rules=$source/android/tidalume/consumer-rules.pro
kept=$(sed -nE 's/.* class (.*) \{/\1/p' "$rules" | sed 's/[.]/[.]/g; s/[*][*]/.+/; s/[*]/[^.]*/')
natives=$(cd "$source/java" && grep -rl ' native .*;' com | sed 's/[.]java//; s#/#.#g')
expect_alike "classes with native methods and those that are kept" <(echo "$natives") <(grep -xE "$kept" <<<"$natives")
javap -c -p classes/com/vyn/effect/tidalume/views/*.class >calls
expect_alike "numbers of what is made and destroyed" <(grep -c EGL14.eglCreate calls) <(grep -c EGL14.eglDestroy calls)
expect_alike "x and y" <(grep -oE 'get(Raw)?X' calls) <(grep -oE 'get(Raw)?Y' calls | tr Y X)
mkdir ours
(cd ours && jar xf "$jar" && cp -r ../classes/com .)
npm=$source/node_modules
if [ -e "$npm/kotlin-compiler" ]; then
  "$npm/kotlin-compiler/bin/kotlinc" -Werror -no-reflect -jvm-target 11 -cp "classes:$jar:$class_path" -d kotlin \
    recipes/android/*.kt
  declarations=$npm/@nativescript/types-android/lib/android
  node "$here/check-platform.mjs" "$declarations" "$min_sdk" classes ours "$here/unproven.txt"
else
  echo "check-android: npm has not brought a Kotlin compiler and the platform's declarations; both are left out"
  [ -z "${CI:-}" ] || exit 1
fi
javac -d classes -cp "classes:$jar:$class_path" "$here/AttributesTest.java"
echo "check-android: manifests, resources, Gradle files and Java pass"
