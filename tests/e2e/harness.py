"""Drives the built game as a player would: a private Xvfb display, real X pointer events through
xdotool, screenshots through ImageMagick's import, and the game's console output.

Everything here needs only Python's standard library, xdotool, xwininfo, import (ImageMagick) and
libX11. The game reads its resources relative to its working directory, so every run gets its own
resource tree: the build's fonts, textures and audio, and a story tree of the test's choosing."""

import argparse
import ctypes
import os
import random
import re
import shutil
import struct
import subprocess
import sys
import time
import zlib

WINDOW_SIZE = (1600, 900)
SCREEN_SIZE = (1920, 1080)
XVFB_SERVER_ARGS = "-screen 0 %dx%dx24 -noreset"

# Notebook geometry in window pixels: left page from x 362 to 802, right page to 1242, y 176 to 856,
# text inset by 40 pixels.
LEFT_TEXT = (402, 216, 762, 816)
RIGHT_TEXT = (842, 216, 1202, 816)
LEFT_PAGE = (362, 176, 802, 856)
RIGHT_PAGE = (802, 176, 1242, 856)
SPINE_X = 802
BOTTOM_RIGHT_CORNER = (1242, 856)
# The choice buttons hang from the left edge of Nathan's text column.
BUTTON_LEFT_X = 842


class E2EFailure(AssertionError):
    pass


def check(condition, message):
    if not condition:
        raise E2EFailure(message)


# ---------------------------------------------------------------------------------------------
# Displays


def machine_slowness():
    """How many times longer than on an idle machine the game may take to see an input: the game
    samples the mouse at 20 steps a second, and a machine busy beyond its cores draws late."""
    busy = os.getloadavg()[0] / (os.cpu_count() or 1)
    return min(4.0, max(1.0, busy))


def settle(seconds):
    """Waits `seconds`, longer on a busy machine, for the game to see the last input."""
    time.sleep(seconds * machine_slowness())


def run_under_own_display(arguments, marker, screen=SCREEN_SIZE):
    """Runs `arguments` (a command line) under a private Xvfb display and answers its status.
    The command must create the file `marker` once it runs: xvfb-run -a can lose a race for a
    display number against a test running in parallel, and then it is tried again.
    Without -noreset the server resets whenever its last client leaves, say an xwininfo poll,
    and a game that connects at that moment finds no display and aborts."""
    command = ["xvfb-run", "-a", "-s", XVFB_SERVER_ARGS % screen] + arguments
    for _ in range(4):
        if os.path.exists(marker):
            os.remove(marker)
        status = subprocess.run(command).returncode
        if os.path.exists(marker):
            return status
        time.sleep(random.uniform(0.5, 2.0))
    print("Xvfb could not be started")
    return 1


def run_case_script(script, cases, run_case, paths=("--game", "--resources"), label="", screen_of=None):
    """The command line every end-to-end script shares: `script PATHS... --out DIR CASE`.
    Run so, the script starts itself again with --inner under a display of its own (the size
    `screen_of(case)` answers, the default screen without it), in a fresh folder DIR/CASE for
    the case's screenshots and logs; there `run_case(args, artifacts)` plays the case. `paths`
    name the options that take a file, made absolute for the inner run. Answers the exit status:
    an E2EFailure fails the case with its message, printed after "FAILED "."""
    parser = argparse.ArgumentParser()
    for option in paths:
        parser.add_argument(option, required=True)
    parser.add_argument("--out", required=True)
    parser.add_argument("--inner", action="store_true")
    parser.add_argument("case", choices=sorted(cases))
    args = parser.parse_args()
    artifacts = os.path.join(args.out, args.case)
    marker = os.path.join(artifacts, ".display-started")
    if not args.inner:
        shutil.rmtree(artifacts, ignore_errors=True)
        os.makedirs(artifacts)
        command = [sys.executable, os.path.abspath(script), "--inner", "--out", os.path.abspath(args.out)]
        for option in paths:
            command += [option, os.path.abspath(getattr(args, option[2:].replace("-", "_")))]
        screen = screen_of(args.case) if screen_of else SCREEN_SIZE
        return run_under_own_display(command + [args.case], marker, screen)
    os.makedirs(artifacts, exist_ok=True)
    with open(marker, "w"):
        pass
    try:
        run_case(args, artifacts)
    except E2EFailure as failure:
        print("FAILED %s%s: %s" % (label, args.case, failure))
        return 1
    print("passed %s%s" % (label, args.case))
    return 0


# ---------------------------------------------------------------------------------------------
# Resource trees


def make_resource_tree(work_dir, build_resources, story_dir, leave_out=()):
    """A resources/ folder in work_dir: the build's assets linked in, the story tree copied.
    `leave_out` names files (relative to resources/) that the tree must not have."""
    resources = os.path.join(work_dir, "resources")
    os.makedirs(resources)
    for entry in sorted(os.listdir(build_resources)):
        if entry == "stories":
            continue
        source = os.path.join(build_resources, entry)
        if os.path.isdir(source):
            shutil.copytree(source, os.path.join(resources, entry), copy_function=os.symlink)
        else:
            os.symlink(source, os.path.join(resources, entry))
    shutil.copytree(story_dir, os.path.join(resources, "stories"))
    for relative in leave_out:
        os.remove(os.path.join(resources, relative))
    return resources


# ---------------------------------------------------------------------------------------------
# Images


class Screenshot:
    """An RGB picture of the game window, read from a binary PPM."""

    def __init__(self, ppm_bytes):
        header, offset = _read_ppm_header(ppm_bytes)
        self.width, self.height = header
        self.pixels = ppm_bytes[offset:offset + self.width * self.height * 3]
        check(len(self.pixels) == self.width * self.height * 3, "truncated screenshot")

    def pixel(self, x, y):
        i = (y * self.width + x) * 3
        return tuple(self.pixels[i:i + 3])

    def count(self, rect, predicate, step=2):
        """How many sampled pixels of rect (left, top, right, bottom) satisfy predicate."""
        left, top, right, bottom = rect
        found = 0
        for y in range(top, bottom, step):
            row = (y * self.width) * 3
            for x in range(left, right, step):
                i = row + x * 3
                if predicate(self.pixels[i], self.pixels[i + 1], self.pixels[i + 2]):
                    found += 1
        return found

    def region_bytes(self, rect):
        left, top, right, bottom = rect
        rows = []
        for y in range(top, bottom):
            start = (y * self.width + left) * 3
            rows.append(self.pixels[start:start + (right - left) * 3])
        return b"".join(rows)

    def save_png(self, path):
        raw = b"".join(b"\x00" + self.pixels[y * self.width * 3:(y + 1) * self.width * 3]
                       for y in range(self.height))

        def chunk(kind, data):
            return (struct.pack(">I", len(data)) + kind + data
                    + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF))

        with open(path, "wb") as out:
            out.write(b"\x89PNG\r\n\x1a\n")
            out.write(chunk(b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)))
            out.write(chunk(b"IDAT", zlib.compress(raw, 6)))
            out.write(chunk(b"IEND", b""))


def _read_ppm_header(data):
    fields = []
    i = 0
    while len(fields) < 4:
        while data[i:i + 1].isspace():
            i += 1
        if data[i:i + 1] == b"#":
            while data[i:i + 1] != b"\n":
                i += 1
            continue
        start = i
        while not data[i:i + 1].isspace():
            i += 1
        fields.append(data[start:i])
    check(fields[0] == b"P6" and fields[3] == b"255", "unexpected screenshot format")
    return (int(fields[1]), int(fields[2])), i + 1


def is_ink(r, g, b):
    """Handwriting: both inks are near black, the paper is light."""
    return r + g + b < 300


def is_blood(r, g, b):
    return r > 90 and r > g + 50 and r > b + 50


def is_outline(r, g, b):
    """The choice buttons' outline is pure black; the inks never are."""
    return r < 10 and g < 10 and b < 10


# ---------------------------------------------------------------------------------------------
# X display


class _XClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5)]


class _XEvent(ctypes.Union):
    _fields_ = [("xclient", _XClientMessage), ("pad", ctypes.c_long * 24)]


def ask_window_to_close(window_id):
    """What the close button of a window manager does: a WM_DELETE_WINDOW message."""
    x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                               ctypes.POINTER(_XEvent)]
    x11.XFlush.argtypes = [ctypes.c_void_p]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x11.XOpenDisplay(None)
    check(display, "cannot open the X display")
    event = _XEvent()
    event.xclient.type = 33  # ClientMessage
    event.xclient.window = window_id
    event.xclient.message_type = x11.XInternAtom(display, b"WM_PROTOCOLS", 0)
    event.xclient.format = 32
    event.xclient.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
    event.xclient.data[1] = 0  # CurrentTime
    x11.XSendEvent(display, window_id, 0, 0, ctypes.byref(event))
    x11.XFlush(display)
    x11.XCloseDisplay(display)


def screen_size():
    """(width, height) of the display's screen."""
    listing = subprocess.run(["xwininfo", "-root"], capture_output=True, text=True).stdout
    width = re.search(r"Width: (\d+)", listing)
    height = re.search(r"Height: (\d+)", listing)
    check(width and height, "cannot read the screen's size")
    return int(width.group(1)), int(height.group(1))


def top_level_windows():
    """(id, width, height, x, y) of every mapped child of the root window."""
    listing = subprocess.run(["xwininfo", "-root", "-children"], capture_output=True, text=True).stdout
    windows = []
    for line in listing.splitlines():
        match = re.match(r"\s+(0x[0-9a-f]+) .*\s(\d+)x(\d+)\+(-?\d+)\+(-?\d+)\s+\+(-?\d+)\+(-?\d+)\s*$", line)
        if match:
            ident, width, height = int(match.group(1), 16), int(match.group(2)), int(match.group(3))
            windows.append((ident, width, height, int(match.group(6)), int(match.group(7))))
    return windows


# ---------------------------------------------------------------------------------------------
# The game


class Game:
    """One run of the game in a resource tree, on the current display (or of another program that
    opens the game's window, with its arguments)."""

    def __init__(self, executable, work_dir, artifacts_dir, arguments=()):
        self.work_dir = work_dir
        self.artifacts_dir = artifacts_dir
        os.makedirs(artifacts_dir, exist_ok=True)
        self.console_path = os.path.join(artifacts_dir, "console.txt")
        self.errors_path = os.path.join(artifacts_dir, "errors.txt")
        self.console_file = open(self.console_path, "wb")
        self.errors_file = open(self.errors_path, "wb")
        env = dict(os.environ, ALSOFT_DRIVERS="null")
        self.process = subprocess.Popen([executable] + list(arguments), cwd=work_dir, env=env, stdin=subprocess.DEVNULL,
                                        stdout=self.console_file, stderr=self.errors_file)
        self.window = None
        self.size = WINDOW_SIZE
        # Window pixels per game unit: below 1 when the window is scaled to a small screen.
        self.scale = 1.0
        self.shots = 0

    # -- life cycle ---------------------------------------------------------------------------

    def wait_for_window(self, size=WINDOW_SIZE, timeout=30.0):
        screen_width, screen_height = screen_size()
        deadline = time.monotonic() + timeout
        seen = "none"
        while time.monotonic() < deadline:
            status = self.process.poll()
            check(status is None, "the game ended with status %s before its window opened:\n%s\n"
                  "error stream:\n%s" % (status, self.console(), self.errors()))
            for ident, width, height, x, y in top_level_windows():
                if (width, height) == size:
                    seen = "%dx%d+%d+%d" % (width, height, x, y)
                    # The whole window must be on the screen, where a player can reach it.
                    if x >= 0 and y >= 0 and x + width <= screen_width and y + height <= screen_height:
                        self.window = (ident, x, y)
                        self.size = size
                        self.scale = size[0] / WINDOW_SIZE[0]
                        return
            time.sleep(0.2)
        raise E2EFailure("no %dx%d window on the screen within %.0f s (seen: %s)" % (size + (timeout, seen)))

    def wait_for_exit(self, timeout=20.0):
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise E2EFailure("the game did not end within %.0f s" % timeout)

    def close(self):
        """Closes the window as a player would and answers the exit status."""
        ask_window_to_close(self.window[0])
        return self.wait_for_exit()

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        self.console_file.close()
        self.errors_file.close()

    def console(self):
        """What the game wrote on its standard output."""
        with open(self.console_path, "rb") as text:
            return text.read().decode("utf-8", errors="replace")

    def errors(self):
        """What SFML and the drivers wrote on the error stream, less the software renderer's
        word that it cannot synchronise with the screen (every window under Xvfb gets it)."""
        with open(self.errors_path, "rb") as text:
            lines = text.read().decode("utf-8", errors="replace").splitlines()
        return "\n".join(line for line in lines if line != "Setting vertical sync not supported")

    # -- looking ------------------------------------------------------------------------------

    def screenshot(self, label=None):
        ident, x, y = self.window
        ppm = subprocess.run(["import", "-window", "root", "-crop", "%dx%d+%d+%d" % (self.size + (x, y)),
                              "+repage", "-depth", "8", "ppm:-"], capture_output=True, check=True).stdout
        shot = Screenshot(ppm)
        if label:
            self.shots += 1
            shot.save_png(os.path.join(self.artifacts_dir, "%02d-%s.png" % (self.shots, label)))
        return shot

    def wait_for(self, condition, what, timeout=150.0, interval=1.0):
        """Screenshots until condition(shot) holds; answers that screenshot."""
        deadline = time.monotonic() + timeout
        while True:
            shot = self.screenshot()
            if condition(shot):
                return shot
            check(self.process.poll() is None, "the game ended while waiting for " + what)
            if time.monotonic() > deadline:
                shot.save_png(os.path.join(self.artifacts_dir, "timeout.png"))
                raise E2EFailure("timed out waiting for " + what)
            time.sleep(interval)

    def wait_until_still(self, timeout=150.0):
        """Waits until two screenshots a second apart are the same: the notebook is at rest."""
        previous = self.screenshot()
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            time.sleep(1.0)
            shot = self.screenshot()
            if shot.pixels == previous.pixels:
                return shot
            previous = shot
        raise E2EFailure("the screen never came to rest")

    # -- acting -------------------------------------------------------------------------------

    def _xdotool(self, *args):
        subprocess.run(["xdotool"] + [str(a) for a in args], check=True)

    def move(self, x, y, pause=0.12):
        """To (x, y) in game units."""
        _, left, top = self.window
        self._xdotool("mousemove", left + int(round(x * self.scale)), top + int(round(y * self.scale)))
        settle(pause)

    def press(self, pause=0.15):
        self._xdotool("mousedown", 1)
        settle(pause)

    def release(self, pause=0.15):
        self._xdotool("mouseup", 1)
        settle(pause)

    def click(self, x, y, button=1):
        """A click that the game's 20 steps per second see as a press and a later release."""
        self.move(x, y, pause=0.15)
        self._xdotool("mousedown", button)
        settle(0.15)
        self._xdotool("mouseup", button)
        settle(0.15)

    def turn_page_forward(self, release_x=560):
        """Takes the bottom-right corner, drags it across the spine and lets it go there."""
        corner_x, corner_y = BOTTOM_RIGHT_CORNER
        self.move(corner_x - 12, corner_y - 10, pause=0.3)
        self.press()
        for x in range(corner_x - 120, release_x - 1, -120):
            self.move(x, corner_y - 10, pause=0.08)
        self.move(release_x, corner_y - 10, pause=0.3)
        self.release()
        self.move(60, 60)  # off the notebook, where no corner lifts

    def turn_page_back(self, release_x=1040):
        """Takes the bottom-left corner and drops it beyond the spine."""
        self.move(362 + 12, 856 - 10, pause=0.3)
        self.press()
        for x in range(362 + 120, release_x + 1, 120):
            self.move(x, 846, pause=0.08)
        self.move(release_x, 846, pause=0.3)
        self.release()
        self.move(60, 60)


def find_choice_buttons(shot):
    """The vertical centres of the choice buttons: runs of pure black in the buttons' left outline
    column, under Nathan's text."""
    best = []
    for x in range(BUTTON_LEFT_X - 3, BUTTON_LEFT_X + 3):
        runs, start = [], None
        for y in range(RIGHT_PAGE[1], RIGHT_PAGE[3]):
            black = is_outline(*shot.pixel(x, y))
            if black and start is None:
                start = y
            elif not black and start is not None:
                if y - start >= 15:
                    runs.append((start + y) // 2)
                start = None
        if len(runs) > len(best):
            best = runs
    return best
