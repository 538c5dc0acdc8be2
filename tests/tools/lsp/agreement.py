#!/usr/bin/env python3
"""The server and `orane-story check --format=json` must say the same things at the same places:
on our story with faults planted in it (a broken link, a scene nothing leads to, an overflowing
page, a need missed on one path, a slip of the pen) and on every test story, each finding of
check must be published by the server, in its file, at its line (and column), with its
severity and its exact message, and the server must publish nothing more.
Usage: agreement.py ORANE_STORY SOURCE_DIR"""

import json
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from lspclient import LspClient, uri  # noqa: E402

SEVERITIES = {"error": 1, "warning": 2, "note": 3}


def replace_line(path, old, new, count=1):
    lines = path.read_text(encoding="utf-8").split("\n")
    index = lines.index(old)
    lines[index:index + count] = new
    path.write_text("\n".join(lines), encoding="utf-8")


def plant_broken_link(directory):
    # A link that names no scene (the first of two ways into intro_meurtres): the game refuses
    # the story, so nothing is proved over play.
    replace_line(directory / "story.txt", "-> intro_meurtres", ["-> intro_meurtre"])


def plant_faults(directory):
    story = directory / "story.txt"
    # A scene nothing leads to, whose page overflows.
    with story.open("a", encoding="utf-8") as out:
        out.write("\nSCENE oubliee\nORANE\n" + "Personne ne vient ici, et je le dis encore.\n" * 40 + "FORWARD end\n")
    # clerc_chevet needs clerc_hotel_dieu: clerc_nuits no longer sets it, so one path misses it.
    replace_line(directory / "clerc.txt", "# sets: clerc_alibi, clerc_hotel_dieu", ["# sets: clerc_alibi"])
    # A slip of the pen in Nathan's hand.
    docteur = directory / "docteur.txt"
    lines = docteur.read_text(encoding="utf-8").split("\n")
    nathan = lines.index("NATHAN")
    lines.insert(nathan + 1, "Un mott de trop.")
    docteur.write_text("\n".join(lines), encoding="utf-8")


def check_findings(tool, directory):
    run = subprocess.run([tool, "check", str(directory), "--format=json"], capture_output=True, check=False)
    return json.loads(run.stdout)["diagnostics"]


def server_findings(tool, directory):
    """Every diagnostic the server publishes once it has read the story, as (path, diagnostic)."""
    client = LspClient([tool, "lsp"])
    try:
        client.initialize(directory)
        client.open(directory / "story.txt")
        client.wait_for_diagnostics(uri(directory / "story.txt"), timeout=120)
        # The other files' publications are sent with story.txt's.
        while client.read_message(1.0) is not None:
            pass
    finally:
        client.close()
    return [(Path(file_uri[len("file://"):]), found) for file_uri, diagnostics in client.diagnostics.items()
            for found in diagnostics]


def matches(expected, published, directory):
    path, diagnostic = published
    if diagnostic["message"] != expected["message"] or diagnostic["severity"] != SEVERITIES[expected["severity"]]:
        return False
    file = Path(expected["file"])
    if not file.is_file():
        # The folder's own findings and a suspect's missing file are shown in suspects.ini.
        return path == (directory / "suspects.ini").resolve()
    start = diagnostic["range"]["start"]
    return (path == file.resolve() and start["line"] + 1 == max(expected.get("line", 1), 1)
            and ("column" not in expected or start["character"] + 1 == expected["column"]))


def compare(tool, directory, name):
    expected = [found for found in check_findings(tool, directory) if "file" in found]
    published = server_findings(tool, directory)
    faults = []
    for finding in expected:
        match = next((found for found in published if matches(finding, found, directory)), None)
        if match is None:
            faults.append("%s: check's %s is not published by the server" % (name, json.dumps(finding, ensure_ascii=False)))
        else:
            published.remove(match)
    for path, found in published:
        faults.append("%s: the server publishes what check does not say: %s %s" % (name, path, json.dumps(found, ensure_ascii=False)))
    return len(expected), faults


def main():
    tool, source = sys.argv[1], Path(sys.argv[2])
    work = Path(tempfile.mkdtemp(prefix="orane-lsp-agreement-")).resolve()
    faults = []
    try:
        planted = shutil.copytree(source / "resources" / "stories", work / "planted")
        plant_faults(planted)
        broken = shutil.copytree(source / "resources" / "stories", work / "broken")
        plant_broken_link(broken)
        stories = [("our story with planted faults", planted), ("our story with a broken link", broken)]
        for story in sorted((source / "tests" / "tools" / "stories").iterdir()):
            stories.append((story.name, shutil.copytree(story, work / story.name)))
        for name, directory in stories:
            count, found = compare(tool, directory, name)
            print("%-32s %3d findings of check, %s" % (name, count, "published alike" if not found else "DIFFER"))
            faults += found
        # The planted faults must all be there, or the comparison proves little.
        kinds = {(found["kind"], found["severity"])
                 for directory in (planted, broken) for found in check_findings(tool, directory)}
        for kind in [("game", "error"), ("story", "warning"), ("continuity", "error"), ("spelling", "warning")]:
            if kind not in kinds:
                faults.append("our story with planted faults: check found no %s %s" % kind)
        if not any("overflows" in found["message"] for found in check_findings(tool, planted)):
            faults.append("our story with planted faults: check found no overflowing page")
    finally:
        shutil.rmtree(work, ignore_errors=True)
    for fault in faults:
        print("FAILED: " + fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
