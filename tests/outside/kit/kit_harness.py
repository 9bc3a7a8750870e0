"""What the tests of the host compile kit share: a C file as the editor writes it, and a way to build and run it.

The C file is put together by hand, so that the kit is tested without the editor.
"""
import shutil

from harness import ROOT, run, write_settings

COMPILE = ROOT / "kit" / "compile.sh"

# Tests share the runtimes that are kept.
VARIABLES = {"CC": None, "CFLAGS": None, "LDFLAGS": None, "XDG_CACHE_HOME": ROOT / "build" / "cache"}

HANDLERS = {
    "OnError": "void OnError(uchar channel, uchar error_type)",
    "OnFrame": "void OnFrame(DataFrame *frame, uchar channel)",
    "OnKey": "void OnKey(char character)",
    "OnStart": "void OnStart(long time)",
    "OnStop": "void OnStop(long time)",
    "OnTimer": "void OnTimer(uint timerid)",
    "OnTrigger": "void OnTrigger(long time)",
    "OnSerial": "void OnSerial(const void * data, unsigned short datacount)",
    "OnMsg": "void OnMsg(char * string)",
}

HEAD = (
    '\r\n#include <stdlib.h>\r\n#include "vexlib.h"\r\n#include "tornem.h"\r\n#include <stdio.h>\r\n'
    "void OnShutdown(){} /* this function is inserted here for compilation purposes"
    " it is not used by this version of the client */\n\r\n"
    "/* Global Variables */\r\n"
)
TAIL = "int main(int argc, char *argv[]) \r\n{\r\ninitialize(argc,argv);\r\nEventLoop();\r\nreturn 0;\r\n}\r\n"

# What program blocks have wrong although they compile: what is global, what is in OnKey, and the warning for it.
MISTAKES = {
    "a variable that is not used": ("", "int spare;", "unused-variable"),
    "a value that is not used": ("", "character + 1;", "unused-value"),
    "a function that is not used": ("static void Spare(void)\r\n{\r\n}\r\n", "", "unused-function"),
    "a format for another type": ("", 'Print("%s\\n", character);', "format"),
    "a text taken for a format": ("char text[80];\r\n", "Print(text);", "format-security"),
    "a way out without a result": ("int Next(int n)\r\n{\r\nif (n)\r\nreturn 1;\r\n}\r\n", "", "return-type"),
    "a local variable that hides a global one": ("int count;\r\n", 'int count = 1; Print("%d", count);', "shadow"),
    "a sign that is lost": ("uint limit = 9;\r\n", 'int n = -character; if (n < limit) Print("few");', "sign-compare"),
    "a value that was never set": ("", 'int n; Print("%d", n);', "uninitialized"),
    "an assignment for a comparison": ("", "if (character = 'a') Print(\"a\");", "parentheses"),
    "a semicolon behind a condition": ("", "if (character == 'a');\r\nPrint(\"a\");", "empty-body"),
    "a function that is not declared": ("", "Missing();", "implicit-function-declaration"),
}

# Shows every call of a handler. The unknown bytes of a text are what Print makes of them.
ECHO = {
    "OnError": 'Print("error %d %d\\n", channel, error_type);',
    "OnFrame": "SendFrame(frame, channel);",
    "OnKey": 'Print("key %c %02x\\n", character, (uchar)character);',
    "OnStart": 'Print("start %ld\\n", time);',
    "OnStop": 'Print("stop %ld\\n", time);',
    "OnTimer": 'Print("timer %u\\n", timerid);',
    "OnTrigger": 'Print("trigger %ld\\n", time);',
    "OnSerial": "SerialWrite(data, datacount);",
    "OnMsg": 'Print("msg [%s] %u\\n", string, (uint)strlen(string));',
}


def generated(handlers, global_text=""):
    """A complete C file; handlers maps names to the statements in them."""
    text = HEAD + "#include <string.h>\r\n" + global_text + "\r\n"
    text += "/* Global Function Prototypes */\r\nvoid Bump(int n)\r;\r\n"
    text += "/* Global Functions */\r\nvoid Bump(int n)\r\n{\r\n}\r\n\r\n/* Event Code */\r\n"
    for name, head in HANDLERS.items():
        text += f"{head}\r\n{{\r\n{handlers.get(name, '')}\r\n}}\r\n\r\n"
    return (text + TAIL).encode("cp1252")


def compile_with(settings, *arguments, script=COMPILE, env=None, text=True, **options):
    """Runs compile.sh; `env` has changes of the variables, None for what to leave out."""
    return run(script, *arguments, env={**VARIABLES, "TESSALY_SETTINGS": settings, **(env or {})}, text=text, **options)


def build(folder, source, compiler="cc"):
    """Builds the C file in the folder and returns the program. A warning is a failure."""
    (folder / "block.c").write_bytes(source)
    write_settings(folder / "settings.reg", FCompFileName=folder / "block.c")
    result = compile_with(folder / "settings.reg", folder / "block.out", env={"CC": compiler})
    assert (result.returncode, result.stdout, result.stderr) == (0, "", "")
    return folder / "block.out"


def play(program, script, *arguments):
    """Plays a script from the standard input and returns the outputs as text."""
    data = script if isinstance(script, bytes) else script.encode()
    result = run(program, *arguments, input=data)
    assert result.returncode == 0, result
    return result.stdout.decode(), result.stderr.decode()


def compilers():
    return [name for name in ("gcc", "clang") if shutil.which(name)]
