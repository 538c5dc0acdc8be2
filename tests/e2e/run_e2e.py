#!/usr/bin/env python3
"""End-to-end tests of the built game: each case starts its own Xvfb display (so cases can run in
parallel), plays in a resource tree of its own and checks screenshots and console output.

    run_e2e.py --game build/orane --resources build/resources --out build/e2e-output CASE

Screenshots of every checked moment are kept in the output folder, one sub-folder per case."""

import os
import re
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
from harness import check, find_choice_buttons, is_blood, is_ink  # noqa: E402

STORIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "stories")
ENGINE_REPORT = re.compile(r"^\S+\(\d+\): Assert Failure: 'false' $")

# Handwriting is counted on every second pixel of every second row.
INK_ON_A_WRITTEN_PAGE = 150


def ink(shot, rect):
    return shot.count(rect, is_ink)


def blood(shot, rect):
    return shot.count(rect, is_blood)


def buttons_shown(count):
    return lambda shot: len(find_choice_buttons(shot)) == count


def assert_clean_end(game):
    status = game.close()
    check(status == 0, "exit status %d after closing the window" % status)
    console = game.console() + game.errors()
    check(console.strip() == "", "the console is not clean:\n" + console)


def pick(game, shot, index, expected_count):
    buttons = find_choice_buttons(shot)
    check(len(buttons) == expected_count, "expected %d choice buttons, found %d" % (expected_count, len(buttons)))
    game.click(harness.BUTTON_LEFT_X + 40, buttons[index])


def turn_to_next_scene(game, label, choices, midway=None):
    """Turns the page forward and waits until the new spread is at rest with its buttons."""
    game.turn_page_forward()
    if midway:
        time.sleep(1.0)
        game.screenshot(midway)
    if choices:
        game.wait_for(buttons_shown(choices), "%d choice buttons after turning to %s" % (choices, label))
    shot = game.wait_until_still()
    if not choices:
        # The last pixel of a turn can take longer than a still second: let it land.
        time.sleep(2.0)
        shot = game.wait_until_still()
    game.screenshot(label)
    return shot


# ---------------------------------------------------------------------------------------------
# Cases


def case_first_scene(game):
    """The notebook with the first scene; a click writes the answer; a drag turns to the next."""
    game.wait_for_window()
    game.wait_for(buttons_shown(2), "the first scene's two choice buttons")
    first = game.wait_until_still()
    game.screenshot("first-scene")
    left_ink = ink(first, harness.LEFT_TEXT)
    check(left_ink > INK_ON_A_WRITTEN_PAGE, "no handwriting on Orane's page (%d)" % left_ink)
    check(blood(first, harness.LEFT_PAGE) + blood(first, harness.RIGHT_PAGE) == 0, "blood on a fresh notebook")

    # The pointer over the bottom-right corner of the only spread lifts nothing.
    game.move(1230, 846, pause=0.8)
    check(game.screenshot().pixels == first.pixels, "the only spread's corner moved")
    game.move(60, 60)

    # Nathan's answer takes the place of the buttons, under his text.
    buttons_top = find_choice_buttons(first)[0] - 18
    above = (harness.RIGHT_TEXT[0], harness.RIGHT_TEXT[1], harness.RIGHT_TEXT[2], buttons_top)
    below = (harness.RIGHT_TEXT[0], buttons_top, harness.RIGHT_TEXT[2], harness.RIGHT_TEXT[3])
    check(ink(first, above) > INK_ON_A_WRITTEN_PAGE // 3, "no handwriting on Nathan's page")
    pick(game, first, 0, 2)
    game.wait_for(buttons_shown(0), "the buttons to go once a choice is clicked", timeout=5)
    answered = game.wait_until_still()
    game.screenshot("choice-written")
    check(ink(answered, harness.LEFT_TEXT) == left_ink, "Orane's page changed when Nathan answered")
    check(ink(answered, above) == ink(first, above), "Nathan's text changed")
    check(ink(answered, below) > 100, "the answer was not written on Nathan's page")

    hub = turn_to_next_scene(game, "hub", 2, midway="turning")
    check(abs(ink(hub, harness.LEFT_TEXT) - left_ink) > 50, "the hub's spread is not shown")

    # Back to the first spread: its buttons are gone for good, and the hub's are hidden.
    game.turn_page_back()
    back = game.wait_until_still()
    game.screenshot("turned-back")
    check(find_choice_buttons(back) == [], "buttons shown on an earlier spread")
    check(ink(back, harness.LEFT_TEXT) == left_ink, "turning back did not show the first spread")
    assert_clean_end(game)


def case_path_to_end(game):
    """begin -> hub -> Dupont -> arrest -> Dupont arrested -> end."""
    game.wait_for_window()
    shot = game.wait_for(buttons_shown(2), "the first scene")
    pick(game, shot, 0, 2)                       # accept the case
    shot = turn_to_next_scene(game, "hub", 2)    # le Dupont, le Leroy
    pick(game, shot, 0, 2)
    shot = turn_to_next_scene(game, "dupont", 2)
    pick(game, shot, 1, 2)                       # name the culprit
    shot = turn_to_next_scene(game, "arrest", 2)  # not yet, le Dupont
    pick(game, shot, 1, 2)
    turn_to_next_scene(game, "dupont-arrested", 0)
    end = turn_to_next_scene(game, "end", 0)
    check(ink(end, harness.LEFT_TEXT) > INK_ON_A_WRITTEN_PAGE, "the farewell letter is not written")
    check(ink(end, harness.RIGHT_TEXT) == 0, "Nathan wrote on the last page")
    check(blood(end, harness.LEFT_PAGE) + blood(end, harness.RIGHT_PAGE) == 0, "blood at the happy end")
    assert_clean_end(game)


def case_path_to_game_over(game):
    """Refusing the case is fatal: the last spread goes on blood-stained paper, and only it."""
    game.wait_for_window()
    shot = game.wait_for(buttons_shown(2), "the first scene")
    pick(game, shot, 1, 2)
    last = turn_to_next_scene(game, "game-over", 0)
    left_blood, right_blood = blood(last, harness.LEFT_PAGE), blood(last, harness.RIGHT_PAGE)
    check(left_blood > 200 and right_blood > 200,
          "the last spread is not blood-stained (%d, %d)" % (left_blood, right_blood))
    check(ink(last, harness.RIGHT_TEXT) > 30, "Nathan's farewell is missing")

    game.turn_page_back()
    earlier = game.wait_until_still()
    game.screenshot("before-game-over")
    check(blood(earlier, harness.LEFT_PAGE) + blood(earlier, harness.RIGHT_PAGE) == 0,
          "an earlier spread is blood-stained")
    assert_clean_end(game)


def case_harmless_inputs(game):
    """Tab, the right button and keys that mean nothing to the game change nothing."""
    game.wait_for_window()
    shot = game.wait_for(buttons_shown(2), "the first scene")
    shot = game.wait_until_still()
    for key in ("Tab", "Escape", "Return", "Up", "space", "BackSpace"):
        subprocess.run(["xdotool", "key", key], check=True)
        time.sleep(0.12)
    game.click(harness.BUTTON_LEFT_X + 40, find_choice_buttons(shot)[0], button=3)
    game.click(1230, 846, button=3)
    game.move(60, 60)
    after = game.wait_until_still()
    check(after.pixels == shot.pixels, "a key or the right button changed the screen")
    assert_clean_end(game)


# Where the left page's text can show during the last pixels of a forward turn: left of the fold,
# and of the spine's darkest shadow.
LEFT_OF_FOLD = (380, 216, 798, 816)


def rightmost_ink(shot, rect):
    """The rightmost column of rect holding ink, or None."""
    left, top, right, bottom = rect
    for x in range(right - 1, left - 1, -1):
        for y in range(top, bottom, 2):
            if is_ink(*shot.pixel(x, y)):
                return x
    return None


def catch_landing(game, hub_right):
    """Turns back, then forward again with the pointer waiting on the new spread's bottom-left
    corner; answers the screenshot taken while the turned page still travels its last pixels
    (None once it has landed unseen) and the offsets seen, in pixels right of its place."""
    game.turn_page_back()
    game.wait_until_still()
    game.turn_page_forward()
    game.move(362 + 12, 856 - 10, pause=0)
    offsets = []
    deadline = time.monotonic() + 30.0
    while time.monotonic() < deadline:
        shot = game.screenshot()
        right = rightmost_ink(shot, LEFT_OF_FOLD)
        offsets.append(None if right is None else right - hub_right)
        last_two = offsets[-2:]
        if len(last_two) < 2 or None in last_two:
            continue
        if 3 <= last_two[1] <= 20 and last_two[1] <= last_two[0] <= 60:
            return shot, offsets
        # Landed unseen: this try is over. (On its way the page's text first stands still, then
        # jitters, before it closes in; only its place at rest ends the watch.)
        if last_two[0] == last_two[1] == 0:
            return None, offsets
    return None, offsets


def case_quick_turns(game):
    """A page that has visibly landed can be taken again at once: a second drag, started while the
    turned page still travels its last pixels, turns back instead of being ignored."""
    game.wait_for_window()
    shot = game.wait_for(buttons_shown(2), "the first scene")
    first_ink = ink(shot, harness.LEFT_TEXT)
    pick(game, shot, 0, 2)
    hub = turn_to_next_scene(game, "hub", 2)
    hub_right = rightmost_ink(hub, LEFT_OF_FOLD)
    check(hub_right is not None, "no handwriting on the hub's left page")
    # A starved machine may draw too few frames while the page lands for a screenshot to fall in
    # its last pixels: the landing is tried again rather than blamed on the game.
    offsets = []
    for _ in range(4):
        shot, offsets = catch_landing(game, hub_right)
        if shot is not None:
            break
        game.move(60, 60)
        game.wait_until_still()
    check(shot is not None, "the turned page was never caught in its last pixels (offsets %s)" % offsets)
    shot.save_png(os.path.join(game.artifacts_dir, "landing.png"))

    # The second drag, at once: back across the spine.
    game.press(pause=0.1)
    for x in range(362 + 120, 1041, 120):
        game.move(x, 846, pause=0.05)
    game.move(1040, 846, pause=0.3)
    game.release()
    game.move(60, 60)
    back = game.wait_until_still()
    game.screenshot("turned-back-at-once")
    check(ink(back, harness.LEFT_TEXT) == first_ink,
          "the drag started %d pixels before the page landed was ignored" % offsets[-1])
    assert_clean_end(game)


def run_fault_tree(executable, resources, artifacts, tree):
    """A story with faults: the exact reports, the engine's report of the failed step, status 0."""
    with tempfile.TemporaryDirectory(prefix="orane-e2e-") as work_dir:
        harness.make_resource_tree(work_dir, resources, os.path.join(STORIES, tree))
        game = harness.Game(executable, work_dir, os.path.join(artifacts, tree))
        try:
            status = game.wait_for_exit()
        finally:
            game.kill()
        lines = game.console().splitlines()
    with open(os.path.join(STORIES, tree, "expected.txt"), encoding="utf-8") as expected_file:
        expected = expected_file.read().splitlines()
    check(status == 0, "%s: exit status %d" % (tree, status))
    check(len(lines) == len(expected) + 1, "%s: expected %d lines, got:\n%s" % (tree, len(expected) + 1, "\n".join(lines)))
    check(lines[:-1] == expected, "%s: reports differ:\n%s" % (tree, "\n".join(lines)))
    check(ENGINE_REPORT.match(lines[-1]), "%s: no report of the failed step:\n%s" % (tree, lines[-1]))


def case_story_faults(executable, resources, artifacts):
    for tree in sorted(os.listdir(STORIES)):
        if tree.startswith("fault_"):
            run_fault_tree(executable, resources, artifacts, tree)


def case_missing_font(executable, resources, artifacts):
    """A font that cannot be loaded: the holder's message and a failure status, no core dump."""
    with tempfile.TemporaryDirectory(prefix="orane-e2e-") as work_dir:
        harness.make_resource_tree(work_dir, resources, os.path.join(STORIES, "play"),
                                   leave_out=["fonts/nathan.ttf"])
        game = harness.Game(executable, work_dir, artifacts)
        try:
            status = game.wait_for_exit()
        finally:
            game.kill()
        console = game.console()
    check(status > 0, "exit status %d, expected a failure status" % status)
    check("ResourceHolder::load - Failed to load resources/fonts/nathan.ttf\n" in console,
          "the holder's message is missing:\n" + console)


def case_missing_music(game):
    """Without its music the game says so, in French, and plays in silence."""
    game.wait_for_window()
    game.wait_for(buttons_shown(2), "the first scene")
    console = game.console()
    check(console.splitlines()[0] == "Erreur chargement music :WhiskyAndRevolver.ogg",
          "unexpected console:\n" + console)
    status = game.close()
    check(status == 0, "exit status %d after closing the window" % status)


# Cases that play: (story tree, files left out of the resource tree).
PLAYING_CASES = {
    "first_scene": (case_first_scene, "play", []),
    "path_to_end": (case_path_to_end, "play", []),
    "path_to_game_over": (case_path_to_game_over, "play", []),
    "harmless_inputs": (case_harmless_inputs, "play", []),
    "quick_turns": (case_quick_turns, "play", []),
    "missing_music": (case_missing_music, "play", ["audio/musics/WhiskyAndRevolver.ogg"]),
}
# Cases that end at start-up.
STARTUP_CASES = {
    "story_faults": case_story_faults,
    "missing_font": case_missing_font,
}


def run_case(args, artifacts):
    if args.case in STARTUP_CASES:
        STARTUP_CASES[args.case](args.game, args.resources, artifacts)
        return
    function, tree, leave_out = PLAYING_CASES[args.case]
    with tempfile.TemporaryDirectory(prefix="orane-e2e-") as work_dir:
        harness.make_resource_tree(work_dir, args.resources, os.path.join(STORIES, tree), leave_out)
        game = harness.Game(args.game, work_dir, artifacts)
        try:
            function(game)
        finally:
            game.kill()


def main():
    return harness.run_case_script(__file__, list(PLAYING_CASES) + list(STARTUP_CASES), run_case)


if __name__ == "__main__":
    sys.exit(main())
