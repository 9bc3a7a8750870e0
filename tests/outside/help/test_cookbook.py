"""The six handlers of the help: their texts are taken out of the page, built and run with their scripts."""

import pytest
from help_pages import LANGUAGES, Workplace, kinds, member, sections, source
from pages import blocks

RECIPES = ["cyclic", "timeout", "filter", "serial", "errors", "message"]


@pytest.mark.parametrize("language", LANGUAGES)
def test_there_are_six(language):
    assert list(sections(source(language, "cookbook"))) == RECIPES


@pytest.mark.parametrize("language", LANGUAGES)
@pytest.mark.parametrize("recipe", RECIPES)
def test_a_recipe_does_what_its_page_says(recipe, language, tmp_path):
    text = sections(source(language, "cookbook"))[recipe]
    assert set(kinds(text)) == {"c", "events", "output"}
    place = Workplace(tmp_path)
    program = place.block(blocks(text, "c"))
    script = place.write("Block.events", *blocks(text, "events"))
    assert place.does(program, script) == "".join(blocks(text, "output"))


@pytest.mark.parametrize("language", LANGUAGES)
@pytest.mark.parametrize("recipe", RECIPES)
def test_each_text_stands_below_the_name_of_its_item(recipe, language):
    text = sections(source(language, "cookbook"))[recipe]
    for code in blocks(text, "c"):
        above = text[:text.index(f"```c\n{code}")].strip().splitlines()[-1]
        item = member(code)
        assert above.endswith("{text:nodeVariables}:" if item == "references" else f"`{item.split('/')[1]}`:")
