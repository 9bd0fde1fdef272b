"""A small repository of made-up modules, for the tests of the checkers."""
import pathlib
import tempfile
import unittest

from architecture import Architecture, Module, Target


class SourceTreeTest(unittest.TestCase):
    """A core of three layers, a backend, a room of Qt, and what CMake declares about them."""

    MODULES = (
        Module('foundation', 'foundation', (), (), ('PkgConfig::PLIST',)),
        Module('model', 'model', ('foundation',)),
        Module('app', 'app', ('model', 'foundation')),
        Module('backend_linux', 'backends/linux', ('foundation',), (), ('PkgConfig::GIO',)),
        Module('backend_x11', 'backends/x11', ('foundation',), ('PkgConfig::XCB',)),
        Module('backend_qt_canvas', 'backends/qt/canvas', ('foundation',), ('orbel_qt',)),
    )

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for module in self.MODULES:
            self.write(f'src/{module.folder}/README.md', '# a folder\n')
            self.write(f'src/{module.folder}/Thing.h', '#pragma once\n')
        self.plan = Architecture(self.MODULES)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def declare_module(self, *fields):
        self.plan.modules[fields[0]] = Module(*fields)

    def declare_target(self, name, sources, libraries):
        self.plan.targets[name] = Target(name, tuple(sources), tuple(libraries))

    def assert_refused(self, complaints, *parts):
        """There is exactly one complaint, and it says all of this."""
        self.assertEqual(len(complaints), 1, complaints)
        for part in parts:
            self.assertIn(part, complaints[0])
