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
SAMPLES = ["settings", "messages", "keywords"]  # tables, notes, code, pictures, the longest list
AXE = ROOT / "build/npm/node_modules/axe-core/axe.min.js"  # by script/packages
PICTURES = ROOT / "build/screenshots"


@pytest.fixture(name="browser", scope="module")
def fixture_browser():
    options = webdriver.ChromeOptions()
    for option in ("headless=new", "no-sandbox", "disable-gpu", "disable-dev-shm-usage", "hide-scrollbars"):
        options.add_argument(f"--{option}")
    browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    yield browser
    browser.quit()


@pytest.fixture(name="axe", scope="module")
def fixture_axe():
    return AXE.read_text(encoding="utf-8")


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


@pytest.mark.parametrize("language", LANGUAGES)
def test_no_page_is_wider_than_its_window(browser, language):
    wide = []
    for page in pages(language):
        browser.get(page.as_uri())
        for width in WIDTHS:
            look(browser, width)
            if browser.execute_script("return document.documentElement.scrollWidth > innerWidth"):
                wide.append((page.name, width))
            if page.stem in ("window", "keywords", "settings"):
                picture(browser, f"{language}-{page.stem}-{width}")
    assert wide == []


BROKEN_NAMES = """return [...document.querySelectorAll("td:first-child code")]
    .filter(code => /^\\w+$/.test(code.textContent) && code.getClientRects().length > 1)
    .map(code => code.textContent)"""


@pytest.mark.parametrize("language", LANGUAGES)
def test_a_name_at_the_front_of_a_table_is_not_broken(browser, language):
    broken = []
    look(browser, 1400)
    for page in pages(language):
        browser.get(page.as_uri())
        broken += [(page.name, name) for name in browser.execute_script(BROKEN_NAMES)]
    assert broken == []


def violations(browser, axe, paths):
    for path in paths:
        browser.get(path.as_uri())
        browser.execute_script(axe)
        found = browser.execute_async_script("axe.run({resultTypes: ['violations']}).then(arguments[0])")
        yield from ((path.name, each["id"], node["html"]) for each in found["violations"] for node in each["nodes"])


@pytest.mark.parametrize("language,width,scheme", [("en", 360, "light"), ("de", 1400, "dark")])
def test_the_accessibility_checker_finds_nothing_on_any_page(browser, axe, language, width, scheme):
    look(browser, width, scheme)
    assert list(violations(browser, axe, pages(language))) == []


@pytest.mark.parametrize("width,scheme", [(360, "dark"), (800, "light"), (800, "dark"), (1400, "light")])
def test_the_accessibility_checker_finds_nothing_in_windows_of_other_kinds(browser, axe, width, scheme):
    look(browser, width, scheme)
    assert list(violations(browser, axe, [HTML / "en" / f"{name}.html" for name in SAMPLES])) == []


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
