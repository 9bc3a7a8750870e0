"""psf check: each silent loss that a load can bring has its warning, at its line, and a good file has none."""

import pytest
from harness import EVENTS, EXAMPLES, example_file
from psf_harness import lines, psf, source

MAIN = ("Main", "void Main()\r\n{\r\n}")


def warnings(tmp_path, content, status=1, **options):
    """The warnings as (line, text), for a file with this content."""
    path = tmp_path / "x.PSF"
    path.write_bytes(content)
    result = psf("check", "x.PSF", cwd=tmp_path, **options)
    assert result.status == status, result
    found = []
    for line in result.out.decode().splitlines():
        assert line.startswith("x.PSF:"), line
        number, kind, text = line[len("x.PSF:"):].split(": ", 2)
        assert kind == "warning"
        found.append((int(number), text))
    return found


def line_of(content, text, start=0):
    """The number of the line that begins with `text`, as a text editor counts lines."""
    place = content.index(b"\r\n" + text, start) + 2
    return len(content[:place].replace(b"\r\n", b"\n").replace(b"\r", b"\n").split(b"\n"))


def only(found, line, member, *words):
    assert len(found) == 1, found
    has(found, line, member, *words)


def has(found, line, member, *words):
    matching = [text for number, text in found if number == line and text.startswith(member + ": ")]
    assert any(all(word in text for word in words) for text in matching), (line, member, words, found)


def test_good_files_have_no_warnings(tmp_path):
    assert warnings(tmp_path, source([MAIN]), status=0) == []
    assert warnings(tmp_path, source(), status=0) == []
    psf("new", tmp_path / "new.PSF")
    psf("add", tmp_path / "new.PSF", "Blink")
    result = psf("check", tmp_path / "new.PSF")
    assert (result.status, result.out, result.err) == (0, b"", "")


def test_a_good_file_stays_good_however_often_it_is_saved(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(source([("Main", "void Main()", "void Main()\r\n{\r\n}")]))
    for _ in range(3):
        psf("resave", path, path)
        assert psf("check", path).status == 0


def test_references_ended_early_by_a_tag_like_line(tmp_path):
    content = source([MAIN], references="int a;\r\n[GFuncs]\r\nint b;")
    only(warnings(tmp_path, content), line_of(content, b"[GFuncs]"), "references", '"[GFuncs]"', "early", '"NumFuncs="')


def test_lines_of_the_function_list_that_count_for_nothing(tmp_path):
    content = source([MAIN], names="Main\r\nstray")
    only(warnings(tmp_path, content), line_of(content, b"stray"), "functions", '"[FuncCode]"', "ignored")


def test_a_function_dropped_for_a_name_collision(tmp_path):
    content = source([("OnTick", "void OnTick()\r\n{}"), ("Other", "void Other()\r\n{}"), ("on", "void on()\r\n{}")])
    only(warnings(tmp_path, content), line_of(content, b"[on]"), "functions/on", "dropped", '"OnTick"')


def test_the_collision_named_is_the_first_in_the_table(tmp_path):
    content = source([("OnTock", "a\r\n{}"), ("OnTick", "b\r\n{}"), ("on", "c\r\n{}")])
    has(warnings(tmp_path, content), line_of(content, b"[on]"), "functions/on", '"OnTock"')


def test_a_name_split_at_a_comma(tmp_path):
    content = source([("a,b", "void a()\r\n{}")])
    has(warnings(tmp_path, content, status=2), line_of(content, b"FuncNames="), "functions/a,b", "split", "comma")


def test_a_name_split_at_a_comma_behind_a_good_one(tmp_path):
    content = source([MAIN, ("a,b", "void a()\r\n{}")])
    has(warnings(tmp_path, content, status=2), line_of(content, b"FuncNames="), "functions/a,b", "split", "comma")


def test_more_names_than_announced(tmp_path):
    content = source([MAIN], names="Main,Left")
    only(warnings(tmp_path, content), line_of(content, b"FuncNames="), "functions/Left", "lists 2", "announces 1")


def test_fewer_names_than_announced(tmp_path):
    content = source([MAIN, ("Two", "void Two()\r\n{}")], names="Main", count=" 2")
    found = warnings(tmp_path, content, status=2)
    has(found, line_of(content, b"FuncNames="), "functions/Main", "announces 2", "lists 1")


def test_fewer_sections_than_announced(tmp_path):
    content = source([MAIN], names="Main,Two", count=" 2")
    found = warnings(tmp_path, content, status=2)
    only(found, line_of(content, b"[EventCode]"), "functions/Two", "announces 2", "only 1")


def test_a_section_that_is_not_found(tmp_path):
    content = source([MAIN], names="Mein")
    found = warnings(tmp_path, content, status=2)
    has(found, line_of(content, b"NumFuncs="), "functions/Mein", "[Mein]", "not found")


def test_a_million_announced_functions_are_one_warning(tmp_path):
    content = source([MAIN], names="Main", count=" 2147483647")
    assert len(warnings(tmp_path, content, status=2)) == 2


def test_function_sections_that_are_skipped(tmp_path):
    content = source([MAIN], count=" 0")
    only(warnings(tmp_path, content), line_of(content, b"[Main]"), "functions", "no function is announced")


def test_a_count_that_is_no_number(tmp_path):
    content = source([MAIN], count=" one")
    found = warnings(tmp_path, content, status=2)
    only(found, line_of(content, b"NumFuncs="), "functions", "not a 32-bit number", " one")


@pytest.mark.parametrize("tag", ["[Two]", "[EventCode]"])
def test_a_body_ended_early_by_a_tag_like_line(tmp_path, tag):
    body = f"void Main()\r\n{{\r\n/*\r\n{tag}\r\n*/\r\n}}"
    functions = [("Main", body), ("Two", "void Two()\r\n{}")] if tag == "[Two]" else [("Main", body)]
    content = source(functions)
    only(warnings(tmp_path, content), line_of(content, tag.encode()), "functions/Main", f'"{tag}"', "early")


def test_a_body_ended_early_by_the_end_tag(tmp_path):
    content = source([("Main", "void Main()\r\n{\r\n[EndPSF]\r\n}")])
    only(warnings(tmp_path, content), line_of(content, b"[EndPSF]"), "functions/Main", "lost", '"[EndPSF]"', "early")


def test_an_event_text_ended_early_by_the_next_tag(tmp_path):
    content = source(events=[]).replace(b"[EndPSF]\r\n", b"")
    content += lines("[OnError]", "FuncBody=void OnError()", "{", "[OnFrame]", "}")
    content += source(events=EVENTS[1:])[source(events=[]).index(b"[EndPSF]"):]
    only(warnings(tmp_path, content), line_of(content, b"[OnFrame]"), "events/OnError", '"[OnFrame]"', "early")


def test_an_event_text_ended_early_by_the_end_tag(tmp_path):
    content = source(events=["OnError"], extra=lines("}", "more"))
    found = warnings(tmp_path, content)
    has(found, line_of(content, b"[EndPSF]"), "events/OnError", '"[EndPSF]"', "early")
    has(found, line_of(content, b"[EndPSF]") + 1, "events/OnError", "text after")
    has(found, line_of(content, b"more"), "events/OnFrame", "never stored", "the events after it")
    assert len(found) == 3


def test_text_after_the_end_tag(tmp_path):
    content = source([MAIN], extra=lines("", "more"))
    only(warnings(tmp_path, content), line_of(content, b"more"), "events/OnMsg", "text after")
    assert warnings(tmp_path, source([MAIN], extra=b"\r\n \r\n"), status=0) == []


def test_characters_outside_the_code_page(tmp_path):
    content = source([("Main", "void Main()\r\n{\r\n/* X */\r\n}")], references="a\nY")
    content = content.replace(b"X", b"\x81").replace(b"Y", b"\x82 ")
    found = warnings(tmp_path, content, env={"TESSALY_CODEPAGE": "932"})
    assert len(found) == 2
    has(found, 6, "references", "82", "code page")  # a lone LF is a line to a text editor
    has(found, line_of(content, b"/* \x81 */"), "functions/Main", "81", "code page")


def test_bytes_that_survive_a_save_are_no_warning(tmp_path):
    every = bytes(byte for byte in range(256) if byte not in b"\r")
    for page in ("1252", "1253"):
        content = source().replace(b"int x;", every)
        assert warnings(tmp_path, content, status=0, env={"TESSALY_CODEPAGE": page}) == []


def test_code_that_begins_with_a_brace(tmp_path):
    content = source([("Main", "{ }")])
    only(warnings(tmp_path, content), line_of(content, b"FuncBody={"), "functions/Main", '"{"', "no C file")


def test_code_that_holds_no_brace(tmp_path):
    content = source([("Main", "int a;")])
    only(warnings(tmp_path, content), line_of(content, b"FuncBody=int"), "functions/Main", 'holds no "{"')


def test_a_stored_prototype_that_generation_will_not_use(tmp_path):
    content = source([("Main", "int Main(int n);", "void Main(void)\r\n{}")])
    found = warnings(tmp_path, content)
    only(found, line_of(content, b"ProtoType="), "functions/Main", "int Main(int n)", "void Main(void)")


@pytest.mark.parametrize("prototype", [
    "", "void Main( void )", "void Main(void);", "void\r\nMain(void)", "  void   Main(void) ;"])
def test_a_stored_prototype_that_differs_in_blanks_only_is_no_warning(tmp_path, prototype):
    code = "void Main( void )\r\n{}" if "( " in prototype else "void Main(void)\r\n{}"
    assert warnings(tmp_path, source([("Main", prototype, code)]), status=0) == []


def test_an_event_never_stored(tmp_path):
    content = source(events=EVENTS[:8])
    only(warnings(tmp_path, content), line_of(content, b"[EndPSF]"), "events/OnMsg", "never stored")


def test_a_file_that_breaks_off_in_an_event(tmp_path):
    content = source([MAIN], events=EVENTS[:3], end=None)
    found = warnings(tmp_path, content, status=2)
    only(found, line_of(content, b"FuncBody=void OnKey"), "events/OnKey", "lost")


def test_a_file_that_breaks_off_anywhere_has_one_warning(tmp_path):
    content = source([MAIN, ("Other", "void Other()\r\n{\r\n}")])
    ends = range(content.index(b"[GVars]"), len(content) - len(b"[EndPSF]\r\n"), 7)
    (tmp_path / "x").mkdir()
    for end in ends:
        (tmp_path / f"x/{end:03}.PSF").write_bytes(content[:end])
    names = [f"x/{end:03}.PSF" for end in ends]
    result = psf("check", "x", cwd=tmp_path)
    assert (result.status, [line.split(":")[0] for line in result.out.decode().splitlines()]) == (2, names)
    incomplete = [f"psf: {name}: not a complete PSF file" for name in names]
    assert psf("tidy", "--check", "x", cwd=tmp_path).err.splitlines() == incomplete


@pytest.mark.parametrize("line", [b"<<<<<<< HEAD", b"FileName=Old.PSF", b"\xef\xbb\xbf[BeginPSF]"])
def test_a_line_in_front_of_the_references_that_a_save_does_not_keep(tmp_path, line):
    content = source([MAIN]).replace(b"[BeginPSF]", line if b"Begin" in line else b"[BeginPSF]\r\n" + line)
    only(warnings(tmp_path, content), 1 if b"Begin" in line else 2, "references", "ignored", '"[GVars]"')


def test_a_file_whose_last_text_is_not_followed_by_the_end_tag(tmp_path):
    content = source(end="[OnMsg]")
    line = line_of(content, b"[OnMsg]", content.index(b"FuncBody=void OnMsg"))
    only(warnings(tmp_path, content, status=2), line, "events/OnMsg", "[EndPSF]")


def test_a_file_without_its_first_tags(tmp_path):
    found = warnings(tmp_path, b"just text\r\nand more\r\n", status=2)
    has(found, 2, "references", "[GVars]")


def test_lines_are_counted_as_a_text_editor_counts_them(tmp_path):
    content = source([("Main", "int a;")]).replace(b"int x;", b"a\nb\rc\r\nd")
    only(warnings(tmp_path, content), line_of(content, b"FuncBody=int"), "functions/Main")
    assert line_of(content, b"FuncBody=int") == 15


def test_warnings_stand_in_the_order_of_their_lines(tmp_path):
    found = warnings(tmp_path, source([("B", "int b;"), ("A", "int a;"), ("b", "x\r\n{}")], extra=b"more"))
    assert [line for line, _ in found] == sorted(line for line, _ in found)


def test_a_file_that_cannot_be_read_is_2(tmp_path):
    result = psf("check", tmp_path / "missing.PSF")
    assert (result.status, result.out) == (2, b"")


def test_several_files_give_the_worst_status_and_all_warnings(tmp_path):
    (tmp_path / "good.PSF").write_bytes(source())
    (tmp_path / "warn.PSF").write_bytes(source([("Main", "int a;")]))
    (tmp_path / "bad.PSF").write_bytes(source(end=None))
    assert psf("check", "good.PSF", "warn.PSF", cwd=tmp_path).status == 1
    result = psf("check", "bad.PSF", "warn.PSF", "good.PSF", cwd=tmp_path)
    assert result.status == 2
    assert b"warn.PSF:12: warning: functions/Main" in result.out


def test_the_number_of_warnings_is_bounded(tmp_path):
    count = 30000
    sections = b"".join(lines("[a]", "ProtoType=", "FuncBody=a{}") for _ in range(count))
    content = source(count=f" {count}", names=",".join(["a"] * count))
    content = content.replace(b"[EventCode]\r\n", sections + b"[EventCode]\r\n")
    path = tmp_path / "x.PSF"
    path.write_bytes(content)
    result = psf("check", path)
    assert result.status == 1
    assert len(result.out.splitlines()) == 10000
    assert b"more warnings" in result.out


@pytest.mark.parametrize("name", EXAMPLES)
def test_the_examples_have_no_warnings(name):
    result = psf("check", example_file(name, ".PSF"))
    assert (result.status, result.out) == (0, b"")
