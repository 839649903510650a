#!/usr/bin/env python3
"""Checks the workflow of continuous integration: it is YAML, has limited rights and time, and runs what the README names."""

import re
import unittest
from pathlib import Path

import yaml

ROOT = Path(__file__).resolve().parents[2]


class Workflow(unittest.TestCase):
    def setUp(self):
        self.workflow = yaml.safe_load((ROOT / '.github/workflows/ci.yml').read_text(encoding='utf-8'))
        self.jobs = self.workflow['jobs']

    def commands(self):
        return '\n'.join(step.get('run', '') for job in self.jobs.values() for step in job['steps'])

    def test_every_job_ends_in_time(self):
        for name, job in self.jobs.items():
            self.assertGreater(job['timeout-minutes'], 0, name)

    def test_it_may_only_read(self):
        self.assertEqual(self.workflow['permissions'], {'contents': 'read'})
        for job in self.jobs.values():
            self.assertNotIn('permissions', job)

    def test_actions_are_pinned_to_a_major_version(self):
        uses = [step['uses'] for job in self.jobs.values() for step in job['steps'] if 'uses' in step]
        self.assertTrue(uses)
        for action in uses:
            self.assertRegex(action, r'^actions/[a-z-]+@v[0-9]+$')

    def test_it_runs_what_the_readme_names_and_what_lies_here(self):
        readme = (ROOT / 'README.md').read_text(encoding='utf-8')
        section = readme.split('## As a developer, in a minute')[1].split('\n## ')[0]
        named = re.findall(r'^    (\./scripts/\S+)', section, re.MULTILINE)
        self.assertEqual(len(named), 2)
        run = re.findall(r'^\./scripts/\S+', self.commands(), re.MULTILINE)
        self.assertEqual(run[:2], named)
        for script in run:
            self.assertTrue((ROOT / script).is_file(), script)


if __name__ == '__main__':
    unittest.main()
