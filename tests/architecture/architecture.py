"""What CMake has declared (cmake/Architecture.cmake writes it down), and what a source includes."""
import dataclasses
import pathlib
import re

INCLUDE = re.compile(r'^\s*#\s*(include\w*|import)\b\s*(.*)$')
PLAIN_INCLUDE = re.compile(r'^(?:"([^"]+)"|<([^>]+)>)\s*(?://.*)?$')
SOURCE_SUFFIXES = ('.h', '.cpp')


@dataclasses.dataclass(frozen=True)
class Module:
    """A folder of src: a library, or a program."""
    name: str
    folder: str
    depends: tuple
    libraries: tuple = ()
    private_libraries: tuple = ()


@dataclasses.dataclass(frozen=True)
class Target:
    """A target of the tests or benchmarks; its sources are paths below the repository's root."""
    name: str
    sources: tuple
    libraries: tuple


@dataclasses.dataclass(frozen=True)
class Include:
    line: int
    path: str       # empty when it is no plain include
    is_quoted: bool
    text: str


class Architecture:
    def __init__(self, modules, targets=(), is_complete=True):
        self.modules = {module.name: module for module in modules}
        self.targets = {target.name: target for target in targets}
        self.is_complete = is_complete

    @staticmethod
    def read(path):
        modules, targets, is_complete = [], [], True
        for line in pathlib.Path(path).read_text().splitlines():
            kind, *fields = line.split('\t')
            lists = [tuple(entry for entry in field.split(';') if entry) for field in fields]
            if kind == 'complete':
                is_complete = fields[0] == 'ON'
            elif kind == 'module':
                modules.append(Module(fields[0], fields[1], *lists[2:]))
            elif kind == 'target':
                targets.append(Target(fields[0], *lists[1:]))
            else:
                raise ValueError(f'{path}: an unknown line: {line}')
        if not modules:
            raise ValueError(f'{path}: no module is declared')
        return Architecture(modules, targets, is_complete)

    def module_of(self, path):
        """The module whose folder holds the file itself (a path below src), not a folder inside it."""
        folder = str(pathlib.PurePosixPath(path).parent)
        return next((module for module in self.modules.values() if module.folder == folder), None)

    def modules_linked_by(self, target):
        """The names of the modules that a target of the tests gets, directly or through what it links."""
        found, seen, waiting = set(), set(), list(target.libraries)
        while waiting:
            library = waiting.pop()
            if library in seen:
                continue
            seen.add(library)
            module = self.modules.get(library.removeprefix('orbel_'))
            if module:
                found.add(module.name)
                waiting += [f'orbel_{name}' for name in module.depends]
            elif library in self.targets:
                waiting += self.targets[library].libraries
        return found


def includes(path):
    """Every include of a file, in order; one that is not plain has an empty path."""
    found = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        plain = PLAIN_INCLUDE.match(match.group(2)) if match.group(1) == 'include' else None
        quoted, angled = plain.groups() if plain else (None, None)
        found.append(Include(number, quoted or angled or '', quoted is not None, match.group(2)))
    return found


def sources(folder):
    return sorted(path for path in folder.rglob('*') if path.suffix in SOURCE_SUFFIXES and path.is_file())
