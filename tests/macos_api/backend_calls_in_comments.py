"""Shows that backend_calls.py reads the calls the macOS backend makes, not the names its text
mentions: in a copy of the backend (and of the shared POSIX services), calls of every kind the
table has are moved into comments or strings, or kept only with the wrong argument, class or
name, while the copy still compiles. The check must then fail, naming exactly those calls.

    python3 tests/macos_api/backend_calls_in_comments.py
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
ANYWHERE = "anywhere in the backend"

# (the source's base name, its code, what that code becomes, the lines the check must print). Each
# code is as short as it can be, so that the backend's other changes leave it in place.
PLANTS = [
    # A message.
    ("application.mm",
     "[application_ run];",
     "/* [application_ run]; */",
     [f"missing: NSApplication run ({ANYWHERE})"]),
    # A setter sent with dot syntax.
    ("progress_indicator.mm",
     "indicator_.usesThreadedAnimation = YES;",
     "// indicator_.usesThreadedAnimation = YES;",
     [f"missing: NSProgressIndicator setUsesThreadedAnimation: ({ANYWHERE})"]),
    # A getter read with dot syntax, and a C function.
    ("process_info.mm",
     "return NSProcessInfo.processInfo.processIdentifier;",
     "return 0; /* NSProcessInfo.processInfo.processIdentifier */",
     ["missing: NSProcessInfo processIdentifier (in process_info.mm)"]),
    ("process_info.mm",
     "static_cast<std::uint32_t>(geteuid())",
     "0u /* static_cast<std::uint32_t>(geteuid()) */",
     ["missing: geteuid (in process_info.mm)"]),
    # A call whose flag is left to a comment.
    ("file_manager.mm",
     "removexattr(path, name, XATTR_NOFOLLOW)",
     "removexattr(path, name, 0 /* XATTR_NOFOLLOW */)",
     ["missing: removexattr(_, _, 1) (in file_manager.mm)"]),
    # A function looked up by a name that is right only in a comment.
    ("security_translocation.mm",
     '"SecTranslocateIsTranslocatedURL")',
     '"SecTranslocateIsTranslocatedUrl" /* "SecTranslocateIsTranslocatedURL" */)',
     [f'missing: dlsym(_, "SecTranslocateIsTranslocatedURL") ({ANYWHERE})']),
    # An enumerator.
    ("window.mm",
     "{ui::WindowStyleMaskClosable, NSWindowStyleMaskClosable},",
     "// {ui::WindowStyleMaskClosable, NSWindowStyleMaskClosable},",
     [f"missing: NSWindowStyleMaskClosable ({ANYWHERE})"]),
    # A global constant, named only in a string.
    ("apple_script.mm",
     "dictionary[NSAppleScriptErrorMessage]",
     'dictionary[@"NSAppleScriptErrorMessage"] /* dictionary[NSAppleScriptErrorMessage] */',
     ["missing: NSAppleScriptErrorMessage (in apple_script.mm)"]),
    # A class, and messages with the right selectors sent to an object of another class.
    ("workspace.mm",
     "NSWorkspaceOpenConfiguration* openConfiguration(",
     "id openConfiguration(",
     ["missing: NSWorkspaceOpenConfiguration (in workspace.mm)"]),
    ("workspace.mm",
     "NSWorkspaceOpenConfiguration* made = [[NSWorkspaceOpenConfiguration alloc] init];",
     "id made = [[NSObject alloc] init];"
     "  // NSWorkspaceOpenConfiguration* made = [[NSWorkspaceOpenConfiguration alloc] init];",
     []),
    ("workspace.mm",
     "made.arguments = toNSStringArray(*configuration.arguments);",
     "[made setArguments:toNSStringArray(*configuration.arguments)];",
     ["missing: NSWorkspaceOpenConfiguration setArguments: (in workspace.mm)"]),
    ("workspace.mm",
     "made.activates = configuration.activates;",
     "[made setActivates:configuration.activates];",
     ["missing: NSWorkspaceOpenConfiguration setActivates: (in workspace.mm)"]),
    # A delegate method whose selector is right only in a comment: AppKit would never call it.
    ("delegate_bridge.mm",
     "- (void)applicationDidFinishLaunching:",
     "// - (void)applicationDidFinishLaunching:\n- (void)applicationDidFinishLaunch:",
     [f"missing: NSApplicationDelegate applicationDidFinishLaunching: ({ANYWHERE})"]),
    # A system call of the shared POSIX services.
    ("process_signals.cpp",
     "::kill(static_cast<pid_t>(pid), signal)",
     "((void)pid, (void)signal, 0) /* ::kill(static_cast<pid_t>(pid), signal) */",
     ["missing: kill (in the backend or the shared POSIX services)"]),
]


def plant(folders, name, code, planted):
    """Replaces `code`, which must be there once, in the copied source `name`."""
    found = [path for folder in folders for path in folder.rglob(name)]
    if len(found) != 1:
        sys.exit(f"The planted calls no longer fit: {len(found)} sources are named {name},"
                 " not one.")
    text = found[0].read_text(encoding="utf-8")
    if text.count(code) != 1:
        sys.exit(f"The planted calls no longer fit: {name} does not hold this code once:\n{code}")
    found[0].write_text(text.replace(code, planted), encoding="utf-8")


def main():
    expected = [line for _, _, _, lines in PLANTS for line in lines]
    with tempfile.TemporaryDirectory(prefix="backend-calls-") as scratch:
        backend = pathlib.Path(scratch, "macos")
        posix = pathlib.Path(scratch, "posix")
        shutil.copytree(ROOT / "installer" / "platform" / "macos", backend)
        shutil.copytree(ROOT / "installer" / "platform" / "posix", posix)
        for name, code, planted, _ in PLANTS:
            plant((backend, posix), name, code, planted)
        result = subprocess.run([sys.executable, str(HERE / "backend_calls.py"),
                                 "--backend", str(backend), "--posix", str(posix)],
                                capture_output=True, text=True, check=False)
    output = result.stdout + result.stderr
    reported = [line for line in output.splitlines() if line.startswith("missing: ")]
    summary = re.search(r"^(\d+) of (\d+) platform calls made by the macOS backend\.$", output,
                        re.MULTILINE)
    problems = []
    if result.returncode != 1:
        problems.append(f"The check exited with {result.returncode}, not 1.")
    if not summary or int(summary.group(2)) - int(summary.group(1)) != len(expected):
        problems.append(f"The check does not count {len(expected)} calls missing.")
    problems += [f"Not reported: {line}" for line in expected if line not in reported]
    problems += [f"Reported, though not planted: {line}" for line in reported
                 if line not in expected]
    if problems:
        print("\n".join(problems))
        print(f"The check's output:\n{output}")
        return 1
    print(f"With {len(expected)} calls left only in comments, strings or the wrong form, the check"
          " fails, naming each:")
    print("\n".join(reported))
    return 0


if __name__ == "__main__":
    sys.exit(main())
