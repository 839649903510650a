#!/usr/bin/env python3
"""Carries out the guides of docs/ and expects the results that they promise: guides.py APP DOSFILES.

The test copies APP and adds the DOS files, here their stand-ins. A comment before a block of a guide says what the block is:

    <!-- file: PATH -->    what the reader writes into the file PATH
    <!-- keys: PATH -->    sections and keys that the reader changes or adds in the INI file PATH
    <!-- disk: IMAGE -->   some of the files on IMAGE
    <!-- lines: PATH -->   some of the lines of the file PATH

A block without a comment whose lines begin with a prompt, "C:\\Veltrane> ", is typed at that prompt. C:\\Veltrane is the copy.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
# In this order, as a reader would continue with the same folder.
GUIDES = ['your-own-files.md', 'disk-configuration.md', 'modules.md', 'disk-catalogue.md', 'drivers.md', 'network.md',
          'plugins.md', 'setup-modules.md', 'free-dos.md']
# What the guides assume that the reader has.
OWN_FILES = ['C:\\work\\E1000.DOS', 'C:\\pkt\\PCNTPK.COM', 'files\\tcpip\\TCP\\FTP.EXE', 'dos\\KEYB.COM',
             'dos\\KEYBOARD.SYS', 'C:\\freedos\\KERNEL.SYS', 'C:\\freedos\\COMMAND.COM', 'C:\\freedos\\bin\\HIMEMX.EXE']
# The guides have at least this many blocks of each kind, so that a misspelt mark is noticed.
FEWEST = {'file': 14, 'keys': 4, 'disk': 10, 'lines': 2, 'typed': 16}
BLOCK = re.compile(r'(?:^<!-- (\w+): ([^\n]*) -->\n)?^```(?:\w*)\n(.*?)^```$', re.MULTILINE | re.DOTALL)
PROMPT = re.compile(r'(C:[^>]*)> (.*)')
IMAGE_BYTES = 1474560
TIMEOUT_SECONDS = 200


def fail(text):
    sys.exit(f'FAILED: {text}')


class Machine:
    """The reader's drive C:, as far as the guides use it."""

    def __init__(self, folder):
        self.drive = folder
        self.application = folder / 'Veltrane'

    def path(self, name):
        """Where the guide's path is here; one without a drive is in the program's folder."""
        parts = name.removeprefix('C:\\') if name.startswith('C:') else 'Veltrane\\' + name
        return self.drive.joinpath(*parts.split('\\'))

    def write(self, name, text):
        file = self.path(name)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text.replace('\n', '\r\n'), encoding='ascii', newline='')

    def lines(self, name):
        return self.path(name).read_text(encoding='ascii').splitlines()

    def set_keys(self, name, block):
        lines = self.lines(name)
        section = None
        for line in block.splitlines():
            if line.startswith('['):
                section = line
                if section not in lines:
                    lines += ['', section]
            elif line:
                begin = lines.index(section) + 1
                end = next((i for i in range(begin, len(lines)) if lines[i].startswith('[')), len(lines))
                key = line.split('=')[0] + '='
                place = next((i for i in range(begin, end) if lines[i].startswith(key)), None)
                if place is None:
                    lines.insert(end, line)
                else:
                    lines[place] = line
        self.write(name, '\n'.join(lines) + '\n')

    def type(self, folder, command):
        """Types the command at the prompt of the folder. Drive C: has another name here."""
        drive = 'Z:' + str(self.drive).replace('/', '\\') + '\\'
        words = command.replace('C:\\', drive).split()
        program = self.application / (words[0].split('\\')[-1] + '.exe')
        run = [program, *words[1:]] if program.exists() else ['cmd', '/c', *words]
        with tempfile.TemporaryFile() as output:
            try:
                status = subprocess.run([ROOT / 'scripts/wine.sh', *run], cwd=self.path(folder),
                                        stdin=subprocess.DEVNULL, stdout=output, stderr=output, check=False,
                                        timeout=TIMEOUT_SECONDS).returncode
            except subprocess.TimeoutExpired:
                fail(f'{command}: does not end; perhaps there is a message on the screen')
            output.seek(0)
            if status != 0:
                fail(f'{command}: exit code {status}: {output.read().decode(errors="replace")}')

    def files_on(self, image):
        if self.path(image).stat().st_size != IMAGE_BYTES:
            fail(f'{image} has not {IMAGE_BYTES} bytes')
        listing = subprocess.run(['mdir', '-b', '-/', '-a', '-i', self.path(image), '::'], check=True, text=True,
                                 capture_output=True).stdout
        return {line.replace('::', 'A:').replace('/', '\\') for line in listing.splitlines()}


def take_block(machine, page, kind, name, text):
    """Carries out the block, or expects what it promises. Returns the kind of the block."""
    if kind == 'file':
        machine.write(name, text)
    elif kind == 'keys':
        machine.set_keys(name, text)
    elif kind in ('disk', 'lines'):
        there = machine.files_on(name) if kind == 'disk' else machine.lines(name)
        missing = [line for line in text.splitlines() if line not in there]
        if missing:
            fail(f'{page}: {name} has no {", ".join(missing)}')
    elif kind:
        fail(f'{page}: there is no such mark as "{kind}"')
    elif PROMPT.match(text):
        for line in text.splitlines():
            machine.type(*PROMPT.fullmatch(line).groups())
        return 'typed'
    return kind


def expect_members(cabinet, source):
    """Expects that the cabinet holds exactly the files of the folder."""
    listed = subprocess.run(['cabextract', '-l', '-q', cabinet], check=True, text=True, capture_output=True).stdout
    members = {line.split('|')[-1].strip().replace('\\', '/') for line in listed.splitlines() if '|' in line}
    if members - {'Name'} != {str(file.relative_to(source)) for file in source.rglob('*') if file.is_file()}:
        fail(f'{cabinet} holds other files than the folder: {listed}')


def check_other_promises(machine):
    """Checks what the text of the guides says."""
    for image, module in (('sysdisk', 'sysinfo'), ('network', 'tcpip')):
        cabinet = machine.drive / f'{module}.cab'
        subprocess.run(['mcopy', '-i', machine.path(f'C:\\out\\{image}.img'), f'::LIB/{module.upper()}.CAB', cabinet], check=True)
        expect_members(cabinet, machine.path(f'files\\{module}'))
    expect_members(machine.path('modules\\sysinfo.cab'), machine.path('files\\sysinfo'))
    if machine.path('out\\workshop.img').stat().st_size != IMAGE_BYTES:
        fail('the row of the catalogue does not decide where the image goes')
    network = machine.path('C:\\out\\network.img')
    for part in ('txt:NIC', 'pci:PCI'):
        member, extension = part.split(':')
        shown = subprocess.run(['mtype', '-i', network, f'::ETC/_MSNET.{extension}'], check=True, text=True,
                               capture_output=True).stdout.splitlines()
        wanted = machine.lines(f'C:\\work\\ndis.{member}')
        if not set(wanted) <= set(shown):
            fail(f'_MSNET.{extension} lacks the lines of the driver')
    made = machine.lines('plugins\\inform\\DOC\\DOSFILES.TXT')
    if 'IO.SYS' not in made:
        fail('the batch file of the plugin has not listed the folder dos')


def main():
    if len(sys.argv) != 3:
        sys.exit('usage: guides.py APP DOSFILES')
    with tempfile.TemporaryDirectory() as folder:
        machine = Machine(pathlib.Path(folder))
        shutil.copytree(sys.argv[1], machine.application)
        shutil.copytree(sys.argv[2], machine.application / 'dos')
        machine.path('C:\\work').mkdir()
        machine.path('modules').mkdir()
        for name in OWN_FILES:
            machine.write(name, 'Stands for a driver.\n')
        counts = dict.fromkeys(FEWEST, 0)
        for page in GUIDES:
            for block in BLOCK.finditer((ROOT / 'docs' / page).read_text(encoding='utf-8')):
                kind = take_block(machine, page, *block.groups())
                if kind:
                    counts[kind] += 1
        check_other_promises(machine)
        for kind, fewest in FEWEST.items():
            if counts[kind] < fewest:
                fail(f'the guides have only {counts[kind]} blocks of the kind "{kind}"')
        print('The guides contain:', ', '.join(f'{count} {kind}' for kind, count in counts.items()))


main()
