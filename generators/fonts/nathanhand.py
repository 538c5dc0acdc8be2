#!/usr/bin/python3
"""Builds Nathan's hand: Kaushan Script with French guillemets.

Kaushan's own « and » are two tall, open chevrons that a French reader takes for "<<" and ">>".
Leckerli One's guillemets are drawn with the same fat brush: they are grafted in, slanted like
Kaushan's letters, centred on its x-height. Both fonts are under the SIL Open Font License 1.1,
which lets the result be bundled with the game but not carry either reserved name: it is
renamed "Nathan Brush" and keeps both copyrights.

usage: nathanhand.py KAUSHAN LECKERLI OUTPUT
"""

import sys

from fontTools.pens.boundsPen import BoundsPen
from fontTools.pens.t2CharStringPen import T2CharStringPen
from fontTools.pens.transformPen import TransformPen
from fontTools.ttLib import TTFont

FAMILY = "Nathan Brush"
POSTSCRIPT_NAME = "NathanBrush-Regular"
# Chosen by eye on the notebook's page: Leckerli's guillemets at three quarters of their size are
# about as tall as Kaushan's lower case, and slanted by a fifth (some 11 degrees) they lean with it.
SCALE = 0.75
SLANT = 0.2
SIDE_BEARING = 30
GUILLEMETS = {0xAB: "guillemotleft", 0xBB: "guillemotright"}


def bounds(glyph_set, name):
    pen = BoundsPen(glyph_set)
    glyph_set[name].draw(pen)
    return pen.bounds


def graft_guillemets(hand, donor):
    glyph_set = hand.getGlyphSet()
    donor_glyphs = donor.getGlyphSet()
    donor_cmap = donor.getBestCmap()
    cff = hand["CFF "].cff
    top = cff.topDictIndex[0]
    scale = SCALE * hand["head"].unitsPerEm / donor["head"].unitsPerEm
    middle = hand["OS/2"].sxHeight / 2
    for code_point, name in GUILLEMETS.items():
        donor_name = donor_cmap[code_point]
        _, bottom, _, top_y = bounds(donor_glyphs, donor_name)
        dy = middle - (bottom + top_y) * scale / 2
        # Slanted about the x-height's middle, so the mark stays centred on it.
        placed = (scale, 0, SLANT * scale, scale, SLANT * (dy - middle), dy)
        measure = BoundsPen(glyph_set)
        donor_glyphs[donor_name].draw(TransformPen(measure, placed))
        left, _, right, _ = measure.bounds
        shift = SIDE_BEARING - left
        advance = round(right - left + 2 * SIDE_BEARING)
        pen = T2CharStringPen(advance - top.Private.nominalWidthX, glyph_set)
        donor_glyphs[donor_name].draw(TransformPen(pen, placed[:4] + (placed[4] + shift, dy)))
        top.CharStrings[name] = pen.getCharString(private=top.Private, globalSubrs=cff.GlobalSubrs)
        hand["hmtx"][name] = (advance, SIDE_BEARING)


def rename(hand, donor):
    donor_copyright = donor["name"].getDebugName(0)
    names = hand["name"]
    for record in list(names.names):
        text = record.toUnicode()
        if record.nameID == 0:
            text = text + " " + donor_copyright
        elif record.nameID in (1, 4, 16):
            text = FAMILY
        elif record.nameID == 3:
            text = FAMILY + ": derived from Kaushan Script and Leckerli One"
        elif record.nameID in (6, 20):
            text = POSTSCRIPT_NAME
        elif record.nameID == 7:
            names.removeNames(nameID=7)
            continue
        else:
            continue
        names.setName(text, record.nameID, record.platformID, record.platEncID, record.langID)
    cff = hand["CFF "].cff
    top = cff.topDictIndex[0]
    cff.fontNames = [POSTSCRIPT_NAME]
    top.FullName = FAMILY
    top.FamilyName = FAMILY
    top.Copyright = names.getDebugName(0)
    if hasattr(top, "Notice"):
        del top.Notice


def main(arguments):
    if len(arguments) != 4:
        sys.exit(__doc__.strip().splitlines()[-1])
    hand = TTFont(arguments[1])
    donor = TTFont(arguments[2])
    graft_guillemets(hand, donor)
    rename(hand, donor)
    hand.save(arguments[3])


if __name__ == "__main__":
    main(sys.argv)
