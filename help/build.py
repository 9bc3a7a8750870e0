"""Builds the users' help: help/build.py [--contact ADDRESS] [--pictures FOLDER] OUTDIR. Writes
OUTDIR/html/{en,de}/ and OUTDIR/Tessaly-{en,de}.chm.

Each topic is written once in each language, in Markdown. Texts of the program are not repeated there but named, and
taken from the program's own catalogue, so that help and program cannot differ:

    {menu:mnuFile>mnuSavePSF}   the way through the menus
    {text:vornMainFrmPrmpt13}   a message or caption, in quotation marks
    {en:mnuFile}, {de:mnuFile}  a text in that language
    {keys}                      the list of hot keys as the program shows it
    {contents}                  all topics
    {contact}                   where to report a problem

A topic begins with `title:` and `index:`, the latter its entries in the index, each with an #anchor if it wants one.
"""

import argparse
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

from chm_book import write_chm  # noqa: E402
from html_pages import write_html  # noqa: E402
from topics import LANGUAGES, assets, load_topics  # noqa: E402
from words import refuse_wrong_words  # noqa: E402


def main() -> None:
    parser = argparse.ArgumentParser(description="Builds the users' help.")
    parser.add_argument("--contact", default="nobody.invalid", help="the address for reports of problems")
    parser.add_argument("--pictures", type=Path, default=HERE, help="the folder with en/*.png and de/*.png")
    parser.add_argument("outdir", type=Path)
    arguments = parser.parse_args()
    outdir = arguments.outdir.resolve()
    refuse_wrong_words()
    for language in LANGUAGES.values():
        topics = load_topics(language, arguments.contact)
        files = assets(language, arguments.pictures)
        write_html(topics, language, files, outdir / "html" / language.code)
        write_chm(topics, language, files, outdir / f"Tessaly-{language.code}.chm")


if __name__ == "__main__":
    main()
