#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Draws the pictures of the user interface from the SVG sheets in this folder.

draw.py [FOLDER]     writes into FOLDER, resources/img by default

Each nested <svg> of a sheet is one picture, named by its id. librsvg renders; only text is set
here, in the letters of letters.svg, which keep to whole pixels where a font would blur. The same
sources give the same bytes with the same librsvg and zlib."""

import copy
import io
import math
import os
import struct
import subprocess
import sys
import xml.etree.ElementTree as xml
import zlib
from pathlib import Path

from PIL import Image

HERE = Path(__file__).resolve().parent
SHEETS = ("keys", "sliders", "control_panel", "settings_panel", "notices")
SCALES = {1: "{}.png", 2: "scaled/{}@2x.png", 3: "scaled/{}@3x.png"}
COPIES = {"clear": "Clear"}
ICON = {16: "plain", 24: "plain", 32: "detailed", 48: "detailed", 256: "detailed"}
MENU_ICONS = {16: "plain", 24: "plain", 32: "detailed", 48: "detailed", 64: "detailed",
              128: "detailed", 256: "detailed"}

SVG = "{http://www.w3.org/2000/svg}"
xml.register_namespace("", SVG[1:-1])

SPACE = 3
GAP = 1
ANCHORS = {"start": 0, "middle": 0.5, "end": 1}


class Misfit(Exception):
    """A picture that is larger than its place."""


class Letters:
    """The letters of one size and weight."""

    def __init__(self, group):
        self.stroke = group.get("stroke-width")
        self.height = int(group.get("font-size"))
        self._drawings = {letter.get("aria-label"): letter for letter in group}

    def line(self, text, spacing):
        """The letters of a text, each with its place, and the width of all of them."""
        x, placed, width = 0, [], 0
        for character in text:
            if character == " ":
                x += SPACE + spacing
                continue
            if character not in self._drawings:
                raise Misfit(f"letters.svg has no '{character}' for \"{text}\"")
            letter = self._drawings[character]
            placed.append((x, letter))
            width = x + float(letter.get("width"))
            # Whole pixels, or the next letter blurs; a lone upright needs the smaller gap.
            x += max(math.floor(float(letter.get("width")) + 0.5), 1) + GAP + spacing
        return placed, width


LETTERS = {group.get("id"): Letters(group)
           for group in xml.parse(HERE / "letters.svg").iter(f"{SVG}g") if group.get("id")}


def set_text(element):
    """Makes a <text> a group of letters. Returns the text and the box that it fills."""
    letters, text = LETTERS[element.get("class")], element.text
    placed, width = letters.line(text, int(element.get("letter-spacing", 0)))
    x, y = int(float(element.get("x", 0))), int(element.get("y"))
    share = ANCHORS[element.get("text-anchor", "start")]
    left = math.floor(float(element.get("x", 0)) - share * math.ceil(width) + 0.5)
    attributes = {"fill": "none", "stroke": element.get("fill"), "stroke-width": letters.stroke,
                  "stroke-linecap": "square", "stroke-miterlimit": "9"}
    box = (left, y - letters.height, math.ceil(width), letters.height)
    if turn := element.get("transform"):
        if turn != f"rotate(-90 {x} {y})":
            raise Misfit(f"\"{text}\" can only be turned left about its own point")
        attributes["transform"] = turn
        box = (x - letters.height, y - (left - x) - box[2], letters.height, box[2])
    element.clear()
    element.tag = f"{SVG}g"
    element.attrib.update(attributes)
    for advance, letter in placed:
        drawing = copy.deepcopy(letter)
        drawing.set("x", str(left + advance))
        drawing.set("y", str(y - letters.height))
        element.append(drawing)
    return text, box


class Sheet:
    """Pictures that are drawn in one file, and the texts in each with their boxes."""

    def __init__(self, name, folder=HERE):
        self.root = xml.parse(Path(folder) / f"{name}.svg").getroot()
        for backdrop in self.root.findall(f"{SVG}g[@id='backdrop']"):
            self.root.remove(backdrop)
        self.places = {}
        self.texts = {}
        for picture in self.root.findall(f"{SVG}svg"):
            name = picture.get("id")
            self.places[name] = [int(picture.get(key)) for key in ("x", "y", "width", "height")]
            self.texts[name] = [set_text(text) for text in list(picture.iter(f"{SVG}text"))]
            picture.set("overflow", "visible")

    def draw(self, scale):
        """The pictures, so many times their size. Nothing may be drawn beside them."""
        done = subprocess.run(["rsvg-convert", "--zoom", str(scale)], check=True,
                              input=xml.tostring(self.root), stdout=subprocess.PIPE)
        whole = Image.open(io.BytesIO(done.stdout)).convert("RGBA")
        beside, images = whole.getchannel("A"), {}
        for name, (x, y, width, height) in self.places.items():
            box = [int(scale * edge) for edge in (x, y, x + width, y + height)]
            images[name] = whole.crop(box)
            beside.paste(0, box)
        if spilled := beside.getbbox():
            raise Misfit(f"{self._nearest(spilled, scale)} does not fit its place")
        return images

    def _nearest(self, box, scale):
        def distance(name):
            x, y, width, height = self.places[name]
            return (abs((box[0] + box[2]) / scale - 2 * x - width)
                    + abs((box[1] + box[3]) / scale - 2 * y - height))
        return min(self.places, key=distance)


def png(image):
    """A PNG file without row filters: these flat drawings are smaller and decode faster so."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    pixels, row = image.tobytes(), 4 * image.width
    rows = b"".join(b"\0" + pixels[start:start + row] for start in range(0, len(pixels), row))
    return (b"\x89PNG\r\n\x1a\n"
            + chunk(b"IHDR", struct.pack(">IIBBBBB", *image.size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def bitmap(image):
    """Pixels as an icon file keeps them: a header, rows from the bottom up, an empty mask."""
    side = image.width
    mask = bytes((side + 31) // 32 * 4 * side)
    pixels = image.transpose(Image.FLIP_TOP_BOTTOM).tobytes("raw", "BGRA")
    return struct.pack("<IiiHHIIiiII", 40, side, 2 * side, 1, 32, 0, len(pixels + mask),
                       0, 0, 0, 0) + pixels + mask


def icon():
    """The icon file, of bitmaps alone: a PNG of 256 pixels would take longer to decode at the start
    than everything else that is shown there."""
    sheet = Sheet("icon")
    images = [sheet.draw(side / 16)[name] for side, name in ICON.items()]
    parts = [bitmap(image) for image in images]
    head, offset = struct.pack("<HHH", 0, 1, len(parts)), 6 + 16 * len(parts)
    for image, part in zip(images, parts):
        side = image.width % 256
        head += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(part), offset)
        offset += len(part)
    return head + b"".join(parts)


def scalable_icon():
    """The detailed icon alone, as an SVG file."""
    sheet = Sheet("icon")
    sheet.root.remove(sheet.root.find(f"{SVG}svg[@id='plain']"))
    x, y, width, height = sheet.places["detailed"]
    sheet.root.attrib.update(width="256", height="256", viewBox=f"{x} {y} {width} {height}")
    return xml.tostring(sheet.root) + b"\n"


def menu_icons():
    """The icons that a desktop shows in its menu, in the folders of an icon theme."""
    sheet = Sheet("icon")
    files = {f"hicolor/{side}x{side}/apps/ptz-panel.png": png(sheet.draw(side / 16)[name])
             for side, name in MENU_ICONS.items()}
    return {**files, "hicolor/scalable/apps/ptz-panel.svg": scalable_icon()}


def pictures():
    """The files, by their names."""
    files = {"min_img.ico": icon(), **menu_icons()}
    for scale, ending in SCALES.items():
        images = {}
        for name in SHEETS:
            images.update(Sheet(name).draw(scale))
        images.update({name: images[original] for name, original in COPIES.items()})
        files.update({ending.format(name): png(image) for name, image in images.items()})
    return files


def main(folder=HERE.parent / "img"):
    for name, content in pictures().items():
        (Path(folder) / name).parent.mkdir(parents=True, exist_ok=True)
        with open(Path(folder) / name, "wb") as file:
            file.write(content)
            file.flush()
            os.fsync(file.fileno())


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except (Misfit, OSError, subprocess.CalledProcessError) as reason:
        sys.exit(f"draw.py: {reason}")
