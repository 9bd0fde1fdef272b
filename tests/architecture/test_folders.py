"""What the checkers of folders and of the core's calls let pass, and what they refuse."""
import pathlib
import unittest

import architecture
import check_core_calls
import check_folders
from source_tree import SourceTreeTest


class Folders(SourceTreeTest):
    def check(self):
        return check_folders.check(self.plan, self.root)

    def test_one_target_and_one_readme_a_folder_pass(self):
        self.write('src/backends/qt/README.md', '# no target of its own\n')
        self.assertEqual(self.check(), [])

    def test_a_module_inside_another_is_refused(self):
        self.declare_module('app_settings', 'app/settings', ())
        self.write('src/app/settings/README.md', '# nested\n')
        self.write('src/app/settings/Store.h', '')
        self.assert_refused(self.check(), 'src/app/settings: lies inside src/app')

    def test_two_targets_of_one_folder_are_refused(self):
        self.declare_module('more', 'app', ())
        self.assert_refused(self.check(), 'src/app: both app and more')

    def test_sources_of_no_target_are_refused_where_all_is_declared(self):
        self.write('src/lost/README.md', '# lost\n')
        self.write('src/lost/Thing.h', '')
        self.assert_refused(self.check(), 'src/lost: has sources and is no target')
        self.plan.is_complete = False
        self.assertEqual(self.check(), [])

    def test_a_folder_without_sources_is_refused(self):
        self.write('src/empty/README.md', '# empty\n')
        self.declare_module('empty', 'empty', ())
        self.assert_refused(self.check(), 'src/empty: is a target and has no sources')

    def test_a_missing_and_a_long_readme_are_refused(self):
        (self.root / 'src/app/README.md').unlink()
        self.assert_refused(self.check(), 'src/app: has no README.md')
        self.write('src/app/README.md', '# app\n' * 16)
        self.assert_refused(self.check(), '16 lines, more than 15')


class CoreCalls(SourceTreeTest):
    def check(self):
        return check_core_calls.check(self.plan, self.root)

    def test_only_a_backend_reads_the_time_and_the_environment(self):
        self.write('src/backends/linux/Thing.cpp', 'getenv("HOME");\n')
        self.assertEqual(self.check(), [])
        for call in ('getenv("HOME")', 'std::chrono::steady_clock::now()', 'std::fopen("x", "r")'):
            with self.subTest(call):
                self.write('src/model/Thing.cpp', f'int a;\nauto b = {call};\n')
                self.assert_refused(self.check(), 'src/model/Thing.cpp:2', 'belongs into a backend')


class Record(SourceTreeTest):
    def test_what_cmake_wrote_is_read(self):
        self.write('architecture.txt', 'complete\tOFF\n'
                   'module\tfoundation\tfoundation\t\t\tPkgConfig::PLIST\n'
                   'module\tmodel\tmodel\tfoundation\t\t\n'
                   'target\ta_test\ttests/a.cpp;tests/b.cpp\torbel_model;GTest::gtest\n')
        plan = architecture.Architecture.read(self.root / 'architecture.txt')
        self.assertFalse(plan.is_complete)
        self.assertEqual(plan.modules['foundation'].private_libraries, ('PkgConfig::PLIST',))
        self.assertEqual(plan.modules['model'].depends, ('foundation',))
        self.assertEqual(plan.targets['a_test'].sources, ('tests/a.cpp', 'tests/b.cpp'))
        self.assertEqual(plan.modules_linked_by(plan.targets['a_test']), {'model', 'foundation'})
        self.assertEqual(plan.module_of('model/Thing.h').name, 'model')
        self.assertIsNone(plan.module_of('model/inner/Thing.h'))

    def test_a_record_without_modules_or_with_anything_else_is_an_error(self):
        for text in ('complete\tON\n', 'modul\ta\ta\t\t\t\n'):
            with self.subTest(text):
                self.write('architecture.txt', text)
                with self.assertRaises(ValueError):
                    architecture.Architecture.read(pathlib.Path(self.root / 'architecture.txt'))


if __name__ == '__main__':
    unittest.main()
