#!/usr/bin/env python3
"""Tries the commands that the documents name: commands_test.py PRESET.

Every script that a document of the project names exists and is executable, and every command that runs tests of PRESET by
name matches at least one. ctest lists the tests; it does not run them here.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPT = re.compile(r'(?<![\w/.-])(?:\./)?((?:scripts|resources|help|tests|bench|demo)/[\w./-]+\.(?:sh|py))')
RUN = re.compile(r'(?:run-tests\.sh|ctest --preset) ([\w-]+)(?: -\S+)*? -R (\S+?)[`\'"]?(?:\s|$)')


def tests_found(preset, name):
    with tempfile.TemporaryDirectory() as folder:
        # In the preset's folder ctest would overwrite the log of the run that this test belongs to.
        (pathlib.Path(folder) / 'CTestTestfile.cmake').write_text(f'subdirs("{ROOT}/build/{preset}")\n', encoding='utf-8')
        listed = subprocess.run(['ctest', '--test-dir', folder, '-N', '-R', name], check=True, text=True,
                                capture_output=True).stdout
    return int(re.search(r'^Total Tests: (\d+)$', listed, re.MULTILINE)[1])


def main():
    if len(sys.argv) != 2:
        sys.exit('usage: commands_test.py PRESET')
    # The user who runs the test need not be the owner of the files.
    pages = subprocess.run(['git', '-c', f'safe.directory={ROOT}', 'ls-files', '-z', '*.md'], cwd=ROOT, check=True,
                           text=True, stdout=subprocess.PIPE).stdout.removesuffix('\0').split('\0')
    failures = []
    scripts = set()
    runs = set()
    for page in pages:
        text = (ROOT / page).read_text(encoding='utf-8')
        for script in SCRIPT.findall(text):
            scripts.add(script)
            file = ROOT / script
            if not file.is_file():
                failures.append(f'{page}: {script} does not exist')
            elif file.read_bytes().startswith(b'#!') and not os.access(file, os.X_OK):
                failures.append(f'{page}: {script} is not executable')
        runs |= {(page, *run) for run in RUN.findall(text)}
    for page, preset, name in sorted(runs):
        if preset == sys.argv[1] and tests_found(preset, name) == 0:
            failures.append(f'{page}: no test of {preset} has {name} in its name')
    if len(scripts) < 10 or not any(run[1] == sys.argv[1] for run in runs):
        failures.append(f'the documents name only {len(scripts)} scripts and the runs {sorted(runs)}')
    if failures:
        sys.exit('\n'.join(failures))
    print(f'{len(scripts)} scripts and {len(runs)} runs of single tests')


if __name__ == '__main__':
    main()
