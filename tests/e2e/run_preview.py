#!/usr/bin/env python3
"""End-to-end tests of `orane-story preview`: the authors' window on a story folder, edited while it
runs the way editors and ordinary tools save files, under a private Xvfb display.

    run_preview.py --tool build/orane-story --out build/e2e-output CASE

Screenshots of every checked moment are kept in the output folder, one sub-folder per case."""

import glob
import os
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import harness  # noqa: E402
from harness import check, find_choice_buttons, is_ink  # noqa: E402

STORIES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "stories")
FOLDER = "histoire"

# The fault panel's frame runs along the top of the window, over the desk.
PANEL_FRAME_ROW = (16, 6, 1584, 9)


def is_panel_frame(r, g, b):
    return r > 170 and 50 < g < 110 and b < 90


def panel_shown(shot):
    return shot.count(PANEL_FRAME_ROW, is_panel_frame, step=1) > 1000


def left_ink(shot):
    return shot.count(harness.LEFT_TEXT, is_ink)


def title(game):
    return subprocess.run(["xdotool", "getwindowname", str(game.window[0])],
                          capture_output=True, text=True).stdout.strip()


def wait_for_title(game, *parts, timeout=20.0):
    deadline = time.monotonic() + timeout
    while True:
        text = title(game)
        if all(part in text for part in parts):
            return text
        check(game.process.poll() is None, "the preview ended while waiting for the title")
        if time.monotonic() > deadline:
            raise harness.E2EFailure("title %r never held %r" % (text, parts))
        time.sleep(0.2)


def wait_for_console(game, text, timeout=20.0):
    deadline = time.monotonic() + timeout
    while text not in game.console():
        check(game.process.poll() is None, "the preview ended while waiting for %r" % text)
        if time.monotonic() > deadline:
            raise harness.E2EFailure("the console never said %r:\n%s" % (text, game.console()))
        time.sleep(0.2)


def key(game, name):
    subprocess.run(["xdotool", "key", "--window", str(game.window[0]), name], check=True)
    time.sleep(0.3)


def close_cleanly(game):
    status = game.close()
    check(status == 0, "exit status %d after closing the window" % status)
    errors = game.errors()
    check(errors.strip() == "", "the error stream is not clean:\n" + errors)


class Story:
    """The story folder the preview watches, edited through ordinary file operations."""

    def __init__(self, work_dir, tree="play"):
        self.path = os.path.join(work_dir, FOLDER)
        if tree:
            shutil.copytree(os.path.join(STORIES, tree), self.path)
        else:
            os.makedirs(self.path)

    def file(self, name):
        return os.path.join(self.path, name)

    def read(self, name):
        with open(self.file(name), encoding="utf-8") as text:
            return text.read()

    def in_place(self, name, text):
        """Writes over the old bytes and cuts what is left, without truncating first."""
        with open(self.file(name), "r+b") as out:
            out.write(text.encode("utf-8"))
            out.truncate()

    def truncate_then_write(self, name, text):
        """Empties the file, and writes it a moment later: the preview sees the empty file first."""
        with open(self.file(name), "wb") as out:
            out.flush()
            os.fsync(out.fileno())
            time.sleep(0.05)
            out.write(text.encode("utf-8"))

    def write_then_rename(self, name, text):
        aside = self.file(".%s.new" % name)
        with open(aside, "wb") as out:
            out.write(text.encode("utf-8"))
        os.rename(aside, self.file(name))

    def delete_then_create(self, name, text):
        os.remove(self.file(name))
        time.sleep(0.05)
        with open(self.file(name), "wb") as out:
            out.write(text.encode("utf-8"))

    def sed(self, name, expression):
        """sed -i writes a temporary file and renames it over the original."""
        subprocess.run(["sed", "-i", expression, self.file(name)], check=True)


def orane_text(lines):
    """Dupont's first scene with Orane writing `lines` lines."""
    return "\n".join("Dupont ment, la ligne %d le dit encore et encore." % n for n in range(lines))


def dupont_file(story, lines):
    text = story.read("Dupont.txt")
    start = text.index("ORANE\n", text.index("SCENE Dupont_begin")) + len("ORANE\n")
    end = text.index("NATHAN\n", start)
    return text[:start] + orane_text(lines) + "\n" + text[end:]


def turn_to(game, *parts):
    """Turns the page forward until the title names the next scene. On a loaded machine the
    software renderer draws few frames, the corner lags the pointer, and a page let go short of
    the spine falls back: it is then taken again."""
    for _ in range(4):
        game.turn_page_forward()
        try:
            return wait_for_title(game, *parts, timeout=60)
        except harness.E2EFailure:
            game.wait_until_still()
    raise harness.E2EFailure("the page never turned to %r" % (parts,))


def buttons_shown(count):
    return lambda shot: len(find_choice_buttons(shot)) == count


def start(game, *parts):
    game.wait_for_window()
    wait_for_title(game, *parts)
    return game.wait_until_still()


# ---------------------------------------------------------------------------------------------
# Cases


def case_start_and_keys(game, story):
    """Opened at a chosen scene and place; the keys go back, start again and take a screenshot."""
    shot = start(game, FOLDER, "scene Dupont_begin")
    game.screenshot("at-dupont")
    check(len(find_choice_buttons(shot)) == 2, "Dupont's scene should offer its two choices")
    check(left_ink(shot) > 150, "Orane's page is empty")

    key(game, "F12")
    deadline = time.monotonic() + 10
    while not glob.glob(os.path.join(game.work_dir, "orane-preview-*.png")) and time.monotonic() < deadline:
        time.sleep(0.2)
    pictures = glob.glob(os.path.join(game.work_dir, "orane-preview-*.png"))
    check(len(pictures) == 1, "F12 should write one PNG in the working folder, found %s" % pictures)
    with open(pictures[0], "rb") as picture:
        header = picture.read(24)
    check(header[:8] == b"\x89PNG\r\n\x1a\n" and header[16:24] == b"\x00\x00\x06\x40\x00\x00\x03\x84",
          "the screenshot is no 1600 x 900 PNG")

    # Back to the hub: Dupont was investigated and the hub seen, as the command line said.
    buttons = find_choice_buttons(shot)
    game.click(harness.BUTTON_LEFT_X + 40, buttons[0])
    game.wait_for(buttons_shown(0), "the choices gone after the click", timeout=20, interval=0.3)
    turn_to(game, "scene hub")
    hub = game.wait_until_still()
    game.screenshot("hub")
    check(len(find_choice_buttons(hub)) == 2, "the hub should offer Leroy and the arrest")

    key(game, "BackSpace")
    wait_for_title(game, "scene Dupont_begin")
    check(len(find_choice_buttons(game.wait_until_still())) == 2, "back at Dupont's scene")
    key(game, "Home")
    wait_for_title(game, "scene begin")
    key(game, "F5")
    wait_for_title(game, "scene begin")
    begin = game.wait_until_still()
    game.screenshot("begin")
    check(len(find_choice_buttons(begin)) == 2, "the first scene's two choices")
    close_cleanly(game)


def case_editor_saves(game, story):
    """Each way of saving shows the new text at once, and no step of it reads as a fault."""
    shot = start(game, FOLDER, "scene Dupont_begin")
    saves = [
        ("in-place", story.in_place, 12),
        ("truncate-then-write", story.truncate_then_write, 2),
        ("write-then-rename", story.write_then_rename, 14),
        ("delete-then-create", story.delete_then_create, 4),
    ]
    previous = left_ink(shot)
    for label, save, lines in saves:
        grows = lines > 8
        save("Dupont.txt", dupont_file(story, lines))
        shot = game.wait_for(lambda s: (left_ink(s) > previous * 1.5) if grows else (left_ink(s) < previous / 1.5),
                             "Orane's page after a %s save" % label, timeout=20, interval=0.3)
        game.screenshot(label)
        previous = left_ink(shot)
        check(not panel_shown(shot), "a fault is shown after a %s save" % label)
        check("scene Dupont_begin" in title(game), "the preview left the scene: %s" % title(game))

    story.sed("Dupont.txt", "s/la ligne/le rang/")
    game.wait_for(lambda s: left_ink(s) != previous, "Orane's page after sed -i", timeout=20, interval=0.3)
    game.screenshot("sed")
    time.sleep(1.0)
    check("fault" not in game.console(), "a save in steps was reported as a fault:\n" + game.console())
    close_cleanly(game)


def case_fault_and_fix(game, story):
    """A fault is shown with its file and line over the desk; the last good story stays playable; the
    fix clears it and play goes on at the same scene."""
    start(game, FOLDER, "scene Dupont_begin")
    good = story.read("Dupont.txt")
    story.in_place("Dupont.txt", good.replace("-> hub\n", "-> hub\nFORWARD hub\n", 1))
    shot = game.wait_for(panel_shown, "the fault panel", timeout=20, interval=0.3)
    game.screenshot("parse-fault")
    wait_for_console(game, FOLDER + "/Dupont.txt:")
    check("Found token FORWARD after a choice" in game.console(), "the parser's message is missing:\n"
          + game.console())
    wait_for_title(game, "scene Dupont_begin", "(fault)")

    story.write_then_rename("Dupont.txt", good.replace("-> arrest", "-> nulle_part"))
    wait_for_console(game, "points to non-existing scene \"nulle_part\"")
    game.screenshot("link-fault")

    # The last good story plays on behind the report.
    buttons = find_choice_buttons(shot)
    check(len(buttons) == 2, "the last good scene's choices are gone")
    game.click(harness.BUTTON_LEFT_X + 40, buttons[0])
    game.wait_for(buttons_shown(0), "the choices gone after the click", timeout=20, interval=0.3)
    turn_to(game, "scene hub", "(fault)")
    game.screenshot("played-behind-the-fault")

    story.truncate_then_write("Dupont.txt", good)
    shot = game.wait_for(lambda s: not panel_shown(s), "the fault cleared", timeout=20, interval=0.3)
    wait_for_title(game, "scene hub")
    check("(fault)" not in title(game), "the title still names a fault")
    check(len(find_choice_buttons(game.wait_until_still())) == 3, "the hub's three choices after the fix")
    game.screenshot("fixed")
    close_cleanly(game)


def case_scene_deleted(game, story):
    """The scene in view deleted: the preview says so and offers "begin"."""
    start(game, FOLDER, "scene annexe")
    text = story.read("story.txt")
    story.sed("story.txt", "/^SCENE annexe$/,$d")
    shot = game.wait_for(panel_shown, "the notice that the scene is gone", timeout=20, interval=0.3)
    game.screenshot("scene-gone")
    wait_for_console(game, "The scene \"annexe\" is not in the story.")
    check("scene annexe" in title(game), "the title should still name the scene waited for")

    # Saved back, the scene is shown again.
    story.write_then_rename("story.txt", text)
    game.wait_for(lambda s: not panel_shown(s), "the scene back", timeout=20, interval=0.3)
    story.sed("story.txt", "/^SCENE annexe$/,$d")
    game.wait_for(panel_shown, "the notice again", timeout=20, interval=0.3)
    game.click(60, 70)  # the notice's button
    wait_for_title(game, "scene begin")
    shot = game.wait_for(lambda s: not panel_shown(s), "the notice gone", timeout=20, interval=0.3)
    check(len(find_choice_buttons(shot)) == 2, "the first scene's choices")
    game.screenshot("begin")
    close_cleanly(game)


def case_suspects_renamed(game, story):
    """suspects.ini renamed away is a fault; renamed back, the preview goes on where it was."""
    start(game, FOLDER, "scene Dupont_begin")
    os.rename(story.file("suspects.ini"), story.file("suspects.old"))
    game.wait_for(panel_shown, "the fault panel", timeout=20, interval=0.3)
    game.screenshot("no-suspects")
    wait_for_console(game, "coudln't open file resources/stories/suspects.ini")
    os.rename(story.file("suspects.old"), story.file("suspects.ini"))
    shot = game.wait_for(lambda s: not panel_shown(s), "the fault cleared", timeout=20, interval=0.3)
    wait_for_title(game, "scene Dupont_begin")
    check(len(find_choice_buttons(shot)) == 2, "Dupont's scene again")
    game.screenshot("back")
    close_cleanly(game)


def case_fresh_story(game, story):
    """A new author's empty folder: the desk and what is missing, then the first scene once written."""
    game.wait_for_window()
    shot = game.wait_for(panel_shown, "the fault panel over the desk", timeout=30, interval=0.3)
    game.screenshot("empty-folder")
    check(shot.count((0, 200, 1600, 900), lambda r, g, b: r + g + b > 60) > 10000, "the desk is not drawn")
    with open(story.file("suspects.ini"), "w", encoding="utf-8"):
        pass
    with open(story.file("story.txt"), "w", encoding="utf-8") as out:
        out.write("SCENE begin\nORANE\nBonjour, Monsieur N.\nNATHAN\nBonjour.\n"
                  "* Partir\nJe pars.\n-> end\n")
    shot = game.wait_for(lambda s: not panel_shown(s) and len(find_choice_buttons(s)) == 1,
                         "the first scene written", timeout=20, interval=0.3)
    wait_for_title(game, "scene begin")
    game.screenshot("first-scene")
    close_cleanly(game)


# Case: (function, story tree copied, or None for an empty folder, arguments after the folder).
CASES = {
    "start_and_keys": (case_start_and_keys, "play", ["--scene", "Dupont_begin", "--investigated", "Dupont",
                                                     "--hub-seen"]),
    "editor_saves": (case_editor_saves, "play", ["--scene", "Dupont_begin"]),
    "fault_and_fix": (case_fault_and_fix, "play", ["--scene", "Dupont_begin", "--hub-seen"]),
    "scene_deleted": (case_scene_deleted, "play", ["--scene", "annexe"]),
    "suspects_renamed": (case_suspects_renamed, "play", ["--scene", "Dupont_begin"]),
    "fresh_story": (case_fresh_story, None, []),
}


def run_case(args, artifacts):
    function, tree, arguments = CASES[args.case]
    with tempfile.TemporaryDirectory(prefix="orane-preview-e2e-") as work_dir:
        story = Story(work_dir, tree)
        if args.case == "scene_deleted":
            with open(story.file("story.txt"), "a", encoding="utf-8") as out:
                out.write("SCENE annexe\nORANE\nUne page de plus.\nNATHAN\nBien.\n* Revenir\nJe reviens.\n-> begin\n")
        game = harness.Game(args.tool, work_dir, artifacts, ["preview", FOLDER] + arguments)
        try:
            function(game, story)
        finally:
            game.kill()


def main():
    return harness.run_case_script(__file__, CASES, run_case, paths=["--tool"], label="preview ")


if __name__ == "__main__":
    sys.exit(main())
