"""What a PC is given besides its floppy: hard disks and a CD, created with mtools, NASM and bsdtar."""

import pathlib
import re
import shutil
import struct
import subprocess

_SECTOR = 512
_TRACK, _HEADS, _CYLINDERS = 63, 16, 40
_FIRST = _TRACK  # sector of the partition
_SECTORS = _TRACK * _HEADS * _CYLINDERS
HERE = pathlib.Path(__file__).resolve().parent


def _run(*words):
    subprocess.run([str(word) for word in words], check=True, stdout=subprocess.DEVNULL, stdin=subprocess.DEVNULL)


def assemble(source, target, *options):
    """Assembles a source of this folder, with further options for NASM."""
    _run('nasm', '-f', 'bin', '-w+all', '-Werror', *options, '-o', target, HERE / source)


def fill(floppy):
    """Puts a file onto the image of a floppy that takes all the space left."""
    listed = subprocess.run(['mdir', '-i', str(floppy), '::'], check=True, capture_output=True, text=True).stdout
    count = int(''.join(re.search(r'([\d ]+) bytes free', listed).group(1).split()))
    filler = pathlib.Path(floppy).with_suffix('.fill')
    filler.write_bytes(bytes(count))
    _run('mcopy', '-i', floppy, filler, '::FILLER.BIN')


def make_hard_disk(path, kind):
    """Creates a hard disk of 20 MB. Of `kind`:

    empty     without a partition, as bought
    data      drive C: in use, with a folder of somebody's files
    windows   drive C: with a Windows, WIN.COM in its folder
    A start from any of them but the empty one says "The hard disk has started.\""""
    with open(path, 'wb') as disk:
        disk.truncate(_SECTORS * _SECTOR)
    if kind == 'empty':
        return
    folder, name = {'data': ('GAMES', 'KEEP.TXT'), 'windows': ('WINDOWS', 'WIN.COM')}[kind]
    drive = f'{path}@@{_FIRST * _SECTOR}'
    start = pathlib.Path(path).with_suffix('.start')
    assemble('harddisk.asm', start)
    entry = struct.pack('<B3sB3sII', 0x80, bytes([1, 1, 0]), 0x04, bytes([_HEADS - 1, _TRACK, _CYLINDERS - 1]), _FIRST, _SECTORS - _FIRST)
    with open(path, 'r+b') as disk:
        disk.write(start.read_bytes())
        disk.seek(446)
        disk.write(entry)
        disk.seek(510)
        disk.write(b'\x55\xaa')
    _run('mformat', '-i', drive, '-T', _SECTORS - _FIRST, '-h', _HEADS, '-s', _TRACK, '-H', _FIRST, '-c', 4, '-v', 'DATA', '::')
    _run('mmd', '-i', drive, f'::{folder}')
    text = pathlib.Path(path).with_suffix('.txt')
    text.write_bytes(b'Somebody needs this.\r\n')
    _run('mcopy', '-i', drive, text, f'::{folder}/{name}')


def make_cd(path, folder):
    """Creates a CD with a text and with stand-ins for the setups of Windows, which show their command lines. `folder` is for its
    files."""
    root = pathlib.Path(folder)
    for name in ('WIN98/SETUP.EXE', 'I386/WINNT.EXE'):
        (root / name).parent.mkdir(parents=True, exist_ok=True)
        assemble('program.asm', root / name, "-DTEXT='The setup was started with:'", '-DLAST=13,10')
    (root / 'ONTHECD.TXT').write_bytes(b'This text is on the CD.\r\n')
    _run('bsdtar', '-cf', path, '--format=iso9660', '--options=!rockridge,!joliet,volume-id=TESTCD', '-C', root, '.')
    shutil.rmtree(root)
