"""The small programs of tests/cases/lint/, right and wrong, and more of them made for every member; and those of
tests/cases/messages/, which are left to the compilers. A case is a line "@case", members with their texts, and "@finds
MEMBER LINE RULE"; "lint" behind that says that it is not what a build names first. "@says MEMBER LINE [COMPILER]" is
what a build names first where no rule does."""

import re

from harness import ROOT
from psf_harness import lines

LINE_ENDS = {"LF": "\n", "CRLF": "\r\n"}
EVENTS = {
    "OnError": "uchar channel, uchar error_type", "OnFrame": "DataFrame *frame, uchar channel",
    "OnKey": "char character", "OnStart": "long time", "OnStop": "long time", "OnTimer": "uint timerid",
    "OnTrigger": "long time", "OnSerial": "const void * data, unsigned short datacount", "OnMsg": "char * string"}


class Case:
    def __init__(self, name):
        self.name = name
        self.members = {}
        self.findings = []   # (member, line, rule) in document order
        self.in_build = []   # those of them that a build may name first
        self.said = {}       # or what compilers say, (member, line) for each

    def finds(self, member, line, rule, *flags):
        self.findings.append((member, int(line), rule))
        if not flags:
            self.in_build.append(self.findings[-1])
        return self

    def says(self, member, line, *compilers):
        for compiler in compilers or ["gcc", "clang"]:
            self.said[compiler] = (member, int(line))

    def first(self, compiler):
        """The place that a build must name first."""
        return self.in_build[0][:2] if self.in_build else self.said[compiler]

    def text(self, member):
        event = member.partition("/")[2]
        default = f"void {event}({EVENTS[event]})\n{{\n\n}}" if event in EVENTS else ""
        return self.members.get(member, default)

    def psf(self, line_end):
        """The file, and the line in it where each member begins."""
        functions = [name for name in self.members if name.startswith("functions/")]
        names = ",".join(name.partition("/")[2] for name in functions)
        content, begins = lines("[BeginPSF]", "Comment= c", "FileName=", "[GVars]"), {}

        def add(name, *front):
            nonlocal content
            content += b"".join(lines(line) for line in front[:-1]) + front[-1].encode()
            begins[name] = len(re.split(b"\r\n|\r|\n", content))
            content += self.text(name).replace("\n", line_end).encode("cp1252") + b"\r\n"

        add("references", "")
        content += lines("[GFuncs]", f"NumFuncs= {len(functions)}", f"FuncNames={names}", "[FuncCode]")
        for name in functions:
            add(name, f"[{name.partition('/')[2]}]", "ProtoType=", "FuncBody=")
        content += lines("[EventCode]")
        for event in EVENTS:
            add(f"events/{event}", f"[{event}]", "FuncBody=")
        return content + lines("[EndPSF]"), begins


def read_cases(folder):
    cases = []
    for path in sorted((ROOT / "tests" / "cases" / folder).glob("*.txt")):
        member = None
        for line in path.read_text().splitlines():
            word, _, rest = line.partition(" ")
            if word == "@case":
                cases.append(Case(rest))
                member = None
            elif word == "@member":
                member = rest
                cases[-1].members[member] = None
            elif word == "@finds":
                cases[-1].finds(*rest.split())
            elif word == "@says":
                cases[-1].says(*rest.split())
            else:
                before = cases[-1].members[member]
                cases[-1].members[member] = line if before is None else before + "\n" + line
        for case in cases:
            case.members = {name: text or "" for name, text in case.members.items()}
    return cases


def made_cases():
    """The same mistakes in every member, with the right texts of the others behind them."""
    cases = []
    for member in ["references", "functions/Foo", *(f"events/{event}" for event in EVENTS)]:
        name = member.rpartition("/")[2]
        header = {"references": "static inline int Sum(int a, int b)", "functions/Foo": "int Foo(int a)"}.get(
            member, f"void {name}({EVENTS.get(name)})")
        returns = "    return a;" if header.endswith("a)") or header.endswith("b)") else "    return;"
        for rule, line, body in [
                ("open-comment", 5, ["{", "    if (1) {", "    }", "    /* never ends", returns, "}"]),
                ("open-brace", 2, ["{", "    if (1) {", "    }", returns]),
                ("open-brace", 3, ["{", "    if (1) {", returns, "}"]),
                ("stray-brace", 4, ["{", "    if (1)", "    }", returns, "}"]),
                ("conflict-marker", 4, ["{", "    if (1) {", ">>>>>>> other", "    }", returns, "}"]),
                ("open-string", 3, ["{", "    Print(\"never ends);", returns, "}"])]:
            case = Case(f"{rule} in line {line} of {member}")
            case.members = {"functions/Foo": "int Foo(int a)\n{\n    return a;\n}",
                            "functions/Bar": "void Bar(void)\n{\n}"}
            case.members[member] = "\n".join([header, *body])
            cases.append(case.finds(member, line, rule))
        if name in EVENTS:
            case = Case(f"handler-missing in line 2 of {member}")
            case.members = {member: f"/* not {name} */\nvoid {name}2({EVENTS[name]})\n{{\n}}"}
            cases.append(case.finds(member, 2, "handler-missing"))
        case = Case(f"right in {member}")
        case.members = {"functions/Bar": "void Bar(void)\n{\n}",
                        member: "\n".join([header, "{", "    if (1) {", "    }", returns, "}"])}
        cases.append(case)
    return cases


CASES = read_cases("lint") + made_cases()
ORDINARY = read_cases("messages")
