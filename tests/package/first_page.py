#!/usr/bin/env python3
"""Starts the installed game as a player would, by its command from a folder of no importance,
under a private Xvfb display; waits for the first page, keeps its screenshot and closes the window.

    first_page.py COMMAND SCREENSHOT.png"""

import os
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
import harness  # noqa: E402
from harness import check, is_ink  # noqa: E402


def is_paper(r, g, b):
    return r + g + b > 480


def written_page(shot):
    """Paper on both pages (not a black or empty window) and handwriting on Orane's."""
    return (shot.count(harness.LEFT_PAGE, is_paper) > 30000 and shot.count(harness.RIGHT_PAGE, is_paper) > 30000
            and shot.count(harness.LEFT_TEXT, is_ink) > 150)


def run_inner(command, screenshot):
    with tempfile.TemporaryDirectory(prefix="orane-elsewhere-") as elsewhere:
        game = harness.Game(command, elsewhere, os.path.dirname(screenshot))
        try:
            game.wait_for_window()
            shot = game.wait_for(written_page, "the first page, written", timeout=60)
            shot.save_png(screenshot)
            status = game.close()
            check(status == 0, "exit status %d after closing the window" % status)
        finally:
            game.kill()


def main():
    command, screenshot = sys.argv[-2], os.path.abspath(sys.argv[-1])
    os.makedirs(os.path.dirname(screenshot), exist_ok=True)
    if "--inner" not in sys.argv:
        marker = screenshot + ".display-started"
        return harness.run_under_own_display([sys.executable, os.path.abspath(__file__), "--inner", command,
                                              screenshot], marker)
    with open(screenshot + ".display-started", "w"):
        pass
    try:
        run_inner(command, screenshot)
    except harness.E2EFailure as failure:
        print("FAILED: %s" % failure)
        return 1
    print("the installed game showed its first page: %s" % screenshot)
    return 0


if __name__ == "__main__":
    sys.exit(main())
