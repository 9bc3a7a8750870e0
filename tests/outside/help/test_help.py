"""The users' help as it was built, in $HELP: complete, consistent, and true to the program's tables."""

import html
import os
import re
import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path

import pytest
from harness import EVENTS, ROOT

sys.path.insert(0, str(ROOT / "help"))

import catalogue  # noqa: E402

HELP = Path(os.environ["HELP"])
LANGUAGES = ["en", "de"]
TOPICS = (ROOT / "help/order.txt").read_text(encoding="utf-8").split()
SETTINGS = ["Language", "FCompBat", "FCompFileName", "FHelp", "FProgBlkIcon"]

# Texts that the program keeps but shows nowhere: grep for them in ui/ finds nothing.
NOT_SHOWN = {f"vornMainFrmPrmpt{n}" for n in (4, 9, 14, 19, 21, 22, 26, 28, 29, 35)}


class Page(HTMLParser):
    """What a browser makes of a page: its text, its anchors, its links, and whether its elements match.
    The text is that of <main> where there is one."""

    VOID = {"meta", "link", "br", "hr", "img"}

    def __init__(self, source):
        super().__init__()
        self.text, self.ids, self.links, self.open, self.tags = "", [], [], [], []
        self.main_text, self.attributes = None, {}
        self.feed(source)
        assert self.open == []
        self.text = squeezed(self.main_text if self.main_text is not None else self.text)

    def handle_starttag(self, tag, attrs):
        found = dict(attrs)
        self.tags.append(tag)
        if tag in ("body", "main"):
            self.text = ""
        self.attributes.setdefault(tag, []).append(found)
        if "id" in found:
            self.ids.append(found["id"])
        if tag in ("a", "link"):
            self.links.append(found["href"])
        if tag == "br":
            self.text += " "
        if tag not in self.VOID:
            self.open.append(tag)

    def handle_endtag(self, tag):
        assert self.open.pop() == tag
        if tag == "main":
            self.main_text = self.text
        self.text += " " if tag in ("p", "td", "th", "li", "h1", "h2", "pre", "dt", "dd") else ""

    def handle_data(self, data):
        self.text += data


def page(language, name):
    return Page((HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8"))


def all_text(language):
    return " ".join(page(language, name).text for name in TOPICS)


def squeezed(text):
    return " ".join(text.split())


@pytest.mark.parametrize("language", LANGUAGES)
def test_every_topic_is_a_page(language):
    pages = {path.stem for path in (HELP / "html" / language).glob("*.html")}
    assert pages == {*TOPICS, "keywords"}


def test_both_languages_have_the_same_parts_and_links():
    for name in TOPICS:
        english, german = page("en", name), page("de", name)
        assert english.ids == german.ids, name
        inner = [[link for link in each.links if "#" in link] for each in (english, german)]
        assert sorted(inner[0]) == sorted(inner[1]), name
        for tag in ("h2", "table", "tr", "pre", "blockquote"):
            assert english.tags.count(tag) == german.tags.count(tag), (name, tag)


@pytest.mark.parametrize("language", LANGUAGES)
def test_every_link_leads_to_a_page_and_an_anchor_that_exist(language):
    folder = HELP / "html" / language
    for path in folder.glob("*.html"):
        for link in page(language, path.stem).links:
            file, _, anchor = link.partition("#")
            target = (folder / file).resolve() if file else path
            assert target.is_file(), f"{path.name}: {link}"
            if anchor:
                assert anchor in Page(target.read_text(encoding="utf-8")).ids, f"{path.name}: {link}"


def test_the_links_of_the_sources_lead_to_sources():
    for path in (ROOT / "help").glob("??/*.md"):
        for target in re.findall(r"\]\(([^)#]+)", path.read_text(encoding="utf-8")):
            assert (path.parent / target).is_file(), f"{path}: {target}"


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_index_page_leads_to_every_topic(language):
    assert {f"{name}.html" for name in TOPICS} <= set(page(language, "index").links)


@pytest.mark.parametrize("language", LANGUAGES)
def test_every_menu_command_is_described_under_its_own_text(language):
    menus = page(language, "menus").text
    assert len(catalogue.menu_parents()) == 15
    for identifier in catalogue.menu_parents():
        assert catalogue.menu_text(identifier, language) in menus, identifier


@pytest.mark.parametrize("language", LANGUAGES)
def test_every_text_that_the_program_shows_is_quoted(language):
    shown = all_text(language)
    for identifier in catalogue.catalogue():
        text = squeezed(catalogue.menu_text(identifier, language))
        if identifier in NOT_SHOWN or identifier == "vornMainFrmPrmpt8":  # the file dialogs' filter
            continue
        assert text in shown, identifier


def test_texts_that_are_said_to_be_shown_nowhere_are_not_used_by_the_window():
    sources = "".join(path.read_text(encoding="utf-8") for path in (ROOT / "ui").glob("*.cpp"))
    for identifier in NOT_SHOWN:
        assert not re.search(rf"\b({identifier}|Text::{catalogue.names()[identifier]})\b", sources), identifier


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_keys_are_described_as_the_window_obeys_them(language):
    keys = (HELP / "html" / language / "keys.html").read_text(encoding="utf-8")
    rows = dict(re.findall(r"<tr>\s*<td><kbd>(F\d+)</kbd></td>\s*<td>(.*?)</td>", keys, re.S))
    assert list(rows) == ["F1", "F2", "F3", "F4", "F5", "F10"]
    source = (ROOT / "ui/KeysAndToolBar.cpp").read_text(encoding="utf-8")
    obeyed = dict(re.findall(r"case Key(F\d+):\s*(?:if \(.*\{\s*)?([\w.]+)\(", source))
    assert (obeyed["F4"], obeyed["F5"]) == ("Form_DeleteFunction", "Form_AddFunction")
    assert ("Deletes" if language == "en" else "Löscht") in rows["F4"]
    assert ("Adds" if language == "en" else "Fügt") in rows["F5"]


@pytest.mark.parametrize("language", LANGUAGES)
def test_all_settings_and_events_are_described(language):
    settings, events = page(language, "settings"), page(language, "events")
    declared = re.findall(r'Setting = "(\w+)"', (ROOT / "app/Settings.h").read_text())
    assert sorted(declared) == sorted(SETTINGS)
    for name in SETTINGS:
        assert name in settings.text
    table = (ROOT / "document/EventTable.h").read_text()
    handlers = re.findall(r'"\[\w+\]", "(.*?)(?:\\n|\{)', table)
    assert len(handlers) == len(EVENTS)
    for name, handler in zip(EVENTS, handlers):
        assert name in events.ids
        assert handler in events.text


@pytest.mark.parametrize("language", LANGUAGES)
def test_what_is_kept_and_where_is_described_as_the_program_does_it(language):
    recovery = page(language, "recovery").text
    names = re.search(r"Names = \{(.*?)\}", (ROOT / "recovery/Origin.cpp").read_text(), re.S)[1]
    reasons = re.findall(r'"(.*?)"', names)
    assert len(reasons) == 10
    limits = (ROOT / "recovery/KeptDocuments.h").read_text()
    count = re.search(r"MostKept = (\d+);", limits)[1]
    megabytes = re.search(r"MostKeptBytes = (\d+)'000'000;", limits)[1]
    windows = re.search(r'below = "(.*?)"', (ROOT / "platform/system/win32/PrivateFiles.cpp").read_text())[1]
    folders = ["%LOCALAPPDATA%" + windows.replace("\\\\", "\\"), "~/.local/state/tessaly/recovery", "/tmp/tessaly-"]
    number = LANGUAGES.index(language)
    windows_entry = re.findall(r'TextKeptEntry .*"(.*)"', (ROOT / "packaging/windows/Texts.nsh").read_text())[number]
    action = (ROOT / "packaging/linux/tessaly.desktop").read_text().split("[Desktop Action KeptTexts]")[1]
    linux_entry = re.findall(r"^Name.*=(.*)", action, re.M)[number]
    for wanted in [*reasons, f" {count}", f" {megabytes} MB", *folders, windows_entry, linux_entry]:
        assert wanted in recovery, wanted


@pytest.mark.parametrize("language", LANGUAGES)
@pytest.mark.parametrize("name", ["index", "files", "storing", "messages", "psf"])
def test_the_way_back_to_a_text_is_told_where_one_looks_for_it(name, language):
    source = (ROOT / "help" / language / f"{name}.md").read_text(encoding="utf-8")  # the built page has navigation
    assert "](recovery.md" in source


@pytest.mark.parametrize("language", LANGUAGES)
def test_cells_have_the_heads_of_their_columns_where_a_table_has_more_than_two(language):
    for name in TOPICS:
        source = (HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8")
        for table in re.findall("<table>.*?</table>", source, re.S):
            heads, *rows = [re.findall(r'<t[hd]([^>]*)>(.*?)</t[hd]>', row, re.S) for row in table.split("</tr>")[:-1]]
            for row in rows:
                assert len(row) == len(heads)
                for (attributes, _), (_, head) in list(zip(row, heads))[1:]:
                    assert attributes == (f' data-head="{head}"' if len(heads) > 2 else ""), (name, head)


@pytest.mark.parametrize("language", LANGUAGES)
def test_pages_tell_their_language_and_have_landmarks_and_one_heading(language):
    for name in [*TOPICS, "keywords"]:
        found = page(language, name)
        assert found.attributes["html"] == [{"lang": language}]
        assert found.tags.count("main") == 1 and found.tags.count("h1") == 1
        assert all("aria-label" in each for each in found.attributes["nav"])
        assert all("scope" in each for each in found.attributes.get("th", []))
        assert found.attributes["script"] == [{"src": "search.js", "defer": None}]
        labels = [each["aria-label"] for each in found.attributes["nav"]]
        assert len(labels) == len(set(labels)), name
        assert len(found.ids) == len(set(found.ids)), name


@pytest.mark.parametrize("language", LANGUAGES)
def test_each_page_lists_all_others_and_shows_which_one_it_is(language):
    for name in [*TOPICS, "keywords"]:
        source = (HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8")
        side = source.split('<nav class="side"')[1]
        assert re.findall(r'<a href="([\w-]+)\.html"', side) == TOPICS
        assert re.findall(r'<a href="([\w-]+)\.html" aria-current="page"', source) == [name]


@pytest.mark.parametrize("language", LANGUAGES)
def test_a_page_with_many_parts_lists_them_at_its_head(language):
    for name in TOPICS:
        source = (HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8").split("<main")[1]
        parts = re.findall(r'<h2 id="([\w-]+)"', source)
        head = re.search(r'</h1>\s*<nav class="parts".*?</nav>', source, re.S)
        assert (re.findall(r'href="#([\w-]+)"', head[0]) if head else []) == (parts if len(parts) > 3 else []), name


def index_page(language):
    """The entries of the index: word or words before the links, and titles and targets of these."""
    source = (HELP / "html" / language / "keywords.html").read_text(encoding="utf-8")
    for entry in re.findall(r"<li>(.*?)</li>", source.split('<div class="keywords">')[1].split("</main>")[0]):
        links = re.findall(r'<a href="([^"]+)">(.*?)</a>', entry)
        yield html.unescape(re.sub(r"<.*", "", entry).rstrip(": ") or links[0][1]), links


@pytest.mark.parametrize("language,wanted", [
    ("en", "git|uninstall|DataFrame|uchar|test|.expected|line ends|UTF-8|PowerShell|return codes"),
    ("de", "git|Deinstallation|DataFrame|uchar|Botschaft|.expected|Zeilenende|UTF-8|PowerShell|Rückgabewert")])
def test_the_index_has_each_word_once_and_those_that_people_look_for(language, wanted):
    entries = dict(index_page(language))
    words = [word.lower() for word, _ in index_page(language)]
    assert len(words) == len(set(words)) > 150
    for word, links in entries.items():
        assert len(links) == len({title for _, title in links}) == len({target for target, _ in links}), word
    for word in wanted.split("|"):
        assert any(word.lower() in each for each in words), word


@pytest.mark.parametrize("language", LANGUAGES)
def test_nothing_is_left_to_be_put_in(language):
    assert not re.search(r"@[A-Z]+@|\{(menu|text|keys|contents)\b", all_text(language))


@pytest.mark.parametrize("language", LANGUAGES)
def test_apostrophes_of_the_text_are_curly_like_its_quotation_marks(language):
    for name in TOPICS:
        source = (HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8")
        prose = re.sub(r"<(pre|code|kbd)\b.*?</\1>|<[^>]*>", "", source, flags=re.S)
        assert not re.search(r"\w'", prose), (name, re.search(r".*\w'.*", prose)[0])


def chm_files(language):
    command = ["chmls", "-n", "list", str(HELP / f"Tessaly-{language}.chm")]
    done = subprocess.run(command, capture_output=True, text=True, check=True)
    return {line.strip().lstrip("/") for line in done.stdout.splitlines()}


def extracted(language, name, folder):
    target = folder / name.replace("/", "_")
    subprocess.run(["chmls", "extract", str(HELP / f"Tessaly-{language}.chm"), f"/{name}", str(target)],
                   capture_output=True, check=True)
    return target.read_bytes()


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_chm_file_holds_every_page_with_contents_index_and_full_text_search(language):
    files = chm_files(language)
    wanted = {*(f"{name}.html" for name in TOPICS), "style.css", "messages.png", "window.png", "contents.hhc",
              "index.hhk", "#SYSTEM", "$FIftiMain"}
    assert wanted <= files


@pytest.mark.parametrize("language", LANGUAGES)
def test_pictures_are_there_and_say_in_words_what_they_show(language, tmp_path):
    pictures = [picture for name in TOPICS for picture in page(language, name).attributes.get("img", [])]
    assert pictures
    for picture in pictures:
        assert len(picture["alt"]) > 20
        shown = (HELP / "html" / language / picture["src"]).read_bytes()
        assert shown.startswith(b"\x89PNG") and shown == extracted(language, picture["src"], tmp_path)


def test_without_pictures_of_the_window_there_is_no_help_and_it_is_said_which_are_missing(tmp_path):
    done = subprocess.run(["/usr/bin/python3", ROOT / "help/build.py", "--pictures", tmp_path, tmp_path / "made"],
                          stderr=subprocess.PIPE, text=True, check=False)
    assert done.returncode != 0 and f"no pictures of the window in {tmp_path}/en" in done.stderr
    assert not (tmp_path / "made").exists()


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_pages_of_the_chm_file_are_those_of_the_web_pages(language, tmp_path):
    for name in TOPICS:
        from_chm = Page(extracted(language, f"{name}.html", tmp_path).decode("cp1252"))
        assert from_chm.text == page(language, name).text, name


@pytest.mark.parametrize("language", LANGUAGES)
def test_contents_and_index_of_the_chm_file_lead_somewhere_and_keep_their_umlauts(language, tmp_path):
    for name in ("contents.hhc", "index.hhk"):
        source = extracted(language, name, tmp_path).decode("cp1252")
        entries = re.findall(r'name="Name" value="([^"]*)">.*?name="Local" value="([^"]*)"', source)
        assert len(entries) >= len(TOPICS)
        for title, target in entries:
            file, _, anchor = target.partition("#")
            assert not anchor or anchor in page(language, Path(file).stem).ids, target
            assert Path(file).stem in TOPICS and not re.search(r"\?\w", html.unescape(title)), title
    if language == "de":
        assert "Menüs" in source and "Öffnen" in source


def test_the_chm_file_tells_its_language(tmp_path):
    for language, code in (("en", b"\x09\x04\x00\x00"), ("de", b"\x07\x04\x00\x00")):
        system = extracted(language, "#SYSTEM", tmp_path)
        assert b"\x04\x00\x24\x00" + code in system
