"""The shell scripts inside GitHub workflows: the `run:` of every step, with the shell it runs in."""
import re

import yaml

# GitHub replaces ${{ ... }} before the shell sees the script; to shellcheck it is bad syntax.
GITHUB_EXPRESSION = re.compile(r"\$\{\{.*?\}\}", re.DOTALL)

# The interpreters shellcheck can check: the first word of a step's `shell:`.
SHELLS = {"bash": "#!/usr/bin/env bash", "sh": "#!/bin/sh"}


def default_shell(runs_on):
    # GitHub's default: bash, except on Windows runners, where it is PowerShell.
    return "pwsh" if "windows" in str(runs_on).lower() else "bash"


def shell_of(step, job, workflow):
    for level in (step, (job.get("defaults") or {}).get("run") or {},
                  (workflow.get("defaults") or {}).get("run") or {}):
        if level.get("shell"):
            return str(level["shell"]).split()[0]
    return default_shell(job.get("runs-on"))


class RunScript:
    """One step's `run:` script, named after its job and step."""

    def __init__(self, job, step_number, step_name, shell, text):
        self.job = job
        self.step_number = step_number
        self.step_name = step_name
        self.shell = shell
        self.text = text

    def where(self):
        return f"job {self.job}, step {self.step_number} ({self.step_name!r})"

    def checkable(self):
        return self.shell in SHELLS

    def as_file_text(self):
        """The script as a file that shellcheck reads: a shebang line, then the script itself, so
        that line N + 1 of the file is line N of the script."""
        return SHELLS[self.shell] + "\n" + GITHUB_EXPRESSION.sub("GITHUB_EXPRESSION", self.text)


def run_scripts(path):
    """Every `run:` script of the workflow at `path`, in order. Raises OSError or yaml.YAMLError
    when it cannot be read."""
    with open(path, encoding="utf-8") as file:
        workflow = yaml.safe_load(file) or {}
    for job_id, job in (workflow.get("jobs") or {}).items():
        for number, step in enumerate(job.get("steps") or [], start=1):
            if "run" not in step:
                continue
            name = step.get("name") or step.get("id") or "unnamed"
            yield RunScript(job_id, number, name, shell_of(step, job, workflow), str(step["run"]))
