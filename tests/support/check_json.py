"""Holds JSON against the schemas of a folder, which it checks first.

Argument: the folder. Standard input: lines of FORM, a tab and a value. Prints a line for each fault.
"""
import json
import pathlib
import sys
import urllib.parse
import warnings

warnings.simplefilter("ignore", DeprecationWarning)
from jsonschema import Draft202012Validator, RefResolver  # noqa: E402


# Otherwise "#/$defs/x" in a schema that another one refers to is looked up in that other one.
urllib.parse.uses_relative.append("urn")


def open_objects(schema, path=""):
    """Places where a schema lists an object's keys and allows others."""
    if isinstance(schema, dict):
        if schema.get("type") == "object" and schema.get("additionalProperties") is not False:
            yield path or "/"
        for key, value in schema.items():
            yield from open_objects(value, f"{path}/{key}")
    elif isinstance(schema, list):
        for number, value in enumerate(schema):
            yield from open_objects(value, f"{path}/{number}")


def load(folder):
    schemas = {}
    for file in sorted(pathlib.Path(folder).glob("*.schema.json")):
        form = file.name.removesuffix(".schema.json")
        schemas[form] = schema = json.loads(file.read_text("utf-8"))
        Draft202012Validator.check_schema(schema)
        if schema["$id"] != f"urn:zeltrans:schema:{form}:1":
            print(f"{file.name}: $id is {schema['$id']}")
        for path in open_objects(schema):
            print(f"{file.name}: {path} allows unknown keys")
    return schemas


def main():
    schemas = load(sys.argv[1])
    store = {schema["$id"]: schema for schema in schemas.values()}
    validators = {
        form: Draft202012Validator(schema, resolver=RefResolver.from_schema(schema, store=store))
        for form, schema in schemas.items()
    }
    for line in sys.stdin:
        form, value = line.rstrip("\n").split("\t", 1)
        if form not in validators:
            print(f"{form}: no such form")
            continue
        fault = next(validators[form].iter_errors(json.loads(value)), None)
        if fault:
            print(f"{form}: {fault.json_path}: {fault.message[:300]}")


main()
