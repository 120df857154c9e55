"""What one source file's own code uses of the platform, read from clang's AST of it: the messages
it sends, the functions it calls, the constants and classes it names, and the methods its
@implementations define. A comment or a string is no node of the AST, so a call written only there
does not count; nor does anything the file merely includes.

clang's text dump is read rather than its JSON one: both hold every included header, libstdc++'s
too, and the JSON one is ten times larger (some 200 MB a file).
"""
import dataclasses
import re
import subprocess

# A top-level declaration's line starts with its `|-` or `` `- ``; a deeper node's is indented by
# two characters a level before those.
TOP_LEVEL = re.compile(r"\n[|`]-")
NODE_LINE = re.compile(r"((?:[| ] )*)[|`]-(.*)")

# A source location as clang prints one in a node's line: in a range (`<A, B>`) or after it. A
# location in the file printed last has no file name ("line:9:5", "col:5"), so the file a node is in
# is the last one named by any line before it, as clang wrote them. A type's "(lambda at F:1:2)" is
# not a printed location: it follows no `<`, `, ` or `> `.
NAMED_LOCATION = re.compile(r"(?:(?<=<)|(?<=, )|(?<=> ))(?!line:)(<[\w ]+>|[^\s<>,:']+):\d+:\d+")
RELATIVE_LOCATION = re.compile(r"(?:(?<=<)|(?<=, )|(?<=> ))(?:line:\d+:\d+|col:\d+)")

# Nodes that only wrap the expression that matters, as a call's callee or argument.
WRAPPERS = {"ImplicitCastExpr", "ParenExpr", "ConstantExpr", "ExprWithCleanups",
            "MaterializeTemporaryExpr", "CXXBindTemporaryExpr"}

# Declarations and casts whose type names the classes a file uses: `NSTask* task`, a parameter or
# field of such a type, a function's result, `(__bridge CFURLRef)url`.
TYPED_NODES = {"VarDecl", "ParmVarDecl", "FieldDecl", "ObjCIvarDecl", "FunctionDecl",
               "CXXMethodDecl", "ObjCMethodDecl", "ObjCPropertyDecl", "TypedefDecl",
               "TypeAliasDecl", "CStyleCastExpr", "CXXStaticCastExpr", "CXXReinterpretCastExpr",
               "CXXConstCastExpr", "CXXDynamicCastExpr", "CXXFunctionalCastExpr",
               "ObjCBridgedCastExpr"}

# The first type in a node's line: as written, then, after a colon, without its typedefs.
QUOTED_TYPE = re.compile(r"'([^']*)'(?::'([^']*)')?")
IDENTIFIER = re.compile(r"[A-Za-z_]\w*")
# The class of an Objective-C object pointer type, once its <…> parts are gone: `__kindof NSView *`.
CLASS_POINTER = re.compile(r"([A-Za-z_]\w*)\s*\*")
FUNCTION_REFERENCE = re.compile(r" Function 0x[0-9a-f]+ '([^']+)'")
CONSTANT_REFERENCE = re.compile(r" (?:EnumConstant|Var) 0x[0-9a-f]+ '([^']+)'")
SELECTOR = re.compile(r" selector=(\S+)")
CLASS_RECEIVER = re.compile(r" class='([^']+)'")
METHOD_SELECTOR = re.compile(r" [-+] (\S+) '")
STRING_LITERAL = re.compile(r"'[^']*' lvalue (\".*\")$")
REFERENCED_NAME = re.compile(r"^\S+ 0x[0-9a-f]+ '([^']+)'")


class ClangFailed(Exception):
    """clang could not parse the file; the message is its diagnostics."""


@dataclasses.dataclass
class Uses:
    # (the receiver's class and its superclasses, empty when not known; the selector). Dot syntax
    # counts through the message clang makes of it: `task.arguments = list` sends setArguments:.
    messages: set = dataclasses.field(default_factory=set)
    # Classes messaged (`[NSTask alloc]`), and every name in a declared or cast-to type.
    type_names: set = dataclasses.field(default_factory=set)
    # (function, its arguments): each argument a literal as clang prints it (1, "name"), else None.
    calls: set = dataclasses.field(default_factory=set)
    # Enumerators and variables referred to.
    constants: set = dataclasses.field(default_factory=set)
    # (the protocols the class adopts, itself or through a superclass; the selector) of each
    # method an @implementation defines.
    implemented: set = dataclasses.field(default_factory=set)


class Node:
    __slots__ = ("text", "children")

    def __init__(self, text):
        self.text = text
        self.children = []

    @property
    def kind(self):
        return self.text.split(" ", 1)[0]


def read_uses(path, flags):
    """The Uses of `path`, parsed by clang++ with `flags` (which must include -fsyntax-only).
    `path` must be absolute: it is what clang prints, and is looked for, in the dump."""
    if re.search(r"[\s<>,:']", path):
        raise ClangFailed(f"{path}: in clang's dump, a path with a blank or any of <>,:' cannot be"
                          " told from what surrounds it.")
    command = ["clang++", *flags, "-fno-color-diagnostics", "-Xclang", "-ast-dump", path]
    result = subprocess.run(command, capture_output=True, check=False)
    if result.returncode != 0:
        diagnostics = result.stderr.decode("utf-8", "replace").strip()
        raise ClangFailed(diagnostics or f"clang++ exited with {result.returncode}.")
    return uses_in_dump(result.stdout.decode("utf-8", "replace"), path)


def uses_in_dump(dump, main_file):
    """The Uses of the top-level declarations of `dump` (an AST text dump) that are in `main_file`.
    A dump is some 20 MB, nearly all of it headers: it is searched, not split, until the file's own
    declarations are found."""
    tops = [match.start() + 1 for match in TOP_LEVEL.finditer(dump)]
    ends = tops[1:] + [len(dump)]
    hierarchy = class_hierarchy(dump, tops, ends)
    uses = Uses()
    # Where the file is first named: no declaration before is in it.
    first = dump.find(main_file)
    for start, end in zip(tops, ends):
        if first >= 0 and end > first and in_file(dump, start, main_file, first):
            for node in tree(dump[start:end].split("\n")):
                collect(node, hierarchy, uses)
    return uses


def in_file(dump, start, file, first):
    """Whether the declaration whose line starts at `start` is in `file`: whether the last location
    of that line (its name's, after its range) is. One without a location, as clang's own implicit
    declarations, is in none."""
    end = dump.find("\n", start)
    line = dump[start:end if end >= 0 else len(dump)]
    named = NAMED_LOCATION.findall(line)
    if named:
        return named[-1] == file
    if not RELATIVE_LOCATION.search(line):
        return False
    # In the file clang printed last: the last one it named before this line.
    at = start
    while True:
        at = dump.rfind(file, first, at)
        if at < 0:
            return False
        named = NAMED_LOCATION.match(dump, at)
        if named and named.group(1) == file:
            return not NAMED_LOCATION.search(dump, at + len(file), start)


def tree(lines):
    """The nodes of `lines`, the dump of one top-level declaration, as trees."""
    root = Node("")
    stack = [(0, root)]
    for line in lines:
        match = NODE_LINE.match(line)
        if not match:
            continue
        depth = len(match.group(1)) // 2 + 1
        node = Node(match.group(2))
        while stack[-1][0] >= depth:
            stack.pop()
        stack[-1][1].children.append(node)
        stack.append((depth, node))
    return root.children


class Hierarchy:
    """Each Objective-C class's superclass and the protocols it adopts, from its @interface."""

    def __init__(self):
        self.superclass = {}
        self.protocols = {}

    def lineage(self, name):
        """`name`, its superclass, that one's, and so on."""
        classes = []
        while name and name not in classes:
            classes.append(name)
            name = self.superclass.get(name)
        return classes

    def adopted(self, name):
        return frozenset(p for c in self.lineage(name) for p in self.protocols.get(c, ()))


def class_hierarchy(dump, tops, ends):
    """The Hierarchy of every @interface in `dump`, the included ones' too, each a top-level
    declaration whose superclass and protocols are lines right under it."""
    hierarchy = Hierarchy()
    for start, end in zip(tops, ends):
        if not dump.startswith("ObjCInterfaceDecl ", start + 2):
            continue
        lines = dump[start:end].split("\n")
        name = lines[0].rsplit(" ", 1)[-1]
        for line in lines[1:]:
            child = line[4:] if line[2:4] in ("|-", "`-") else ""
            if child.startswith("super ObjCInterface "):
                hierarchy.superclass[name] = child.rsplit("'", 2)[-2]
            elif child.startswith("ObjCProtocol "):
                hierarchy.protocols.setdefault(name, set()).add(child.rsplit("'", 2)[-2])
    return hierarchy


def collect(top, hierarchy, uses):
    """Adds to `uses` what the nodes of `top` use."""
    stack = [top]
    while stack:
        node = stack.pop()
        stack.extend(node.children)
        kind = node.kind
        if kind == "ObjCMessageExpr":
            collect_message(node, hierarchy, uses)
        elif kind == "CallExpr":
            collect_call(node, uses)
        elif kind == "DeclRefExpr":
            match = CONSTANT_REFERENCE.search(node.text)
            if match:
                uses.constants.add(match.group(1))
        elif kind in ("ObjCImplementationDecl", "ObjCCategoryImplDecl"):
            collect_implementation(node, hierarchy, uses)
        if kind in TYPED_NODES and " implicit " not in node.text:
            written, plain = quoted_type(node.text)
            uses.type_names.update(IDENTIFIER.findall(f"{written} {plain}"))


def collect_message(node, hierarchy, uses):
    selector = SELECTOR.search(node.text)
    if not selector:
        return
    receiver = CLASS_RECEIVER.search(node.text)
    if receiver:
        name = receiver.group(1)
        uses.type_names.add(name)
    elif " super (" in node.text or not node.children:
        name = None
    else:
        name = class_of(node.children[0].text)
    uses.messages.add((frozenset(hierarchy.lineage(name)), selector.group(1)))


def collect_call(node, uses):
    if not node.children:
        return
    callee = FUNCTION_REFERENCE.search(unwrapped(node.children[0]).text)
    if callee:
        arguments = tuple(literal(unwrapped(argument)) for argument in node.children[1:])
        uses.calls.add((callee.group(1), arguments))


def collect_implementation(node, hierarchy, uses):
    # A category's @implementation names its class on a line of its own, as a class's may.
    name = node.text.rsplit(" ", 1)[-1]
    for child in node.children:
        if child.kind == "ObjCInterface":
            name = REFERENCED_NAME.search(child.text).group(1)
    for child in node.children:
        if child.kind == "ObjCMethodDecl" and " implicit " not in child.text:
            selector = METHOD_SELECTOR.search(child.text)
            if selector:
                uses.implemented.add((hierarchy.adopted(name), selector.group(1)))


def unwrapped(node):
    while node.kind in WRAPPERS and node.children:
        node = node.children[0]
    return node


def literal(node):
    """An integer or string literal as clang prints it (`1`, `"dlsym"`); None for anything else."""
    if node.kind == "IntegerLiteral":
        return node.text.rsplit(" ", 1)[-1]
    if node.kind == "StringLiteral":
        match = STRING_LITERAL.search(node.text)
        return match.group(1) if match else None
    return None


def quoted_type(text):
    match = QUOTED_TYPE.search(text)
    if not match:
        return "", ""
    return match.group(1), match.group(2) or match.group(1)


def class_of(text):
    """The Objective-C class of the first type in a node's line; None for `id` or a non-object."""
    _, plain = quoted_type(text)
    while True:
        shorter = re.sub(r"<[^<>]*>", "", plain)
        if shorter == plain:
            break
        plain = shorter
    match = CLASS_POINTER.search(plain)
    return match.group(1) if match else None
