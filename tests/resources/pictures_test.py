#!/usr/bin/env python3
"""Looks at the wizard's pictures as files: the eight disks in each size, and the side picture in each resolution."""

import pathlib
import re
import struct
import subprocess
import tempfile
import unittest

RESOURCES = pathlib.Path(__file__).resolve().parents[2] / 'resources'
ICON_SIZES = [16, 20, 24, 32, 40, 48, 64, 96]
SIDE_SCALES = {96: 1.0, 120: 1.25, 144: 1.5, 192: 2.0}
SIDE_BYTES = 400 * 1024


def images(icon):
    """The images of an icon file: pairs of a size and the bytes of the image."""
    data = icon.read_bytes()
    zero, kind, count = struct.unpack_from('<HHH', data)
    if (zero, kind) != (0, 1):
        raise ValueError(f'{icon.name} is no icon')
    result = []
    for number in range(count):
        width, height, _, _, _, bits, length, offset = struct.unpack_from('<BBBBHHII', data, 6 + 16 * number)
        if width != height or bits != 32 or offset + length > len(data):
            raise ValueError(f'{icon.name}: image {number} is not square, of 32 bits and inside the file')
        result.append((width, data[offset:offset + length]))
    return result


class Disks(unittest.TestCase):
    def setUp(self):
        self.icons = sorted((RESOURCES / 'disks').glob('*.ico'))

    def test_each_disk_is_there_in_each_size(self):
        self.assertEqual(len(self.icons), 8)
        for icon in self.icons:
            self.assertEqual([size for size, _ in images(icon)], ICON_SIZES, icon.name)

    def test_corners_are_transparent_and_the_disk_is_opaque(self):
        for icon in self.icons:
            for size, data in images(icon):
                with tempfile.NamedTemporaryFile(suffix='.ico') as single:
                    single.write(struct.pack('<HHHBBBBHHII', 0, 1, 1, size, size, 0, 0, 1, 32, len(data), 22) + data)
                    single.flush()
                    pixels = subprocess.run(('convert', single.name, '-depth', '8', 'RGBA:-'), check=True,
                                            stdout=subprocess.PIPE).stdout
                self.assertEqual(len(pixels), size * size * 4, f'{icon.name} {size}')
                alpha = pixels[3::4]
                self.assertEqual((alpha[0], alpha[size - 1]), (0, 0), f'{icon.name} {size}')
                self.assertGreater(sum(value == 255 for value in alpha), size * size // 2, f'{icon.name} {size}')

    def test_no_two_disks_look_alike(self):
        for number, size in enumerate(ICON_SIZES):
            self.assertEqual(len({images(icon)[number][1] for icon in self.icons}), 8, size)


class SidePicture(unittest.TestCase):
    def test_it_has_the_same_shape_in_each_resolution_and_is_small(self):
        shapes = {}
        total = 0
        for dpi in SIDE_SCALES:
            data = (RESOURCES / f'side-{dpi}.bmp').read_bytes()
            total += len(data)
            self.assertEqual(data[:2], b'BM')
            shapes[dpi] = struct.unpack_from('<ii', data, 18)
            bits, compression = struct.unpack_from('<HI', data, 28)
            self.assertEqual((bits, compression), (8, 0), dpi)
        for dpi, scale in SIDE_SCALES.items():
            self.assertEqual(shapes[dpi], tuple(round(side * scale) for side in shapes[96]), dpi)
        self.assertLessEqual(total, SIDE_BYTES)


class ResourceScript(unittest.TestCase):
    def test_it_takes_every_picture_once_by_its_own_number(self):
        script = (RESOURCES / 'pictures.rc').read_text(encoding='ascii')
        numbers = dict(re.findall(r'#define (\w+) (\d+)$', (RESOURCES / 'ids.h').read_text(encoding='ascii'), re.M))
        entries = re.findall(r'^(\w+) +(?:ICON|BITMAP) +"resources/(.+)"$', script, re.M)
        taken = [file for _, file in entries]
        drawn = [str(path.relative_to(RESOURCES)) for pattern in ('disks/*.ico', 'side-*.bmp')
                 for path in RESOURCES.glob(pattern)]
        self.assertEqual(sorted(taken), sorted(drawn))
        self.assertEqual([int(numbers[name]) for name, _ in entries], [*range(101, 109), *range(201, 205)])


if __name__ == '__main__':
    unittest.main()
