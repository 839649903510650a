#!/usr/bin/env python3
"""Builds the guide and reads it as a page: it needs no other file, every link leads somewhere, and it contains all pages
that the users' part of docs/README.md names. guide_test.py [-v]"""

import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from help_test import Page, ROOT


def make_guide(output, sources=ROOT):
    return subprocess.run([sources / 'help' / 'guide.py', output], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False)


class Guide(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        file = pathlib.Path(cls.folder.name) / 'guide.html'
        made = make_guide(file)
        if made.returncode != 0:
            raise RuntimeError(f'guide.py failed: {made.stdout}')
        cls.text = file.read_text(encoding='utf-8')
        cls.page = Page(cls.text)
        cls.sections = re.findall(r'<section id="([^"]+)">', cls.text)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_is_well_formed(self):
        self.assertEqual(self.page.misnested, [])
        self.assertEqual(self.page.open, [])
        self.assertNotIn('raw HTML omitted', self.text)

    def test_every_link_leads_to_a_page_of_the_guide(self):
        outside = [link for link in self.page.links if link.removeprefix('#') not in self.sections]
        self.assertEqual(outside, [])
        self.assertEqual(len(self.sections), len(set(self.sections)))

    def test_every_picture_is_inside(self):
        shown = re.findall(r'!\[', (ROOT / 'docs' / 'user-guide.md').read_text(encoding='utf-8'))
        self.assertEqual(len(self.page.pictures), len(shown))
        for picture in self.page.pictures:
            self.assertTrue(picture.startswith('data:image/png;base64,iVBOR'), picture[:40])

    def test_holds_every_page_for_users_and_none_for_others(self):
        users, _, others = (ROOT / 'docs' / 'README.md').read_text(encoding='utf-8').partition('I want to change')
        pages = r'\]\((?:[^)]*/)?([^)/]+)\.md\)'
        for page in re.findall(pages, users):
            self.assertIn(page, self.sections)
        for page in re.findall(pages, others):
            self.assertNotIn(page, self.sections)

    def test_holds_every_help_topic(self):
        for topic in (ROOT / 'help' / 'topics').glob('*.md'):
            self.assertIn(topic.stem, self.sections)

    def test_same_sources_make_the_same_bytes(self):
        again = pathlib.Path(self.folder.name) / 'again.html'
        self.assertEqual(make_guide(again).returncode, 0)
        self.assertEqual(again.read_text(encoding='utf-8'), self.text)


class FaultySources(unittest.TestCase):
    def refusal(self, change):
        """What guide.py prints for sources that `change` has changed."""
        with tempfile.TemporaryDirectory() as folder:
            sources = pathlib.Path(folder)
            for part in ('docs', 'help'):
                shutil.copytree(ROOT / part, sources / part)
            change(sources)
            made = make_guide(sources / 'guide.html', sources)
            self.assertEqual(made.returncode, 1)
            self.assertFalse((sources / 'guide.html').exists())
            self.assertEqual(made.stdout.count('\n'), 1)
            return made.stdout

    def test_missing_page_is_named(self):
        self.assertIn('plugins.md', self.refusal(lambda sources: (sources / 'docs' / 'plugins.md').unlink()))

    def test_missing_picture_is_named(self):
        picture = 'wizard-1-disk.png'
        self.assertIn(picture, self.refusal(lambda sources: (sources / 'docs' / 'pictures' / picture).unlink()))

    def test_link_that_leads_nowhere_is_named(self):
        def add_link(sources):
            with (sources / 'docs' / 'drivers.md').open('a', encoding='utf-8') as page:
                page.write('\n[nothing](nosuch.md)\n')

        self.assertIn('nosuch.md', self.refusal(add_link))

    def test_start_page_without_its_end_for_users_is_refused(self):
        def cut(sources):
            start = sources / 'docs' / 'README.md'
            start.write_text(start.read_text(encoding='utf-8').replace('## I want to change', '## To change'))

        self.assertIn('README.md', self.refusal(cut))


if __name__ == '__main__':
    unittest.main()
