"""What the checker of includes lets pass, and what it refuses."""
import unittest

import check_includes
from source_tree import SourceTreeTest


class IncludesOfModules(SourceTreeTest):
    def check(self):
        return check_includes.check(self.plan, self.root)

    def include(self, file, *included):
        self.write(file, ''.join(f'#include {header}\n' for header in included))

    def test_own_declared_and_pure_standard_headers_pass(self):
        self.include('src/app/Thing.cpp', '"app/Thing.h"', '"model/Thing.h" // why', '"foundation/Thing.h"', '<vector>')
        self.assertEqual(self.check(), [])

    def test_a_header_of_a_nested_module_is_refused(self):
        self.declare_module('app_settings', 'app/settings', ('foundation',))
        self.write('src/app/settings/Store.h', '')
        self.include('src/app/Thing.cpp', '"app/settings/Store.h"')
        self.assert_refused(self.check(), 'src/app/Thing.cpp:1', 'does not depend on app_settings')

    def test_a_relative_include_is_refused(self):
        self.include('src/app/Thing.cpp', '"../model/Thing.h"')
        self.assert_refused(self.check(), 'src/app/Thing.cpp:1', 'no path below src')

    def test_a_relative_include_behind_a_folder_of_src_is_refused(self):
        self.include('src/app/Thing.cpp', '"app/../model/Thing.h"')
        self.assert_refused(self.check(), 'no path below src')

    def test_a_bare_include_of_a_neighbour_is_refused(self):
        self.include('src/app/Thing.cpp', '"Thing.h"')
        self.assert_refused(self.check(), 'no path below src')

    def test_a_quoted_header_of_a_display_system_in_the_core_is_refused(self):
        self.include('src/model/Thing.cpp', '"xcb/xcb.h"')
        self.assert_refused(self.check(), 'src/model/Thing.cpp:1', 'no path below src')

    def test_an_upward_include_is_refused(self):
        self.include('src/foundation/Thing.cpp', '"app/Thing.h"')
        self.assert_refused(self.check(), 'foundation does not depend on app')

    def test_what_a_dependency_depends_on_must_be_declared_too(self):
        self.declare_module('shell', 'shell', ('app',))
        self.include('src/shell/Thing.cpp', '"foundation/Thing.h"')
        self.assert_refused(self.check(), 'shell does not depend on foundation')

    def test_headers_of_qt_and_of_the_system_in_the_core_are_refused(self):
        for header in ('<QString>', '<QtCore/qglobal.h>', '<glib.h>', '<xcb/xcb.h>', '<unistd.h>', '<chrono>', '<plist/plist.h>'):
            with self.subTest(header):
                self.include('src/model/Thing.cpp', header)
                self.assert_refused(self.check(), header, 'the core may not')

    def test_a_header_of_ours_in_angle_brackets_is_refused(self):
        self.include('src/app/Thing.cpp', '<model/Thing.h>')
        self.assert_refused(self.check(), 'the core may not')

    def test_an_include_that_cannot_be_read_is_refused(self):
        for line in ('#include HEADER', '#include_next <vector>', '#  import "model/Thing.h"'):
            with self.subTest(line):
                self.write('src/app/Thing.cpp', line + '\n')
                self.assert_refused(self.check(), 'no plain include')

    def test_siblings_do_not_know_each_other(self):
        self.include('src/backends/x11/Thing.cpp', '"backends/linux/Thing.h"')
        self.assert_refused(self.check(), 'backend_x11 does not depend on backend_linux')

    def test_a_backend_has_the_headers_of_its_libraries_alone(self):
        self.include('src/backends/x11/Thing.cpp', '<xcb/xinput.h>', '<unistd.h>', '<chrono>')
        self.include('src/backends/qt/canvas/Thing.cpp', '<QImage>', '<QtEndian>')
        self.assertEqual(self.check(), [])
        self.include('src/backends/x11/Thing.cpp', '<glib.h>')
        self.assert_refused(self.check(), 'no library that backend_x11 declares has it')

    def test_a_header_shows_no_private_library(self):
        self.include('src/backends/linux/Thing.cpp', '<gio/gio.h>')
        self.assertEqual(self.check(), [])
        self.include('src/backends/linux/Thing.h', '<gio/gio.h>')
        self.assert_refused(self.check(), 'src/backends/linux/Thing.h:1')

    def test_one_source_of_the_foundation_reads_property_lists(self):
        self.include('src/foundation/PropertyListCoder.cpp', '<plist/plist.h>')
        self.assertEqual(self.check(), [])
        self.include('src/foundation/Thing.cpp', '<plist/plist.h>')
        self.assert_refused(self.check(), 'src/foundation/Thing.cpp:1', 'only foundation/PropertyListCoder.cpp may')


class IncludesOfTests(SourceTreeTest):
    def check(self):
        return check_includes.check(self.plan, self.root)

    def setUp(self):
        super().setUp()
        self.write('tests/support/Helper.h', '#include "model/Thing.h"\n')
        self.declare_target('helpers', [], ['orbel_model'])

    def test_modules_may_be_linked_through_others(self):
        self.write('tests/a.cpp', '#include "tests/support/Helper.h"\n#include "foundation/Thing.h"\n#include <gtest/gtest.h>\n')
        self.declare_target('a_test', ['tests/a.cpp'], ['helpers', 'GTest::gtest_main'])
        self.assertEqual(self.check(), [])

    def test_a_module_that_is_not_linked_is_refused(self):
        self.write('tests/a.cpp', '#include "app/Thing.h"\n')
        self.declare_target('a_test', ['tests/a.cpp'], ['helpers'])
        self.assert_refused(self.check(), 'tests/a.cpp:1', 'a_test does not depend on app')

    def test_what_a_helper_includes_must_be_linked_by_each_test(self):
        self.write('tests/a.cpp', '#include "tests/support/Helper.h"\n')
        self.declare_target('a_test', ['tests/a.cpp'], ['orbel_foundation'])
        self.assert_refused(self.check(), 'tests/support/Helper.h:1', 'a_test does not depend on model')

    def test_bare_relative_and_angled_includes_are_refused(self):
        self.declare_target('a_test', ['tests/support/a.cpp'], ['helpers'])
        for header in ('"Helper.h"', '"../support/Helper.h"', '"tests/support/../support/Helper.h"', '<model/Thing.h>',
                       '<tests/support/Helper.h>'):
            with self.subTest(header):
                self.write('tests/support/a.cpp', f'#include {header}\n')
                self.assert_refused(self.check(), 'tests/support/a.cpp:1')


if __name__ == '__main__':
    unittest.main()
