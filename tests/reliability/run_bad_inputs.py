#!/usr/bin/env python3
"""Bad input fed to the built game: broken resources and broken or unusual story files. Each case
builds a resource tree of its own from the build's resources and a small story, starts the game
under a private Xvfb display and checks what a player or a story author sees: the game plays,
or it ends in order with a clear message.

    run_bad_inputs.py --game build/orane --resources build/resources --out DIR GROUP

Cases are grouped so that each group needs one display and a few starts of the game."""

import os
import random
import re
import shutil
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "e2e"))
import harness  # noqa: E402
from harness import check, find_choice_buttons  # noqa: E402

BASE_STORY = os.path.join(HERE, "stories", "base")
ENGINE_REPORT = re.compile(r"^\S+\(\d+\): Assert Failure: 'false' $")
BOM = b"\xef\xbb\xbf"
# What SFML's software renderer under Xvfb says of every window; never a fault of the game.
DRIVER_NOISE = {"Setting vertical sync not supported"}


class Tree:
    """A working folder with resources/: the build's assets (linked) and a writable story."""

    def __init__(self, build_resources, story=BASE_STORY):
        self.work_dir = tempfile.mkdtemp(prefix="orane-bad-")
        self.resources = harness.make_resource_tree(self.work_dir, build_resources, story)
        self.stories = os.path.join(self.resources, "stories")

    def path(self, relative):
        return os.path.join(self.resources, relative)

    def read(self, relative):
        with open(self.path(relative), "rb") as source:
            return source.read()

    def write(self, relative, content):
        path = self.path(relative)
        if os.path.islink(path):
            os.remove(path)  # never write through to the build's own file
        with open(path, "wb") as out:
            out.write(content)

    def replace(self, relative, old, new):
        content = self.read(relative)
        check(old in content, "the base story has no %r" % old)
        self.write(relative, content.replace(old, new))

    def remove(self, relative):
        path = self.path(relative)
        if os.path.isdir(path) and not os.path.islink(path):
            shutil.rmtree(path)
        else:
            os.remove(path)

    def cleanup(self):
        shutil.rmtree(self.work_dir, ignore_errors=True)


class Outcome:
    def __init__(self, status, console, errors):
        self.status = status
        self.lines = console.splitlines()
        self.errors = [line for line in errors.splitlines() if line not in DRIVER_NOISE]

    def describe(self):
        return "status %s, console:\n%s\nerror stream:\n%s" % (
            self.status, "\n".join(self.lines), "\n".join(self.errors))


class Runner:
    def __init__(self, game, resources, out):
        self.game = game
        self.resources = resources
        self.out = out

    def tree(self):
        return Tree(self.resources)

    def start(self, tree, label):
        return harness.Game(self.game, tree.work_dir, os.path.join(self.out, label))

    def ends_at_startup(self, tree, label, timeout=60.0):
        """Runs the game to its end; it must end by itself, before any window is played."""
        game = self.start(tree, label)
        try:
            status = game.wait_for_exit(timeout)
            return Outcome(status, game.console(), game.errors())
        finally:
            game.kill()
            tree.cleanup()

    def plays(self, tree, label, walk=None):
        """The first scene's buttons appear; `walk(game, shot)` plays on; closing ends with 0."""
        game = self.start(tree, label)
        try:
            game.wait_for_window()
            shot = game.wait_for(lambda s: len(find_choice_buttons(s)) > 0, "the first scene's choices")
            game.screenshot("first-scene")
            if walk:
                walk(game, shot)
            status = game.close()
            return Outcome(status, game.console(), game.errors())
        finally:
            game.kill()
            tree.cleanup()


def expect_story_fault(outcome, reports):
    """The story's own reports, exactly, then the engine's report of the failed step; status 0."""
    check(outcome.status == 0, "a story fault must end with status 0: " + outcome.describe())
    check(outcome.lines[:-1] == reports and len(outcome.lines) == len(reports) + 1,
          "expected the reports %r: %s" % (reports, outcome.describe()))
    check(ENGINE_REPORT.match(outcome.lines[-1]), "no report of the failed step: " + outcome.describe())
    check(outcome.errors == [], "the error stream is not clean: " + outcome.describe())


def expect_clean_play(outcome, console=()):
    check(outcome.status == 0, "closing the window must end with status 0: " + outcome.describe())
    check(outcome.lines == list(console), "expected the console %r: %s" % (list(console), outcome.describe()))


def expect_resource_failure(outcome, relative):
    """A font or texture the game cannot do without: the holder's message and a failure status."""
    check(outcome.status not in (0, None) and outcome.status > 0,
          "expected a failure exit status (not a signal): " + outcome.describe())
    check(outcome.lines == ["ResourceHolder::load - Failed to load resources/" + relative],
          "expected only the holder's message: " + outcome.describe())
    check(not any("Sanitizer" in line or "Assert Failure" in line for line in outcome.errors),
          "a report on the error stream: " + outcome.describe())


def pick_and_turn(game, shot, index, expected):
    """Clicks choice `index` of `expected` and turns to the next scene; answers its buttons."""
    buttons = find_choice_buttons(shot)
    check(len(buttons) == expected, "expected %d choices, found %d" % (expected, len(buttons)))
    game.click(harness.BUTTON_LEFT_X + 40, buttons[index])
    game.wait_for(lambda s: not find_choice_buttons(s), "the choice to be written", timeout=10)
    game.turn_page_forward()
    shot = game.wait_for(lambda s: len(find_choice_buttons(s)) > 0, "the next scene's choices")
    return game.wait_until_still()


# ---------------------------------------------------------------------------------------------
# Resources


def group_resources(run):
    for relative, content in [("fonts/orane.ttf", None), ("fonts/orane.ttf", b"not a font\n" * 100),
                              ("textures/paper.png", None), ("textures/game_background.png", b""),
                              ("textures/shadow.png", b"\x89PNG\r\n\x1a\n" + bytes(range(256)) * 8)]:
        tree = run.tree()
        if content is None:
            tree.remove(relative)
        else:
            tree.write(relative, content)
        expect_resource_failure(run.ends_at_startup(tree, "resource-" + os.path.basename(relative)), relative)


def group_audio(run):
    """Without its music or its shot, or with files that are no audio, the game says so in
    French and plays in silence."""
    for label, spoil in [("audio-corrupt", spoil_audio), ("audio-missing", lambda tree: tree.remove("audio"))]:
        tree = run.tree()
        spoil(tree)
        outcome = run.plays(tree, label)
        check(outcome.status == 0, outcome.describe())
        check(outcome.lines == ["Erreur chargement son :shot_pistol.wav",
                                "Erreur chargement music :WhiskyAndRevolver.ogg"], outcome.describe())
        # SFML says, for each file, why it could not open it; nothing else may reach the error stream.
        check(len(outcome.errors) == 2 and all(line.startswith("Failed to open ") for line in outcome.errors),
              outcome.describe())


def spoil_audio(tree):
    tree.write("audio/musics/WhiskyAndRevolver.ogg", b"OggS" + bytes(4000))
    tree.write("audio/sounds/shot_pistol.wav", b"RIFF\x00\x00\x00\x00WAVEjunk")


# ---------------------------------------------------------------------------------------------
# Story files that cannot be read


FATAL_SUSPECTS = "FATAL ERROR : coudln't open file resources/stories/suspects.ini"


def group_unreadable(run):
    tree = run.tree()
    tree.remove("stories")
    expect_story_fault(run.ends_at_startup(tree, "no-stories"), [FATAL_SUSPECTS])

    tree = run.tree()
    tree.remove("stories")
    tree.write("stories", b"SCENE begin\n")
    expect_story_fault(run.ends_at_startup(tree, "stories-is-a-file"), [FATAL_SUSPECTS])

    if os.geteuid() != 0:  # the superuser reads every file whatever its mode
        tree = run.tree()
        os.chmod(tree.path("stories/story.txt"), 0)
        expect_story_fault(run.ends_at_startup(tree, "story-unreadable"), [])

    tree = run.tree()
    tree.remove("stories/story.txt")
    os.mkdir(tree.path("stories/story.txt"))
    # A folder cannot be read as a file: the loader is silent, as for a missing story.txt.
    expect_story_fault(run.ends_at_startup(tree, "story-is-a-folder"), [])


# ---------------------------------------------------------------------------------------------
# Story files with unusual bytes


def group_story_bytes(run):
    tree = run.tree()
    tree.write("stories/story.txt", b"")
    expect_story_fault(run.ends_at_startup(tree, "empty-story"),
                       ["ERROR : no scene found in file resources/stories/story.txt. A story file must "
                        "hold at least one SCENE line."])

    tree = run.tree()
    noise = random.Random(12).randbytes(64 * 1024)
    tree.write("stories/Dupont.txt", b"\x7fELF\x02\x01\x01\x00" + noise)
    expect_story_fault(run.ends_at_startup(tree, "binary-story"),
                       ["ERROR : invalid UTF-8 at line 0 of file resources/stories/Dupont.txt. Story files "
                        "must be saved as UTF-8."])

    # Latin-1 where UTF-8 is expected: the line is counted as the loader counts, comments left out.
    tree = run.tree()
    tree.replace("stories/Dupont.txt", "théâtre".encode("utf-8"), "théâtre".encode("latin-1"))
    expect_story_fault(run.ends_at_startup(tree, "latin1-story"),
                       ["ERROR : invalid UTF-8 at line 2 of file resources/stories/Dupont.txt. Story files "
                        "must be saved as UTF-8."])

    # 100 MB: refused unread, at once.
    tree = run.tree()
    with open(tree.path("stories/story.txt"), "ab") as story:
        story.truncate(100 * 1024 * 1024)
    started = time.monotonic()
    expect_story_fault(run.ends_at_startup(tree, "huge-story", timeout=30),
                       ["ERROR : file resources/stories/story.txt is 104857600 bytes long. A story file "
                        "may hold at most 1048576 bytes."])
    check(time.monotonic() - started < 30, "the huge file was read")

    # A byte-order mark before suspects.ini's first name is part of that name: its file is not
    # found, and the loader says nothing more than the engine's report.
    tree = run.tree()
    tree.write("stories/suspects.ini", BOM + tree.read("stories/suspects.ini"))
    expect_story_fault(run.ends_at_startup(tree, "bom-suspects"), [])


def group_story_plays(run):
    """Unusual but sound story files: the game plays them."""
    # Byte-order marks on the story files, CR LF line ends everywhere.
    tree = run.tree()
    for name in ("story.txt", "Dupont.txt"):
        tree.write("stories/" + name, BOM + tree.read("stories/" + name))
    for name in ("story.txt", "Dupont.txt", "suspects.ini"):
        tree.write("stories/" + name, tree.read("stories/" + name).replace(b"\n", b"\r\n"))
    expect_clean_play(run.plays(tree, "bom-crlf", walk=lambda game, shot: pick_and_turn(game, shot, 0, 2)))

    # NUL bytes inside texts, a line of 200 000 characters before the first scene, a line of
    # 3 000 in Orane's text.
    tree = run.tree()
    tree.replace("stories/story.txt", b"une lettre", b"une\x00lettre\x00")
    tree.replace("stories/story.txt", b"SCENE begin", b"x" * 200000 + b"\nSCENE begin")
    tree.replace("stories/story.txt", b"au commissariat.", b"au commissariat. " + b"Encore une ligne. " * 170)
    expect_clean_play(run.plays(tree, "nul-long-lines"))


def walk_to_suspect(game, shot):
    hub = pick_and_turn(game, shot, 0, 2)
    pick_and_turn(game, hub, 0, 1)


def group_story_names(run):
    # Accented suspect and scene names: the suspect's file is found under its UTF-8 name, and the
    # hub leads there.
    tree = run.tree()
    tree.write("stories/suspects.ini", "Émile\n".encode("utf-8"))
    os.rename(tree.path("stories/Dupont.txt"), tree.path("stories/Émile.txt"))
    tree.replace("stories/Émile.txt", b"Dupont_", "Émile_".encode("utf-8"))
    tree.replace("stories/Émile.txt", b"-> hub", "-> clé_perdue".encode("utf-8"))
    with open(tree.path("stories/Émile.txt"), "ab") as story:
        story.write("SCENE clé_perdue\nNATHAN\nLa clé était sous le paillasson.\nFORWARD hub\n".encode("utf-8"))
    expect_clean_play(run.plays(tree, "accented-names", walk=walk_to_suspect))

    # The story's own hub and arrest scenes: the game composes both anyway, from the suspects.
    tree = run.tree()
    with open(tree.path("stories/story.txt"), "ab") as story:
        story.write("SCENE hub\nORANE\nMon propre carrefour.\n* Nulle part\nRien.\n-> begin\n"
                    "SCENE arrest\nORANE\nMon arrestation.\nFORWARD end\n".encode("utf-8"))
    expect_clean_play(run.plays(tree, "story-hub", walk=walk_to_suspect))


GROUPS = {
    "resources": group_resources,
    "audio": group_audio,
    "unreadable": group_unreadable,
    "story_bytes": group_story_bytes,
    "story_plays": group_story_plays,
    "story_names": group_story_names,
}


def main():
    return harness.run_case_script(
        __file__, GROUPS, lambda args, artifacts: GROUPS[args.case](Runner(args.game, args.resources, artifacts)))


if __name__ == "__main__":
    sys.exit(main())
