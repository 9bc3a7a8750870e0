"""The web pages in headless Chromium, from the file system: they fit every window, are accessible and searched."""

import os
from pathlib import Path

import pytest
from harness import ROOT, wait_until
from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.chrome.service import Service

HTML = Path(os.environ["HELP"]) / "html"
LANGUAGES = ["en", "de"]
WIDTHS = [360, 800, 1400]
WINDOWS = [(width, scheme) for width in WIDTHS for scheme in ("light", "dark")]
CHECKED = {"en": (360, "light"), "de": (1400, "dark")}  # the window in which all of a language go through the checker
SAMPLES = ["settings", "messages", "keywords"]  # in all windows, in English: tables, notes, code, the longest list
PICTURED = ["window", "keywords", "settings"]
AXE = ROOT / "build/npm/node_modules/axe-core/axe.min.js"  # by script/packages
PICTURES = ROOT / "build/screenshots"


@pytest.fixture(name="browser", scope="module")
def fixture_browser():
    options = webdriver.ChromeOptions()
    for option in ("headless=new", "no-sandbox", "disable-gpu", "disable-dev-shm-usage", "hide-scrollbars"):
        options.add_argument(f"--{option}")
    browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    browser.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": AXE.read_text(encoding="utf-8")})
    yield browser
    browser.quit()


def look(browser, width, scheme="light"):
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                            {"width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})
    browser.execute_cdp_cmd("Emulation.setEmulatedMedia",
                            {"features": [{"name": "prefers-color-scheme", "value": scheme}]})


def pages(language):
    return sorted((HTML / language).glob("*.html"))


def picture(browser, name):
    PICTURES.mkdir(parents=True, exist_ok=True)
    browser.save_screenshot(str(PICTURES / f"help-{name}.png"))


BROKEN_NAMES = """return [...document.querySelectorAll("td:first-child code")]
    .filter(code => /^\\w+$/.test(code.textContent) && code.getClientRects().length > 1)
    .map(code => code.textContent)"""

# Marks each text whose colours, size and grounds no text before it had. Contrast takes axe most of its time.
NEW_LOOKS = """const seen = new Set(arguments[0]);
for (const each of document.querySelectorAll("body *")) {
    if (![...each.childNodes].some(node => node.nodeType === Node.TEXT_NODE && node.data.trim()))
        continue;
    const {color, fontSize, fontWeight} = getComputedStyle(each);
    let look = `${color} ${fontSize} ${fontWeight}`;
    for (let around = each; around; around = around.parentElement)
        look += " " + getComputedStyle(around).backgroundColor;
    each.toggleAttribute("data-new", !seen.has(look));
    seen.add(look);
}
return [...seen]"""


def violations(browser, page, what, options):
    run = f"axe.run({what}, {{resultTypes: ['violations'], preload: false, {options}}}).then(arguments[0])"
    found = browser.execute_async_script(run)
    return [(str(page), each["id"], node["html"]) for each in found["violations"] for node in each["nodes"]]


@pytest.fixture(name="seen", scope="module")
def fixture_seen(browser):
    """What is wrong with the pages, by kind. Each is opened once and looked at in all windows."""
    seen = {"wide": [], "broken": [], "axe": [], "contrast": []}
    looks = []
    for language, page in [(language, page) for language in LANGUAGES for page in pages(language)]:
        browser.get(page.as_uri())
        for width, scheme in WINDOWS:
            look(browser, width, scheme)
            if browser.execute_script("return document.documentElement.scrollWidth > innerWidth"):
                seen["wide"].append((language, page.name, width))
            if (width, scheme) == CHECKED[language] or (language == "en" and page.stem in SAMPLES):
                seen["axe"] += violations(browser, page, "document", "rules: {'color-contrast': {enabled: false}}")
            if width == WIDTHS[-1]:  # narrow windows hide what has a colour
                known, looks = looks, browser.execute_script(NEW_LOOKS, looks)
                if looks != known:
                    seen["contrast"] += violations(browser, page, "'[data-new]'", "runOnly: ['color-contrast']")
            if page.stem in PICTURED and scheme == "light":
                picture(browser, f"{language}-{page.stem}-{width}")
        seen["broken"] += [(language, page.name, name) for name in browser.execute_script(BROKEN_NAMES)]
    assert len(looks) > 10
    return seen


def test_no_page_is_wider_than_its_window(seen):
    assert seen["wide"] == []


def test_a_name_at_the_front_of_a_table_is_not_broken(seen):
    assert seen["broken"] == []


def test_the_accessibility_checker_finds_nothing_on_any_page(seen):
    assert seen["axe"] == []


def test_every_text_stands_out_from_its_ground_in_light_and_dark(seen):
    assert seen["contrast"] == []


def search(browser, query):
    box = browser.find_element(By.ID, "query")
    box.send_keys(Keys.CONTROL, "a")
    box.send_keys(query)
    status = browser.find_element(By.CSS_SELECTOR, "#search [role=status]")
    wait_until("the answer of the search", lambda: status.text)
    return [link.get_attribute("href").rsplit("/", 1)[1]
            for link in browser.find_elements(By.CSS_SELECTOR, "#search ol a")]


@pytest.mark.parametrize("language,query,first", [
    ("en", "status bar", "window.html#statusbar"), ("en", "OnTimer", "events.html#OnTimer"),
    ("en", "compiler's message", "to-the-line.html"), ("en", "compiler’s message", "to-the-line.html"),
    ("de", "Menüs", "menus.html"), ("de", "menues", "menus.html"), ("de", "MENUS", "menus.html"),
    ("de", "Xyzzy Größe", None), ("de", "rückgängig", "window.html#pane"),
    ("de", "rueckgaengig", "window.html#pane")])
def test_the_search_finds_a_word_however_it_is_written(browser, language, query, first):
    look(browser, 800)
    browser.get((HTML / language / "index.html").as_uri())
    found = search(browser, query)
    assert found[:1] == [first] if first else found == []
    assert len(found) <= 20


def test_the_search_is_worked_by_keys_alone(browser):
    look(browser, 1400)
    browser.get((HTML / "de" / "files.html").as_uri())
    browser.find_element(By.TAG_NAME, "body").send_keys("/")
    box = browser.find_element(By.ID, "query")
    assert browser.switch_to.active_element == box and box.get_attribute("value") == ""
    found = search(browser, "Symbolleiste")
    assert "window.html#toolbar" in found
    marked = browser.find_element(By.CSS_SELECTOR, "#search ol mark")
    assert marked.text.lower() == "symbolleiste"
    picture(browser, "de-search-1400")
    box.send_keys(Keys.ARROW_DOWN)
    assert browser.switch_to.active_element.get_attribute("href").endswith(found[0])
    browser.switch_to.active_element.send_keys(Keys.ESCAPE)
    assert browser.switch_to.active_element == box
    assert browser.find_elements(By.CSS_SELECTOR, "#search ol a") == []
    search(browser, "Symbolleiste")
    box.send_keys(Keys.ENTER)
    wait_until("the page that was found", lambda: browser.current_url.endswith(found[0]))


def test_without_scripts_there_is_no_dead_search_and_all_else_is_there(browser):
    browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
    try:
        browser.get((HTML / "en" / "window.html").as_uri())
        assert browser.find_elements(By.TAG_NAME, "input") == []
        assert browser.find_element(By.CSS_SELECTOR, ".side a[aria-current]").text == "The window"
    finally:
        browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})
