"""Reading and writing the tables of an installer package, with the tools of msitools."""

import subprocess


class Table:
    """A table as text: the names of its columns, their types, the key columns, and rows."""

    def __init__(self, name, columns, types, keys):
        self.name, self.columns, self.types, self.keys = name, list(columns), list(types), keys
        self.rows = []

    @classmethod
    def read(cls, msi, name, folder=None):
        """In this folder, else the current one, msiinfo leaves what is binary in the table."""
        text = subprocess.run(["msiinfo", "export", msi, name], check=True, capture_output=True,
                              encoding="utf-8", cwd=folder).stdout
        columns, types, keys, *rows = [line.split("\t") for line in text.splitlines()]
        table = cls(name, columns, types, len(keys) - 1)
        table.rows = rows
        return table

    def add(self, row):
        if len(row) > len(self.columns):
            raise ValueError(f"{self.name}: a row of {len(row)} cells: {row}")
        self.delete(row[:self.keys])
        self.rows.append([*row, *[""] * (len(self.columns) - len(row))])

    def delete(self, key):
        """Rows that begin so."""
        self.rows = [row for row in self.rows if row[:len(key)] != list(key)]

    def set(self, first_cell, column, value):
        rows = [row for row in self.rows if row[0] == first_cell]
        if len(rows) != 1:
            raise ValueError(f"{self.name}: {len(rows)} rows begin with {first_cell}")
        rows[0][self.columns.index(column)] = value

    def write(self, msi, folder):
        file = folder / f"{self.name}.idt"
        lines = [self.columns, self.types, [self.name, *self.columns[:self.keys]], *self.rows]
        file.write_text("".join("\t".join(line) + "\r\n" for line in lines), "utf-8", newline="")
        subprocess.run(["msibuild", msi, "-i", file], check=True)


def set_package_code(msi, code, architecture):
    subprocess.run(["msibuild", msi, "-s", "Dozewell", "Brevan", architecture, f"{{{code}}}"],
                   check=True)
