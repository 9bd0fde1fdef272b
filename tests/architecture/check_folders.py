#!/usr/bin/env python3
"""Holds the folders of src to their form: each that has sources is one target, none lies inside another, and each has
a README of a few lines.

    check_folders.py <architecture.txt of the build tree> <the repository>
"""
import pathlib
import sys

import architecture

README_LINES = 15


def check(plan, root):
    complaints = []
    folders = {}
    for module in plan.modules.values():
        if module.folder in folders:
            complaints.append(f'src/{module.folder}: both {folders[module.folder]} and {module.name}')
        folders[module.folder] = module.name
    for inner in folders:
        for outer in pathlib.PurePosixPath(inner).parents:
            if str(outer) in folders:
                complaints.append(f'src/{inner}: lies inside src/{outer}, which is a target of its own')

    with_sources = {str(path.parent.relative_to(root / 'src')) for path in architecture.sources(root / 'src')}
    # Where only the core is configured, the rest is not declared.
    looked_at = with_sources | set(folders) if plan.is_complete else set(folders)
    for folder in sorted(looked_at):
        if folder not in folders:
            complaints.append(f'src/{folder}: has sources and is no target')
        elif folder not in with_sources:
            complaints.append(f'src/{folder}: is a target and has no sources')
        readme = root / 'src' / folder / 'README.md'
        if not readme.is_file():
            complaints.append(f'src/{folder}: has no README.md')
        elif (lines := len(readme.read_text().splitlines())) > README_LINES:
            complaints.append(f'src/{folder}/README.md: {lines} lines, more than {README_LINES}')
    return complaints


if __name__ == '__main__':
    found = check(architecture.Architecture.read(sys.argv[1]), pathlib.Path(sys.argv[2]))
    for line in found:
        print(line, file=sys.stderr)
    sys.exit(1 if found else 0)
