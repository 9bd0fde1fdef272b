"""Which comments the checker refuses."""
import unittest

import comments


class Comments(unittest.TestCase):
    def refused(self, *lines):
        return [(line, complaint.split()[0]) for line, complaint in comments.complaints(lines)]

    def test_whole_last_lines_pass(self):
        self.assertEqual(self.refused('// One line.', '', '// The first of two', '// and the last', 'int a; // alone'), [])

    def test_a_single_word_on_the_last_line_is_refused(self):
        self.assertEqual(self.refused('int a;', '  // What is first', '  // last.', '  int b;'), [(3, '"last."')])

    def test_each_paragraph_and_each_item_is_looked_at_alone(self):
        self.assertEqual(self.refused('// A list', '// of', '//', '// word', '// - one', '//   two three', '// - four',
                                      '//   five'), [(2, '"of"'), (8, '"five"')])

    def test_a_paragraph_ends_where_the_indent_changes(self):
        self.assertEqual(self.refused('// Above a', '  // word', '  int a;'), [])

    def test_a_comment_behind_code_that_continues_below_is_looked_at(self):
        self.assertEqual(self.refused('int a; // why it is', '       // so'), [(2, '"so"')])

    def test_slashes_in_a_text_are_no_comment(self):
        self.assertEqual(self.refused('auto url = "http://a";', '         // word'), [])
        self.assertEqual(comments.trailing_comment('f("http://a"); // why'), 15)

    def test_directives_of_tools_are_left_alone(self):
        self.assertEqual(self.refused('// Formatted by hand:', '// clang-format off'), [])

    def test_a_comment_that_breaks_a_short_statement_is_refused(self):
        self.assertEqual(self.refused('int a;', 'std::optional<std::int32_t>', '    identifier; // asked of the server'),
                         [(3, 'the')])
        self.assertEqual(self.refused('void request(std::function<void()> answer,', '             int other); // why'),
                         [(2, 'the')])

    def test_a_statement_that_is_long_itself_may_have_one(self):
        self.assertEqual(self.refused('call(' + 'a' * 60 + ',', '     ' + 'b' * 60 + '); // why'), [])

    def test_lines_that_stand_alone_anyway_may_have_one(self):
        for first in ('template <typename T>', 'if (a)', 'return "a"'):
            with self.subTest(first):
                self.assertEqual(self.refused('int a;', first, '  "b"; // why'), [])


if __name__ == '__main__':
    unittest.main()
