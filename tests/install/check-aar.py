#!/usr/bin/env python3
"""Opens the AAR that scripts/build-aar makes of libraries, and fails where its form is not the documented one.

The libraries are Linux's, so that this AAR is of no use but this one.
usage: check-aar.py SOURCE_DIR VERSION JAR[:JAR...] WORK_DIR ABI=LIBRARY...
"""
import io
import json
import os
import pathlib
import shutil
import subprocess
import sys
import xml.etree.ElementTree
import zipfile

source, version, jars, work = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3].split(":"), pathlib.Path(sys.argv[4])
libraries = dict(argument.split("=", 1) for argument in sys.argv[5:])
android = "{http://schemas.android.com/apk/res/android}"


def expect(what, found, wanted):
    if found != wanted:
        sys.exit(f"check-aar: {what}: {found} instead of {wanted}")


def contents(archive):
    return {name: archive.read(name) for name in archive.namelist() if not name.endswith("/")}


def expect_alike(what, found, wanted):
    names = found.keys() | wanted.keys()
    expect(f"{what} that differ", sorted(name for name in names if found.get(name) != wanted.get(name)), [])


shutil.rmtree(work, ignore_errors=True)
for abi, library in libraries.items():
    (work / "libraries" / abi).mkdir(parents=True)
    shutil.copy(library, work / "libraries" / abi / "libTidalume.so")
(work / "temporary").mkdir()
with zipfile.ZipFile(work / "R.jar", "w") as left_out:
    for name in ("R", "R$attr"):
        left_out.writestr(f"com/vyn/effect/tidalume/{name}.class", "")


def build_aar(*jars):
    built = subprocess.run([source / "scripts/build-aar", "tidalume.aar", work / "libraries", *jars], cwd=work,
                           env=os.environ | {"TMPDIR": work / "temporary"}, capture_output=True, text=True)
    expect("temporary files that are left", os.listdir(work / "temporary"), [])
    return built.returncode, built.stderr


status, messages = build_aar(*jars, work / "R.jar")
expect(f"status with {messages}", status, 0)
expect("warnings of Linux's libraries", messages.count("of no use on Android"), len(libraries))

module = "prefab/modules/Tidalume"
resources = source / "android/tidalume/src/main/res"
taken = {f"{module}/include/{header}": source / header
         for header in (source / "cmake/public-headers.txt").read_text().split()}
taken |= {f"res/{file.relative_to(resources)}": file for file in resources.rglob("*") if file.is_file()}
taken["proguard.txt"] = source / "android/tidalume/consumer-rules.pro"
written = {"prefab/prefab.json": {"name": "tidalume", "schema_version": 2, "dependencies": [], "version": version},
           f"{module}/module.json": {"export_libraries": [], "library_name": "libTidalume", "android": {}}}
for abi, library in libraries.items():
    folder = f"{module}/libs/android.{abi}"
    taken |= {f"jni/{abi}/libTidalume.so": library, f"{folder}/libTidalume.so": library}
    written[f"{folder}/abi.json"] = {"abi": abi, "api": 21, "ndk": 28, "stl": "gnustl_shared", "static": False}
    elf = subprocess.run(["readelf", "-lW", library], check=True, capture_output=True, text=True).stdout
    expect(f"{library}'s alignment", {line.split()[-1] for line in elf.splitlines() if "LOAD" in line}, {"0x4000"})
entries = contents(zipfile.ZipFile(work / "tidalume.aar"))
manifest, symbols, classes = (entries.pop(name) for name in ("AndroidManifest.xml", "R.txt", "classes.jar"))
for name in written:
    expect(name, json.loads(entries.pop(name)), written[name])
expect_alike("entries", entries, {name: pathlib.Path(file).read_bytes() for name, file in taken.items()})

manifest = xml.etree.ElementTree.fromstring(manifest)
expect("package", manifest.get("package"), "com.vyn.effect.tidalume")
expect("lowest API level", manifest.find("uses-sdk").get(android + "minSdkVersion"), "21")
expect("features", [feature.get(android + "glEsVersion") for feature in manifest.iter("uses-feature")], ["0x00030000"])
classes = contents(zipfile.ZipFile(io.BytesIO(classes)))
given = {name: data for jar in jars for name, data in contents(zipfile.ZipFile(jar)).items() if name.endswith(".class")}
expect_alike("classes", classes, given)
folders = [source / "java", source / "android/tidalume/src/main/java"]
expect("classes without a source", sorted(name for name in classes if not any(
    (folder / name.split(".")[0].split("$")[0]).with_suffix(".java").exists() for folder in folders)), [])
attributes = xml.etree.ElementTree.parse(resources / "values/attrs.xml")
declared = {("int", "attr", attribute.get("name")) for attribute in attributes.iter("attr")}
declared |= {("int", "id", value.get("name")) for value in attributes.iter("enum")}
for styleable in attributes.iter("declare-styleable"):
    name = styleable.get("name")
    declared |= {("int[]", "styleable", name)}
    declared |= {("int", "styleable", f"{name}_{attribute.get('name')}") for attribute in styleable}
symbols = {tuple(line.split()[:3]) for line in symbols.decode().splitlines()}
expect("R.txt and attributes, apart", symbols ^ declared, set())

with zipfile.ZipFile(work / "empty.jar", "w") as empty:
    empty.writestr("com/", "")
# Libraries of nothing, of this machine, that share the C++ runtime of Android or none.
link = ["c++", "-shared", "-nostdlib", "-Wl,--no-as-needed", f"-L{work}", "-x", "c++", "/dev/null", "-o"]
subprocess.run([*link, work / "libc++_shared.so"], check=True)
shared = ["-lc++_shared"]
for abi, runtime, classes, status, message in (("x86_64", shared, [work / "empty.jar"], 1, "no jar has the class of"),
                                               ("x86_64", [], jars, 1, "shares no C++ runtime"),
                                               ("arm64-v8a", shared, jars, 1, "is none of arm64-v8a"),
                                               ("x86", shared, jars, 1, "the ABIs are"),
                                               ("x86_64", shared, jars, 0, "")):
    shutil.rmtree(work / "libraries")
    folder = work / "libraries" / abi
    folder.mkdir(parents=True)
    subprocess.run([*link, folder / "libTidalume.so", *runtime], check=True)
    shutil.copy(work / "libc++_shared.so", folder)
    found, messages = build_aar(*classes)
    expect(f"status and message for {abi}", (found, message in messages), (status, True))
entries = contents(zipfile.ZipFile(work / "tidalume.aar"))
expect("C++ runtime", json.loads(entries[f"{module}/libs/android.x86_64/abi.json"])["stl"], "c++_shared")
expect("its places", [name for name in entries if "libc++_shared" in name], ["jni/x86_64/libc++_shared.so"])
print("check-aar: entries, as documented")
