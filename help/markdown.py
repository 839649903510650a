"""Turns Markdown into HTML with cmark-gfm, for the help file and for the guide."""

import os
import subprocess


class Fault(Exception):
    """What is wrong, in one line that names the file."""


def run(*command, **options):
    """Returns what a command prints."""
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False, **options)
    except FileNotFoundError as error:
        raise Fault(f'{command[0]} is not installed; scripts/setup.sh installs it') from error
    if done.returncode != 0:
        raise Fault(f'{command[0]} failed: {done.stdout.strip()}')
    return done.stdout


def to_html(text):
    """The HTML of a Markdown text."""
    return run('cmark-gfm', '-e', 'table', '--to', 'html', input=text)


def write_complete(output, data):
    """Replaces the file `output` by `data` when it is complete."""
    unfinished = output.with_name(output.name + '.unfinished~')
    unfinished.write_bytes(data)
    os.replace(unfinished, output)
