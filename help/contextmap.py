"""Gives a compiled help file its map from topic numbers to pages, and makes its bytes depend on its contents only.

A help file (ITSF) is a header, one directory, and the contents in two sections: 0 as it is, 1 compressed. The
map is the member /#IVB: its own length, then pairs of a number and the place of a page's name in the member
/#STRINGS. Both are put at the end of section 0, which leaves everything else where it is. All numbers are
little-endian, except the variable ones of the directory.
"""

import struct
import zlib

# Places in the header.
TIME_STAMP = 0x10
SECTION_TABLE = 0x38  # offset and length of two sections: the file's size, and the directory
CONTENTS_OFFSET = 0x58
# Places in the first header section, in the directory's header and in its chunk.
FILE_SIZE = 8
DIRECTORY_CHUNK_SIZE = 0x10
DIRECTORY_DENSITY = 0x14
DIRECTORY_CHUNK_COUNT = 0x2C
DIRECTORY_HEADER_SIZE = 0x54
CHUNK_HEADER_SIZE = 0x14

SYSTEM_TIME_STAMP = 10  # the code of that entry of /#SYSTEM


class Unreadable(Exception):
    """The compiler has written what this module does not know."""


def demand(condition, what):
    if not condition:
        raise Unreadable(f'the compiled help file is not as expected: {what}')


def number_at(data, offset):
    return struct.unpack_from('<I', data, offset)[0]


def long_at(data, offset):
    return struct.unpack_from('<Q', data, offset)[0]


def read_variable(data, offset):
    """A number with seven bits per byte, the highest first; returns it and the position after it."""
    value = 0
    while True:
        byte = data[offset]
        offset += 1
        value = value << 7 | byte & 0x7F
        if byte < 0x80:
            return value, offset


def variable(value):
    parts = [value & 0x7F]
    while value > 0x7F:
        value >>= 7
        parts.append(value & 0x7F | 0x80)
    return bytes(reversed(parts))


class Directory:
    """The one chunk that lists the members: the section, the offset in it and the length of each name."""

    def __init__(self, data):
        start = long_at(data, SECTION_TABLE + 16)
        demand(data[start:start + 4] == b'ITSP', 'no directory')
        demand(number_at(data, start + DIRECTORY_CHUNK_COUNT) == 1, 'more than one chunk in the directory')
        self.size = number_at(data, start + DIRECTORY_CHUNK_SIZE)
        self.step = 1 + (1 << number_at(data, start + DIRECTORY_DENSITY))
        self.start = start + DIRECTORY_HEADER_SIZE
        chunk = data[self.start:self.start + self.size]
        demand(chunk[:4] == b'PMGL', 'no list in the directory')
        self.header = chunk[:CHUNK_HEADER_SIZE]
        self.members = {}
        offset = CHUNK_HEADER_SIZE
        for _ in range(struct.unpack_from('<H', chunk, self.size - 2)[0]):
            length, offset = read_variable(chunk, offset)
            name = chunk[offset:offset + length].decode('utf-8')
            offset += length
            place = []
            for _ in range(3):
                value, offset = read_variable(chunk, offset)
                place.append(value)
            self.members[name] = tuple(place)
        demand(bytes(chunk) == self.to_bytes(), 'the directory is written in another way')

    def to_bytes(self):
        """The chunk: the members by name, and from its end backwards their count and the place of each `step`th."""
        entries = b''
        marks = []
        for count, name in enumerate(sorted(self.members, key=lambda name: (name.lower(), name)), start=1):
            if count % self.step == 0:
                marks.append(len(entries))
            text = name.encode('utf-8')
            entries += variable(len(text)) + text + b''.join(variable(value) for value in self.members[name])
        tail = b''.join(struct.pack('<H', mark) for mark in reversed(marks)) + struct.pack('<H', len(self.members))
        free = self.size - CHUNK_HEADER_SIZE - len(entries)
        demand(free >= len(tail), 'the directory is full')
        header = self.header[:4] + struct.pack('<I', free) + self.header[8:]
        return header + entries + bytes(free - len(tail)) + tail


def stamp_system(data, offset, length, stamp):
    """Replaces the time in the member /#SYSTEM that begins at `offset` of `data`."""
    place = offset + 4
    while place < offset + length:
        code, size = struct.unpack_from('<HH', data, place)
        if code == SYSTEM_TIME_STAMP:
            struct.pack_into('<I', data, place + 4, stamp)
            return
        place += 4 + size
    demand(False, 'no time in /#SYSTEM')


def finish(compiled, strings, pages):
    """Returns the help file `compiled` with the map `pages`, page by number; `strings` is its member /#STRINGS."""
    data = bytearray(compiled)
    demand(data[:8] == b'ITSF\3\0\0\0', 'no help file of version 3')
    directory = Directory(data)
    demand('/#IVB' not in directory.members and '/#STRINGS' in directory.members, 'it has a map already')
    contents_offset = long_at(data, CONTENTS_OFFSET)

    def add(name, member):
        directory.members[name] = (0, len(data) - contents_offset, len(member))
        data.extend(member)

    entries = b''
    for number in sorted(pages):
        demand('/' + pages[number] in directory.members, f'it has no page {pages[number]}')
        entries += struct.pack('<II', number, len(strings))
        strings += pages[number].encode('ascii') + b'\0'
    add('/#IVB', struct.pack('<I', len(entries)) + entries)
    add('/#STRINGS', strings)
    data[directory.start:directory.start + directory.size] = directory.to_bytes()
    struct.pack_into('<Q', data, long_at(data, SECTION_TABLE) + FILE_SIZE, len(data))

    # From the stamp viewers see whether the file has changed since they last opened it, so it is computed from the contents.
    section, offset, length = directory.members['/#SYSTEM']
    demand(section == 0, '/#SYSTEM is compressed')
    struct.pack_into('<I', data, TIME_STAMP, 0)
    stamp_system(data, contents_offset + offset, length, 0)
    stamp = zlib.crc32(data)
    struct.pack_into('<I', data, TIME_STAMP, stamp)
    stamp_system(data, contents_offset + offset, length, stamp)
    return bytes(data)
