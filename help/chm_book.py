"""Writes the topics of a language as a CHM file, by Free Pascal's chmcmd."""

import html
import shutil
import subprocess
import tempfile
from pathlib import Path

import full_text
from topics import Language, Topic, index_entries

# What the help window shows: tree, index, search; and its buttons: hide, back, forward, print, options.
NAVIGATION = "0x63520"
BUTTONS = "0x304e"

# The viewer reads contents and index in the code page of the help's language, which is this one for both.
CODE_PAGE = "cp1252"


def _page(topic: Topic, language: Language) -> str:
    return f"""<!DOCTYPE html>
<html lang="{language.code}">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<meta http-equiv="X-UA-Compatible" content="IE=edge">
<title>{html.escape(topic.title)}</title>
<link rel="stylesheet" type="text/css" href="style.css">
</head>
<body>
<h1>{html.escape(topic.title)}</h1>
{topic.body}
</body>
</html>
"""


def _item(name: str, target: str) -> str:
    return (f'<LI><OBJECT type="text/sitemap"><param name="Name" value="{html.escape(name)}">'
            f'<param name="Local" value="{target}"></OBJECT>\n')


def _keyword(word: str, places: list[tuple[str, str]]) -> str:
    """The viewer asks which of the titles is meant where there are several."""
    targets = "".join(f'<param name="Name" value="{html.escape(title)}"><param name="Local" value="{target}">'
                      for title, target in places)
    return (f'<LI><OBJECT type="text/sitemap"><param name="Name" value="{html.escape(word)}">{targets}</OBJECT>\n')


def _site_map(items: str) -> str:
    return f"<HTML><HEAD></HEAD><BODY>\n<UL>\n{items}</UL>\n</BODY></HTML>\n"


def _contents(topics: list[Topic]) -> str:
    items = ""
    for topic in topics:
        items += _item(topic.title, topic.file)
        if topic.sections:
            parts = "".join(_item(title, f"{topic.file}#{anchor}") for anchor, title in topic.sections)
            items += f"<UL>\n{parts}</UL>\n"
    return _site_map(items)


# chmcmd's binary index has a question mark for every umlaut; without it the viewer reads index.hhk, which is right.
def _project(topics: list[Topic], language: Language, assets: list[Path], chm: Path) -> str:
    home = topics[0].file
    files = "\n".join([topic.file for topic in topics] + [file.name for file in assets])
    return f"""[OPTIONS]
Compatibility=1.1 or later
Compiled file={chm}
Contents file=contents.hhc
Index file=index.hhk
Default topic={home}
Default Window=main
Full-text search=Yes
Binary Index=No
Language={language.chm_language}
Title={language.help_title}

[WINDOWS]
main="{language.help_title}","contents.hhc","index.hhk","{home}","{home}",,,,,{NAVIGATION},,{BUTTONS},,,,,,,,0

[FILES]
{files}
"""


def _compile(folder: Path, made: str) -> Path:
    run = subprocess.run(["chmcmd", "help.hhp"], cwd=folder, capture_output=True, text=True, check=False)
    if run.returncode != 0 or not (folder / made).exists():
        raise RuntimeError(f"chmcmd made no {made}:\n{run.stdout}{run.stderr}")
    return folder / made


def _full_text(chm: Path) -> bytes:
    target = chm.with_suffix(".index")
    subprocess.run(["chmls", "extract", chm, full_text.STREAM.decode(), target], capture_output=True, check=True)
    return target.read_bytes()


def write_chm(topics: list[Topic], language: Language, assets: list[Path], chm: Path) -> None:
    chm.unlink(missing_ok=True)
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        texts = {topic.file: _page(topic, language) for topic in topics}
        texts["contents.hhc"] = _contents(topics)
        texts["index.hhk"] = _site_map("".join(_keyword(*entry) for entry in index_entries(topics)))
        texts["help.hhp"] = _project(topics, language, assets, chm.name)
        for file in assets:
            shutil.copy(file, folder)
        for file, text in texts.items():
            plain = full_text.without_umlauts(text) if file.endswith(".html") else text
            (folder / file).write_bytes(plain.encode(CODE_PAGE, "xmlcharrefreplace"))
        index = _full_text(_compile(folder, chm.name))
        for file, text in texts.items():
            (folder / file).write_bytes(text.encode(CODE_PAGE, "xmlcharrefreplace"))
        made = _compile(folder, chm.name)
        full_text.add_full_text(made, index)
        shutil.move(made, chm)
