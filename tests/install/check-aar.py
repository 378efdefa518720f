#!/usr/bin/env python3
"""Opens the AAR that scripts/build-aar makes of libraries, and fails where its form is not the documented one.

The libraries are Linux's, so that this AAR is of no use but this one.
usage: check-aar.py SOURCE_DIR VERSION JAR[:JAR...] WORK_DIR ABI=LIBRARY...
"""
import io
import json
import pathlib
import shutil
import subprocess
import sys
import xml.etree.ElementTree
import zipfile

source, version, jars, work = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3].split(":"), pathlib.Path(sys.argv[4])
libraries = dict(argument.split("=", 1) for argument in sys.argv[5:])
machines = {"arm64-v8a": "AArch64", "armeabi-v7a": "ARM", "x86_64": "Advanced Micro Devices X86-64"}
android = "{http://schemas.android.com/apk/res/android}"


def expect(what, found, wanted):
    if found != wanted:
        sys.exit(f"check-aar: {what}: {found} instead of {wanted}")


shutil.rmtree(work, ignore_errors=True)
for abi, library in libraries.items():
    (work / "libraries" / abi).mkdir(parents=True)
    shutil.copy(library, work / "libraries" / abi / "libTidalume.so")
with zipfile.ZipFile(work / "R.jar", "w") as left_out:
    for name in ("R", "R$attr"):
        left_out.writestr(f"com/vyn/effect/tidalume/{name}.class", "")
build = [source / "scripts/build-aar", work / "tidalume.aar", work / "libraries"]
subprocess.run([*build, *jars, work / "R.jar"], check=True)
aar = zipfile.ZipFile(work / "tidalume.aar")
expect("a damaged entry", aar.testzip(), None)

module = "prefab/modules/Tidalume"
headers = (source / "cmake/public-headers.txt").read_text().split()
resources = source / "android/tidalume/src/main/res"
entries = {"AndroidManifest.xml", "R.txt", "classes.jar", "proguard.txt", "prefab/prefab.json", f"{module}/module.json"}
entries |= {f"{module}/include/{header}" for header in headers}
entries |= {f"res/{file.relative_to(resources)}" for file in resources.rglob("*") if file.is_file()}
for abi in libraries:
    folder = f"{module}/libs/android.{abi}"
    entries |= {f"jni/{abi}/libTidalume.so", f"{folder}/libTidalume.so", f"{folder}/abi.json"}
expect("entries", sorted(name for name in aar.namelist() if not name.endswith("/")), sorted(entries))

manifest = xml.etree.ElementTree.fromstring(aar.read("AndroidManifest.xml"))
expect("package", manifest.get("package"), "com.vyn.effect.tidalume")
expect("lowest API level", manifest.find("uses-sdk").get(android + "minSdkVersion"), "21")
classes = zipfile.ZipFile(io.BytesIO(aar.read("classes.jar")))
files = {name for name in classes.namelist() if not name.endswith("/")}
given = {name for jar in jars for name in zipfile.ZipFile(jar).namelist() if name.endswith(".class")}
expect("classes of AAR and jars, apart", files ^ given, set())
folders = [source / "java", source / "android/tidalume/src/main/java"]
expect("classes without a source", sorted(name for name in files if not any(
    (folder / name.split(".")[0].split("$")[0]).with_suffix(".java").exists() for folder in folders)), [])
attributes = xml.etree.ElementTree.parse(resources / "values/attrs.xml")
declared = {("attr", attribute.get("name")) for attribute in attributes.iter("attr")}
for styleable in attributes.iter("declare-styleable"):
    names = {styleable.get("name")} | {f"{styleable.get('name')}_{attribute.get('name')}" for attribute in styleable}
    declared |= {("styleable", name) for name in names}
symbols = {tuple(line.split()[1:3]) for line in aar.read("R.txt").decode().splitlines()}
expect("R.txt and attributes, apart", {symbol for symbol in symbols if symbol[0] != "id"} ^ declared, set())
expect("keep rules", aar.read("proguard.txt"), (source / "android/tidalume/consumer-rules.pro").read_bytes())

expect("prefab.json", json.loads(aar.read("prefab/prefab.json")),
       {"name": "tidalume", "schema_version": 2, "dependencies": [], "version": version})
expect("module.json", json.loads(aar.read(f"{module}/module.json")),
       {"export_libraries": [], "library_name": "libTidalume", "android": {}})
for abi, library in libraries.items():
    folder = f"{module}/libs/android.{abi}"
    expect(f"{abi}'s abi.json", json.loads(aar.read(f"{folder}/abi.json")),
           {"abi": abi, "api": 21, "ndk": 28, "stl": "gnustl_shared", "static": False})
    for path in (f"jni/{abi}/libTidalume.so", f"{folder}/libTidalume.so"):
        unpacked = aar.extract(path, work)
        elf = subprocess.run(["readelf", "-hlW", unpacked], check=True, capture_output=True, text=True).stdout
        lines = [line.split() for line in elf.splitlines()]
        expect(f"{path}'s machine", [line[1:] for line in lines if line[:1] == ["Machine:"]], [machines[abi].split()])
        expect(f"{path}'s alignment", {line[-1] for line in lines if line[:1] == ["LOAD"]}, {"0x4000"})

with zipfile.ZipFile(work / "empty.jar", "w") as empty:
    empty.writestr("com/", "")
refused = subprocess.run([*build, work / "empty.jar"], capture_output=True, text=True)
expect("an AAR without its classes", "no jar has the class of" in refused.stderr and refused.returncode, 1)

# Libraries of nothing, that share the C++ runtime of Android and none.
link = ["c++", "-shared", "-nostdlib", "-Wl,--no-as-needed", f"-L{work}", "-x", "c++", "/dev/null", "-o"]
subprocess.run([*link, work / "libc++_shared.so"], check=True)
for runtime, wanted in ((["-lc++_shared"], "c++_shared"), ([], "refused")):
    subprocess.run([*link, work / "libraries" / abi / "libTidalume.so", *runtime], check=True)
    (work / "tidalume.aar").unlink(missing_ok=True)
    if subprocess.run([*build, *jars], capture_output=True).returncode == 0:
        found = json.loads(zipfile.ZipFile(work / "tidalume.aar").read(f"{module}/libs/android.{abi}/abi.json"))["stl"]
    else:
        found = "refused"
    expect("C++ runtime", found, wanted)
print(f"check-aar: {len(entries)} entries, as documented")
