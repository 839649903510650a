#!/usr/bin/env python3
"""Runs clang-tidy over the sources: the companions as the native build compiles them, the program with the headers of the
Windows toolchain, programs for DOS without a library. It also checks that each source includes everything it needs itself.
`tidy.py FILE...` checks just these files.

clang-tidy spends nearly all of its time on the headers of the library. So the files of a folder are passed to it as one
text, and its findings are mapped back to their lines. If two of them use one name for two things, they cannot be one text;
then each half of them is tried.
"""

import bisect
import collections
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ['floppy/*.cpp', 'src/*.cpp', 'console/*.cpp', 'tools/*.cpp', 'realmode/*.cpp']
GCC = '/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++'
NATIVE = ['-std=c++20', '-I.']
WINDOWS = ['--target=x86_64-w64-windows-gnu', '-nostdinc++', '-isystem', GCC, '-isystem', GCC + '/x86_64-w64-mingw32',
           '-isystem', GCC + '/backward', '-isystem', '/usr/x86_64-w64-mingw32/include',
           '-DWINVER=0x0601', '-D_WIN32_WINNT=0x0601', '-DNOMINMAX', '-DWIN32_LEAN_AND_MEAN']
# Programs for DOS, whose parts for any machine are compiled natively.
DOS = ['-std=c++20', '-m16', '-march=i386', '-ffreestanding', '-fno-exceptions', '-fno-rtti', '-DUNPACK_FOR_DOS', '-I.']


def list_sources():
    # The user who runs the check need not be the owner of the files.
    result = subprocess.run(['git', '-c', f'safe.directory={ROOT}', 'ls-files', '-z', '--cached', '--others',
                             '--exclude-standard', '--', *SOURCES], cwd=ROOT, stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0:
        sys.exit(f'tidy.py: git cannot list the files of {ROOT}')
    if not result.stdout:
        sys.exit('tidy.py: there is no file to check: ' + ' '.join(SOURCES))
    return result.stdout.removesuffix('\0').split('\0')


def is_for_windows(file):
    return file.startswith(('src/', 'console/')) or file.endswith('_win.cpp')


def is_for_dos(file):
    return file.startswith('realmode/') and '/dos/' in file


def flags_for(file):
    if is_for_dos(file):
        return DOS
    return NATIVE + (WINDOWS if is_for_windows(file) else [])


def run(command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=False)


def compile_problems(path, flags):
    """The compiler's errors for the file; "" if there are none."""
    result = run(['clang++', '-fsyntax-only', '-w', *flags, str(path)])
    return result.stderr if result.returncode != 0 else ''


def tidy(files, folder, number):
    """Returns the findings in `files`, which are compiled with the same flags. Texts in `folder` are named after `number`."""
    flags = flags_for(files[0])
    text = folder / f'{number}.cpp'
    starts = []
    lines = []
    for file in files:
        starts.append(len(lines))
        lines += (ROOT / file).read_text(encoding='utf-8').splitlines(keepends=True)
    text.write_text(''.join(lines), encoding='utf-8')
    if len(files) > 1 and compile_problems(text, flags):
        half = len(files) // 2
        return tidy(files[:half], folder, number + 'a') + tidy(files[half:], folder, number + 'b')
    result = run(['clang-tidy', '--quiet', '--config-file=.clang-tidy', str(text), '--', *flags])
    if result.returncode == 0:
        return ''

    def place(found):
        line = int(found[1]) - 1
        file = bisect.bisect_right(starts, line) - 1
        return f'{files[file]}:{line - starts[file] + 1}:'
    findings = re.sub(re.escape(str(text)) + r':(\d+):', place, result.stdout)
    return findings or f'clang-tidy ended with {result.returncode} at {", ".join(files)}:\n{result.stderr}'


def main():
    files = sys.argv[1:] or list_sources()
    groups = collections.defaultdict(list)
    for file in files:
        groups[os.path.dirname(file), is_for_windows(file)].append(file)
    failed = False
    with tempfile.TemporaryDirectory() as folder, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        tasks = [pool.submit(tidy, group, pathlib.Path(folder), str(number))
                 for number, group in enumerate(sorted(groups.values(), key=len, reverse=True))]
        tasks += [pool.submit(compile_problems, file, flags_for(file)) for file in files]
        for task in concurrent.futures.as_completed(tasks):
            if task.result():
                failed = True
                print(task.result(), end='', flush=True)
    sys.exit(1 if failed else 0)


if __name__ == '__main__':
    main()
