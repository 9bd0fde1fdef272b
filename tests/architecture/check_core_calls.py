#!/usr/bin/env python3
"""Looks for reads of the time or the environment in the core, which asks the platform for both.

    check_core_calls.py <architecture.txt of the build tree> <the repository>
"""
import pathlib
import re
import sys

import architecture
from check_includes import is_core

CALLS = re.compile(r'\b(getenv|setenv|std::system|std::chrono|clock_gettime|gettimeofday|std::this_thread'
                   r'|std::f?open)\b')


def check(plan, root):
    complaints = []
    for module in filter(is_core, plan.modules.values()):
        for path in architecture.sources(root / 'src' / module.folder):
            for number, line in enumerate(path.read_text().splitlines(), 1):
                if CALLS.search(line):
                    complaints.append(f'{path.relative_to(root)}:{number}: {line.strip()}: that belongs into a backend')
    return complaints


if __name__ == '__main__':
    found = check(architecture.Architecture.read(sys.argv[1]), pathlib.Path(sys.argv[2]))
    for line in found:
        print(line, file=sys.stderr)
    sys.exit(1 if found else 0)
