"""Keys for a display, at any pace, and whether a window has taken them; xdotool, a process a key, is too slow."""

import ctypes
import ctypes.util
import select
import time

X11 = ctypes.CDLL("libX11.so.6")
XTST = ctypes.CDLL("libXtst.so.6")
X11.XOpenDisplay.restype = ctypes.c_void_p
for function in (X11.XDefaultRootWindow, X11.XInternAtom, X11.XStringToKeysym, X11.XkbKeycodeToKeysym):
    function.restype = ctypes.c_ulong

CLIENT_MESSAGE = 33
STRUCTURE_NOTIFY = 1 << 17  # Qt answers a ping to those who asked for this
NAMES = {" ": "space", ";": "semicolon", "\n": "Return", "/": "slash", ".": "period", "-": "minus", "_": "underscore",
         "alt": "Alt_L", "ctrl": "Control_L", "shift": "Shift_L"}

ErrorHandler = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
IGNORE = ErrorHandler(lambda _display, _error: 0)  # windows go whenever they like


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]


class Event(ctypes.Union):
    _fields_ = [("type", ctypes.c_int), ("message", ClientMessage), ("room", ctypes.c_long * 24)]


class Display:
    """The one of $DISPLAY."""

    def __init__(self):
        X11.XSetErrorHandler(IGNORE)
        self.display = ctypes.c_void_p(X11.XOpenDisplay(None))
        assert self.display, "no display"
        self.root = ctypes.c_ulong(X11.XDefaultRootWindow(self.display))
        self.protocols = X11.XInternAtom(self.display, b"WM_PROTOCOLS", 0)
        self.ping = X11.XInternAtom(self.display, b"_NET_WM_PING", 0)
        self.number = 1000
        X11.XSelectInput(self.display, self.root, ctypes.c_long(STRUCTURE_NOTIFY))

    def close(self):
        X11.XCloseDisplay(self.display)

    def press(self, *names):
        """Presses keys together, as press("ctrl", "Home"), and lets them go."""
        codes = []
        for name in names:
            symbol = X11.XStringToKeysym(NAMES.get(name, name).encode())
            code = X11.XKeysymToKeycode(self.display, ctypes.c_ulong(symbol))
            assert symbol and code, f"no key {name!r}"
            if X11.XkbKeycodeToKeysym(self.display, ctypes.c_ubyte(code), 0, 0) != symbol:
                codes.append(X11.XKeysymToKeycode(self.display, ctypes.c_ulong(X11.XStringToKeysym(b"Shift_L"))))
            codes.append(code)
        for is_down, order in ((1, codes), (0, codes[::-1])):
            for code in order:
                XTST.XTestFakeKeyEvent(self.display, code, is_down, ctypes.c_ulong(0))
        X11.XSync(self.display, 0)

    def key(self, *keys):
        for key in keys:
            self.press(*key.split("+"))

    def focus(self):
        """The window with the keyboard and its title."""
        window, revert = ctypes.c_ulong(), ctypes.c_int()
        X11.XGetInputFocus(self.display, ctypes.byref(window), ctypes.byref(revert))
        return window.value, self.title(window.value)

    def title(self, window):
        """None where no such window is."""
        name = ctypes.c_char_p()
        if window < 2 or not X11.XFetchName(self.display, ctypes.c_ulong(window), ctypes.byref(name)):
            return None
        title = name.value.decode("latin-1")
        X11.XFree(name)
        return title

    def taken(self, window, tick):
        """Returns when the window has taken all that was sent to it before: it answers in turn. tick() is called while
        it has not."""
        for _ in range(2):  # what it answers with is sent a step before the keys reach their control
            self.number += 1
            event = Event()
            event.message = ClientMessage(CLIENT_MESSAGE, 0, 1, self.display, window, self.protocols, 32,
                                          (ctypes.c_long * 5)(self.ping, self.number, window, 0, 0))
            X11.XSendEvent(self.display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(event))
            X11.XSync(self.display, 0)
            deadline = time.monotonic() + 10
            while not self.has_answered():
                tick()
                assert time.monotonic() < deadline, "the window does not answer"
                select.select([X11.XConnectionNumber(self.display)], [], [], 0.002)

    def has_answered(self):
        event = Event()
        while X11.XPending(self.display):
            X11.XNextEvent(self.display, ctypes.byref(event))
            if event.type == CLIENT_MESSAGE and event.message.data[1] == self.number:
                return True
        return False
