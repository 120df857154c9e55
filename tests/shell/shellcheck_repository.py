"""Runs shellcheck on every shell script of the repository and on the `run:` script of every step of
its GitHub workflows, and prints each finding under the script's name, or the workflow's, job's and
step's. Exits 1 on any finding or when shellcheck is not installed, 0 otherwise.

    python3 tests/shell/shellcheck_repository.py [REPOSITORY]

The scripts are the repository's files (tracked, or new and not ignored; every file but build
folders when it is not a git checkout) named *.sh or .ci/run, or starting with a sh or bash
shebang. Every severity counts, style included: a finding is fixed, or disabled where it stands
with a comment saying why.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

import yaml

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from workflow_scripts import run_scripts  # noqa: E402

SHELL_SHEBANG = re.compile(rb"^#![^\n]*\b(ba)?sh\b")
# shellcheck --format=gcc: FILE:LINE:COLUMN: LEVEL: MESSAGE [SCnnnn]
FINDING = re.compile(r"^(?P<file>.+?):(?P<line>\d+):(?P<column>\d+): (?P<rest>.*)$")


def repository_files(root):
    try:
        listing = subprocess.run(
            ["git", "-C", root, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            capture_output=True, check=True).stdout.decode()
        files = [path for path in listing.split("\0") if path]
    except (OSError, subprocess.CalledProcessError):
        files = []
        for folder, subfolders, names in os.walk(root):
            top = folder == root
            subfolders[:] = [name for name in subfolders
                             if name != ".git" and not (top and (name.startswith("build") or name == ".worktrees"))]
            files += [os.path.relpath(os.path.join(folder, name), root) for name in names]
    return sorted(path for path in files if os.path.isfile(os.path.join(root, path)))


def is_shell_script(root, path):
    if path.endswith(".sh") or path == os.path.join(".ci", "run"):
        return True
    with open(os.path.join(root, path), "rb") as file:
        return bool(SHELL_SHEBANG.match(file.read(128)))


def workflow_files(root):
    folder = os.path.join(root, ".github", "workflows")
    if not os.path.isdir(folder):
        return []
    return sorted(os.path.join(".github", "workflows", name) for name in os.listdir(folder)
                  if name.endswith((".yml", ".yaml")))


def shellcheck(root, paths):
    """Runs shellcheck on `paths` from `root`, following sourced files. Returns its findings as
    (path, line, text) and any complaint of its own that is not a finding."""
    result = subprocess.run(["shellcheck", "--external-sources", "--format=gcc", *paths],
                            cwd=root, capture_output=True, text=True)
    findings, unparsed = [], []
    for line in result.stdout.splitlines():
        match = FINDING.match(line)
        if match:
            findings.append((match["file"], int(match["line"]), f"column {match['column']}: {match['rest']}"))
        elif line.strip():
            unparsed.append(line)
    complaint = ""
    if result.returncode not in (0, 1) or (result.returncode == 1 and not findings):
        complaint = f"shellcheck failed (status {result.returncode}): " + "\n".join(unparsed + [result.stderr.strip()])
    return findings, complaint


def main(root):
    if shutil.which("shellcheck") is None:
        print("FAILED: shellcheck is not installed (tools/setup.sh installs it): nothing was checked.")
        return 1
    root = os.path.abspath(root)
    scripts = [path for path in repository_files(root) if is_shell_script(root, path)]
    if not scripts:
        print(f"No shell script found in {root}: the listing of the repository's files failed.")
        return 1
    problems = []

    findings, complaint = shellcheck(root, scripts)
    problems += [f"{path}, line {line}: {text}" for path, line, text in findings]
    if complaint:
        problems.append(complaint)

    run_count = 0
    with tempfile.TemporaryDirectory() as scratch:
        named = {}
        for workflow in workflow_files(root):
            try:
                steps = list(run_scripts(os.path.join(root, workflow)))
            except (OSError, yaml.YAMLError) as error:
                problems.append(f"{workflow}: cannot be read: {error}")
                continue
            for step in steps:
                if not step.checkable():
                    print(f"not checked: {workflow}, {step.where()}: runs in {step.shell}")
                    continue
                path = os.path.join(scratch, f"run-{len(named) + 1}.sh")
                with open(path, "w", encoding="utf-8") as file:
                    file.write(step.as_file_text())
                named[path] = f"{workflow}, {step.where()}"
        run_count = len(named)
        if named:
            findings, complaint = shellcheck(root, list(named))
            for path, line, text in findings:
                # The first line of the file is the shebang that stands in for the step's shell.
                problems.append(f"{named.get(path, path)}, line {line - 1} of its run script: {text}")
            if complaint:
                problems.append(complaint)

    for problem in problems:
        print(problem)
    print(f"{len(scripts)} shell scripts and {run_count} workflow run scripts checked: "
          f"{len(problems)} problems.")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else os.getcwd()))
