#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Validates documents of the gamepad plugin against the schemas in docs/schemas.

Every JSON file below each FOLDER is judged by the schema that its place calls for. It fails when a document
does not fit, when a JSON file has no place, and when a kind that is needed was not there: a folder in which
there is nothing to see is no success. --samples judges the schemas themselves and what samples.json says
that they take and refuse; --page judges the examples on a page of the documentation.
"""
import argparse
import copy
import json
import pathlib
import re
import sys

import jsonschema
import referencing

SCHEMAS = pathlib.Path(__file__).resolve().parents[2] / "docs" / "schemas"
SAMPLES = pathlib.Path(__file__).resolve().with_name("samples.json")
WRITTEN = ["actions", "exchange", "gamepads", "mapping", "meta", "overlay"]


def strictly(text):
    """JSON as RFC 8259 has it: no NaN, and no key twice."""

    def refuse(word):
        raise ValueError(f"{word} is no JSON number")

    def unique(pairs):
        keys = [key for key, _ in pairs]
        if len(keys) != len(set(keys)):
            raise ValueError(f"a key stands twice: {sorted(keys)}")
        return dict(pairs)

    return json.loads(text, parse_constant=refuse, object_pairs_hook=unique)


def load(path):
    return strictly(path.read_text(encoding="utf-8"))


class Judge:
    def __init__(self):
        self.schemas = {}
        for path in sorted(SCHEMAS.glob("*.schema.json")):
            schema = load(path)
            jsonschema.Draft202012Validator.check_schema(schema)
            if schema.get("$id") != path.name:
                sys.exit(f"{path}: its $id is not its file name")
            self.schemas[path.name.removesuffix(".schema.json")] = schema
        registry = referencing.Registry().with_resources(
            (schema["$id"], referencing.Resource.from_contents(schema)) for schema in self.schemas.values()
        )
        self.validators = {
            kind: jsonschema.Draft202012Validator(schema, registry=registry)
            for kind, schema in self.schemas.items()
        }

    def problems(self, kind, document):
        """What does not fit, one text each; empty when all does."""
        found = []
        for error in self.validators[kind].iter_errors(document):
            best = jsonschema.exceptions.best_match([error])
            place = "/".join(str(step) for step in best.absolute_path)
            found.append(f"at /{place}: {best.message[:300]}")
        return found


def kind_of(path):
    """The schema that a document's place calls for, or None."""
    if path.name.endswith(".velor.json"):
        return "exchange"
    if path.name in ("systemConfig.json", "gamepads.json", "actions.json"):
        return path.stem
    if path.name.endswith("services.json"):
        return "services"
    if path.name == "configActionGamepad.json":
        return "mapping"
    record = path.with_name("meta.json")
    if path == record:
        return "meta"
    if record.is_file():
        try:
            names = load(record)
        except ValueError:
            return None
        if path.name == names.get("overlayFile", "overlay.json"):
            return "overlay"
        if path.name == names.get("config"):
            return "mapping"
    return "overlay" if path.name == "overlay.json" else None


def check_tree(judge, folder, seen):
    problems = []
    for path in sorted(folder.rglob("*.json")):
        if not path.is_file():
            continue
        kind = kind_of(path)
        if kind is None:
            problems.append(f"{path}: no schema is for it")
            continue
        try:
            document = load(path)
        except ValueError as error:
            problems.append(f"{path}: {error}")
            continue
        found = judge.problems(kind, document)
        problems += [f"{path} ({kind}): {problem}" for problem in found]
        if not found:
            seen[kind] = seen.get(kind, 0) + 1
    return problems


def check_page(judge, page, seen):
    """Judges each block of JSON on a page by the schema that was linked last before it."""
    problems = []
    pattern = re.compile(r"schemas/(\w+)\.schema\.json|^```json\n(.*?)^```", re.DOTALL | re.MULTILINE)
    kind = None
    for found in pattern.finditer(page.read_text(encoding="utf-8")):
        if found[1]:
            kind = found[1]
            continue
        wrong = judge.problems(kind, strictly(found[2])) if kind else ["no schema is linked before it"]
        problems += [f"{page}, example of {kind}: {problem}" for problem in wrong]
        if not wrong:
            seen[kind] = seen.get(kind, 0) + 1
    return problems


def changed(document, change):
    """A copy with one place set or taken away, {"set": "/a/0/b", "to": ...} or {"drop": "/a"}, or another whole."""
    if "whole" in change:
        return change["whole"]
    result = copy.deepcopy(document)
    *way, last = (change.get("set") or change["drop"]).split("/")[1:]
    place = result
    for step in way:
        place = place[int(step) if isinstance(place, list) else step]
    if isinstance(place, list):
        last = int(last)
    if "drop" in change:
        del place[last]
    else:
        place[last] = change["to"]
    return result


def check_samples(judge):
    problems = []
    samples = load(SAMPLES)
    for kind in sorted(set(judge.schemas) - set(samples)):
        problems.append(f"{kind}: there are no samples of it")
    for kind, sample in samples.items():
        document = sample["document"]
        problems += [f"sample of {kind}: {problem}" for problem in judge.problems(kind, document)]
        for change in sample.get("taken", []):
            found = judge.problems(kind, changed(document, change))
            problems += [f"{kind} with {json.dumps(change)}: {problem}" for problem in found]
        if not sample["refused"]:
            problems.append(f"{kind}: nothing is refused")
        for change in sample["refused"]:
            if not judge.problems(kind, changed(document, change)):
                problems.append(f"{kind} with {json.dumps(change)} should be refused")
    return problems


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("folder", nargs="*", type=pathlib.Path, metavar="FOLDER")
    parser.add_argument("--need", action="append", metavar="KIND",
                        help="a kind that must be there, once or more; without it, all that the plugin writes")
    parser.add_argument("--page", action="append", default=[], type=pathlib.Path, help="a page with examples")
    parser.add_argument("--samples", action="store_true", help="judge the schemas and their samples")
    arguments = parser.parse_args()
    if not (arguments.folder or arguments.page or arguments.samples):
        parser.error("nothing to check")

    judge = Judge()
    problems = check_samples(judge) if arguments.samples else []
    seen = {}
    for folder in arguments.folder:
        if not folder.is_dir():
            problems.append(f"{folder}: there is no such folder")
        problems += check_tree(judge, folder, seen)
    for page in arguments.page:
        problems += check_page(judge, page, seen)
    if arguments.folder or arguments.page:
        needed = arguments.need or WRITTEN
        problems += [f"no {kind} document fits, or none was there" for kind in needed if not seen.get(kind)]

    for problem in problems:
        print(problem, file=sys.stderr)
    for kind, count in sorted(seen.items()):
        print(f"{kind}: {count} fit")
    if arguments.samples and not problems:
        print(f"schemas: {len(judge.schemas)} hold, with their samples")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
