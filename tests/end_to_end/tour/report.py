# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The report of a tour: one page with the picture of each step beside what the cameras received, and
all pictures on one sheet."""

import html
import re
import shutil
from dataclasses import dataclass
from pathlib import Path

from .contact_sheet import contact_sheet

_STYLE = (Path(__file__).parent / "report.css").read_text(encoding="utf-8")

# More requests than this are folded away.
_AT_ONCE = 12

_REQUEST = re.compile(r"[\d.]+ (?P<camera>cam\d+) (?P<words>[^\[]*)"
                      r"(?:\[(?P<data>[^\]]*)\] )?(?P<result>\w+)")


@dataclass
class Summary:
    """What is to be told of a tour: how many steps it has, how long it took, the chapters, each a
    title with the steps that were taken, and the controls that were left out."""
    steps: int
    seconds: float
    chapters: list
    left_out: list

    @property
    def taken(self):
        return [step for _, steps in self.chapters for step in steps]

    @property
    def failed(self):
        return [step for step in self.taken if step.failure]

    @property
    def passed(self):
        return not self.failed and not self.left_out

    @property
    def text(self):
        requests = sum(len(step.held) + len(step.released) for step in self.taken)
        if self.failed:
            return f"{len(self.taken) - 1} of {self.steps} steps went as expected; " \
                   f"step {self.failed[0].number} did not. {self.seconds:.0f} seconds."
        if self.left_out:
            return f"No step used {', '.join(self.left_out)}. {self.seconds:.0f} seconds."
        return f"All {self.steps} steps went as expected; the cameras received {requests} " \
               f"requests. {self.seconds:.0f} seconds."


def write(folder, summary):
    """Writes report.html, contact-sheet.png and the pictures into the folder."""
    pictures = folder / "pictures"
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    for step in summary.taken:
        if step.picture:
            step.picture.save(pictures / _picture_name(step))
        if step.frame:
            step.frame.save(pictures / _frame_name(step), quality=85)
    (folder / "summary.txt").write_text(f"{summary.text}\n", encoding="utf-8")
    contact_sheet(summary).save(folder / "contact-sheet.png")
    (folder / "report.html").write_text(_page(summary), encoding="utf-8")


def _picture_name(step):
    return f"{step.number:02d}.png"


def _frame_name(step):
    return f"{step.number:02d}-camera.jpg"


def _page(summary):
    verdict = "passed" if summary.passed else "failed"
    failures = "".join(f'<p class="failed"><a href="#step{step.number}">Step {step.number}</a>: '
                       f"{html.escape(step.failure)}</p>\n" for step in summary.failed)
    chapters = "\n".join(_chapter(title, steps) for title, steps in summary.chapters)
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Tour of the PTZ panel</title>
<style>
{_STYLE}</style>
</head>
<body>
<header>
<h1>Tour of the PTZ panel</h1>
<p class="{verdict}">{html.escape(summary.text)}</p>
{failures}<p>The built panel on a virtual screen, used as an operator uses it, with virtual cameras on an
emulated USB bus. Beside each picture is what the cameras received: the request in words, and the
bytes as they went over the wire. Received in another order, or once more or less, it is a failure.
All pictures on <a href="contact-sheet.png">one sheet</a>.</p>
</header>
{chapters}
</body>
</html>
"""


def _chapter(title, steps):
    return (f"<section>\n<h2>{html.escape(title)}</h2>\n"
            + "\n".join(map(_step, steps)) + "\n</section>")


def _step(step):
    pictures = _picture(step.picture, _picture_name(step), f"The screen in step {step.number}")
    pictures += _picture(step.frame, _frame_name(step), f"What the camera sees in step {step.number}")
    if step.failure:
        told = f'<p class="failed">{html.escape(step.failure)}</p>'
    else:
        told = _received(step)
    css = "step failed" if step.failure else "step"
    return (f'<article class="{css}" id="step{step.number}">{pictures}<div><h3><span>{step.number}</span> '
            f"{html.escape(step.title)}</h3>{told}</div></article>")


def _picture(picture, name, alt):
    if not picture:
        return ""
    return (f'<a href="pictures/{name}"><img src="pictures/{name}" loading="lazy" alt="{alt}" '
            f'width="{picture.width // 2}" height="{picture.height // 2}"></a>')


def _received(step):
    if step.released and step.held:
        return _requests(step.held) + "<p>and on release</p>" + _requests(step.released)
    if step.held or step.released:
        return _requests([*step.held, *step.released])
    return "<p>no request</p>"


def _requests(texts):
    rows = "".join(map(_request, texts))
    table = f"<table>{rows}</table>"
    if len(texts) > _AT_ONCE:
        return f"<details><summary>{len(texts)} requests</summary>{table}</details>"
    return table


def _request(text):
    found = _REQUEST.fullmatch(text)
    assert found, f"not a request in a camera log: {text!r}"
    code, control, *values = found["words"].split(maxsplit=2)
    values = html.escape(values[0].strip()) if values else ""
    result = "" if found["result"] == "ok" else f' <em>{found["result"]}</em>'
    return (f'<tr><td>{found["camera"]}</td><td>{code}</td><td>{control}</td>'
            f'<td>{values}{result}</td><td><code>{found["data"] or ""}</code></td></tr>')
