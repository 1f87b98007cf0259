"""What a choice of the installer may be: the condition under which Windows takes it, and the words
that tell a user so."""


class Number:
    """A whole number from 0 on."""

    def __init__(self, largest=2147483647):
        self._largest = largest

    def condition(self, name):
        """Of the property with this name."""
        return f"{name} >= 0 AND {name} <= {self._largest}"

    def rule(self):
        """What stands behind "must be"."""
        return f"a whole number from 0 to {self._largest}"


class Word:
    """One of some words, in small letters. The first is what holds without a choice."""

    def __init__(self, *words):
        self.words = words

    def condition(self, name):
        return " OR ".join(f'{name} = "{word}"' for word in self.words)

    def rule(self):
        return " or ".join(self.words)
