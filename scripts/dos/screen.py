"""The text screen of a PC: what is on it, and what has come onto it since a key was pressed."""

COLUMNS, ROWS = 80, 25


class Screen:
    """One look at the screen: its rows without the spaces at their ends, and the place of the cursor."""

    def __init__(self, rows, row=0, column=0):
        self.rows = rows
        self.row = min(row, len(rows) - 1)
        self.column = column

    @classmethod
    def from_memory(cls, video, row, column):
        """From the memory of a colour screen, which has a letter and a colour for each place. The letters are of code page 437."""
        letters = video[0:2 * COLUMNS * ROWS:2].replace(b'\0', b' ').decode('cp437')
        return cls([letters[at:at + COLUMNS].rstrip() for at in range(0, len(letters), COLUMNS)], row, column)

    def at_cursor(self):
        """The text from the start of the cursor's row to the cursor."""
        return self.rows[self.row].ljust(COLUMNS)[:self.column].rstrip()

    def __eq__(self, other):
        return (self.rows, self.row, self.column) == (other.rows, other.row, other.column)


def rows_gone(before, after):
    """How many rows have left the screen at its top between two looks at it.

    The rows above the cursor decide, because its own may have been written again since. They are all gone, down to the cursor,
    when most of them are on the screen no more: it was cleared, or filled too fast."""
    above = [row for row in before.rows[:before.row] if row]
    if not above:
        return 0 if after.rows[before.row].startswith(before.at_cursor()) else before.row + 1
    best, most = before.row + 1, 0
    for gone in range(before.row):
        kept = zip(before.rows[gone:before.row], after.rows)
        same = sum(1 for old, new in kept if old and old == new)
        if same > most and 2 * same > sum(1 for row in before.rows[gone:before.row] if row):
            best, most = gone, same
    return best


class Transcript:
    """All rows that have been on the screen, as far as somebody looked in time."""

    def __init__(self):
        self._gone = []
        self._last = Screen([''])
        self._old = 0
        self._old_text = ''

    def add(self, screen):
        """Takes in another look at the screen."""
        self._gone += self._last.rows[:rows_gone(self._last, screen)]
        self._last = screen

    def mark(self):
        """What is there now is old, so that only what is added to the cursor's row or comes after it is new."""
        self._old = len(self._gone) + self._last.row
        self._old_text = self._last.at_cursor()

    def lines(self):
        """Every row down to the cursor."""
        return self._gone + self._last.rows[:self._last.row + 1]

    def new_lines(self):
        """The rows since the mark."""
        new = self.lines()[self._old:]
        if new and new[0].startswith(self._old_text):
            new[0] = new[0][len(self._old_text):]
        return new

    def asks(self, text):
        """Whether the cursor is at the end of `text`, in a row that was not the cursor's at the mark."""
        moved = self._old_text == '' or len(self._gone) + self._last.row > self._old
        return moved and self._last.at_cursor().endswith(text)

    def last(self):
        return self._last
