"""A session manager of one's own: tells the programs of its session to keep what they have and to end."""

import ctypes
import select

SAVE_GLOBAL, SAVE_LOCAL = 0, 1  # for others to see, or for the next session
NO_INTERACTION, ANY_INTERACTION = 0, 2

Pointer = ctypes.c_void_p
Status = ctypes.c_int
ICE = ctypes.CDLL("libICE.so.6")
SM = ctypes.CDLL("libSM.so.6")
ICE.IceAcceptConnection.restype = Pointer
ICE.IceGetListenConnectionString.restype = ctypes.c_char_p
SM.SmsGenerateClientID.restype = Pointer

Accept = ctypes.CFUNCTYPE(Status, ctypes.c_char_p)
IoError = ctypes.CFUNCTYPE(None, Pointer)
NewClient = ctypes.CFUNCTYPE(Status, Pointer, Pointer, ctypes.POINTER(ctypes.c_ulong), Pointer, Pointer)

# The client's requests, in the order in which the library wants the answers; each begins with the connection.
CALLBACKS = (
    ("register", ctypes.CFUNCTYPE(Status, Pointer, Pointer, Pointer)),
    ("interact", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int)),
    ("interacted", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int)),
    ("save", ctypes.CFUNCTYPE(None, Pointer, Pointer, *[ctypes.c_int] * 5)),
    ("phase2", ctypes.CFUNCTYPE(None, Pointer, Pointer)),
    ("saved", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int)),
    ("close", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int, Pointer)),
    ("set_properties", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int, Pointer)),
    ("delete_properties", ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int, Pointer)),
    ("get_properties", ctypes.CFUNCTYPE(None, Pointer, Pointer)),
)


class Callback(ctypes.Structure):
    _fields_ = [("function", Pointer), ("data", Pointer)]


class SessionManager:
    """For one program. `address` is its $SESSION_MANAGER; `events` is what it has said, and "gone" at its end."""

    def __init__(self):
        self.events = []
        self.client = None
        self.connections = []
        self.kept = [kind(lambda connection, _data, *rest, name=name: self.heard(name, connection))
                     for name, kind in CALLBACKS]
        self.accept = Accept(lambda _host: 1)
        self.new_client = NewClient(self.meet)
        self.io_error = IoError(lambda _connection: None)
        ICE.IceSetIOErrorHandler(self.io_error)
        error = ctypes.create_string_buffer(256)
        assert SM.SmsInitialize(b"test", b"1", self.new_client, None, self.accept, 256, error), error.value
        count, listeners = ctypes.c_int(), ctypes.POINTER(Pointer)()
        assert ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), 256, error), error.value
        self.listeners = [Pointer(listeners[i]) for i in range(count.value)]
        for listener in self.listeners:
            ICE.IceSetHostBasedAuthProc(listener, self.accept)
        addresses = [ICE.IceGetListenConnectionString(listener).decode() for listener in self.listeners]
        self.address = ",".join(address for address in addresses if not address.startswith("tcp"))

    def meet(self, connection, _data, mask, callbacks, _reason):
        ctypes.cast(mask, ctypes.POINTER(ctypes.c_ulong))[0] = (1 << len(CALLBACKS)) - 1
        places = ctypes.cast(callbacks, ctypes.POINTER(Callback))
        for i, function in enumerate(self.kept):
            places[i].function = ctypes.cast(function, Pointer)
        self.client = Pointer(connection)
        return 1

    def heard(self, name, connection):
        connection = Pointer(connection)
        self.events.append(name)
        if name == "register":
            SM.SmsRegisterClientReply(connection, Pointer(SM.SmsGenerateClientID(connection)))
            SM.SmsSaveYourself(connection, SAVE_LOCAL, 0, NO_INTERACTION, 0)  # as the protocol wants it for a new one
        elif name == "interact":
            SM.SmsInteract(connection)
        elif name == "phase2":
            SM.SmsSaveYourselfPhase2(connection)
        elif name == "get_properties":
            SM.SmsReturnProperties(connection, 0, None)
        elif name == "close":
            self.client = None
        return 1

    def run(self):
        """Works off what has come; returns all events."""
        files = {ICE.IceGetListenConnectionNumber(listener): listener for listener in self.listeners}
        files |= {ICE.IceConnectionNumber(connection): connection for connection in self.connections}
        for number in select.select(list(files), [], [], 0)[0]:
            if files[number] in self.listeners:
                status = ctypes.c_int()
                self.connections.append(Pointer(ICE.IceAcceptConnection(files[number], ctypes.byref(status))))
            elif ICE.IceProcessMessages(files[number], None, None) != 0:
                self.connections.remove(files[number])
                self.events.append("gone")
        return self.events

    def end_session(self, interaction):
        """Asks the program to keep what it has."""
        self.events.clear()
        SM.SmsSaveYourself(self.client, SAVE_GLOBAL, 1, interaction, 0)

    def cancel(self):
        SM.SmsShutdownCancelled(self.client)

    def die(self):
        SM.SmsDie(self.client)
