#!/usr/bin/python3
"""Exports a demonstration disk as OGraf graphics and as templates, and holds their manifests and data definitions
against the published schemas (both states of OGraf 1) and against what OGraf says in words only.

    check_definitions.py ZELTRANS SCHEMAS"""
import copy
import glob
import json
import os
import re
import subprocess
import sys
import tempfile
import zipfile

import jsonschema
from jsonschema import Draft202012Validator, RefResolver

SCHEMAS = sys.argv[2]
META = "https://json-schema.org/draft/2020-12/schema"
OGRAF_STATES = ("ograf-2026-04", "ograf-2026-08")


def read(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def plain(node):
    """The meta-schema without dynamic references, which jsonschema 4.10 doesn't follow through another schema."""
    if isinstance(node, list):
        return [plain(item) for item in node]
    if not isinstance(node, dict):
        return node
    node = {key: plain(value) for key, value in node.items() if key not in ("$dynamicAnchor", "$vocabulary")}
    if node.pop("$dynamicRef", None) == "#meta":
        node["$ref"] = META
    return node


def meta_schemas():
    folder = os.path.join(os.path.dirname(jsonschema.__file__), "schemas")
    yield META, plain(read(os.path.join(folder, "draft2020-12.json")))
    for key, value in read(os.path.join(folder, "vocabularies.json")).items():
        for uri, schema in ({key: value} if "$id" in value else value).items():
            if isinstance(schema, dict) and "2020-12" in schema.get("$id", uri):
                yield schema.get("$id", uri), plain(schema)


def refuse(uri):
    raise RuntimeError("a schema asks the network for " + uri)


class Schema:
    def __init__(self, folder, root):
        self.name = folder
        store = dict(meta_schemas())
        for path in glob.glob(os.path.join(SCHEMAS, folder, "**", "*.json"), recursive=True):
            schema = read(path)
            if "$id" in schema:
                store[schema["$id"]] = schema
        schema = read(os.path.join(SCHEMAS, folder, root))
        resolver = RefResolver.from_schema(schema, store=store, handlers={"https": refuse, "http": refuse})
        self.validator = Draft202012Validator(schema, resolver=resolver)

    def faults(self, document):
        return ["%s: %s: %s" % (self.name, "/".join(map(str, error.path)) or "root", error.message[:160])
                for error in self.validator.iter_errors(document)]


def worded_faults(manifest):
    """What OGraf's text asks beyond its schema, and that id and version make the name of an element."""
    if "/" in manifest.get("id", ""):
        yield "the id has a slash"
    if manifest.get("stepCount", 1) != int(manifest.get("stepCount", 1)):
        yield "stepCount isn't whole"
    if not manifest.get("supportsRealTime") and not manifest.get("supportsNonRealTime"):
        yield "it supports neither real time nor rendering"
    for name, field in manifest.get("schema", {}).get("properties", {}).items():
        if field.get("gddType") != "single-line":
            yield "%s: gddType %s" % (name, field.get("gddType"))
    element = "%s-v%s" % (manifest.get("id"), manifest.get("version"))
    if not re.fullmatch(r"[a-z][a-z0-9._-]*", element):
        yield element + ": is no name of an element"


def manifest_faults(schemas, manifest):
    return [fault for schema in schemas for fault in schema.faults(manifest)] + list(worded_faults(manifest))


def check_graphic(schemas, path):
    manifest, folder = read(path), os.path.dirname(path)
    faults = manifest_faults(schemas, manifest)
    named = [manifest["main"]] + [thumbnail["file"] for thumbnail in manifest["thumbnails"]]
    faults += [name + ": is not in the folder" for name in named if not os.path.isfile(os.path.join(folder, name))]
    with zipfile.ZipFile(folder + ".zip") as archive:
        if sorted(archive.namelist()) != sorted(os.listdir(folder)):
            faults.append("the archive has other files")
        for name in archive.namelist():
            with open(os.path.join(folder, name), "rb") as file:
                if archive.read(name) != file.read():
                    faults.append(name + ": differs in the archive")
    return faults


def check_template(schema, path):
    with open(path, encoding="utf-8") as file:
        page = file.read()
    found = re.search(r'<script name="graphics-data-definition"[^>]*>(.*?)</script>', page, re.DOTALL)
    return schema.faults(json.loads(found.group(1))) if found else ["has no data definition"]


DAMAGES = {
    "no id": lambda manifest: manifest.pop("id"),
    "capitals": lambda manifest: manifest.update(id="Zeltrans.A"),
    "slash": lambda manifest: manifest.update(id="a/b"),
    "other key": lambda manifest: manifest.update(author_name="x"),
    "half steps": lambda manifest: manifest.update(stepCount=1.5),
    "no mode": lambda manifest: manifest.update(supportsRealTime=False, supportsNonRealTime=False),
    "type": lambda manifest: manifest["schema"].update(type="array"),
}


def undetected(schemas, manifest):
    for name, damage in DAMAGES.items():
        damaged = copy.deepcopy(manifest)
        damage(damaged)
        if not manifest_faults(schemas, damaged):
            yield name + ": is not detected"


def main(zeltrans):
    faults = []
    with tempfile.TemporaryDirectory() as scratch:
        def run(*arguments):
            subprocess.run([zeltrans, *arguments], cwd=scratch, check=True, stdout=subprocess.DEVNULL)

        run("sample", "disk")
        run("batch", "disk", "--library", "lib")
        run("export", "lib", "--out", "out", "--format", "ograf", "--format", "template", "--fade-in", "12")
        graphics = sorted(glob.glob(os.path.join(scratch, "out", "*", "*.ograf.json")))
        templates = sorted(glob.glob(os.path.join(scratch, "out", "*.html")))
        if len(graphics) < 20 or len(templates) != len(graphics):
            faults.append("%d graphics and %d templates" % (len(graphics), len(templates)))
        ograf = [Schema(state, "graphics/schema.json") for state in OGRAF_STATES]
        definition = Schema("gdd", "schema.json")
        for path in graphics:
            faults += [os.path.basename(path) + ": " + fault for fault in check_graphic(ograf, path)]
        for path in templates:
            faults += [os.path.basename(path) + ": " + fault for fault in check_template(definition, path)]
        if graphics:
            faults += undetected(ograf, read(graphics[0]))
    print("\n".join(faults) or "%d graphics and as many templates are valid" % len(graphics))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(os.path.abspath(sys.argv[1])))
