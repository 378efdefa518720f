#!/usr/bin/env bash
# Checks of the Android module what can be checked without Android's SDK: XML, resources and manifest by the platform's
# own packaging tool, the syntax of the Gradle files, and the sample's Java against declarations of the few platform
# classes that it uses, which are written down here from memory of their documentation. Leaves the sample's
# classes and their test in WORK_DIR/classes.
# usage: check-android.sh SOURCE_DIR TIDALUME_JAR CLASS_PATH_OF_TEST WORK_DIR
set -euo pipefail
source=$1
jar=$2
test_class_path=$3
work=$4
here=$(cd "$(dirname "$0")" && pwd)
sample=$source/android/sample/src/main
rm -rf "$work"
mkdir -p "$work"/{gradle,generated,classes,stubs}
cd "$work"

find "$source/android" -name '*.xml' -not -path '*/build/*' -exec xmllint --noout {} +

# The manifest's package is the namespace of build.gradle, which Gradle puts in.
package=$(sed -n "s/^    namespace \(= \)\?'\(.*\)'/\2/p" "$source/android/sample/build.gradle")
for module in sample tidalume; do
  sed "s/<manifest /<manifest package=\"$package\" /" "$source/android/$module/src/main/AndroidManifest.xml" >AndroidManifest.xml
  aapt package -f -m -M AndroidManifest.xml -S "$sample/res" -J generated -F "$module.apk" --min-sdk-version 21 \
    -I /usr/share/android-framework-res/framework-res.apk
done

export JAVA_HOME=$(dirname "$(dirname "$(readlink -f "$(command -v javac)")")")
for file in "$source"/android/{settings,build,tidalume/build,sample/build}.gradle; do
  groovyc -d gradle "$file"
done

# Each stub stands below a line with its file name.
awk '/^=== / { file = "stubs/" $2; folder = file; sub("/[^/]*$", "", folder); system("mkdir -p " folder); next } { print > file }' \
  "$here/platform-stubs.txt"
find stubs generated "$sample/java" -name '*.java' >sources
javac -Xlint:all -Werror -implicit:none -d classes -cp "$jar" @sources
javac -d classes -cp "classes:$jar:$test_class_path" "$here/RipplesTest.java"
echo "check-android: manifests, resources, Gradle files and the sample's Java pass"
