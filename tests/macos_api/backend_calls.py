"""Checks that the macOS backend makes every platform call the installer is built on: each row of
backend_calls.table must be found in what the backend's code does, as clang parses it with the
flags of tools/check_macos_sources.sh (the messages it sends, the functions it calls, ...), so that
a call named only in a comment or a string does not count.

    python3 tests/macos_api/backend_calls.py [--backend FOLDER] [--posix FOLDER]

The backend is every .mm under --backend (installer/platform/macos). The shared POSIX services it
links are the .cpp files under --posix (installer/platform/posix), parsed as C++ for this machine.
Prints a line for each call not made, then how many are made. Exits 1 unless every one is, and
when there is no backend source at all: a tree without the backend is broken.
"""
import argparse
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys

import backend_calls_ast

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLE = pathlib.Path(__file__).with_name("backend_calls.table")
KINDS = ("message", "class", "function", "constant", "implements")
PLACES = {"any": "anywhere in the backend",
          "posix": "in the backend or the shared POSIX services"}
CALL_PATTERN = re.compile(r"(\w+)(?:\((.*)\))?")
# An argument of a call pattern, up to the comma after it: a "string" may hold commas.
ARGUMENT = re.compile(r'\s*("(?:[^"\\]|\\.)*"|[^,]*?)\s*(?:,|$)')


class TableError(Exception):
    pass


class Row:
    """A row of the table: WHERE the backend must make the call, its KIND and WHAT it is."""

    def __init__(self, where, kind, what):
        self.where, self.kind, self.what = where, kind, what
        words = what.split()
        if kind in ("message", "implements"):
            if len(words) != 2:
                owner = "class" if kind == "message" else "protocol"
                raise TableError(f"a {kind} row names a {owner} and a selector: {what}")
            self.owner, self.name = words
        elif kind == "function":
            match = CALL_PATTERN.fullmatch(what)
            if not match:
                raise TableError(f"neither a function's name nor a call pattern: {what}")
            self.name = match.group(1)
            self.arguments = None if match.group(2) is None else arguments_of(match.group(2))
        elif len(words) != 1:
            raise TableError(f"a {kind} row names one {kind}: {what}")
        else:
            self.name = what

    def made_in(self, uses):
        if self.kind == "message":
            return any(selector == self.name and self.owner in classes
                       for classes, selector in uses.messages)
        if self.kind == "class":
            return self.name in uses.type_names
        if self.kind == "constant":
            return self.name in uses.constants
        if self.kind == "implements":
            return any(selector == self.name and self.owner in protocols
                       for protocols, selector in uses.implemented)
        return any(name == self.name and self.takes(arguments) for name, arguments in uses.calls)

    def takes(self, arguments):
        if self.arguments is None:
            return True
        return len(arguments) == len(self.arguments) and all(
            wanted in ("_", given) for wanted, given in zip(self.arguments, arguments))


def arguments_of(text):
    """The argument patterns in `text`: `_`, a "string", or a number written as clang prints it,
    in decimal."""
    arguments = []
    for match in ARGUMENT.finditer(text):
        argument = match.group(1)
        if match.start() == len(text):
            break
        if argument == "_" or argument.startswith('"'):
            arguments.append(argument)
            continue
        try:
            arguments.append(str(int(argument, 0)))
        except ValueError:
            message = f'an argument is `_`, a number or a "string", not {argument}'
            raise TableError(message) from None
    return arguments


def read_table(path):
    rows = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        try:
            fields = line.split(None, 2)
            if len(fields) != 3:
                raise TableError(f"a row is WHERE KIND WHAT: {line}")
            where, kind, what = fields
            if kind not in KINDS:
                raise TableError(f"the kind is one of {', '.join(KINDS)}, not {kind}")
            if where not in PLACES and not where.endswith(".mm"):
                raise TableError(f'the place is "any", "posix" or the base name of a .mm file,'
                                 f" not {where}")
            rows.append(Row(where, kind, what.strip()))
        except TableError as error:
            raise TableError(f"{path}:{number}: {error}") from None
    return rows


def check_flags():
    """The flags tools/check_macos_sources.sh checks the Objective-C++ sources with."""
    script = ROOT / "tools" / "check_macos_sources.sh"
    result = subprocess.run(["bash", str(script), "--print-flags"],
                            capture_output=True, text=True, check=False)
    if result.returncode != 0 or not result.stdout.strip():
        sys.exit(f"{script} --print-flags printed no flags:\n{result.stderr}")
    return result.stdout.splitlines()


def posix_flags(objective_flags):
    """For the shared POSIX sources: C++ of the same standard, for this machine."""
    standard = [flag for flag in objective_flags if flag.startswith("-std=")]
    return ["-x", "c++", *standard, "-fsyntax-only", "-I", str(ROOT / "installer")]


def sources(folder, suffix):
    """The sources under `folder`, its tests left out."""
    return sorted(str(path) for path in pathlib.Path(folder).rglob(f"*{suffix}")
                  if not path.stem.endswith("_test"))


def read_all(jobs):
    """{path: Uses} for each (path, flags) of `jobs`, clang running on every core. Exits, with
    clang's diagnostics, when a file does not parse: what it calls is then unknown."""
    uses, failures = {}, []
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count() or 2) as pool:
        futures = {pool.submit(backend_calls_ast.read_uses, path, flags): path
                   for path, flags in jobs}
        for future in concurrent.futures.as_completed(futures):
            try:
                uses[futures[future]] = future.result()
            except backend_calls_ast.ClangFailed as failure:
                failures.append(f"clang could not parse {futures[future]}, so what it calls is"
                                f" unknown:\n{failure}")
    if failures:
        sys.exit("\n".join(sorted(failures)))
    return uses


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n", 1)[0])
    parser.add_argument("--backend", default=ROOT / "installer" / "platform" / "macos")
    parser.add_argument("--posix", default=ROOT / "installer" / "platform" / "posix")
    options = parser.parse_args()
    backend, posix = os.path.abspath(options.backend), os.path.abspath(options.posix)

    try:
        rows = read_table(TABLE)
    except TableError as error:
        sys.exit(str(error))
    backend_sources = sources(backend, ".mm")
    if not backend_sources:
        sys.exit(f"No macOS backend source (*.mm) in {backend}: the backend is missing.")
    posix_sources = sources(posix, ".cpp")
    if not posix_sources:
        sys.exit(f"No shared POSIX source (*.cpp) in {posix}: the backend's POSIX services are"
                 " missing.")

    objective_flags = check_flags()
    uses = read_all([(path, objective_flags) for path in backend_sources] +
                    [(path, posix_flags(objective_flags)) for path in posix_sources])

    base_names = {os.path.basename(path) for path in backend_sources}
    missing = 0
    for row in rows:
        if row.where == "any":
            files = backend_sources
        elif row.where == "posix":
            files = backend_sources + posix_sources
        else:
            files = [path for path in backend_sources if os.path.basename(path) == row.where]
        if not any(row.made_in(uses[path]) for path in files):
            missing += 1
            if row.where in PLACES:
                place = PLACES[row.where]
            elif row.where in base_names:
                place = f"in {row.where}"
            else:
                place = f"in {row.where}, which the backend does not have"
            print(f"missing: {row.what} ({place})")
    print(f"{len(rows) - missing} of {len(rows)} platform calls made by the macOS backend.")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
