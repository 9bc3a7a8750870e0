"""Writes the topics of a language as a folder of web pages that need no server, and no script but for the search."""

import html
import itertools
import json
import re
import shutil
from pathlib import Path

from topics import HERE, LANGUAGES, Language, Topic, index_entries, plain, sort_key

KEYWORDS_FILE = "keywords.html"


def _link(file: str, title: str, more: str = "") -> str:
    return f'<a href="{file}"{more}>{html.escape(title)}</a>'


# The list of all topics comes last: a reader without a style sheet, or with a small window, has the text first.
def _page(topics: list[Topic], title: str, body: str, file: str, language: Language, around: str) -> str:
    others = "".join(
        f'<li><a href="../{other.code}/{file}" lang="{other.code}" hreflang="{other.code}">{other.name}</a></li>'
        for other in LANGUAGES.values() if other is not language)
    side = "".join(f"<li>{_link(topic.file, topic.title, _here(topic.file == file))}</li>" for topic in topics)
    return f"""<!DOCTYPE html>
<html lang="{language.code}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{html.escape(title)} - {language.help_title}</title>
<link rel="stylesheet" href="style.css">
<script src="search.js" defer></script>
</head>
<body class="with-side">
<a class="skip" href="#page">{language.skip}</a>
<header>
<nav aria-label="{language.help_title}"><ul>
<li>{_link("index.html", language.contents)}</li>
<li>{_link(KEYWORDS_FILE, language.keywords, _here(file == KEYWORDS_FILE))}</li>{others}
</ul></nav>
<div id="search" data-label="{language.search}" data-none="{language.none_found}" data-found="{language.found}"></div>
</header>
<main id="page">
<h1>{html.escape(title)}</h1>
{body}
</main>
{around}<nav class="side" aria-label="{language.all_topics}"><ul>
{side}
</ul></nav>
</body>
</html>
"""


def _here(it_is: bool) -> str:
    return ' aria-current="page"' if it_is else ""


def _neighbours(topics: list[Topic], at: int, language: Language) -> str:
    links = []
    if at > 0:
        links.append(f"<li>{language.previous}: {_link(topics[at - 1].file, topics[at - 1].title, ' rel=prev')}</li>")
    if at + 1 < len(topics):
        links.append(f"<li>{language.following}: {_link(topics[at + 1].file, topics[at + 1].title, ' rel=next')}</li>")
    return f'<nav class="around" aria-label="{language.neighbours}"><ul>{"".join(links)}</ul></nav>\n'


def _entry(word: str, places: list[tuple[str, str]]) -> str:
    """A word that leads to several places has the titles of these as links."""
    if len(places) == 1:
        return f"<li>{_link(places[0][1], word)}</li>"
    return f"<li>{html.escape(word)}: {', '.join(_link(target, title) for title, target in places)}</li>"


def _keywords(topics: list[Topic]) -> str:
    def letter(entry: tuple) -> str:
        first = sort_key(entry[0])[0].upper()
        return first if first.isalpha() else "#"

    groups = [(first, list(entries)) for first, entries in
              itertools.groupby(sorted(index_entries(topics), key=lambda each: letter(each) != "#"), letter)]
    anchors = {first: f"letter-{'sign' if first == '#' else first.lower()}" for first, _ in groups}
    letters = " ".join(_link(f"#{anchors[first]}", first) for first, _ in groups)
    parts = "".join(f'<h2 id="{anchors[first]}">{first}</h2>\n<ul>{"".join(_entry(*each) for each in entries)}</ul>\n'
                    for first, entries in groups)
    return f'<p class="letters">{letters}</p>\n<div class="keywords">\n{parts}</div>'


def _search_texts(topics: list[Topic]) -> list[list[str]]:
    """Of each part of each page: where it is, the titles of page and part, its entries in the index, and its text."""
    texts = []
    for topic in topics:
        parts = re.split(r'<h2 id="[\w-]+">.*?</h2>', re.sub(r"<nav.*?</nav>", "", topic.body, flags=re.S))
        for (anchor, title), part in zip([("", ""), *topic.sections], parts):
            keywords = [word for word, where in topic.keywords if where == anchor or f'id="{where}"' in part]
            target = topic.file + (f"#{anchor}" if anchor else "")
            texts.append([target, topic.title, title, "; ".join(keywords), plain(part)])
    return texts


def write_html(topics: list[Topic], language: Language, assets: list[Path], folder: Path) -> None:
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for at, topic in enumerate(topics):
        page = _page(topics, topic.title, topic.body, topic.file, language, _neighbours(topics, at, language))
        (folder / topic.file).write_text(page, encoding="utf-8")
    keywords = _page(topics, language.keywords, _keywords(topics), KEYWORDS_FILE, language, "")
    (folder / KEYWORDS_FILE).write_text(keywords, encoding="utf-8")
    texts = json.dumps(_search_texts(topics), ensure_ascii=False, separators=(",", ":"))
    (folder / "search-texts.js").write_text(f"const searchTexts = {texts};\n", encoding="utf-8")
    for file in [*assets, HERE / "search.js"]:
        shutil.copy(file, folder)
