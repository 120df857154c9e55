"""Checks the macOS CI workflow, which cannot run here: it must parse as YAML, run one job on a
macos-14 runner, and have the steps the Mac build needs, in this order.

    python3 tests/macos_api/workflow_steps.py .github/workflows/macos.yml
"""
import re
import sys

import yaml

# What the steps must do, in order: for each, a pattern that the step's `run` script, or its `uses`
# action followed by a space and the path it is given (`with: path:`), matches. One step may do
# several.
EXPECTED_STEPS = [
    ("check out the sources", r"^actions/checkout@"),
    ("install GoogleTest with Homebrew", r"\bbrew install googletest\b"),
    ("configure the universal build", r"\bcmake -S \. -B build\b[^\n]*-DCMAKE_OSX_ARCHITECTURES=\"arm64;x86_64\""),
    ("build", r"\bcmake --build build\b"),
    ("run the tests", r"\bctest --test-dir build\b"),
    ("show both architectures", r"\blipo -info\b"),
    ("lint the Info.plist", r"\bplutil -lint\b"),
    ("verify the signature", r"\bcodesign --verify --deep --strict\b"),
    ("verify the disk image", r"\bhdiutil verify\b"),
    # The download journey needs Gatekeeper's assessments off on the runner: without the option it
    # would be skipped.
    ("install Kelvo from the disk image in every journey, the download's included",
     r"\bbash tools/macos-e2e\.sh --disable-assessments\b"),
    ("keep the disk image", r"^actions/upload-artifact@\S+ build/packaging/Install Kelvo\.dmg$"),
    ("keep the screens of failed journeys", r"^actions/upload-artifact@\S+ build/e2e-evidence$"),
]


def step_text(step):
    if step.get("run"):
        return str(step["run"])
    if step.get("uses"):
        return f"{step['uses']} {(step.get('with') or {}).get('path', '')}"
    return ""


def problems_in(workflow):
    # YAML 1.1 reads a bare `on` key as true.
    if not (workflow.get("on") or workflow.get(True)):
        yield "it has no trigger (on:)"
    jobs = workflow.get("jobs") or {}
    if len(jobs) != 1:
        yield f"it has {len(jobs)} jobs, not one"
        return
    job = next(iter(jobs.values()))
    if job.get("runs-on") != "macos-14":
        yield f"its job runs on {job.get('runs-on')!r}, not 'macos-14'"
    steps = job.get("steps") or []
    texts = [step_text(step) for step in steps]
    position = 0
    for what, pattern in EXPECTED_STEPS:
        matching = [i for i, text in enumerate(texts) if re.search(pattern, text, re.MULTILINE)]
        later = [i for i in matching if i >= position]
        if not matching:
            yield f"no step does this: {what} ({pattern})"
        elif not later:
            yield f"the step that does this comes too early: {what}"
        else:
            position = later[0]
    end_to_end = [step for step, text in zip(steps, texts) if re.search(r"\btools/macos-e2e\.sh\b", text)]
    if end_to_end and "KELVO_E2E_EVIDENCE" not in (end_to_end[0].get("env") or {}):
        yield "the end-to-end step sets no KELVO_E2E_EVIDENCE: a failed journey would leave no picture"


def main(path):
    try:
        with open(path, encoding="utf-8") as file:
            workflow = yaml.safe_load(file)
    except (OSError, yaml.YAMLError) as error:
        print(f"{path}: {error}")
        return 1
    problems = list(problems_in(workflow if isinstance(workflow, dict) else {}))
    for problem in problems:
        print(f"{path}: {problem}")
    if not problems:
        print(f"{path}: a macos-14 job with every expected step, in order.")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
