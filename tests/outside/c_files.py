"""C files as the editor writes them, put together by hand: what is in them, what is wrong in them, and what compilers
print about them."""

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

# What a compiler may print.
PRINTED = {
    "nothing at all": b"",
    "half a line": b"block.c:1:1: error: half",
    "control characters": bytes(range(256)) + b"\x1b[31m\x1b]0;title\a\r\r\n\b\b",
    "300,000 lines": b"".join(b"block.c:%d:1: warning: too many [-Wmany]\n" % line for line in range(300000)),
}


def generated(handlers, global_text=""):
    """A complete C file; handlers maps names to the statements in them."""
    text = HEAD + "#include <string.h>\r\n" + global_text + "\r\n"
    text += "/* Global Function Prototypes */\r\nvoid Bump(int n)\r;\r\n"
    text += "/* Global Functions */\r\nvoid Bump(int n)\r\n{\r\n}\r\n\r\n/* Event Code */\r\n"
    for name, head in HANDLERS.items():
        text += f"{head}\r\n{{\r\n{handlers.get(name, '')}\r\n}}\r\n\r\n"
    return (text + TAIL).encode("cp1252")
