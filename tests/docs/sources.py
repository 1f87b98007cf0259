"""What the sources say of what the pages say too: defaults, exit codes, keys and folders."""

import re
import runpy
import sys

DEFAULT = re.compile(r"constexpr (?:u?int\d+_t) k(\w+) = (\w+);")
TEXT = re.compile(r'constexpr (?:wchar_t|char) k(\w+)\[\] = L?"([^"]*)";')
EXIT_CODE = re.compile(r"^  (\w+) = (\d+),", re.MULTILINE)


class Sources:
    def __init__(self, root):
        self._root = root
        names = (root / "src/settings/setting_names.h").read_text("utf-8")
        # Numbers and names by what the header calls them, without the k.
        self.numbers = {name: int(value, 0) for name, value in DEFAULT.findall(names)}
        self.texts = {name: text.replace("\\\\", "\\") for name, text in TEXT.findall(names)}
        # What dozewellctl ends with, by the names of its header.
        failure = (root / "tools/ctl/command_failure.h").read_text("utf-8")
        self.ctl_exit_codes = {name: int(code) for name, code in EXIT_CODE.findall(failure)}
        self.version = (root / "VERSION").read_text("utf-8").strip()
        self.installed = {value.name: value for value in self._packaging(root, "default_values.py")
                          ["default_values"]()}
        self.choices = self._packaging(root, "msi_tables.py")["CHOICES"]
        installed = re.findall(r'<Directory Id="(?:Brevan|Program)Folder" Name="(\w+)"',
                               (root / "packaging/dozewell.wxs").read_text("utf-8"))
        self.program_folder = "Program Files\\" + "\\".join(installed)

    @staticmethod
    def _packaging(root, name):
        """The names that a module of the packaging has, read anew from this tree."""
        folder = str(root / "packaging")
        known = set(sys.modules)
        sys.path.insert(0, folder)
        try:
            return runpy.run_path(f"{folder}/{name}")
        finally:
            sys.path.remove(folder)
            for module in set(sys.modules) - known:
                del sys.modules[module]

    def as_installed(self, name):
        return self.installed[name].text

    def when_absent(self):
        """What holds for a number of the service that no key has, by the value's name."""
        stems = {constant.removesuffix("Name"): text for constant, text in self.texts.items()}
        defaults = {re.sub("^Default|(Days|Minutes)$", "", constant): value
                    for constant, value in self.numbers.items() if constant.startswith("Default")}
        return {stems[stem]: value for stem, value in defaults.items()}

    def number(self, file, pattern):
        """The number that the pattern's only group finds in a source."""
        found = set(re.findall(pattern, (self._root / file).read_text("utf-8")))
        if len(found) != 1:
            raise ValueError(f"{file}: {pattern} finds {len(found)} numbers")
        return int(found.pop().replace("'", ""), 0)

    def constant(self, file, name):
        return self.number(file, rf"\b{name} = ([\d']+);")

    def literal(self, file, name):
        """The text of a constant of this name."""
        text, = set(re.findall(rf'\b{name}(?:\[\])? = L?"([^"]*)";',
                               (self._root / file).read_text("utf-8")))
        return text

    def literal_in(self, file, pattern):
        """The only text in quotation marks that is like this."""
        text, = set(re.findall(rf'L"({pattern})"', (self._root / file).read_text("utf-8")))
        return text

    @property
    def data_files(self):
        """The names of the files of learnt data."""
        return {self.literal(*place) for place in (
            ("src/prediction/cyclic_probability_predictor.h", "kDataFileName"),
            ("src/prediction/rates/rates_file.h", "kRatesFileName"),
            ("src/prediction/history_file.h", "kHistoryFileName"))}

    @property
    def watch_folder(self):
        return self.literal("tools/powerwatch/watch_names.h", "kWatchServiceName")
