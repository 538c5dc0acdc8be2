#!/usr/bin/env python3
"""The game on screens smaller than its 1600 x 900 window: it opens at the largest size of the same
proportions that fits the desktop's work area and is played there, the pointer mapped back to the
notebook. Each case starts its own Xvfb display of the case's size.

    small_screens.py --game build/orane --resources build/resources --out build/e2e-output CASE"""

import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
from harness import check, is_ink  # noqa: E402

STORIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "stories")

# screen, the work area a window manager would publish (None: no window manager), the window expected.
CASES = {
    "screen_1366x768": ((1366, 768), None, (1365, 768)),
    "screen_1280x720": ((1280, 720), None, (1280, 720)),
    # A panel 30 pixels high at the top of a 1366 x 768 screen leaves 738 pixels of height.
    "work_area_with_panel": ((1366, 768), (0, 30, 1366, 738), (1312, 738)),
}

COVER_MARGIN = 16


def is_paper(r, g, b):
    return r + g + b > 480 and r > b


def is_desk(r, g, b):
    return r + g + b < 330


def publish_work_area(area):
    """What a window manager tells its clients: it runs (its check window names itself; here the
    root window stands in for it), and the area that panels leave free."""
    root = subprocess.run(["xwininfo", "-root"], capture_output=True, text=True).stdout
    root_id = root.split("Window id: ")[1].split()[0]
    subprocess.run(["xprop", "-root", "-f", "_NET_SUPPORTING_WM_CHECK", "32x", "-set",
                    "_NET_SUPPORTING_WM_CHECK", root_id], check=True)
    subprocess.run(["xprop", "-root", "-f", "_NET_CURRENT_DESKTOP", "32c", "-set", "_NET_CURRENT_DESKTOP", "0"],
                   check=True)
    subprocess.run(["xprop", "-root", "-f", "_NET_WORKAREA", "32cccc", "-set", "_NET_WORKAREA",
                    ", ".join(str(value) for value in area)], check=True)


class Scaled:
    """A screenshot of the scaled window, read in game units."""

    def __init__(self, shot, scale):
        self.shot = shot
        self.scale = scale

    def rect(self, rect):
        return tuple(int(round(value * self.scale)) for value in rect)

    def pixel(self, x, y):
        return self.shot.pixel(int(round(x * self.scale)), int(round(y * self.scale)))

    def ink(self, rect):
        return self.shot.count(self.rect(rect), is_ink)

    def choice_buttons(self):
        """Vertical centres (game units) of the framed choice buttons under Nathan's text. Scaled
        down, their thin black frame turns grey; its top and bottom edges still make long dark
        rows, which handwriting never does."""
        left = int(round((harness.BUTTON_LEFT_X + 4) * self.scale))
        right = int(round((harness.BUTTON_LEFT_X + 54) * self.scale))
        edges = []
        for y in range(int(harness.RIGHT_PAGE[1] * self.scale), int(harness.RIGHT_PAGE[3] * self.scale)):
            dark = sum(1 for x in range(left, right) if sum(self.shot.pixel(x, y)) < 450)
            if dark >= 0.9 * (right - left):
                if edges and y - edges[-1][-1] <= 1:
                    edges[-1].append(y)
                else:
                    edges.append([y])
        centres = []
        for top, bottom in zip(edges[0::2], edges[1::2]):
            centres.append((top[0] + bottom[-1]) / 2 / self.scale)
        return centres


def wait_for_buttons(game, count, what, timeout=150.0):
    def shown(shot):
        return len(Scaled(shot, game.scale).choice_buttons()) == count
    return Scaled(game.wait_for(shown, what, timeout=timeout), game.scale)


def check_whole_notebook(view):
    """Paper just inside every corner of the spread, and the desk beyond the cover on every side:
    nothing of the notebook is cut off."""
    left, top, right, bottom = harness.LEFT_PAGE[0], harness.LEFT_PAGE[1], harness.RIGHT_PAGE[2], harness.RIGHT_PAGE[3]
    for x, y in ((left + 8, top + 8), (right - 8, top + 8), (left + 8, bottom - 8), (right - 8, bottom - 8)):
        check(is_paper(*view.pixel(x, y)), "no paper at (%d, %d): %s" % (x, y, view.pixel(x, y)))
    beyond = COVER_MARGIN + 24
    middle_x, middle_y = (left + right) // 2, (top + bottom) // 2
    for x, y in ((left - beyond, middle_y), (right + beyond, middle_y), (middle_x, top - beyond),
                 (middle_x, bottom + beyond)):
        check(is_desk(*view.pixel(x, y)), "no desk beyond the cover at (%d, %d): %s" % (x, y, view.pixel(x, y)))


def play(game, window_size):
    game.wait_for_window(size=window_size)
    first = wait_for_buttons(game, 2, "the first scene's two choice buttons")
    first = Scaled(game.wait_until_still(), game.scale)
    first.shot.save_png(os.path.join(game.artifacts_dir, "01-first-scene.png"))
    check_whole_notebook(first)
    left_ink = first.ink(harness.LEFT_TEXT)
    check(left_ink > 100, "no handwriting on Orane's page (%d)" % left_ink)

    # A click on the first choice, where it is drawn, writes the answer under Nathan's text.
    buttons = first.choice_buttons()
    buttons_top = int(buttons[0]) - 18
    below = (harness.RIGHT_TEXT[0], buttons_top, harness.RIGHT_TEXT[2], harness.RIGHT_TEXT[3])
    game.move(60, 60)
    game.click(harness.BUTTON_LEFT_X + 40, buttons[0])
    wait_for_buttons(game, 0, "the buttons to go once a choice is clicked", timeout=5)
    answered = Scaled(game.wait_until_still(), game.scale)
    answered.shot.save_png(os.path.join(game.artifacts_dir, "02-choice-written.png"))
    written = answered.ink(below)
    check(written > 60, "the answer was not written on Nathan's page (%d)" % written)

    # The corner, taken where it is drawn, turns the page to the hub and its two choices. Held
    # halfway, the turning page covers part of the right page's text.
    corner_x, corner_y = harness.BOTTOM_RIGHT_CORNER
    game.move(corner_x - 12, corner_y - 10, pause=0.3)
    game.press()
    for x in range(corner_x - 100, 850, -100):
        game.move(x, corner_y - 60, pause=0.08)
    moved = game.wait_for(lambda shot: shot.pixels != answered.shot.pixels, "the page corner to follow the pointer",
                          timeout=20)
    held = Scaled(moved, game.scale)
    held.shot.save_png(os.path.join(game.artifacts_dir, "03-page-held.png"))
    for x in range(850, 559, -100):
        game.move(x, corner_y - 10, pause=0.08)
    game.release()
    game.move(60, 60)
    hub = wait_for_buttons(game, 2, "the hub's choice buttons after turning the page")
    hub = Scaled(game.wait_until_still(), game.scale)
    hub.shot.save_png(os.path.join(game.artifacts_dir, "04-hub.png"))
    check(abs(hub.ink(harness.LEFT_TEXT) - left_ink) > 30, "the hub's spread is not shown")

    # And back: the first spread again, its answer kept, no buttons.
    game.turn_page_back()
    back = Scaled(game.wait_until_still(), game.scale)
    back.shot.save_png(os.path.join(game.artifacts_dir, "05-turned-back.png"))
    check(back.choice_buttons() == [], "buttons shown on an earlier spread")
    check(back.shot.pixels == answered.shot.pixels, "turning back did not show the first spread as it was")

    status = game.close()
    check(status == 0, "exit status %d after closing the window" % status)
    console = game.console() + game.errors()
    check(console.strip() == "", "the console is not clean:\n" + console)


def run_case(args, artifacts):
    _, work_area, window_size = CASES[args.case]
    if work_area:
        publish_work_area(work_area)
    with tempfile.TemporaryDirectory(prefix="orane-e2e-") as work_dir:
        harness.make_resource_tree(work_dir, args.resources, os.path.join(STORIES, "play"))
        game = harness.Game(args.game, work_dir, artifacts)
        try:
            play(game, window_size)
        finally:
            game.kill()


def main():
    return harness.run_case_script(__file__, CASES, run_case, screen_of=lambda case: CASES[case][0])


if __name__ == "__main__":
    sys.exit(main())
