#!/usr/bin/env python3
"""Refuses comments whose last line is a single word, and those that tear a statement apart: .clang-format cannot.

    check_comments.py <the repository>
"""
import pathlib
import sys

import architecture
import comments

FOLDERS = ('src', 'tests', 'bench')


def check(root):
    found = []
    for folder in FOLDERS:
        for path in architecture.sources(root / folder):
            for line, complaint in comments.complaints(path.read_text().splitlines()):
                found.append(f'{path.relative_to(root)}:{line}: {complaint}')
    return found


if __name__ == '__main__':
    found = check(pathlib.Path(sys.argv[1]))
    for line in found:
        print(line, file=sys.stderr)
    sys.exit(1 if found else 0)
