"""A PC that starts from a floppy image, in QEMU: its screen, its keys."""

import json
import pathlib
import socket
import subprocess
import time

from screen import COLUMNS, ROWS, Screen, Transcript

_VIDEO, _FIRMWARE_DATA = 0xB8000, 0x400
_CURSOR = 0x50  # of the first page, in the firmware's data: column, row
_TICKS = 0x6C  # of the PC's clock, 18.2 a second, in the firmware's data
_HALF_A_SECOND = 9  # ticks
_LOOK_EVERY = 0.2  # seconds

# The keys of an American keyboard by the characters that they give, in QEMU's names.
_KEYS = {' ': 'spc', '\\': 'backslash', '.': 'dot', ',': 'comma', '/': 'slash', '-': 'minus', ';': 'semicolon', '=': 'equal',
         '\n': 'ret', '\x1b': 'esc'}
_SHIFTED = {':': 'semicolon', '*': '8', '?': 'slash', '>': 'dot', '<': 'comma', '_': 'minus', '%': '5', '"': 'apostrophe', '+': 'equal'}


def keys_of(character):
    """The keys that are pressed together for a character; ValueError when there are none."""
    if character in _KEYS:
        return [_KEYS[character]]
    if character in _SHIFTED:
        return ['shift', _SHIFTED[character]]
    if character.isascii() and character.isalnum():
        return (['shift'] if character.isupper() else []) + [character.lower()]
    raise ValueError(f'no key gives {character!r}')


class Timeout(Exception):
    """Nothing came in time; the text says what was waited for."""


class Machine:
    """One PC, from the moment that it is switched on; `with` switches it off. `folder` is for files of its own. `options` are
    further words for QEMU, `limit` the seconds that each wait lasts at most. `protected`: the floppy cannot be written."""

    def __init__(self, image, folder, options=(), limit=240, protected=False):
        self.transcript = Transcript()
        self._limit = limit
        self._ticks = 0
        self._dump = pathlib.Path(folder) / 'memory'
        self._log = open(pathlib.Path(folder) / 'qemu.log', 'w+', encoding='utf-8')
        address = str(pathlib.Path(folder) / 'monitor')
        floppy = f'file={str(image).replace(",", ",,")},format=raw,if=floppy,readonly={"on" if protected else "off"}'
        with socket.socket(socket.AF_UNIX) as listener:
            listener.bind(address)
            listener.listen(1)
            listener.settimeout(limit)
            self._process = subprocess.Popen(
                ['qemu-system-i386', '-accel', 'tcg', '-m', '32', '-display', 'none', '-serial', 'none', '-no-reboot', '-boot', 'a', '-nic', 'none',
                 '-drive', floppy, '-chardev', f'socket,id=control,path={address}',
                 '-mon', 'chardev=control,mode=control', *options],
                stdin=subprocess.DEVNULL, stdout=self._log, stderr=subprocess.STDOUT)
            try:
                self._socket = listener.accept()[0]
                self._socket.settimeout(limit)
                self._stream = self._socket.makefile('rw', encoding='utf-8')
                self._stream.readline()  # its greeting
                self._do('qmp_capabilities')
            except (OSError, EOFError):
                self._process.kill()
                self._process.wait()
                self._log.seek(0)
                raise RuntimeError('QEMU did not start: ' + self._log.read()) from None

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        # QEMU ends by itself, so that its images are complete before they are compared.
        try:
            self._do('quit')
        except (OSError, EOFError):
            pass
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
        self._stream.close()
        self._socket.close()
        self._log.close()

    def _do(self, command, **arguments):
        self._stream.write(json.dumps({'execute': command, 'arguments': arguments}) + '\n')
        self._stream.flush()
        while True:
            line = self._stream.readline()
            if not line:
                raise EOFError('the machine has ended')
            answer = json.loads(line)
            if 'error' in answer:
                raise RuntimeError(f'QEMU refuses {command}: {answer["error"]["desc"]}')
            if 'return' in answer:
                return

    def _memory(self, address, count):
        self._do('pmemsave', val=address, size=count, filename=str(self._dump))
        return self._dump.read_bytes()

    def look(self):
        """Takes the screen in, as it is now."""
        data = self._memory(_FIRMWARE_DATA, 256)
        column, row = data[_CURSOR:_CURSOR + 2]
        self._ticks = int.from_bytes(data[_TICKS:_TICKS + 4], 'little')
        self.transcript.add(Screen.from_memory(self._memory(_VIDEO, 2 * COLUMNS * ROWS), row, column))

    def wait_until(self, condition, what, ticks=0):
        """Looks until `condition()` holds, and has held for so many ticks of the PC's clock, which stands still while the PC does.
        Raises Timeout, which names `what`, when that does not happen in time."""
        end = time.monotonic() + self._limit
        since = None
        while True:
            self.look()
            if not condition():
                since = None
            elif since is None or self._ticks < since:  # the clock begins again at midnight
                since = self._ticks
            if since is not None and self._ticks - since >= ticks:
                return
            if time.monotonic() > end:
                raise Timeout(what)
            time.sleep(_LOOK_EVERY)

    def wait_for_question(self, text):
        """Waits until the cursor has been right after `text` for half a second: a program that has just asked may still throw away
        what was typed before it reads. Timeout as for wait_until."""
        self.wait_until(lambda: self.transcript.asks(text), f'no question "{text}"', _HALF_A_SECOND)

    def press(self, character):
        """Presses the keys for one character. What is on the screen now is old from here on."""
        self.look()
        self.transcript.mark()
        self._send(character)

    def type(self, line):
        """Types a line and Enter. Each character is waited for, because a PC keeps only a few keys that nobody reads."""
        self.look()
        self.transcript.mark()
        for at, character in enumerate(line):
            self._send(character)
            typed = line[:at + 1].rstrip().lower()
            self.wait_until(lambda: ''.join(self.transcript.new_lines()).rstrip().lower().endswith(typed), f'the echo of "{typed}"')
        self._send('\n')

    def _send(self, character):
        self._do('send-key', keys=[{'type': 'qcode', 'data': key} for key in keys_of(character)])
