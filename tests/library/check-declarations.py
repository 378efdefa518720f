#!/usr/bin/env python3
"""Fails where the library does not export a public function or variable that an installed header declares, or exports
what none declares.

usage: check-declarations.py LIBRARY SOURCE_DIR COMPILER_FLAGS...
"""
import json
import re
import subprocess
import sys

library, source, flags = sys.argv[1], sys.argv[2], sys.argv[3:]
headers = open(f"{source}/cmake/public-headers.txt").read().split()
includes = "".join(f"#include <{header}>\n" for header in headers)
clang = ["clang++", "-std=c++17", f"-I{source}", *flags, "-x", "c++", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-"]
tree = json.loads(subprocess.run(clang, input=includes, stdout=subprocess.PIPE, text=True, check=True).stdout)
exported = set(subprocess.run(["nm", "-D", "--defined-only", "--format=just-symbols", library], stdout=subprocess.PIPE,
                              text=True, check=True).stdout.split())

file = ""  # clang names it where it differs from that of the place before
declared = {}
known = set()


def without_kind(name):  # a constructor or destructor is exported as several
    return re.sub("[CD][0-9]E", "CE", name)


def follow(place):
    global file
    for key, value in place.items():
        if key == "file":
            file = value
        elif isinstance(value, dict) and key != "includedFrom":
            follow(value)


def visit(node, is_public):
    if node.get("kind") == "ClassTemplateDecl":  # whoever uses it compiles it
        return
    follow(node.get("loc", {}))
    here = file
    follow(node.get("range", {}))
    known.add(without_kind(node.get("mangledName", "")))
    parts = node.get("inner", [])
    is_defined = any(part.get("kind") == "CompoundStmt" for part in parts) or node.get("inline")
    is_left_out = is_defined or node.get("isImplicit") or node.get("explicitlyDeleted") or node.get("explicitlyDefaulted")
    if is_public and not is_left_out and here in (f"{source}/{header}" for header in headers) and "mangledName" in node:
        declared[node["mangledName"]] = f"{node.get('name')} of {here}"
    is_class = node.get("kind") == "CXXRecordDecl"
    inside = node.get("tagUsed") != "class" if is_class else is_public
    for part in parts:
        if part.get("kind") == "AccessSpecDecl":
            inside = part.get("access") == "public"
        visit(part, inside)


visit(tree, True)
missing = [place for name, place in declared.items() if name not in exported]
if missing or len(declared) < len(headers):
    sys.exit("check-declarations: declared, but not exported: " + ", ".join(missing or ["nothing was found"]))
unknown = [name for name in exported if name.startswith("_Z") and without_kind(name) not in known]
if unknown:
    sys.exit("check-declarations: exported, but declared in no installed header: " + ", ".join(unknown))
print(f"check-declarations: {len(declared)} functions and variables of {len(headers)} headers")
