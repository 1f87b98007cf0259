"""Tests ./package: what it writes, and that it signs programs and package when it is given a key.

    python3 -m tests.package_test
"""

import hashlib
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

from tests.support.cases import option_parser, run, tests_in
from tests.support.cli import ROOT
from tests.support.expect import contains, equal

VERSION = (ROOT / "VERSION").read_text("utf-8").strip()
NAME = f"dozewell-{VERSION}-x64"
PROGRAMS = ("DozewellService.exe", "dozewellctl.exe", "dozewell-replay.exe")
WATCH = "dozewell-powerwatch.exe"  # beside the package
UNREADABLE = "no-such-file.pem"


def package(*arguments):
    """Exit code, and standard output and errors."""
    done = subprocess.run([ROOT / "package", *arguments], capture_output=True, text=True,
                          check=False)
    return done.returncode, done.stdout + done.stderr


def make_package(folder, *arguments):
    code, text = package(*arguments, folder)
    equal(code, 0, text)
    subprocess.run(["sha256sum", "--quiet", "-c", "SHA256SUMS"], cwd=folder, check=True)
    return folder / f"{NAME}.msi"


def make_key(folder):
    """A private key and its certificate."""
    key, certificate = folder / "key.pem", folder / "certificate.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key,
                    "-out", certificate, "-days", "2", "-subj", "/CN=Test of signing", "-addext",
                    "extendedKeyUsage=codeSigning"], check=True, capture_output=True)
    return key, certificate


def is_signed(file, certificate):
    done = subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", file],
                          capture_output=True, text=True, check=False)
    return done.returncode == 0 and "Signature verification: ok" in done.stdout


def programs_in(msi, folder):
    """The programs that a package installs, and the one that it only runs."""
    subprocess.run(["msiextract", "-C", folder, msi], check=True, capture_output=True)
    setup = folder / "dozewell-setup.exe"
    setup.write_bytes(subprocess.run(["msiinfo", "extract", msi, "Binary.Setup"], check=True,
                                     capture_output=True).stdout)
    return [setup, *(next(folder.rglob(name)) for name in PROGRAMS)]


def digest(file):
    return hashlib.sha256(file.read_bytes()).hexdigest()


def test_a_package_without_a_key_is_not_signed_and_the_same_each_time(folder):
    msi = make_package(folder / "once")
    equal(sorted(path.name for path in msi.parent.iterdir()),
          ["SHA256SUMS", f"{NAME}-debug.zip", f"{NAME}.contents.txt", f"{NAME}.deployment.json",
           f"{NAME}.msi", WATCH])
    equal(digest(make_package(folder / "again")), digest(msi))
    key, certificate = make_key(folder)
    files = (msi, msi.with_name(WATCH), *programs_in(msi, folder))
    equal([is_signed(file, certificate) for file in files], [False] * 6)
    make_package(folder / "signed", "--sign-key", key, "--sign-cert", certificate)
    equal(digest(make_package(folder / "after a signed one")), digest(msi))


def test_a_key_signs_the_programs_and_the_package(folder):
    key, certificate = make_key(folder)
    msi = make_package(folder / "signed", "--sign-cert", certificate, "--sign-key", key)
    programs = programs_in(msi, folder)
    files = (msi, msi.with_name(WATCH), *programs)
    equal([is_signed(file, certificate) for file in files], [True] * 6)
    installed = (msi.with_suffix(".contents.txt")).read_text("utf-8")
    for program in programs[1:]:
        contains(installed, digest(program))
    # The signature is of the package's content.
    with open(msi, "r+b") as file:
        content = file.read()
        file.seek(content.index(b"must be a whole number"))
        file.write(b"MUST")
    equal(is_signed(msi, certificate), False, "a changed package")


def test_a_key_without_a_certificate_or_one_that_cannot_be_read_is_refused(folder):
    key, certificate = make_key(folder)
    for arguments in (("--sign-key", key), ("--sign-cert", certificate, folder / "out"),
                      ("--sign-key",), ("--sign", key), (folder / "a", folder / "b")):
        code, text = package(*arguments)
        equal((code, text), (2, "Usage: ./package [--sign-key FILE --sign-cert FILE] [FOLDER]\n"))
    equal(package("--sign-key", UNREADABLE, "--sign-cert", certificate),
          (1, f"{UNREADABLE} cannot be read.\n"))


def test_a_key_that_does_not_fit_is_reported(folder):
    key, _ = make_key(folder)
    other = folder / "other"
    other.mkdir()
    _, certificate = make_key(other)
    code, text = package("--sign-key", key, "--sign-cert", certificate, folder / "out")
    equal(code, 1)
    contains(text, "Signing the programs failed; build/package.log has all of it.\n")
    equal((folder / "out" / f"{NAME}.msi").exists(), False, "a package")


def case(test):
    folder = Path(tempfile.mkdtemp())
    try:
        test(folder)
    finally:
        shutil.rmtree(folder)


def main():
    options = option_parser("Tests ./package.").parse_args()
    return run([(name, lambda test=test: case(test)) for name, test in tests_in(globals())],
               options.words)


if __name__ == "__main__":
    sys.exit(main())
