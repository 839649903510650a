#!/usr/bin/env python3
"""Builds the help file and reads it with 7z, which took no part in building it: what the program asks for exists,
every link leads somewhere, and nothing reveals where or by whom the file was built. help_test.py [-v]"""

import getpass
import html.parser
import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
HELP_FILE = 'corvane_help.chm'

# The topic numbers that the program uses, and the heading of each page.
TOPICS = {
    1310: 'Welcome',
    1320: 'Choose a disk',
    1330: 'Choose drivers',
    1340: 'Windows setup data',
    1350: 'Choose files',
    1360: 'Image or floppy disk',
    1370: 'The result',
    1380: 'While the disk is being built',
    1420: 'The DOS files',
}

WINDOW_ENTRY_SIZE = 196
# With this style the window's title would change with the page, and the program could not find the window by its title.
CHANGES_TITLE = 0x2000


class Page(html.parser.HTMLParser):
    """The parts of a page that the tests ask about."""

    VOID = {'link', 'meta', 'br', 'hr', 'img', 'param', 'input'}

    def __init__(self, text):
        super().__init__()
        self.links = []
        self.pictures = []
        self.headings = []
        self.title = ''
        self.entries = []  # of the contents or the index: lists of (name, value)
        self.misnested = []
        self.open = []
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        if tag in ('a', 'link'):
            self.links.append(values['href'])
        elif tag == 'img':
            self.pictures.append(values['src'])
        elif tag == 'object':
            self.entries.append([])
        elif tag == 'param':
            self.entries[-1].append((values['name'], values['value']))
        if tag not in self.VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attrs):
        self.handle_starttag(tag, attrs)

    def handle_endtag(self, tag):
        # The items of a contents file are not closed.
        while self.open and self.open[-1] == 'li' and tag != 'li':
            self.open.pop()
        if not self.open or self.open.pop() != tag:
            self.misnested.append(tag)

    def handle_data(self, data):
        if self.open[-1:] == ['title']:
            self.title += data
        elif self.open[-1:] == ['h1']:
            self.headings.append(data)


def make_help(output, sources=ROOT / 'help', **environment):
    return subprocess.run([sources / 'build.py', output], env={**os.environ, **environment}, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)


def text_at(data, offset):
    return data[offset:data.index(b'\0', offset)].decode('ascii')


class HelpFile(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        work = pathlib.Path(cls.folder.name)
        cls.file = work / HELP_FILE
        made = make_help(cls.file)
        if made.returncode != 0:
            raise RuntimeError(f'build.py failed: {made.stdout}')
        cls.inside = work / 'inside'
        subprocess.run(['7z', 'x', '-y', f'-o{cls.inside}', cls.file], check=True, stdout=subprocess.DEVNULL)
        cls.members = sorted(str(path.relative_to(cls.inside)) for path in cls.inside.rglob('*') if path.is_file())
        cls.pages = {name: Page(cls.member(name).decode('ascii')) for name in cls.members if name.endswith('.htm')}

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def member(cls, name):
        return (cls.inside / name).read_bytes()

    def topic_map(self):
        """The page of each topic number, as a viewer reads it."""
        data = self.member('#IVB')
        length = struct.unpack_from('<I', data)[0]
        self.assertEqual(length, len(data) - 4)
        pairs = struct.unpack_from(f'<{length // 4}I', data, 4)
        strings = self.member('#STRINGS')
        return {number: text_at(strings, place) for number, place in zip(pairs[::2], pairs[1::2])}

    def test_every_topic_number_leads_to_its_page(self):
        found = self.topic_map()
        self.assertEqual(sorted(found), sorted(TOPICS))
        for number, heading in TOPICS.items():
            self.assertIn(found[number], self.pages, f'topic {number}')
            self.assertEqual(self.pages[found[number]].headings, [heading], f'topic {number}')

    def test_window_type_has_the_name_and_title_that_the_program_looks_for(self):
        texts = (ROOT / 'src/forms/ProductTexts.h').read_text(encoding='ascii')
        names = dict(re.findall(r'(kHelp\w+) = "(.+)";', texts))
        self.assertEqual(names['kHelpFileName'], HELP_FILE)
        data, strings = self.member('#WINDOWS'), self.member('#STRINGS')
        count, size = struct.unpack_from('<II', data)
        self.assertEqual((count, size), (1, WINDOW_ENTRY_SIZE))
        window, = struct.unpack_from('<I', data, 8 + 0x08)
        style, title = struct.unpack_from('<II', data, 8 + 0x10)
        self.assertEqual(text_at(strings, window), names['kHelpWindow'])
        self.assertEqual(text_at(strings, title), names['kHelpWindowTitle'])
        self.assertEqual(style & CHANGES_TITLE, 0)
        # Contents, index, first page and home page.
        for offset in (0x60, 0x64, 0x68, 0x6C):
            self.assertIn(text_at(strings, struct.unpack_from('<I', data, 8 + offset)[0]), self.members)

    def test_window_fits_the_smallest_screen(self):
        left, top, right, bottom = struct.unpack_from('<4i', self.member('#WINDOWS'), 8 + 0x20)
        self.assertTrue(0 <= left < right <= 800 and 0 <= top < bottom <= 600 - 28, (left, top, right, bottom))

    def test_links_lead_to_members(self):
        for name, page in self.pages.items():
            for target in page.links + page.pictures:
                self.assertIn(target, self.members, f'in {name}')

    def test_pages_are_ascii_well_nested_and_titled_by_their_heading(self):
        for name, page in self.pages.items():
            self.assertEqual(page.headings, [page.title], name)
            self.assertEqual((page.misnested, page.open), ([], []), name)
            self.assertNotIn(b'.md', self.member(name), name)

    def test_contents_list_each_page_once_by_its_title(self):
        entries = Page(self.member('corvane_help.hhc').decode('ascii')).entries
        listed = [(dict(entry)['Local'], dict(entry)['Name']) for entry in entries]
        self.assertEqual(sorted(listed), sorted((name, page.title) for name, page in self.pages.items()))

    def test_index_words_are_in_order_and_lead_to_pages(self):
        entries = Page(self.member('corvane_help.hhk').decode('ascii')).entries
        self.assertGreater(len(entries), 30)
        words = [entry[0][1] for entry in entries]
        self.assertEqual(words, sorted(set(words), key=str.lower))
        for entry in entries:
            targets = [value for key, value in entry if key == 'Local']
            self.assertTrue(targets, entry)
            for target in targets:
                self.assertIn(target, self.pages, entry)

    def test_nothing_tells_where_or_by_whom_it_was_made(self):
        revealing = {str(ROOT), str(self.folder.name), tempfile.gettempdir() + '/', '/proc/', '/home/', '/root/',
                     f'/{getpass.getuser()}/'}
        contents = {name: self.member(name) for name in self.members}
        contents[HELP_FILE] = self.file.read_bytes()
        for name, data in contents.items():
            for text in revealing:
                self.assertNotIn(text.encode(), data, name)
        for name in ('#STRINGS', '#URLSTR', 'corvane_help.hhc', 'corvane_help.hhk'):
            self.assertNotRegex(contents[name], rb'(?:^|[\0"=])(?:/|\\|[A-Za-z]:[\\/])', name)

    def test_same_sources_give_the_same_bytes_wherever_they_lie(self):
        with tempfile.TemporaryDirectory(prefix='another place ') as other:
            sources = pathlib.Path(other) / 'help'
            shutil.copytree(ROOT / 'help', sources)
            again = pathlib.Path(other) / 'again.chm'
            made = make_help(again, sources, HOME=other, USER='somebody', TZ='Asia/Tokyo')
            self.assertEqual(made.returncode, 0, made.stdout)
            self.assertEqual(again.read_bytes(), self.file.read_bytes())
            self.assertEqual(sorted(path.name for path in sources.iterdir()),
                             sorted(path.name for path in (ROOT / 'help').iterdir() if path.name != '__pycache__'))


class Faults(unittest.TestCase):
    """A fault is reported in one line that names the file, and the old help file stays."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.work = pathlib.Path(folder.name)
        self.sources = self.work / 'help'
        shutil.copytree(ROOT / 'help', self.sources)
        self.output = self.work / 'out' / HELP_FILE
        self.output.parent.mkdir()
        self.output.write_bytes(b'former')

    def change(self, name, former, latter):
        path = self.sources / name
        text = path.read_text(encoding='ascii')
        self.assertIn(former, text)
        path.write_text(text.replace(former, latter), encoding='utf-8')

    def expect(self, *texts):
        made = make_help(self.output, self.sources)
        self.assertEqual(made.returncode, 1, made.stdout)
        self.assertEqual(len(made.stdout.splitlines()), 1, made.stdout)
        for text in texts:
            self.assertIn(text, made.stdout)
        self.assertEqual([path.name for path in self.output.parent.iterdir()], [HELP_FILE])
        self.assertEqual(self.output.read_bytes(), b'former')

    def test_link_to_no_topic(self):
        self.change('topics/1310-welcome.md', '(keyboard.md)', '(keys.md)')
        self.expect('1310-welcome', 'keys.md')

    def test_topic_without_a_source(self):
        (self.sources / 'topics/1350-files.md').unlink()
        self.expect('1350-files.md')

    def test_topic_beyond_ascii(self):
        self.change('topics/keyboard.md', '# Keys', '# K\u00e9ys')
        self.expect('keyboard.md', 'ASCII')

    def test_topic_without_index_words(self):
        self.change('topics/keyboard.md', '<!-- index:', '<!--')
        self.expect('keyboard.md', 'index')

    def test_number_without_a_page(self):
        self.change('corvane_help.hhp', 'IDH_DISK=1320-disk.htm\n', '')
        self.expect('IDH_DISK')

    def test_number_of_a_page_that_is_not_in_the_file(self):
        self.change('corvane_help.hhp', 'IDH_DISK=1320-disk.htm', 'IDH_DISK=1321-disk.htm')
        self.expect('1321-disk.htm')


class UserGuide(unittest.TestCase):
    """The guide shows the topics to readers without a help viewer."""

    def test_it_leads_to_every_topic_and_to_files_that_exist(self):
        guide = ROOT / 'docs/user-guide.md'
        targets = re.findall(r'\]\(([^)#:]+)\)', guide.read_text(encoding='ascii'))
        for target in targets:
            self.assertTrue((guide.parent / target).exists(), target)
        topics = {f'../help/topics/{path.name}' for path in (ROOT / 'help/topics').iterdir()}
        self.assertEqual(topics - set(targets), set())


if __name__ == '__main__':
    unittest.main()
