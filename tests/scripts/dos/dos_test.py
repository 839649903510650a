#!/usr/bin/env python3
"""Tests of scripts/dos without a DOS: the plan, the screen, the line of a disk, and starts of an image of our own in QEMU."""

import contextlib
import importlib
import io
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[3]
sys.path.insert(0, str(ROOT / 'scripts' / 'dos'))

import media  # noqa: E402  the path comes first
from machine import keys_of  # noqa: E402
from plan import read_plan  # noqa: E402
from screen import COLUMNS, ROWS, Screen, Transcript, rows_gone  # noqa: E402

disks = importlib.import_module('run-disks')


def screen(*rows, column=None):
    """A screen whose cursor is in the last of the rows, at its end unless a column is given."""
    full = list(rows) + [''] * (ROWS - len(rows))
    return Screen(full, len(rows) - 1, len(rows[-1]) if column is None else column)


class ScreenTest(unittest.TestCase):
    def test_reads_letters_of_code_page_437(self):
        video = bytearray(b' \x07' * COLUMNS * ROWS)
        video[0:6:2] = b'A\xc9\0'
        video[2 * COLUMNS:2 * COLUMNS + 4:2] = b'B:'
        got = Screen.from_memory(bytes(video), 1, 2)
        self.assertEqual(got.rows[:3], ['A╔', 'B:', ''])
        self.assertEqual(len(got.rows), ROWS)
        self.assertEqual(got.at_cursor(), 'B:')

    def test_counts_the_rows_that_have_gone(self):
        first = screen('one', 'two', 'three')
        self.assertEqual(rows_gone(first, first), 0)
        self.assertEqual(rows_gone(first, screen('one', 'two', 'three and more', 'four')), 0)
        self.assertEqual(rows_gone(first, screen('two', 'three', 'four')), 1)
        self.assertEqual(rows_gone(first, screen('one', 'two', 'written again')), 0)
        self.assertEqual(rows_gone(first, screen('two', 'written again', 'four')), 1)
        self.assertEqual(rows_gone(first, screen('something else')), 3)
        self.assertEqual(rows_gone(screen(''), screen('the start')), 0)

    def test_the_rows_before_an_empty_one_of_the_cursor_count(self):
        self.assertEqual(rows_gone(screen('one', 'two', ''), screen('two', 'three', '')), 1)


class TranscriptTest(unittest.TestCase):
    def test_keeps_what_has_left_the_screen(self):
        transcript = Transcript()
        for look in (screen('one', 'two'), screen('one', 'two', 'three'), screen('two', 'three', 'four'), screen('cleared')):
            transcript.add(look)
        self.assertEqual(transcript.lines(), ['one', 'two', 'three', 'four', 'cleared'])

    def test_only_what_comes_after_the_mark_is_new(self):
        transcript = Transcript()
        transcript.add(screen('old', 'Your choice:'))
        self.assertTrue(transcript.asks('choice:'))
        transcript.mark()
        self.assertFalse(transcript.asks('choice:'))
        self.assertEqual(transcript.new_lines(), [''])
        transcript.add(screen('old', 'Your choice:1', 'new', 'Your choice:'))
        self.assertEqual(transcript.new_lines(), ['1', 'new', 'Your choice:'])
        self.assertTrue(transcript.asks('choice:'))
        self.assertFalse(transcript.asks('Your'))

    def test_a_cleared_screen_is_new(self):
        transcript = Transcript()
        transcript.add(screen('old', 'Your choice:'))
        transcript.mark()
        transcript.add(screen('new', 'Your choice:'))
        self.assertTrue(transcript.asks('choice:'))


class KeysTest(unittest.TestCase):
    def test_names_the_keys_of_a_character(self):
        self.assertEqual(keys_of('a'), ['a'])
        self.assertEqual(keys_of('A'), ['shift', 'a'])
        self.assertEqual(keys_of('\\'), ['backslash'])
        self.assertEqual(keys_of(':'), ['shift', 'semicolon'])
        self.assertRaises(ValueError, keys_of, 'ä')


class PlanTest(unittest.TestCase):
    def test_reads_runs_with_shared_steps(self):
        plan = read_plan('# text\nsteps menu\n at Your choice:\n\ndisk one\nrun first\n  with cd\n  with card pcnet\n'
                         '  needs A.COM B.EXE\n  do menu\n  press h\nrun second\n  writes\n  type dir c:\n')
        self.assertEqual(list(plan), ['one'])
        first, second = plan['one']
        self.assertEqual((first.title, first.machine, first.needs, first.writes),
                         ('first', {'cd': '', 'card': 'pcnet'}, ['A.COM', 'B.EXE'], set()))
        self.assertEqual(first.starts, [[('at', 'Your choice:'), ('press', 'h')]])
        self.assertEqual((second.title, second.writes, second.starts), ('second', {'hard disk'}, [[('type', 'dir c:')]]))

    def test_reads_a_run_with_two_starts(self):
        run = read_plan('disk one\nrun twice\nwrites floppy\nwrites\npress f\nstart again\nsee text')['one'][0]
        self.assertEqual(run.writes, {'floppy', 'hard disk'})
        self.assertEqual(run.starts, [[('press', 'f')], [('see', 'text')]])

    def test_names_the_line_of_anything_else(self):
        for text in ('run early', 'disk one\nat choice', 'disk one\nrun first\njump', 'disk one\nrun first\ndo nothing',
                     'disk one\ndisk one', 'start again', 'disk one\nrun first\nstart twice', 'disk one\nrun first\nwrites tape',
                     'disk one\nrun first\nsee', 'disk one\nrun first\nsteps a\nneeds X'):
            with self.assertRaises(ValueError, msg=text) as raised:
                read_plan(text)
            self.assertIn(f'line {len(text.splitlines())}:', str(raised.exception))

    def test_every_disk_that_ships_has_runs_with_steps(self):
        plan = read_plan((ROOT / 'scripts' / 'dos' / 'disks.plan').read_text(encoding='utf-8'))
        catalogue = (ROOT / 'data' / 'files' / 'disklist.ini').read_text(encoding='ascii')
        names = [line.removeprefix('Name=') for line in catalogue.splitlines() if line.startswith('Name=')]
        self.assertGreater(len(names), 4)
        self.assertEqual(sorted(plan), sorted(names + ['client', 'custom', 'demo', 'drivers', 'firmware']))
        for disk, runs in plan.items():
            self.assertTrue(runs and all(all(run.starts) for run in runs), disk)
            self.assertEqual(len({run.title for run in runs}), len(runs), disk)


class LineTest(unittest.TestCase):
    def test_names_what_passed_failed_and_could_not_be_run(self):
        self.assertEqual(disks.line_of('tools', ['menu', 'MEM'], [], []), 'tools     passed menu, MEM')
        self.assertEqual(disks.line_of('cdrom', ['menu'], [('CD', 'no "X"')], [('keys', ['KEYB.COM', 'MODE.COM'])]),
                         'cdrom     passed menu; FAILED CD (no "X"); not run keys (needs KEYB.COM MODE.COM)')
        self.assertEqual(disks.line_of('new', [], [], []), 'new       FAILED nothing is planned for it')

    def test_finds_the_key_of_a_line_of_the_menu(self):
        lines = ['  1  Say hello', '  2  Say goodbye', '     Say nothing', '  H  Help with hello', '  2  Say hello again']
        self.assertEqual(disks.key_of(lines, 'Say goodbye'), '2')
        self.assertEqual(disks.key_of(lines, 'Help'), 'h')
        self.assertEqual(disks.key_of(['  1  US   2  A key   B  Back', ' UK'], 'A key'), '2')
        self.assertEqual(disks.key_of(lines, 'Say hello'), '2')
        self.assertIsNone(disks.key_of(lines, 'Say nothing'))


class StartTest(unittest.TestCase):
    """Starts of an image that only asks for a key."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ('dos', 'files/freedos', 'images', 'logs'):
            (self.folder / name).mkdir(parents=True)
        (self.folder / 'files/freedos/ABSENT.EXE').write_bytes(b'absent')
        (self.folder / 'dos/MEM.EXE').write_bytes(b'absent')
        (self.folder / 'dos/FDISK.EXE').write_bytes(b'a program')
        image = self.folder / 'images/one.img'
        subprocess.run(['nasm', '-f', 'bin', '-o', image, ROOT / 'tests/scripts/dos/standin.asm'], check=True)
        with open(image, 'r+b') as file:
            file.truncate(1474560)

    def run_disk(self, text, disk='one'):
        """Returns whether all is well and the line of the disk."""
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            good = disks.run_disk(disk, read_plan(f'disk {disk}\n{text}').get(disk, []), self.folder / 'dos', self.folder / 'images',
                                  self.folder / 'logs')
        return good, output.getvalue().rstrip('\n')

    def test_follows_the_steps(self):
        good, line = self.run_disk('run all\nneeds FDISK.EXE\nat Your choice:\nchoose First line\nsee Done 1\nat Your choice:\n'
                                   'press s\nsee Done s\nat Your choice:\npress enter\nat :\\>\ntype Dir *.* /w\nat :\\>\n'
                                   'never Done 2\nrun again\nat Your choice:\nchoose Help\nsee Done h')
        self.assertEqual(line, 'one       passed all, again')
        self.assertTrue(good)

    def test_reports_what_did_not_come(self):
        good, line = self.run_disk('run line\nat Your choice:\nchoose Second line\nrun text\nat Your choice:\npress 1\n'
                                   'see Done 1\nnever Done 1')
        self.assertEqual(line, 'one       FAILED line (no line of the menu has "Second line"), text ("Done 1" was shown)')
        self.assertFalse(good)
        self.assertIn('First line', (self.folder / 'logs/one-line.txt').read_text(encoding='utf-8'))

    def test_reports_what_was_written(self):
        good, line = self.run_disk('run floppy\nat Your choice:\npress f\nsee Done f\n'
                                   'run disk\nat Your choice:\npress d\nsee Done d\n'
                                   'run allowed\nwrites\nat Your choice:\npress d\nsee Done d\n'
                                   'run needless\nwrites\nat Your choice:\n')
        self.assertEqual(line, 'one       passed allowed; FAILED floppy (the floppy was written), disk (the hard disk was written), '
                               'needless (the hard disk was not written)')
        self.assertFalse(good)

    def test_a_second_start_finds_what_the_first_has_written(self):
        good, line = self.run_disk('run once\nat Your choice:\nnever It was written\n'
                                   'run twice\nwrites floppy\nat Your choice:\npress f\nsee Done f\n'
                                   'start again\nsee It was written\nat Your choice:\n'
                                   'run anew\nat Your choice:\nnever It was written\n'
                                   'run needless\nwrites floppy\nat Your choice:\n'
                                   'run protected\nwith floppy protected\nat Your choice:\npress f\nsee Done f')
        self.assertEqual(line, 'one       passed once, twice, anew, protected; FAILED needless (the floppy was not written)')
        self.assertFalse(good)

    def test_refuses_a_floppy_of_another_kind(self):
        self.assertRaises(ValueError, self.run_disk, 'run bent\nwith floppy bent\nat Your choice:')

    def test_fills_a_floppy(self):
        floppy = self.folder / 'floppy.img'
        subprocess.run(['mformat', '-C', '-i', floppy, '-f', '1440', '::'], check=True)
        media.fill(floppy)
        listed = subprocess.run(['mdir', '-i', floppy, '::'], check=True, capture_output=True, text=True).stdout
        self.assertIn('FILLER', listed)
        self.assertRegex(listed, r'\n +0 bytes free')

    def test_leaves_out_what_needs_a_file_that_is_not_there(self):
        good, line = self.run_disk('run memory\nneeds FDISK.EXE MEM.EXE KEYB.COM\nat never\nrun menu\nat Your choice:')
        self.assertEqual(line, 'one       passed menu; not run memory (needs MEM.EXE KEYB.COM)')
        self.assertTrue(good)

    def test_a_disk_without_an_image_or_a_plan_fails(self):
        self.assertEqual(self.run_disk('run menu\nat choice', 'two'), (False, 'two       FAILED build (there is no image)'))
        self.assertEqual(self.run_disk(''), (False, 'one       FAILED nothing is planned for it'))


if __name__ == '__main__':
    unittest.main()
