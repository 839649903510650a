#!/usr/bin/env python3
"""Builds the guide that ships, one page that every browser shows: guide.py OUTPUT.html

It begins with the users' part of docs/README.md. The pages that this part links to follow, each with the help topics
that it links to, and all pictures are inside. A link to a page that is not for users becomes plain text. The same
sources give the same bytes.
"""

import base64
import pathlib
import re
import sys

# The folder of the sources stays as it is.
sys.dont_write_bytecode = True
from markdown import Fault, to_html, write_complete

HERE = pathlib.Path(__file__).resolve().parent
START = HERE.parent / 'docs' / 'README.md'
NOT_FOR_USERS = '## I want to change the program'

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>The Veltrane: the guide</title>
<style>
{style}section {{ max-width: 60em; }}
section + section {{ margin-top: 48px; }}
img {{ max-width: 100%; }}
pre {{ padding: 8px 10px; overflow: auto; background-color: #f3f6fa; }}
</style>
</head>
<body>
{body}</body>
</html>
"""


def read(page):
    try:
        text = page.read_text(encoding='utf-8')
    except FileNotFoundError as error:
        raise Fault(f'{page}: a page of the guide links to it, but there is no such file') from error
    if page == START:
        text, found, _ = text.partition(NOT_FOR_USERS)
        if not found:
            raise Fault(f'{page}: the heading "{NOT_FOR_USERS}" is missing, before which the users\' part ends')
    # Comments are for those who write the pages.
    return re.sub(r'<!--.*?-->\n?', '', text, flags=re.DOTALL)


def linked_pages(page, text):
    """The Markdown files that a page links to, in order."""
    return [(page.parent / target).resolve() for target in re.findall(r'\]\(([^):#]+\.md)\)', text)]


def collect():
    """The text of each page of the guide, in order."""
    texts = {START: read(START)}
    for page in linked_pages(START, texts[START]):
        texts.setdefault(page, read(page))
        for topic in linked_pages(page, texts[page]):
            if topic.parent == HERE / 'topics':
                texts.setdefault(topic, read(topic))
    return texts


def section(page, texts):
    """A page as a section whose links and pictures need no other file."""

    def follow(link):
        target = (page.parent / link.group(1)).resolve()
        if target in texts:
            return f'<a href="#{target.stem}">{link.group(2)}</a>'
        if not target.exists():
            raise Fault(f'{page}: the link to {link.group(1)} leads nowhere')
        return link.group(2)

    def embed(picture):
        data = base64.b64encode((page.parent / picture.group(1)).read_bytes()).decode('ascii')
        return f'src="data:image/png;base64,{data}"'

    body = to_html(texts[page])
    # A link to a part of another page leads to that page.
    body = re.sub(r'<a href="([^":#]+)(?:#[^"]*)?">(.*?)</a>', follow, body, flags=re.DOTALL)
    body = re.sub(r'src="([^":]+\.png)"', embed, body)
    return f'<section id="{page.stem}">\n{body}</section>\n'


def make_guide():
    texts = collect()
    stems = [page.stem for page in texts]
    if len(set(stems)) < len(stems):
        raise Fault('two pages of the guide have the same name')
    style = (HERE / 'help.css').read_text(encoding='ascii')
    return PAGE.format(style=style, body=''.join(section(page, texts) for page in texts))


def main():
    if len(sys.argv) != 2:
        print('usage: guide.py OUTPUT.html', file=sys.stderr)
        return 2
    try:
        write_complete(pathlib.Path(sys.argv[1]), make_guide().encode('utf-8'))
    except (Fault, OSError) as error:
        print(f'guide.py: {error}', file=sys.stderr)
        return 1
    return 0


sys.exit(main())
