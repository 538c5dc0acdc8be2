#!/usr/bin/env python3
"""How fast `orane-story lsp` answers an editor on our story: the time from an edit to its
diagnostics (1,000 edits that break and mend a link in turn, so every check has news to
publish), the server's memory over a long session, and the time to answer definition and
completion. Usage: bench/lsp/lsp_bench.py [--tool build/orane-story] [--edits 1000] [--long 10000]"""

import argparse
import os
import shutil
import statistics
import sys
import tempfile
import time
from pathlib import Path

root = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(root / "tests" / "tools" / "lsp"))
from lspclient import LspClient, uri  # noqa: E402


def percentile(values, fraction):
    ordered = sorted(values)
    return ordered[min(len(ordered) - 1, int(fraction * len(ordered)))]


def rss_kib(pid):
    for line in Path("/proc/%d/status" % pid).read_text().splitlines():
        if line.startswith("VmRSS:"):
            return int(line.split()[1])
    return 0


def line_of(path, text):
    return Path(path).read_text(encoding="utf-8").split("\n").index(text)


def edit_and_wait(client, story, version, link, broken):
    # Break the link "-> intro_meurtres" by a letter, or mend it.
    start, end = (link, 3), (link, 3)
    text = "x"
    if not broken:
        end, text = (link, 4), ""
    began = time.perf_counter()
    client.change(story, version, start, end, text)
    client.wait_for_diagnostics(uri(story), lambda found: any(d["severity"] == 1 for d in found) == broken, timeout=60)
    return time.perf_counter() - began


def timed_requests(client, method, params, count):
    times = []
    for _ in range(count):
        began = time.perf_counter()
        client.request(method, params)
        times.append(time.perf_counter() - began)
    return times


def report(name, times, goal):
    p50, p99, worst = (1000 * percentile(times, f) for f in (0.5, 0.99, 1.0))
    verdict = "met" if p99 <= goal else "MISSED"
    print("%-34s p50 %6.2f ms   p99 %6.2f ms   max %6.2f ms   goal p99 <= %g ms: %s" % (name, p50, p99, worst, goal, verdict))
    return p99 <= goal


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tool", default=str(root / "build" / "orane-story"))
    parser.add_argument("--edits", type=int, default=1000)
    parser.add_argument("--long", type=int, default=10000)
    options = parser.parse_args()

    directory = Path(tempfile.mkdtemp(prefix="orane-lsp-bench-"))
    try:
        for path in (root / "resources" / "stories").iterdir():
            shutil.copy(path, directory / path.name)
        story = directory / "story.txt"
        link = line_of(story, "-> intro_meurtres")
        forward = line_of(story, "FORWARD intro_meurtres")

        client = LspClient([options.tool, "lsp"])
        client.initialize(directory)
        client.open(story)
        client.wait_for_diagnostics(uri(story), timeout=60)
        print("orane-story lsp on our story (%d story files), %s" % (len(list(directory.glob("*.txt"))), os.uname().nodename))

        version = 2
        latencies = []
        for index in range(options.edits):
            latencies.append(edit_and_wait(client, story, version, link, index % 2 == 0))
            version += 1
        ok = report("edit -> diagnostics published", latencies, 50)

        at = {"textDocument": {"uri": uri(story)}, "position": {"line": forward, "character": 10}}
        ok = report("definition", timed_requests(client, "textDocument/definition", at, 1000), 5) and ok
        typing = {"textDocument": {"uri": uri(story)}, "position": {"line": link, "character": 6}}
        ok = report("completion of a scene name", timed_requests(client, "textDocument/completion", typing, 1000), 5) and ok

        memory = [(version - 2, rss_kib(client.process.pid))]
        while version - 2 < options.long:
            edit_and_wait(client, story, version, link, (version - 2) % 2 == 0)
            version += 1
            if (version - 2) % (options.long // 4) == 0:
                memory.append((version - 2, rss_kib(client.process.pid)))
        print("memory (resident) after edits: " + ", ".join("%d: %.1f MiB" % (count, kib / 1024) for count, kib in memory))
        growth = memory[-1][1] - memory[1][1] if len(memory) > 2 else 0
        print("growth from the first quarter to the end: %.1f MiB" % (growth / 1024))
        client.close()
    finally:
        shutil.rmtree(directory, ignore_errors=True)
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())
