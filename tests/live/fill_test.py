"""Filled forms, drawn by the scripts without a page, against "zeltrans fill": fill_test.py ZELTRANS

The messages of the demonstration disk as they are; then forms that are made of them with random fields: overlapping,
on empty rows, with fonts of their own, of the row, and none; with short texts in several fields and long ones in one.
In the fonts of these forms the blank has pixels, which an import puts into fields without text.
"""

import copy
import hashlib
import json
import random

from disk import *

FORMS, SHORT, LONG = 9, 5, 5


def random_form(choose, documents):
    document = copy.deepcopy(choose.choice(documents))
    file = document["file"]
    file.pop("sha256", None)
    for row in file["rows"]:
        characters = row.get("characters", [])
        change = choose.random()
        if characters and change < 0.15:
            row.update(characters=[], empty=True)
        elif len(characters) > 1 and change < 0.3:
            row["characters"] = characters[:choose.randrange(1, len(characters))]
        for character in row.get("characters", []) if change > 0.7 else []:
            character["y"] = max(0, character["y"] + choose.randrange(-6, 7))
    fonts = [slot for slot, number in enumerate(file["font_numbers"]) if number is not None]
    fields = []
    for _ in range(choose.randrange(1, 9)):
        start = choose.randrange(560)
        fields.append({"name": choose.choice(["A", "B", "NAME", "un-named", "f1", "Größe", ""]),
                       "row": choose.randrange(len(file["rows"])), "start": start,
                       "end": start + choose.randrange(1, 460),
                       "font": choose.choice(fonts + [20, choose.randrange(32)]), "colour": choose.randrange(8)})
    file["tab_table"] = {"fields": fields}
    return document


def random_records(choose, form):
    fields, records = form["fields"], []
    for _ in range(SHORT):
        records.append({field["key"]: random_text(choose, settable(form, field), 9)
                        for field in fields if choose.random() < 0.6})
    for _ in range(LONG):
        field = choose.choice(fields)
        records.append({field["key"]: random_text(choose, settable(form, field), 40)})
    return [record for record in records if record]


def digest(image):
    return hashlib.sha256(image.tobytes()).hexdigest()


def drawn(jobs):
    """The digests of the pictures that the scripts draw, for pairs of a form's file and records."""
    lines = "\n".join(json.dumps({"form": str(form), "texts": records}) for form, records in jobs)
    return [line.split() for line in run(NODE, HERE / "draw.js", input=lines).splitlines()]


def check_messages(disk, folder):
    exports = export(disk, ["png", "template"])
    jobs, expected = [], []
    for page in sorted(exports["template"].glob("*.html")):
        form = form_of(page)
        if "picture" in form:
            continue
        (folder / page.stem).with_suffix(".json").write_text(json.dumps(form))
        jobs.append(((folder / page.stem).with_suffix(".json"), []))
        expected.append([digest(picture(exports["png"] / (page.stem + ".png")))])
    assert len(jobs) == 19, len(jobs)
    for (form, _), got, wanted in zip(jobs, drawn(jobs), expected):
        assert got == wanted, form


def show_blanks(fonts, folder):
    for file in sorted(fonts.iterdir()):
        run(ZELTRANS, "font", file, "--json", folder / "font.json")
        document = json.loads((folder / "font.json").read_text())
        font = document["file"]
        font.pop("sha256")
        for part, keys in (("directory", ["top"]), ("encoding", ["lines"])):
            entries = {entry["code"]: entry for entry in font.get(part, [])}
            if ord(" ") in entries and ord("I") in entries:
                entries[ord(" ")].update({key: entries[ord("I")][key] for key in keys})
        (folder / "font.json").write_text(json.dumps(document))
        run(ZELTRANS, "write", folder / "font.json", "--to", file, "--overwrite")


def make_forms(choose, disk, folder):
    run(ZELTRANS, "batch", disk, "--maps", disk, "--out", folder / "documents")
    documents = [json.loads(file.read_text()) for file in sorted((folder / "documents").glob("*.json"))]
    documents = [document for document in documents if document.get("file", {}).get("rows")]
    made = folder / "made"
    (made / "MESSAGES").mkdir(parents=True)
    shutil.copytree(disk / "MACHINE", made / "MACHINE")
    show_blanks(made / "MACHINE", folder)
    for number in range(1, FORMS + 1):
        document = folder / "form.json"
        document.write_text(json.dumps(random_form(choose, documents)))
        run(ZELTRANS, "write", document, "--to", made / f"MESSAGES/.{number:04d}")
    return made


def check_forms(choose, disk, folder):
    made = make_forms(choose, disk, folder)
    # A field that can't be filled is a fault of the export, which leaves it out.
    pages = export(made, ["template"], check=False)["template"]
    jobs, expected = [], []
    for number in range(1, FORMS + 1):
        form = form_of(file_of(pages, number, ".html"))
        file = folder / f"made{number}.json"
        file.write_text(json.dumps(form))
        records = random_records(choose, form)
        message = made / f"MESSAGES/.{number:04d}"
        squeezed = filled(message, records, folder / f"squeezed{number}")
        cut = filled(message, records, folder / f"cut{number}", "cut")
        jobs.append((file, records))
        # With several fields, a record that can't be squeezed has others that need not be cut.
        expected.append([each or (other if len(record) == 1 else None)
                         for each, other, record in zip(squeezed, cut, records)])
    checked = 0
    for (form, records), got, wanted in zip(jobs, drawn(jobs), expected):
        for record, its, image in zip(records, got[1:], wanted):
            if image is not None:
                assert its == digest(image), (form, record)
                checked += 1
    assert checked > 4 * FORMS, checked


def main():
    with temporary_folder() as folder:
        disk = sample_disk(folder)
        check_messages(disk, folder)
        check_forms(random.Random(17), disk, folder)


main()
