#!/usr/bin/env python3
"""Draws the wizard's side picture, resources/side-*.bmp: a floppy disk above the tracks of its medium, once for
each usual resolution of a screen.

The outermost tenth holds nothing that matters, so that a window whose font is a little different may cut it
off. Needs rsvg-convert and convert (packages librsvg2-bin and imagemagick); the results are in the
repository, so building needs neither. Bitmaps of 256 colours keep them small.
"""

import math
import pathlib
import subprocess

# Dots per inch, and pixels for each unit of the drawing.
RESOLUTIONS = ((96, 1.0), (120, 1.25), (144, 1.5), (192, 2.0))
WIDTH, HEIGHT = 132, 332


def arc(x, y, radius, start, end):
    a, b = math.radians(start), math.radians(end)
    large = 1 if end - start > 180 else 0
    return (f'M{x + radius * math.cos(a):.2f},{y + radius * math.sin(a):.2f} '
            f'A{radius},{radius} 0 {large} 1 {x + radius * math.cos(b):.2f},{y + radius * math.sin(b):.2f}')


def tracks():
    """The medium: rings around its hub, with written sectors in some of them."""
    x, y = 66, 262
    shapes = []
    radii = range(22, 240, 9)
    for number, radius in enumerate(radii):
        shapes.append(f'<circle cx="{x}" cy="{y}" r="{radius}" fill="none" stroke="#ffffff" stroke-width="1" '
                      f'opacity="{max(0.16 - number * 0.006, 0.03):.3f}"/>')
    sectors = ((2, -150, -104), (2, -20, 14), (4, -70, -32), (4, 120, 170), (5, -172, -128), (6, -104, -84),
               (6, 20, 52), (3, 60, 96), (7, -150, -134), (7, -62, -46))
    for ring, start, end in sectors:
        shapes.append(f'<path d="{arc(x, y, 22 + 9 * ring + 4.5, start, end)}" fill="none" stroke="#8fd0ff" '
                      f'stroke-width="4" opacity="{0.62 - ring * 0.055:.3f}"/>')
    shapes.append(f'<circle cx="{x}" cy="{y}" r="14" fill="#ffffff" opacity="0.16"/>')
    shapes.append(f'<circle cx="{x}" cy="{y}" r="5" fill="#10305c"/>')
    return ''.join(shapes)


def floppy():
    """The disk of the program's icon, on a square of 32 by 32 units."""
    return (
        '<path d="M1.5,0 H27 L32,5 V30.5 A1.5,1.5 0 0 1 30.5,32 H1.5 A1.5,1.5 0 0 1 0,30.5 V1.5 A1.5,1.5 0 0 1 1.5,0 Z" '
        'fill="url(#body)"/>'
        '<path d="M1.5,0.35 H26.85 L31.65,5.15 V30.5 A1.15,1.15 0 0 1 30.5,31.65 H1.5 A1.15,1.15 0 0 1 0.35,30.5 V1.5 '
        'A1.15,1.15 0 0 1 1.5,0.35 Z" fill="none" stroke="#ffffff" stroke-width="0.5" opacity="0.35"/>'
        '<path d="M7,0 H24 V9.2 A0.8,0.8 0 0 1 23.2,10 H7.8 A0.8,0.8 0 0 1 7,9.2 Z" fill="url(#metal)"/>'
        '<rect x="18" y="1.8" width="3.6" height="6.2" rx="0.5" fill="#27456f"/>'
        '<rect x="4.5" y="13.5" width="23" height="18.5" rx="0.8" fill="url(#paper)"/>'
        '<path d="M5.3,13.5 H26.7 A0.8,0.8 0 0 1 27.5,14.3 V17 H4.5 V14.3 A0.8,0.8 0 0 1 5.3,13.5 Z" fill="#e2574c"/>'
        '<path d="M13,20 L20.5,24.5 L13,29 Z" fill="#2f9e4f" stroke="#2f9e4f" stroke-width="0.8" '
        'stroke-linejoin="round"/>'
        '<rect x="1.6" y="27.6" width="1.6" height="2.2" fill="#173a6b"/>'
        '<rect x="28.8" y="27.6" width="1.6" height="2.2" fill="#173a6b"/>')


def picture(scale):
    place = 'translate(66,104) rotate(-9) scale(2.5) translate(-16,-16)'
    shadow = ('<path d="M1.5,0 H27 L32,5 V30.5 A1.5,1.5 0 0 1 30.5,32 H1.5 A1.5,1.5 0 0 1 0,30.5 V1.5 A1.5,1.5 0 0 1 '
              '1.5,0 Z" fill="#04122b" opacity="0.5" filter="url(#soft)"/>')
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{round(WIDTH * scale)}" height="{round(HEIGHT * scale)}" '
        f'viewBox="0 0 {WIDTH} {HEIGHT}"><defs>'
        '<linearGradient id="ground" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#3d82cf"/>'
        '<stop offset="0.5" stop-color="#24599f"/><stop offset="1" stop-color="#143766"/></linearGradient>'
        '<linearGradient id="body" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#69aaf0"/>'
        '<stop offset="1" stop-color="#2f6fc4"/></linearGradient>'
        '<linearGradient id="metal" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#ffffff"/>'
        '<stop offset="1" stop-color="#c3ccd6"/></linearGradient>'
        '<linearGradient id="paper" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#ffffff"/>'
        '<stop offset="1" stop-color="#e9edf1"/></linearGradient>'
        '<filter id="soft" x="-30%" y="-30%" width="160%" height="160%"><feGaussianBlur stdDeviation="1.6"/></filter>'
        f'</defs><rect width="{WIDTH}" height="{HEIGHT}" fill="url(#ground)"/>{tracks()}'
        f'<g transform="translate(2,4)"><g transform="{place}">{shadow}</g></g>'
        f'<g transform="{place}">{floppy()}</g></svg>')


def main():
    folder = pathlib.Path(__file__).resolve().parent
    for dpi, scale in RESOLUTIONS:
        png = subprocess.run(('rsvg-convert',), input=picture(scale).encode('ascii'), check=True,
                             stdout=subprocess.PIPE).stdout
        subprocess.run(('convert', 'png:-', '-alpha', 'off', '-dither', 'FloydSteinberg', '-colors', '256', '-type',
                        'Palette', '-compress', 'None', '-strip', f'BMP3:{folder / f"side-{dpi}.bmp"}'),
                       input=png, check=True)


main()
