#!/usr/bin/env python3
"""Writes each fuzz target's first inputs from the story trees kept in this project: the game's own
story and the test stories. Each seed is named after its content, so running this again over a
grown corpus adds nothing twice.

    seeds.py CORPUS_ROOT STORY_TREE...
"""

import hashlib
import os
import sys

SEPARATOR = b"\n--8<--\n"
LINE_BREAKER_TEXT_LIMIT = 300


def write_seed(folder, content):
    os.makedirs(folder, exist_ok=True)
    path = os.path.join(folder, "seed-" + hashlib.sha1(content).hexdigest())
    if not os.path.exists(path):
        with open(path, "wb") as out:
            out.write(content)


def read(path):
    with open(path, "rb") as source:
        return source.read()


def scene_blocks(story_bytes):
    """The blocks the loader hands the parser: comment lines left out, cut at SCENE lines."""
    blocks, block = [], None
    for line in story_bytes.split(b"\n"):
        if line.startswith(b"#"):
            continue
        if b"SCENE" in line:
            if block:
                blocks.append(b"\n".join(block))
            block = [line]
        elif block is not None:
            block.append(line)
    if block:
        blocks.append(b"\n".join(block))
    return blocks


def suspect_names(suspects_ini):
    names = []
    for line in suspects_ini.split(b"\n"):
        name = line.strip(b" \t\n\v\f\r")
        if name not in names:
            names.append(name)
    return names


def tree_input(tree):
    """suspects.ini, story.txt and the suspects' files, in the target's input layout."""
    suspects_path = os.path.join(tree, "suspects.ini")
    suspects = read(suspects_path) if os.path.exists(suspects_path) else b""
    files = [suspects, read(os.path.join(tree, "story.txt"))]
    for name in suspect_names(suspects):
        path = os.path.join(tree, name.decode("utf-8", "replace") + ".txt")
        if not os.path.exists(path):
            break
        files.append(read(path))
    return SEPARATOR.join(files)


def writers_texts(story_bytes):
    """Orane's and Nathan's texts, as the notebook receives them."""
    texts, current = [], None
    for line in story_bytes.split(b"\n"):
        if line.startswith(b"#"):
            continue
        if line.strip() in (b"ORANE", b"NATHAN"):
            if current:
                texts.append(b"\n".join(current))
            current = []
        elif b"SCENE" in line or line.startswith(b"*") or b"FORWARD" in line:
            if current:
                texts.append(b"\n".join(current))
            current = None
        elif current is not None:
            current.append(line)
    if current:
        texts.append(b"\n".join(current))
    return texts


def story_files(tree):
    return [os.path.join(tree, name) for name in sorted(os.listdir(tree)) if name.endswith(".txt")
            and name != "expected.txt"]


def main():
    root, trees = sys.argv[1], sys.argv[2:]
    for tree in trees:
        if not os.path.exists(os.path.join(tree, "story.txt")):
            continue
        write_seed(os.path.join(root, "storyloader"), tree_input(tree))
        write_seed(os.path.join(root, "authorchecks"), tree_input(tree))
        for path in story_files(tree):
            story = read(path)
            for block in scene_blocks(story):
                write_seed(os.path.join(root, "sceneparser"), block)
            for index, text in enumerate(writers_texts(story)):
                text = text.decode("utf-8", "replace")[:LINE_BREAKER_TEXT_LIMIT].encode("utf-8")
                # Both hands, upright and slanted, at the page's width and narrower.
                style = index % 8
                width = (160, 100, 40)[index % 3]
                write_seed(os.path.join(root, "linebreaker"), bytes([style, width]) + text)


if __name__ == "__main__":
    main()
