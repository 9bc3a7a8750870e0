"""Loads the topics of a language: Markdown to HTML, with the program's texts put in."""

import html
import itertools
import re
from dataclasses import dataclass, field
from pathlib import Path

import markdown

import catalogue
import reference

HERE = Path(__file__).resolve().parent
LONG_PAGE = 4  # parts


@dataclass(frozen=True)
class Language:
    code: str
    name: str
    help_title: str
    contents: str
    keywords: str
    previous: str
    following: str
    skip: str
    quotes: tuple[str, str]
    chm_language: str
    search: str
    none_found: str
    found: str
    all_topics: str
    on_this_page: str
    neighbours: str
    report_to: str
    no_contact: str


LANGUAGES = {
    "en": Language("en", "English", "Tessaly Help", "Contents", "Index", "Back", "Next", "Skip to the text",
                   ("“", "”"), "0x409 English (United States)", "Search", "Nothing found", "Places found:",
                   "All topics", "On this page", "The pages before and after", "Send your report to",
                   "Whoever made this copy of Tessaly has not set an address for reports. Ask where you got it from."),
    "de": Language("de", "Deutsch", "Tessaly-Hilfe", "Inhalt", "Stichwörter", "Zurück", "Weiter", "Zum Text springen",
                   ("„", "“"), "0x407 German (Germany)", "Suchen", "Nichts gefunden", "Gefundene Stellen:",
                   "Alle Themen", "Auf dieser Seite", "Die Seiten davor und danach", "Schicken Sie Ihre Meldung an",
                   "Wer diese Kopie von Tessaly gemacht hat, hat keine Adresse für Meldungen angegeben. Fragen Sie "
                   "dort, woher Sie die Kopie haben."),
}


@dataclass
class Topic:
    name: str
    title: str
    keywords: list[tuple[str, str]]  # the entry and the anchor it leads to, "" for the top
    body: str = ""  # HTML
    sections: list[tuple[str, str]] = field(default_factory=list)  # anchor and title of each part

    @property
    def file(self) -> str:
        return f"{self.name}.html"


def topic_names() -> list[str]:
    return (HERE / "order.txt").read_text(encoding="utf-8").split()


def assets(language: Language, pictures: Path) -> list[Path]:
    """What stands beside the pages: the style sheet, and the pictures of the window in this language."""
    shown = sorted((pictures / language.code).glob("*.png"))
    if not shown:
        raise FileNotFoundError(f"no pictures of the window in {pictures / language.code}; script/pictures takes them")
    return [HERE / "style.css", *shown]


def _plain(value: str) -> str:
    """Text that means nothing but itself, in Markdown as in HTML."""
    return re.sub(r"[^\w ]", lambda match: f"&#{ord(match.group())};", value).replace("_", "&#95;")


def _menu_path(path: str, language: Language) -> str:
    items = path.split(">")
    for parent, item in zip(items, items[1:]):
        if catalogue.menu_parents()[item] != parent:
            raise ValueError(f"{item} is not in the menu {parent!r}")
    return " &gt; ".join(f"<b>{_plain(catalogue.menu_text(item, language.code))}</b>" for item in items)


def _quoted(identifier: str, language: Language) -> str:
    lines = catalogue.menu_text(identifier, language.code).strip().split("\n")
    return f"{language.quotes[0]}{'<br>'.join(_plain(line) for line in lines)}{language.quotes[1]}"


def _hot_keys(language: Language) -> str:
    rows = [line.split("\t") for line in catalogue.text("vornMainFrmPrmpt42", language.code).split("\n") if line]
    cells = "".join(f"<tr><th scope='row'>{_plain(key)}</th><td>{_plain(meaning)}</td></tr>" for key, meaning in rows)
    return f"<table class='as-shown'>{cells}</table>"


def _contact(address: str, language: Language) -> str:
    """An address that ends with .invalid, as the one does that nobody has set, reaches nobody."""
    return language.no_contact if address.endswith(".invalid") else f"{language.report_to} **{_plain(address)}**"


def _put_in(source: str, language: Language, contact: str) -> str:
    source = reference.put_in(source, language.code)
    source = re.sub(r"\{menu:([\w>]+)\}", lambda match: _menu_path(match[1], language), source)
    source = re.sub(r"\{text:(\w+)\}", lambda match: _quoted(match[1], language), source)
    source = re.sub(r"\{(en|de):(\w+)\}", lambda match: _plain(catalogue.menu_text(match[2], match[1]).strip()), source)
    source = source.replace("{keys}", _hot_keys(language)).replace("{contact}", _contact(contact, language))
    left = re.search(r"\{(menu|text|key|en|de|call|about|fields|values)\b[^}\n]*\}", source)
    if left:
        raise ValueError(f"nothing to put in for {left.group()}")
    return source


def plain(source: str) -> str:
    """The text of HTML in one line."""
    apart = re.sub(r"(?=<(?:p|li|t[dhr]|br|h\d|d[dt]|pre)\b)", " ", source)
    return " ".join(html.unescape(re.sub(r"<[^>]+>", "", apart)).split())


def _overview(sections: list[tuple[str, str]], language: Language) -> str:
    """The parts of a long page, for its head."""
    if len(sections) < LONG_PAGE:
        return ""
    items = "".join(f'<li><a href="#{anchor}">{html.escape(title)}</a></li>' for anchor, title in sections)
    return f'<nav class="parts" aria-label="{language.on_this_page}"><ul>{items}</ul></nav>\n'


def _typographic(page: str) -> str:
    """With apostrophes that fit the quotation marks. Code keeps its own, and so do texts of the window."""
    parts = re.split(r"(<(pre|code|kbd)\b.*?</\2>|<[^>]*>)", page, flags=re.S)
    return "".join(re.sub(r"(?<=\w)'", "’", part) if number % 3 == 0 else part
                   for number, part in enumerate(parts) if number % 3 < 2)


def _with_heads(page: str) -> str:
    """Where a table has more than two columns, its cells have their heads, for windows too narrow for columns."""
    def table(found: re.Match) -> str:
        heads = [html.escape(plain(head)) for head in re.findall(r"<th>(.*?)</th>", found[0])]
        columns = itertools.cycle(heads)

        def cell(_: re.Match) -> str:
            head = next(columns)
            return "<td>" if head == heads[0] else f'<td data-head="{head}">'
        return re.sub("<td>", cell, found[0]) if len(heads) > 2 else found[0]
    return re.sub("<table>.*?</table>", table, page, flags=re.S)


def _load(name: str, language: Language, contact: str) -> Topic:
    path = HERE / language.code / f"{name}.md"
    head, _, source = path.read_text(encoding="utf-8").partition("\n\n")
    fields = dict(line.split(": ", 1) for line in head.splitlines())
    keywords = [tuple((entry.strip() + "#").split("#")[:2]) for entry in fields["index"].split(";")]
    body = _typographic(markdown.markdown(_put_in(source, language, contact), output_format="html",
                                          extensions=["tables", "attr_list", "fenced_code", "def_list"]))
    body = _with_heads(body).replace("<th>", '<th scope="col">')
    body = body.replace("<pre>", '<pre tabindex="0">')  # for keys to scroll it
    body = re.sub(r'(<a href="[\w-]+)\.md', r'\1.html', body)  # the sources link to each other
    sections = re.findall(r'<h2 id="([\w-]+)">(.*?)</h2>', body)
    if len(sections) != body.count("<h2"):
        raise ValueError(f"{path}: every part needs an anchor, as in ## Title {{#anchor}}")
    sections = [(anchor, plain(title)) for anchor, title in sections]
    return Topic(name, _typographic(fields["title"]), keywords, _overview(sections, language) + body, sections)


def load_topics(language: Language, contact: str) -> list[Topic]:
    """The topics in their order; `contact` is the address for reports."""
    topics = [_load(name, language, contact) for name in topic_names()]
    items = "".join(f'<li><a href="{topic.file}">{html.escape(topic.title)}</a></li>' for topic in topics[1:])
    for topic in topics:
        topic.body = topic.body.replace("<p>{contents}</p>", f"<ul>{items}</ul>")
    return topics


def sort_key(word: str) -> str:
    """Without regard to case and umlauts."""
    return word.lower().translate(str.maketrans("äöüß", "aous"))


def index_entries(topics: list[Topic]) -> list[tuple[str, list[tuple[str, str]]]]:
    """The index: each word once, with the titles of all parts that it leads to and where they are."""
    entries = {}
    for topic in topics:
        for word, anchor in topic.keywords:
            title = dict(topic.sections).get(anchor, topic.title)
            target = topic.file + (f"#{anchor}" if anchor else "")
            places = entries.setdefault(word.lower(), (word, []))[1]
            if target not in [each for _, each in places]:
                places.append((f"{topic.title}: {title}" if title in dict(places) else title, target))
    return sorted(entries.values(), key=lambda entry: sort_key(entry[0]))
