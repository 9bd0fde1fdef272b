#!/usr/bin/env python3
"""Compares every include of src and tests with the dependencies that CMake declares.

    check_includes.py <architecture.txt of the build tree> <the repository>

The compiler cannot: all of src is one include root, and the system's headers lie together in another.
"""
import pathlib
import re
import sys

import architecture

# The headers that come with each library, where more than the compiler decides about them. Which of Qt's libraries
# has which of its headers is left to the compiler: each has a folder of its own.
QT = r'Q[A-Z]\w*|Qt\w+(/\w+(\.h)?)?'
HEADERS_OF_LIBRARY = {
    'orbel_qt': QT,
    'Qt6::Core': QT,
    'Qt6::Gui': QT,
    'Qt6::Multimedia': QT,
    'PkgConfig::GIO': r'glib(-unix|-object)?\.h|gio/\w+\.h',
    'PkgConfig::XCB': r'xcb/\w+\.h',
    'PkgConfig::XKB': r'xkbcommon/[\w-]+\.h',
    'PkgConfig::EVDEV': r'libudev\.h|libevdev/\w+\.h',
    'PkgConfig::PLIST': r'plist/plist\.h',
}
# The one source of the core that uses a library, see docs/decisions/0001.
ONLY_SOURCE_WITH = {'PkgConfig::PLIST': 'foundation/PropertyListCoder.cpp'}

# What touches nothing outside the program.
PURE_STANDARD = set("""algorithm any array bit bitset cassert cctype cerrno charconv climits cmath compare concepts
    cstddef cstdint cstdio cstdlib cstring deque exception format forward_list functional initializer_list iterator
    limits list map memory new numbers numeric optional queue random ranges ratio set span sstream stack stdexcept
    string string_view system_error tuple type_traits typeindex typeinfo unordered_map unordered_set utility variant
    vector""".split())
STANDARD = PURE_STANDARD | set("""atomic chrono condition_variable csignal cstdarg ctime filesystem fstream future
    iomanip ios iosfwd iostream istream mutex ostream source_location stop_token thread""".split())
SYSTEM = re.compile(r'(unistd|fcntl|dirent|strings|sys/\w+|linux/[\w-]+)\.h')
# Everything else is the core, which knows the desktop through src/platform alone.
OUTSIDE_THE_CORE = ('backends/', 'programs/')

TEST_ROOTS = ('tests/', 'bench/')


def is_core(module):
    return not module.folder.startswith(OUTSIDE_THE_CORE)


def complaint_about_system_header(module, file, header):
    """Why this file of a module may not include a header that is none of ours; None where it may."""
    if header in (PURE_STANDARD if is_core(module) else STANDARD):
        return None
    if SYSTEM.fullmatch(header) and not is_core(module):
        return None
    libraries = module.libraries if file.suffix == '.h' else module.libraries + module.private_libraries
    for library in libraries:
        if re.fullmatch(HEADERS_OF_LIBRARY.get(library, '(?!)'), header):
            only = ONLY_SOURCE_WITH.get(library)
            return None if only in (None, str(file)) else f'only {only} may'
    return 'the core may not' if is_core(module) else f'no library that {module.name} declares has it'


def complaint_about_our_header(root, declared, header):
    """As above, for a quoted include of src; `declared` is who may be included, by name."""
    if not (root / 'src' / header).is_file() or '..' in pathlib.PurePosixPath(header).parts:
        return 'that is no path below src'
    return declared.complaint(header)


class Declared:
    """The modules that a file may include, and how to say that one is missing."""

    def __init__(self, plan, names, who):
        self.plan, self.names, self.who = plan, names, who

    def complaint(self, header):
        module = self.plan.module_of(header)
        if module is None:
            return 'that folder is no module'
        return None if module.name in self.names else f'{self.who} does not depend on {module.name}'


def check_module(plan, root, module):
    declared = Declared(plan, {module.name, *module.depends}, module.name)
    for path in architecture.sources(root / 'src' / module.folder):
        if path.parent != root / 'src' / module.folder:
            continue
        file = path.relative_to(root / 'src')
        for include in architecture.includes(path):
            if not include.path:
                complaint = 'that is no plain include'
            elif include.is_quoted:
                complaint = complaint_about_our_header(root, declared, include.path)
            else:
                complaint = complaint_about_system_header(module, file, include.path)
            if complaint:
                yield f'src/{file}:{include.line}: {include.text}: {complaint}'


def check_test_target(plan, root, target):
    """Looks at the target's sources and at every header of the tests that they reach."""
    declared = Declared(plan, plan.modules_linked_by(target), target.name)
    waiting = [source for source in target.sources if source.startswith(TEST_ROOTS)]
    seen = set()
    while waiting:
        file = waiting.pop()
        if file in seen:
            continue
        seen.add(file)
        for include in architecture.includes(root / file):
            complaint = None
            if not include.path:
                complaint = 'that is no plain include'
            elif not include.is_quoted:
                if (root / 'src' / include.path).is_file() or include.path.startswith(TEST_ROOTS):
                    complaint = 'our own headers are quoted'
            elif not include.path.startswith(TEST_ROOTS):
                complaint = complaint_about_our_header(root, declared, include.path)
            elif not (root / include.path).is_file() or '..' in pathlib.PurePosixPath(include.path).parts:
                complaint = 'that is no path below the repository'
            else:
                waiting.append(include.path)
            if complaint:
                yield f'{file}:{include.line}: {include.text}: {complaint}'


def check(plan, root):
    complaints = []
    for module in plan.modules.values():
        complaints += check_module(plan, root, module)
    for target in plan.targets.values():
        complaints += check_test_target(plan, root, target)
    return sorted(set(complaints))


if __name__ == '__main__':
    found = check(architecture.Architecture.read(sys.argv[1]), pathlib.Path(sys.argv[2]))
    for line in found:
        print(line, file=sys.stderr)
    sys.exit(1 if found else 0)
