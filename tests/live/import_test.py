"""The pages of the demonstration disk, imported as SPX does it: import_test.py ZELTRANS"""

from disk import *

with temporary_folder() as folder:
    pages = export(sample_disk(folder), ["template"])["template"]
    files = sorted(pages.glob("*.html"))
    assert len(files) == 21, files
    result = subprocess.run([NODE, str(HERE / "import_pages.js"), *map(str, files)])
    sys.exit(result.returncode)
