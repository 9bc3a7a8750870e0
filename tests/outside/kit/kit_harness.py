"""What the tests of the host compile kit share: a C file as the editor writes it, and a way to build and run it.

The C file is put together by hand, so that the kit is tested without the editor.
"""
import shutil

from harness import ROOT, run, write_settings

COMPILE = ROOT / "kit" / "compile.sh"

# Tests share the runtimes that are kept.
VARIABLES = {"CC": None, "CFLAGS": None, "LDFLAGS": None, "XDG_CACHE_HOME": ROOT / "build" / "cache"}

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
