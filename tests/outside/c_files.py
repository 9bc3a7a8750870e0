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

# Names of the kit's own calls that a block has itself: what is global, what is in OnStart, what it prints, its status.
OWN_NAMES = {
    "functions of other types": (
        "double Now(int a, int b)\r\n{\r\nreturn a + b;\r\n}\r\nstatic int Fail(void)\r\n{\r\nreturn 4;\r\n}\r\n",
        'Print("%.1f %d\\n", Now(1, 2), Fail());', "3.0 4\n", 0),
    "functions of the same types": (
        "long Now(void)\r\n{\r\nreturn 7;\r\n}\r\n"
        "void Fail(const char *format, ...)\r\n{\r\nPrint(format, 8);\r\n}\r\n",
        'Print("%ld ", Now()); Fail("%d\\n");', "7 8\n", 0),
    "global variables": ("int Now = 5;\r\nconst char *Fail[] = {\"six\"};\r\n",
                         'Print("%d %s\\n", Now, Fail[0]);', "5 six\n", 0),
    "a type and a constant": ("typedef char Fail[9];\r\nenum { Now = 3 };\r\n",
                              'Print("%d %d\\n", (int)sizeof(Fail), Now);', "9 3\n", 0),
    "a pointer to a function": ("int Next(void)\r\n{\r\nreturn 6;\r\n}\r\nint (*Now)(void) = Next;\r\n",
                                'Print("%d\\n", Now());', "6\n", 0),
    "macros": ("#define Now 2\r\n#define Fail(x) (x + 1)\r\n", 'Print("%d %d\\n", Now, Fail(2));', "2 3\n", 0),
    "local variables": ("", 'long Now = 1; int Fail = 2; Print("%ld %d\\n", Now, Fail);', "1 2\n", 0),
    "one of them": ("int Now = 5;\r\n", 'Print("%d\\n", Now); Fail("%d", (int)NowMicroseconds());', "5\n", 3),
    "none": ("", 'Print("%ld %d\\n", Now(), (int)NowMicroseconds()); Fail("%d", 1);', "0 0\n", 3),
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
