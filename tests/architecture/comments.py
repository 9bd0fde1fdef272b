"""Finds the comments of a C++ source, and what is wrong with their form."""
import dataclasses
import re

COLUMNS = 110
COMMENT_LINE = re.compile(r'^( *)//(?!/)( ?)(.*)$')
OWN_LINES = re.compile(r'(template|if|else|for|while|case|default)\b')
# Read by tools, and broken as those want it.
DIRECTIVE = re.compile(r'(NOLINT|clang-format )')


@dataclasses.dataclass
class Paragraph:
    """Lines of one comment without an empty one between them; lines are counted from 0, `column` is where // stands."""
    first: int
    column: int
    texts: list
    is_trailing: bool = False  # begins behind code

    @property
    def last(self):
        return self.first + len(self.texts) - 1

    def ends_in_a_single_word(self):
        return len(self.texts) > 1 and len(self.texts[-1].split()) == 1


def trailing_comment(line):
    """Where the comment behind this line's code begins; None without one."""
    start = line.find('//')
    while start > 0:
        code = line[:start]
        if code.strip() and len(re.findall(r'(?<!\\)"', code.replace("'\"'", ''))) % 2 == 0:
            return start
        start = line.find('//', start + 2)
    return None


def paragraphs(lines):
    found, current = [], None
    for number, line in enumerate(lines):
        match = COMMENT_LINE.match(line)
        if match:
            column, text = len(match.group(1)), match.group(2)[1:] + match.group(3)
            begins_item = re.match(r'(- |\S+: {2,})', text)
            if not text.strip() or DIRECTIVE.match(text):
                current = None
            elif current and current.column == column and not begins_item:
                current.texts.append(text)
            else:
                current = Paragraph(number, column, [text])
                found.append(current)
            continue
        start = trailing_comment(line)
        current = None
        if start is not None and not DIRECTIVE.match(line[start + 2:].strip()):
            current = Paragraph(number, start, [line[start + 2:].strip()], is_trailing=True)
            found.append(current)
    return [paragraph for paragraph in found if paragraph.texts]


def statement_start(lines, number):
    """The line on which the statement that ends on this line begins."""
    while number > 0:
        before = lines[number - 1].strip()
        if not before or before.startswith(('//', '#')) or before.endswith((';', '{', '}', ':')) \
                or trailing_comment(lines[number - 1]) is not None:
            break
        number -= 1
    return number


def tears_its_statement(lines, paragraph):
    """Whether the formatter breaks code before this comment that would fit on one line without it."""
    if not paragraph.is_trailing:
        return False
    code = lines[paragraph.first][:paragraph.column].strip()
    first = statement_start(lines, paragraph.first)
    if first == paragraph.first or not code.endswith(';'):
        return False
    indent = len(lines[first]) - len(lines[first].lstrip())
    parts = [line.strip() for line in lines[first:paragraph.first]] + [code]
    # These break for reasons of their own: templates, bodies without braces, literals that follow each other.
    if any(OWN_LINES.match(part) for part in parts) \
            or any(before.endswith('"') and after.startswith('"') for before, after in zip(parts, parts[1:])):
        return False
    joined = ''
    for part in parts:
        joined += part if not joined or joined.endswith(('(', '[', '->', '.')) or part.startswith(('.', '->')) else ' ' + part
    return indent + len(joined) <= COLUMNS


def complaints(lines):
    """Pairs of a line counted from 1 and what is wrong there."""
    for paragraph in paragraphs(lines):
        if paragraph.ends_in_a_single_word():
            yield paragraph.last + 1, f'"{paragraph.texts[-1].strip()}" stands alone on the last line of its comment'
        if tears_its_statement(lines, paragraph):
            yield paragraph.first + 1, 'the comment behind it breaks a statement that fits on one line: put it above'
