"""psf in the PATH of all users: added unless it is declined, of any length, and as it was after the removal."""
import pytest
from harness import reg, registry_value, windows_path, wine
from installation import ENVIRONMENT, FOLDER, PSF, install, remove_everything, uninstall

ADDED = windows_path(PSF.parent)
LONG = ";".join([r"%SystemRoot%\system32", *(rf"C:\Folder {number}\With a long name" for number in range(300))])


@pytest.fixture(name="set_path")
def fixture_set_path(tmp_path):
    """Puts one into the registry, longer than a command line may be."""
    def set_path(kind, text):
        number = {"REG_SZ": 1, "REG_EXPAND_SZ": 2}[kind]
        data = (text + "\0").encode("utf-16-le").hex(",")
        file = tmp_path / "path.reg"
        key = ENVIRONMENT.replace("HKLM", "HKEY_LOCAL_MACHINE")
        file.write_text(f'Windows Registry Editor Version 5.00\r\n\r\n[{key}]\r\n"PATH"=hex({number}):{data}\r\n',
                        encoding="utf-16", newline="")
        assert reg("import", windows_path(file)).returncode == 0
        assert registry_value(ENVIRONMENT, "PATH") == (kind, text)
    return set_path


@pytest.fixture(autouse=True)
def path(set_path):
    """What the registry has for it: type and text. It is as before in the end, whatever a test does."""
    before = registry_value(ENVIRONMENT, "PATH")
    yield before
    set_path(*before)  # first, as Wine starts nothing well with the longest
    remove_everything()
    set_path(*before)


def test_psf_is_found_in_a_new_command_window_and_the_path_is_as_it_was_afterwards(path):
    install("/LANG=en")
    assert registry_value(ENVIRONMENT, "PATH") == (path[0], f"{path[1]};{ADDED}")
    done = wine("cmd", "/c", "psf --version")
    assert done.returncode == 0, done
    uninstall()
    assert registry_value(ENVIRONMENT, "PATH") == path


def test_nothing_but_psf_comes_into_the_path():
    install("/LANG=en")
    assert [file.name for file in PSF.parent.iterdir()] == ["psf.exe"]


@pytest.mark.parametrize("kind", ["REG_SZ", "REG_EXPAND_SZ"])
@pytest.mark.parametrize("text", [LONG, r"C:\One;", r"C:\One;;C:\Two", ";"], ids=lambda text: text[:16])
def test_any_path_is_as_it_was_after_the_removal(set_path, kind, text):
    set_path(kind, text)
    install("/LANG=en")
    assert registry_value(ENVIRONMENT, "PATH") == (kind, f"{text};{ADDED}")
    uninstall()
    assert registry_value(ENVIRONMENT, "PATH") == (kind, text)


def test_what_others_add_meanwhile_stays(path, set_path):
    install("/LANG=en")
    set_path(path[0], rf"C:\First;{ADDED};C:\Last")
    uninstall()
    assert registry_value(ENVIRONMENT, "PATH") == (path[0], r"C:\First;C:\Last")


def test_a_folder_that_was_in_the_path_before_stays_in_it(path, set_path):
    set_path(path[0], rf"{ADDED};C:\Last")
    install("/LANG=en")
    uninstall()
    assert registry_value(ENVIRONMENT, "PATH") == (path[0], rf"{ADDED};C:\Last")


@pytest.mark.parametrize("more, is_added", [(0, True), (1, False)])
def test_a_path_gets_no_longer_than_windows_allows(set_path, more, is_added):
    text = "x" * (32766 - len(f";{ADDED}") + more)
    set_path("REG_SZ", text)
    install("/LANG=en")
    assert registry_value(ENVIRONMENT, "PATH")[1] == (f"{text};{ADDED}" if is_added else text)


def test_an_update_adds_it_once_and_follows_the_program(path):
    install("/LANG=en")
    install("/LANG=en")
    assert registry_value(ENVIRONMENT, "PATH")[1] == f"{path[1]};{ADDED}"
    install("/LANG=en", r"/D=C:\Tools\Tessaly")
    assert registry_value(ENVIRONMENT, "PATH")[1] == rf"{path[1]};C:\Tools\Tessaly\bin"
    uninstall()
    assert registry_value(ENVIRONMENT, "PATH") == path


def test_who_declines_it_is_not_given_it_by_an_update_either(path):
    install("/LANG=en", "/PATH=no")
    assert registry_value(ENVIRONMENT, "PATH") == path
    install("/LANG=en")
    assert registry_value(ENVIRONMENT, "PATH") == path
    install("/LANG=en", "/PATH=yes")
    assert registry_value(ENVIRONMENT, "PATH")[1] == f"{path[1]};{ADDED}"
    install("/LANG=en", "/PATH=no")
    assert registry_value(ENVIRONMENT, "PATH") == path
    assert FOLDER.exists()
