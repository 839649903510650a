#!/usr/bin/env python3
"""Builds the help file: build.py OUTPUT.chm

Reads the project corvane_help.hhp beside this script, turns the topics it names into pages, writes the contents
and the index, and has chmcmd (package fp-utils) compile them. cmark-gfm turns Markdown into HTML. The same
sources give the same bytes.
"""

import html
import pathlib
import re
import shutil
import sys
import tempfile

# The folder of the sources stays as it is.
sys.dont_write_bytecode = True
import contextmap
from markdown import Fault, run, to_html, write_complete

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE / 'corvane_help.hhp'

PAGE = """<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01//EN" "http://www.w3.org/TR/html4/strict.dtd">
<html>
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="help.css">
</head>
<body>
{body}</body>
</html>
"""

SITEMAP = """<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">
<html>
<head></head>
<body>
<ul>
{entries}</ul>
</body>
</html>
"""


class Topic:
    """One topic: its page's name, its title, its index words and its Markdown."""

    def __init__(self, page):
        self.page = page
        source = (HERE / 'topics' / page).with_suffix('.md')
        try:
            self.text = source.read_text(encoding='ascii')
        except FileNotFoundError as error:
            raise Fault(f'{source}: the project names this topic, but there is no such file') from error
        except UnicodeDecodeError as error:
            raise Fault(f'{source}: only ASCII characters look the same in every viewer') from error
        words = re.match(r'<!-- index: (.+) -->\n', self.text)
        title = re.search(r'^# (.+)$', self.text, re.MULTILINE)
        if not words or not title:
            raise Fault(f'{source}: a topic begins with a line "<!-- index: words -->" and a title "# ..."')
        self.words = [word.strip() for word in words.group(1).split(';')]
        self.text = self.text[words.end():]
        self.title = title.group(1)

    def to_html(self, pages):
        """The page; its links lead to `pages`."""
        body = to_html(self.text)

        def follow(link):
            target = link.group(1) + '.htm'
            if target not in pages:
                raise Fault(f'{self.page}: the link to {link.group(1)}.md leads to no topic of the project')
            return f'href="{target}"'

        return PAGE.format(title=html.escape(self.title), body=re.sub(r'href="([^":/]+)\.md"', follow, body))


def read_project():
    """The sections of the project, each a list of its lines."""
    sections = {}
    lines = None
    for line in PROJECT.read_text(encoding='ascii').splitlines():
        header = re.fullmatch(r'\[(\w+)\]', line)
        if header:
            lines = sections.setdefault(header.group(1), [])
        elif line and not line.startswith(';') and lines is not None:
            lines.append(line)
    return sections


def context_numbers(sections):
    """The page of each topic number."""
    pages = dict(line.split('=', 1) for line in sections['ALIAS'])
    numbers = {}
    for line in sections['MAP']:
        _, name, number = line.split()
        if name not in pages:
            raise Fault(f'{PROJECT}: {name} has a number but no page')
        numbers[int(number)] = pages[name]
    return numbers


def entry(name, pages):
    """An entry of the contents or the index; `pages` are pairs of a title and a page."""
    parameters = [('Name', name)]
    for title, page in pages:
        if len(pages) > 1:
            parameters.append(('Name', title))
        parameters.append(('Local', page))
    lines = ''.join(f'<param name="{key}" value="{html.escape(value)}">\n' for key, value in parameters)
    return f'<li><object type="text/sitemap">\n{lines}</object>\n'


def contents(topics):
    return SITEMAP.format(entries=''.join(entry(topic.title, [(topic.title, topic.page)]) for topic in topics))


def index(topics):
    words = {}
    for topic in topics:
        for word in topic.words:
            words.setdefault(word, []).append((topic.title, topic.page))
    return SITEMAP.format(entries=''.join(entry(word, words[word]) for word in sorted(words, key=str.lower)))


def compile_help(work):
    """Builds corvane_help.chm in the folder `work` and returns its bytes."""
    sections = read_project()
    files = sections['FILES']
    topics = [Topic(name) for name in files if name.endswith('.htm')]
    for topic in topics:
        (work / topic.page).write_text(topic.to_html(files), encoding='ascii')
    for name in files:
        if not name.endswith('.htm'):
            shutil.copyfile(HERE / name, work / name)
    (work / 'corvane_help.hhc').write_text(contents(topics), encoding='ascii')
    (work / 'corvane_help.hhk').write_text(index(topics), encoding='ascii')

    numbers = context_numbers(sections)
    for page in numbers.values():
        if page not in files:
            raise Fault(f'{PROJECT}: {page} has a number but is not among the files')
    # The compiler does not get the map from numbers to pages: it would write the pages with the full path of this
    # folder, where no viewer finds them. The map is added to the finished file.
    kept = [name for name in sections if name not in ('ALIAS', 'MAP')]
    text = ''.join(f'[{name}]\n' + ''.join(line + '\n' for line in sections[name]) + '\n' for name in kept)
    (work / PROJECT.name).write_text(text, encoding='ascii')
    told = run('chmcmd', PROJECT.name, cwd=work)
    finished = work / 'corvane_help.chm'
    if not finished.exists():
        raise Fault(f'{PROJECT}: chmcmd created no help file: {told.strip()}')
    run('chmls', 'extract', finished.name, '/#STRINGS', 'strings', cwd=work)
    return contextmap.finish(finished.read_bytes(), (work / 'strings').read_bytes(), numbers)


def main():
    if len(sys.argv) != 2:
        print('usage: build.py OUTPUT.chm', file=sys.stderr)
        return 2
    output = pathlib.Path(sys.argv[1])
    try:
        with tempfile.TemporaryDirectory() as work:
            data = compile_help(pathlib.Path(work))
        write_complete(output, data)
    except (Fault, contextmap.Unreadable, OSError) as error:
        print(f'build.py: {error}', file=sys.stderr)
        return 1
    return 0


sys.exit(main())
