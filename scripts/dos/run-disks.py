#!/usr/bin/env python3
"""Starts disks in QEMU and compares what they show with a plan: run-disks.py PLAN DOS IMAGES LOGS [DISK...]

PLAN is a text as plan.py reads it, DOS the folder dos\\ of which the disks were built, IMAGES the folder with an image NAME.img for
each of its disks, LOGS the folder for what failing runs had on the screen. Without DISKs all are run. Prints one line for each
disk; the exit code is 0 only when nothing failed."""

import hashlib
import pathlib
import re
import shutil
import signal
import sys
import tempfile
import traceback

import media
from machine import Machine, Timeout
from plan import read_plan

_CARDS = {'e1000', 'rtl8139', 'pcnet', 'ne2k_pci'}


class Failure(Exception):
    """A disk did not do what its plan says."""


def _sum_of(path):
    return hashlib.sha256(pathlib.Path(path).read_bytes()).hexdigest()


def is_there(dos, name):
    """Whether the folder of the DOS files holds a program of that DOS under this name, not the one that says that there is none."""
    path = pathlib.Path(dos) / name
    absent = pathlib.Path(dos).parent / 'files' / 'freedos' / 'ABSENT.EXE'
    return path.is_file() and path.read_bytes() != absent.read_bytes()


class Starter:
    """Starts a disk with what a run asks for and follows the run's steps."""

    def __init__(self, folder, limit):
        self._folder = pathlib.Path(folder)
        self._limit = limit

    def follow(self, image, run, log):
        """Failure when the disk does not do what the run says; `log` then holds what was on the screen."""
        with tempfile.TemporaryDirectory(dir=self._folder) as name:
            folder = pathlib.Path(name)
            disks = {'floppy': folder / 'floppy.img', 'hard disk': folder / 'disk.img'}
            options = self._options(run, folder, disks['hard disk'])
            shutil.copyfile(image, disks['floppy'])
            if run.machine.get('floppy') == 'full':
                media.fill(disks['floppy'])
            before = {disk: _sum_of(path) for disk, path in disks.items()}
            for steps in run.starts:
                self._start(disks['floppy'], run, options, steps, log)
            for disk, path in disks.items():
                if (_sum_of(path) != before[disk]) != (disk in run.writes):
                    raise Failure(f'the {disk} was not written' if disk in run.writes else f'the {disk} was written')

    def _start(self, floppy, run, options, steps, log):
        with tempfile.TemporaryDirectory(dir=self._folder) as name, \
                Machine(floppy, name, options, self._limit, run.machine.get('floppy') == 'protected') as machine:
            try:
                for word, text in steps:
                    _follow_step(machine, word, text)
            except (Timeout, Failure, EOFError) as failure:
                shown = '\n'.join(machine.transcript.lines())
                log.write_text(f'{failure}\n\n{shown}\n', encoding='utf-8')
                raise Failure(str(failure)) from None

    @staticmethod
    def _options(run, folder, hard_disk):
        unknown = set(run.machine) - {'hard-disk', 'cd', 'card', 'memory', 'floppy'}
        if unknown or run.machine.get('card', 'pcnet') not in _CARDS or run.machine.get('floppy', 'full') not in {'full', 'protected'}:
            raise ValueError(f'{run.title}: no such part of a PC: {run.machine}')
        media.make_hard_disk(hard_disk, run.machine.get('hard-disk') or 'data')
        options = ['-drive', f'file={hard_disk},format=raw,if=ide,index=0']
        if run.machine.get('cd') == 'none':
            # A disk in its place keeps QEMU from adding one.
            media.make_hard_disk(folder / 'second.img', 'empty')
            options += ['-drive', f'file={folder / "second.img"},format=raw,if=none,id=second', '-device', 'ide-hd,drive=second,bus=ide.1']
        elif 'cd' in run.machine:
            disc = ''
            if run.machine['cd'] != 'empty':
                media.make_cd(folder / 'cd.iso', folder / 'cd')
                disc = f',file={folder / "cd.iso"},format=raw,readonly=on'
            options += ['-drive', f'if=ide,index=2,media=cdrom{disc}']
        if 'card' in run.machine:
            options += ['-device', f'{run.machine["card"]},romfile=']
        if 'memory' in run.machine:
            options += ['-m', run.machine['memory']]
        return options


def key_of(lines, text):
    """The key of a line of the menu: the letter or digit that two spaces follow, nearest before the text. Of several lines with the
    text the last one counts."""
    for line in reversed(lines):
        keys = re.findall(r'(?<!\S)(\w)(?=  )', line[:line.find(text)] if text in line else '')
        if keys:
            return keys[-1].lower()
    return None


def _follow_step(machine, word, text):
    transcript = machine.transcript
    if word == 'at':
        machine.wait_for_question(text)
    elif word == 'see':
        machine.wait_until(lambda: any(text in line for line in transcript.new_lines()), f'no "{text}"')
    elif word == 'choose':
        key = key_of(transcript.lines(), text)
        if key is None:
            raise Failure(f'no line of the menu has "{text}"')
        machine.press(key)
    elif word == 'press':
        machine.press({'enter': '\n', 'escape': '\x1b', 'space': ' '}.get(text, text))
    elif word == 'type':
        machine.type(text)
    elif any(text in line for line in transcript.lines()):
        raise Failure(f'"{text}" was shown')


def line_of(disk, passed, failed, missing):
    """The line of one disk: the titles of its runs, with the reason for those that failed or could not be run."""
    parts = []
    if passed:
        parts.append('passed ' + ', '.join(passed))
    if failed:
        parts.append('FAILED ' + ', '.join(f'{title} ({why})' for title, why in failed))
    if missing:
        parts.append('not run ' + ', '.join(f'{title} (needs {" ".join(names)})' for title, names in missing))
    return f'{disk:<9} ' + ('; '.join(parts) or 'FAILED nothing is planned for it')


def run_disk(disk, runs, dos, images, logs, limit=240):
    """Follows all runs of a disk, prints its line and returns whether nothing failed and something passed."""
    passed, failed, missing = [], [], []
    image = pathlib.Path(images) / f'{disk}.img'
    if runs and not image.is_file():
        failed.append(('build', 'there is no image'))
        runs = []
    for run in runs:
        lacks = [name for name in run.needs if not is_there(dos, name)]
        if lacks:
            missing.append((run.title, lacks))
            continue
        with tempfile.TemporaryDirectory() as folder:
            try:
                Starter(folder, limit).follow(image, run, pathlib.Path(logs) / f'{disk}-{run.title.replace(" ", "-")}.txt')
                passed.append(run.title)
            except Failure as failure:
                failed.append((run.title, str(failure)))
    print(line_of(disk, passed, failed, missing), flush=True)
    return bool(passed) and not failed


def main(arguments):
    if len(arguments) < 4:
        sys.exit(__doc__)
    # A machine that runs is switched off on the way out.
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(128 + number))
    plan, dos, images, logs = (pathlib.Path(argument) for argument in arguments[:4])
    disks = read_plan(plan.read_text(encoding='utf-8'))
    good = True
    for disk in arguments[4:] or disks:
        try:
            good = run_disk(disk, disks.get(disk, []), dos, images, logs) and good
        except (OSError, RuntimeError, ValueError):
            traceback.print_exc()
            good = False
    sys.exit(0 if good else 1)


if __name__ == '__main__':
    main(sys.argv[1:])
