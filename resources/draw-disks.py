#!/usr/bin/env python3
"""Draws the eight pictures of the disk list, resources/disks/*.ico, each in the sizes that the list needs
from 96 to 288 dots per inch.

Every size is drawn for itself: edges lie on whole pixels and strokes are whole pixels wide, so that the
small pictures are as crisp as the large ones. Needs rsvg-convert and convert (packages librsvg2-bin and
imagemagick); the results are in the repository, so building needs neither. draw-disks.py [FOLDER] leaves
the single PNG pictures in FOLDER too, to look at.
"""

import math
import pathlib
import struct
import subprocess
import sys
import tempfile

SIZES = (16, 20, 24, 32, 40, 48, 64, 96)
# From this size on a picture is stored compressed; the small ones as bitmaps, which every reader knows.
FIRST_PNG_SIZE = 40


def whole(value, least=1):
    """The nearest whole number of pixels, at least `least`."""
    return max(least, math.floor(value + 0.5))


class Drawing:
    """Collects the shapes of one picture of `size` pixels."""

    def __init__(self, size):
        self.size = size
        self.shapes = []
        self.definitions = []

    def gradient(self, name, top, bottom):
        self.definitions.append(
            f'<linearGradient id="{name}" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="{top}"/>'
            f'<stop offset="1" stop-color="{bottom}"/></linearGradient>')
        return f'url(#{name})'

    def rectangle(self, x, y, width, height, fill, radius=0.0, extra=''):
        self.shapes.append(f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="{radius}" '
                           f'fill="{fill}" {extra}/>')

    def path(self, data, fill, extra=''):
        self.shapes.append(f'<path d="{data}" fill="{fill}" {extra}/>')

    def circle(self, x, y, radius, fill, extra=''):
        self.shapes.append(f'<circle cx="{x}" cy="{y}" r="{radius}" fill="{fill}" {extra}/>')

    def svg(self):
        return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.size}" height="{self.size}">'
                f'<defs>{"".join(self.definitions)}</defs>{"".join(self.shapes)}</svg>')


def outline(points):
    return 'M' + ' L'.join(f'{x:.3f},{y:.3f}' for x, y in points) + ' Z'


def floppy(d, light, dark, edge, stripe):
    """The floppy disk that all pictures share, in the colours of its kind."""
    size = d.size
    margin = whole(size / 24)
    left, top, right, bottom = margin, margin, size - margin, size - margin
    side = right - left
    cut = whole(side / 8)
    radius = size / 20
    rim = whole(size / 40)

    def body(inset):
        a, b, c, e = left + inset, top + inset, right - inset, bottom - inset
        r = max(radius - inset, 0.3)
        notch = cut - inset * 0.4
        return (f'M{a + r},{b} H{c - notch} L{c},{b + notch} V{e - r} A{r},{r} 0 0 1 {c - r},{e} '
                f'H{a + r} A{r},{r} 0 0 1 {a},{e - r} V{b + r} A{r},{r} 0 0 1 {a + r},{b} Z')

    d.path(body(0), edge)
    d.path(body(rim), d.gradient('body', light, dark))

    # The metal shutter with its opening.
    shutter_width = whole(side * 0.5)
    shutter_height = whole(side * 0.3)
    shutter_x = left + whole(side * 0.24)
    d.rectangle(shutter_x, top + rim, shutter_width, shutter_height - rim, d.gradient('metal', '#f1f4f7', '#c3ccd6'))
    if size >= 32:
        d.rectangle(shutter_x, top + shutter_height - rim, shutter_width, rim, '#9aa7b5')
    slot_width = whole(side * 0.11, 2)
    slot_inset = whole(side * 0.05)
    d.rectangle(shutter_x + shutter_width - slot_width - whole(side * 0.07), top + rim + slot_inset - 0,
                slot_width, shutter_height - rim - 2 * slot_inset, edge)

    # The paper label: a stripe in the colour of the kind, and lines as if written.
    label_inset = whole(side * 0.14)
    label_top = top + whole(side * 0.44)
    label_width = side - 2 * label_inset
    label_height = bottom - rim - label_top
    d.rectangle(left + label_inset, label_top, label_width, label_height, d.gradient('paper', '#ffffff', '#eef0f2'))
    stripe_height = whole(side * 0.1)
    d.rectangle(left + label_inset, label_top, label_width, stripe_height, stripe)
    line = whole(size / 32)
    step = whole(side * 0.13, 2)
    y = label_top + stripe_height + whole(side * 0.08)
    while y + line < bottom - rim - line:
        inset = whole(label_width * 0.1)
        d.rectangle(left + label_inset + inset, y, label_width - 2 * inset, line, '#c9d0d8')
        y += step


class Badge:
    """The square in the lower right corner that holds the sign of the kind."""

    def __init__(self, size):
        self.side = whole(size * 0.56)
        self.x = size - self.side
        self.y = size - self.side
        self.halo = max(1.0, size / 22)
        self.middle_x = self.x + self.side / 2
        self.middle_y = self.y + self.side / 2


def haloed(d, badge, data, fill, edge, stroke):
    """A shape with a dark rim, and a light one around it that sets it off from the floppy disk."""
    width = stroke * 2 + badge.halo * 2
    d.path(data, '#ffffff', f'stroke="#ffffff" stroke-width="{width}" stroke-linejoin="round"')
    d.path(data, edge, f'stroke="{edge}" stroke-width="{stroke * 2}" stroke-linejoin="round"')
    d.path(data, fill)


def draw_plain(d):
    """Needs no sign."""


def draw_cdrom(d):
    b = Badge(d.size)
    rim = whole(d.size / 40)
    radius = b.side / 2
    x, y = b.middle_x, b.middle_y
    d.circle(x, y, radius, '#ffffff')
    d.circle(x, y, radius - 0.2, '#5f6d7d')
    inner = radius - rim
    d.circle(x, y, inner, d.gradient('disc', '#f4f6f9', '#b4c0cd'))

    def wedge(start, end, colour):
        a, e = math.radians(start), math.radians(end)
        d.path(f'M{x},{y} L{x + inner * math.cos(a):.3f},{y + inner * math.sin(a):.3f} A{inner},{inner} 0 0 1 '
               f'{x + inner * math.cos(e):.3f},{y + inner * math.sin(e):.3f} Z', colour)

    for turn in (0, 180):
        wedge(turn - 62, turn - 42, '#a9d7f2')
        wedge(turn - 42, turn - 22, '#c9b7ee')
        wedge(turn - 22, turn - 6, '#f6d3c4')
    hub = max(radius * 0.36, 1.6)
    d.circle(x, y, hub, '#6f7d8d')
    d.circle(x, y, hub - rim * 0.8, '#eef1f5')
    d.circle(x, y, max(radius * 0.13, 0.7), '#3c4652')


def draw_network(d):
    b = Badge(d.size)
    # Everything is symmetric in whole pixels: lines in the middle of boxes, one box in the middle of two.
    line = whole(d.size / 20)
    box = line + 2 * whole((b.side * 0.34 - line) / 2)
    right = b.x + b.side - box
    left = b.x + (b.side - box) % 2
    top = b.y
    bottom = b.y + b.side - box
    middle = (left + right) // 2
    line_x = middle + (box - line) // 2
    bar_y = top + box + (bottom - top - box - line) // 2
    halo = b.halo
    shapes = [
        (middle, top, box, box), (left, bottom, box, box), (right, bottom, box, box),
        (line_x, top + box, line, bar_y - top - box + line),
        (left + (box - line) // 2, bar_y, right - left + line, line),
        (left + (box - line) // 2, bar_y, line, bottom - bar_y),
        (right + (box - line) // 2, bar_y, line, bottom - bar_y),
    ]
    for x, y, width, height in shapes:
        d.rectangle(x - halo, y - halo, width + 2 * halo, height + 2 * halo, '#ffffff', halo / 2)
    for x, y, width, height in shapes[3:]:
        d.rectangle(x, y, width, height, '#155e4b')
    rim = whole(d.size / 40)
    for number, (x, y, width, height) in enumerate(shapes[:3]):
        d.rectangle(x, y, width, height, '#155e4b')
        d.rectangle(x + rim, y + rim, width - 2 * rim, height - 2 * rim, '#ffd24a' if number == 0 else '#8fe0c0')


def draw_setup(d):
    b = Badge(d.size)
    rim = whole(d.size / 32)
    height = whole(b.side * 0.88)
    x, y = b.x, b.y + b.side - height
    halo = b.halo
    d.rectangle(x - halo, y - halo, b.side + 2 * halo, height + 2 * halo, '#ffffff', halo)
    d.rectangle(x, y, b.side, height, '#1b4f8f', rim * 0.7)
    title = whole(b.side * 0.2)
    d.rectangle(x + rim, y + rim + title, b.side - 2 * rim, height - 2 * rim - title, '#ffffff')
    d.rectangle(x + rim, y + rim, b.side - 2 * rim, title - rim * 0, d.gradient('title', '#5aa9ee', '#2f7fd1'))
    if d.size >= 24:
        dot = whole(title * 0.45)
        gap = (title - dot) / 2
        d.rectangle(x + b.side - rim - whole(gap) - dot, y + rim + math.floor(gap), dot, dot, '#ffffff')
    # An arrow into the window: something is put in.
    area_top = y + rim + title
    area = height - 2 * rim - title
    shaft = whole(b.side * 0.2)
    if (b.side - shaft) % 2:
        shaft += 1
    centre = x + b.side / 2
    head = shaft / 2 + whole(b.side * 0.13)
    tip = area_top + area - whole(area * 0.1, 1)
    start = area_top + (whole(area * 0.14) if d.size >= 24 else 0)
    neck = tip - head
    d.path(outline([(centre - shaft / 2, start), (centre + shaft / 2, start), (centre + shaft / 2, neck),
                    (centre + head, neck), (centre, tip), (centre - head, neck), (centre - shaft / 2, neck)]),
           '#2f9e4f')


def draw_tools(d):
    b = Badge(d.size)
    rim = whole(d.size / 40) if d.size >= 24 else 0.8
    half = b.side / 2 - rim
    x, y = b.middle_x, b.middle_y
    shaft = half * 0.26
    head = half * 0.56
    jaw = half * 0.24
    # Upright with the open jaw on top, then turned to the left.
    reach = half * 1.22
    upper = -reach + head
    start = math.degrees(math.asin(jaw / head))

    def on_head(angle):
        a = math.radians(angle)
        return head * math.sin(a), upper - head * math.cos(a)

    points = [on_head(angle) for angle in range(int(start), 157, 6)]
    points += [(shaft, upper + head * 0.9), (shaft, reach - shaft)]
    points += [(shaft * math.cos(math.radians(a)), reach - shaft + shaft * math.sin(math.radians(a)))
               for a in range(0, 181, 15)]
    points += [(-shaft, upper + head * 0.9)]
    points += [on_head(-angle) for angle in reversed(range(int(start), 157, 6))]
    points += [(-jaw, upper - head * 0.08), (-jaw * 0.6, upper + jaw * 0.5), (jaw * 0.6, upper + jaw * 0.5),
               (jaw, upper - head * 0.08)]
    turn = math.radians(-45)
    turned = [(x + px * math.cos(turn) - py * math.sin(turn), y + px * math.sin(turn) + py * math.cos(turn))
              for px, py in points]
    haloed(d, b, outline(turned), d.gradient('steel', '#ffd877', '#f0a527'), '#7a4a07', rim)


def star(x, y, outer, inner, tips):
    points = []
    for number in range(2 * tips):
        a = math.pi * number / tips - math.pi / 2
        radius = outer if number % 2 == 0 else inner
        points.append((x + radius * math.cos(a), y + radius * math.sin(a)))
    return points


def draw_demonstration(d):
    b = Badge(d.size)
    rim = whole(d.size / 40) if d.size >= 24 else 0.7
    outer = b.side / 2 + d.size / 40 - rim * 0.5
    shape = outline(star(b.middle_x, b.middle_y + b.side * 0.03, outer, outer * 0.46, 5))
    haloed(d, b, shape, d.gradient('gold', '#ffe680', '#f7b523'), '#94610a', rim)


def draw_driver(d):
    b = Badge(d.size)
    pin_length = whole(b.side * 0.16)
    pin = whole(d.size / 24)
    count = 3 if d.size < 40 else 4
    inset = whole(b.side * 0.05)
    x, width = b.x + pin_length, b.side - 2 * pin_length
    y, height = b.y + inset - 1, b.side - inset + 1
    halo = b.halo
    d.rectangle(b.x - halo, y - halo, b.side + 2 * halo, height + 2 * halo, '#ffffff', halo)
    room = height - count * pin
    for number in range(count):
        pin_y = y + number * pin + whole(room * (number + 1) / (count + 1))
        d.rectangle(b.x, pin_y, b.side, pin, '#b98a1e')
    d.rectangle(x, y, width, height, '#20303c', whole(d.size / 48) * 0.8)
    rim = whole(d.size / 40)
    d.rectangle(x + rim, y + rim, width - 2 * rim, height - 2 * rim, d.gradient('chip', '#4f6678', '#344756'))
    notch = whole(width * 0.3, 2)
    if (width - notch) % 2:
        notch += 1
    d.rectangle(x + (width - notch) / 2, y, notch, whole(notch / 2), '#ffffff')
    if d.size >= 32:
        d.rectangle(x + whole(width * 0.26), y + height - whole(height * 0.26), width - 2 * whole(width * 0.26),
                    whole(d.size / 48), '#a9bccb')


def draw_other(d):
    b = Badge(d.size)
    rim = whole(d.size / 40) if d.size >= 24 else 0.8
    outer = b.side / 2 - rim
    teeth = 8
    x, y = b.middle_x, b.middle_y
    root = outer * 0.74
    points = []
    for number in range(teeth):
        a = 2 * math.pi * number / teeth
        for offset, radius in ((-0.30, root), (-0.19, outer), (0.19, outer), (0.30, root)):
            angle = a + offset * 2 * math.pi / teeth * 1.1
            points.append((x + radius * math.sin(angle), y - radius * math.cos(angle)))
    haloed(d, b, outline(points), d.gradient('gear', '#dfe5eb', '#9fadbb'), '#45515e', rim)
    hole = max(outer * 0.3, 1.0)
    d.circle(x, y, hole + rim * 0.8, '#45515e')
    d.circle(x, y, hole, '#ffffff')


# Name, the sign, and the colours: light and dark body, rim, stripe of the label. In the order of the list.
PICTURES = (
    ('plain', draw_plain, '#5b9be6', '#2f6fc4', '#1c4a8c', '#e2574c'),
    ('cdrom', draw_cdrom, '#8f86d8', '#6259b3', '#403a82', '#b3abec'),
    ('network', draw_network, '#3fb3a8', '#1f857d', '#0f5752', '#8adcd2'),
    ('setup', draw_setup, '#58b4dd', '#2a85b4', '#165a80', '#9fdaf3'),
    ('tools', draw_tools, '#7f90a3', '#56677b', '#37444f', '#b7c3cf'),
    ('demonstration', draw_demonstration, '#cf7fb8', '#a24f8c', '#6f2f5f', '#ecb6dd'),
    ('driver', draw_driver, '#6dbb6f', '#3e8f47', '#23622c', '#b0e2ac'),
    ('other', draw_other, '#b39a80', '#8a7058', '#5d4938', '#dccab6'),
)


def run(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, **options).stdout


def bitmap(png, size):
    """The picture as an icon's bitmap: bottom row first, blue first, and the mask that alpha replaces."""
    pixels = run('convert', png, '-depth', '8', 'BGRA:-')
    rows = [pixels[y * size * 4:(y + 1) * size * 4] for y in reversed(range(size))]
    mask_row = (size + 31) // 32 * 4
    masks = []
    for row in rows:
        bits = bytearray(mask_row)
        for column in range(size):
            if row[column * 4 + 3] == 0:
                bits[column // 8] |= 0x80 >> column % 8
        masks.append(bytes(bits))
    header = struct.pack('<IiiHHIIiiII', 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    return header + b''.join(rows) + b''.join(masks)


def icon(pictures):
    """An icon file of (size, contents) pairs."""
    result = struct.pack('<HHH', 0, 1, len(pictures))
    offset = len(result) + 16 * len(pictures)
    for size, contents in pictures:
        result += struct.pack('<BBBBHHII', size, size, 0, 0, 1, 32, len(contents), offset)
        offset += len(contents)
    return result + b''.join(contents for _, contents in pictures)


def main():
    folder = pathlib.Path(__file__).resolve().parent / 'disks'
    with tempfile.TemporaryDirectory() as temporary:
        work = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else temporary)
        for name, sign, light, dark, edge, stripe in PICTURES:
            pictures = []
            for size in SIZES:
                drawing = Drawing(size)
                floppy(drawing, light, dark, edge, stripe)
                sign(drawing)
                png = work / f'{name}-{size}.png'
                png.write_bytes(run('rsvg-convert', input=drawing.svg().encode('ascii')))
                small = work / f'{name}-{size}-small.png'
                run('convert', str(png), '-strip', '-define', 'png:compression-level=9',
                    '-define', 'png:exclude-chunks=date,time,tIME', f'PNG32:{small}')
                contents = bitmap(str(png), size) if size < FIRST_PNG_SIZE else small.read_bytes()
                small.unlink()
                pictures.append((size, contents))
            (folder / f'{name}.ico').write_bytes(icon(pictures))


main()
