# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""All pictures of a tour on one sheet."""

from PIL import Image, ImageDraw, ImageFont

_WIDTH, _MARGIN, _GAP = 2400, 32, 14
_PICTURE_HEIGHT, _LABEL_LINE, _LABEL_LINES = 220, 16, 3
_ROW_HEIGHT = _PICTURE_HEIGHT + (_LABEL_LINES + 1) * _LABEL_LINE + _GAP
_FONTS = "/usr/share/fonts/truetype/liberation/LiberationSans-{}.ttf"

_BACKGROUND, _TITLE, _LABEL = "#17191c", "#ffffff", "#aeb4bb"
_PASSED, _FAILED = "#46d18a", "#ff8a7a"


def contact_sheet(summary):
    """The sheet: the pictures in rows, with the chapter and the title of the step under each."""
    cells = [(chapter, step) for chapter, steps in summary.chapters for step in steps
             if step.picture]
    rows = _rows(cells)
    top = _MARGIN + 94
    sheet = Image.new("RGB", (_WIDTH, top + len(rows) * _ROW_HEIGHT), _BACKGROUND)
    draw = ImageDraw.Draw(sheet)
    draw.text((_MARGIN, _MARGIN), "Tour of the PTZ panel", _TITLE, _font("Bold", 34))
    draw.text((_MARGIN, _MARGIN + 48), summary.text, _PASSED if summary.passed else _FAILED,
              _font("Regular", 20))
    for row, cells_of_row in enumerate(rows):
        x, y = _MARGIN, top + row * _ROW_HEIGHT
        for chapter, step in cells_of_row:
            _draw_cell(sheet, draw, x, y, chapter, step)
            x += _width(step) + _GAP
    return sheet


def _width(step):
    return step.picture.width * _PICTURE_HEIGHT // step.picture.height


def _rows(cells):
    """The cells in rows, as many in each as fit."""
    rows, used = [], _WIDTH
    for cell in cells:
        width = _width(cell[1])
        if used + width > _WIDTH - 2 * _MARGIN:
            rows.append([])
            used = 0
        rows[-1].append(cell)
        used += width + _GAP
    return rows


def _draw_cell(sheet, draw, x, y, chapter, step):
    width = _width(step)
    sheet.paste(step.picture.resize((width, _PICTURE_HEIGHT), Image.LANCZOS), (x, y))
    y += _PICTURE_HEIGHT + 4
    draw.text((x, y), f"{step.number}  {chapter}", _FAILED if step.failure else _TITLE,
              _font("Bold", 13))
    for line in _wrapped(step.title, width):
        y += _LABEL_LINE
        draw.text((x, y), line, _FAILED if step.failure else _LABEL, _font("Regular", 13))


def _font(style, size):
    return ImageFont.truetype(_FONTS.format(style), size)


def _wrapped(text, width):
    """The text in lines of that width."""
    font = _font("Regular", 13)
    lines = [""]
    for word in text.split():
        longer = f"{lines[-1]} {word}".strip()
        if font.getlength(longer) > width and lines[-1]:
            lines.append(word)
        else:
            lines[-1] = longer
    return lines[:_LABEL_LINES]
