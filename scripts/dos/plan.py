"""What each disk has to show, read from a text such as disks.plan: see the start of that file for its words."""

import dataclasses

_WITH = {'with', 'needs', 'writes'}
_STEPS = {'at', 'see', 'choose', 'press', 'type', 'never'}
_WRITTEN = {'': 'hard disk', 'floppy': 'floppy'}


@dataclasses.dataclass
class Run:
    """What is done with a disk: one start, or several of which each finds what the one before has written."""

    title: str
    machine: dict = dataclasses.field(default_factory=dict)  # what the PC has besides, by its kind: 'cd', 'hard-disk' ...
    needs: list = dataclasses.field(default_factory=list)  # files that dos\ must hold
    writes: set = dataclasses.field(default_factory=set)  # what is changed: 'hard disk', 'floppy'
    starts: list = dataclasses.field(default_factory=lambda: [[]])  # for each start pairs of a word and its text


def read_plan(text):
    """The runs of each disk, by its name. ValueError with the number of the line for anything else."""
    disks, snippets, steps, run, name = {}, {}, None, None, None
    for number, line in enumerate(text.splitlines(), 1):
        word, _, rest = line.strip().partition(' ')
        rest = rest.strip()
        if not word or word.startswith('#'):
            continue
        if word == 'disk' and rest and rest not in disks:
            disks[rest] = []
            name, steps, run = rest, None, None
        elif word == 'steps' and rest and rest not in snippets:
            steps = snippets[rest] = []
            run = None
        elif word == 'run' and name and rest:
            run = Run(rest)
            steps = run.starts[0]
            disks[name].append(run)
        elif word == 'do' and steps is not None and rest in snippets and snippets[rest] is not steps:
            steps += snippets[rest]
        elif line.strip() == 'start again' and run is not None:
            steps = []
            run.starts.append(steps)
        elif word in _STEPS and steps is not None and rest:
            steps.append((word, rest))
        elif word in _WITH and run is not None and (word != 'writes' or rest in _WRITTEN):
            _describe(run, word, rest)
        else:
            raise ValueError(f'line {number}: {line.strip()}')
    return disks


def _describe(run, word, rest):
    if word == 'needs':
        run.needs += rest.split()
    elif word == 'writes':
        run.writes.add(_WRITTEN[rest])
    else:
        kind, _, value = rest.partition(' ')
        run.machine[kind] = value.strip()
