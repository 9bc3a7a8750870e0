"""Writes the topics of a language as a folder of web pages that need neither a server nor a script."""

import html
import shutil
from pathlib import Path

from topics import LANGUAGES, Language, Topic, assets, index_entries

KEYWORDS_FILE = "keywords.html"


def _link(file: str, title: str, relation: str = "") -> str:
    return f'<a href="{file}"{relation}>{html.escape(title)}</a>'


def _page(title: str, body: str, file: str, language: Language, around: str) -> str:
    others = "".join(
        f'<li><a href="../{other.code}/{file}" lang="{other.code}" hreflang="{other.code}">{other.name}</a></li>'
        for other in LANGUAGES.values() if other is not language)
    return f"""<!DOCTYPE html>
<html lang="{language.code}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{html.escape(title)} - {language.help_title}</title>
<link rel="stylesheet" href="style.css">
</head>
<body>
<a class="skip" href="#page">{language.skip}</a>
<nav aria-label="{language.help_title}"><ul>
<li>{_link("index.html", language.contents)}</li><li>{_link(KEYWORDS_FILE, language.keywords)}</li>{others}
</ul></nav>
<main id="page">
<h1>{html.escape(title)}</h1>
{body}
</main>
{around}</body>
</html>
"""


def _neighbours(topics: list[Topic], at: int, language: Language) -> str:
    links = []
    if at > 0:
        links.append(f"<li>{language.previous}: {_link(topics[at - 1].file, topics[at - 1].title, ' rel=prev')}</li>")
    if at + 1 < len(topics):
        links.append(f"<li>{language.following}: {_link(topics[at + 1].file, topics[at + 1].title, ' rel=next')}</li>")
    return f'<nav aria-label="{language.previous} / {language.following}"><ul>{"".join(links)}</ul></nav>\n'


def write_html(topics: list[Topic], language: Language, folder: Path) -> None:
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for at, topic in enumerate(topics):
        page = _page(topic.title, topic.body, topic.file, language, _neighbours(topics, at, language))
        (folder / topic.file).write_text(page, encoding="utf-8")
    entries = "".join(f"<li>{_link(target, word)}</li>" for word, target in index_entries(topics))
    keywords = _page(language.keywords, f"<ul>{entries}</ul>", KEYWORDS_FILE, language, "")
    (folder / KEYWORDS_FILE).write_text(keywords, encoding="utf-8")
    for file in assets(language):
        shutil.copy(file, folder)
