"""A session manager of X11, by the library that real ones use. Programs that are started in its
`environment` take part in its session."""

import ctypes
import select
import threading

LOCAL, GLOBAL, BOTH = 0, 1, 2
NO_QUESTIONS, QUESTIONS = 0, 2
IO_ERROR, CONNECTION_CLOSED = 1, 2

Address = ctypes.c_void_p
Plain = ctypes.CFUNCTYPE(None, Address, Address)
Word = ctypes.CFUNCTYPE(None, Address, Address, ctypes.c_int)
Register = ctypes.CFUNCTYPE(ctypes.c_int, Address, Address, Address)
NewClient = ctypes.CFUNCTYPE(ctypes.c_int, Address, Address, Address, Address, Address)
OnError = ctypes.CFUNCTYPE(None, Address)
LetIn = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)

# What the manager hears, in the order of the library's SmsCallbacks.
EVENTS = {"register_client": Register, "interact_request": Word, "interact_done": Word,
          "save_yourself_request": Plain, "save_yourself_phase2_request": Plain,
          "save_yourself_done": Word, "close_connection": Plain, "set_properties": Plain,
          "delete_properties": Plain, "get_properties": Plain}
ALL_EVENTS = (1 << len(EVENTS)) - 1


class Callbacks(ctypes.Structure):
    _fields_ = [field for name, kind in EVENTS.items()
                for field in ((name, kind), (name + "_data", Address))]


def library(name, **functions):
    """Of each function: what it gives, then what it takes."""
    found = ctypes.CDLL(name)
    for function, (result, *arguments) in functions.items():
        getattr(found, function).restype = result
        getattr(found, function).argtypes = arguments
    return found


Number, Text = ctypes.c_int, ctypes.c_char_p
ice = library(
    "libICE.so.6",
    IceListenForConnections=(Number, Address, Address, Number, Text),
    IceComposeNetworkIdList=(Address, Number, Address),
    IceSetHostBasedAuthProc=(None, Address, LetIn),
    IceGetListenConnectionNumber=(Number, Address),
    IceFreeListenObjs=(None, Number, Address),
    IceAcceptConnection=(Address, Address, Address),
    IceSetIOErrorHandler=(Address, OnError),
    IceConnectionNumber=(Number, Address),
    IceProcessMessages=(Number, Address, Address, Address),
    IceSetShutdownNegotiation=(None, Address, Number),
    IceCloseConnection=(Number, Address))
sm = library(
    "libSM.so.6",
    SmsInitialize=(Number, Text, Text, NewClient, Address, LetIn, Number, Text),
    SmsGenerateClientID=(Address, Address),
    SmsRegisterClientReply=(Number, Address, Address),
    SmsGetIceConnection=(Address, Address),
    SmsSaveYourself=(None, Address, Number, Number, Number, Number),
    SmsSaveComplete=(None, Address),
    SmsInteract=(None, Address),
    SmsShutdownCancelled=(None, Address),
    SmsDie=(None, Address),
    SmsCleanUp=(None, Address))


class SessionManager:
    """Notes in `heard` what its programs say to it. To be ended with close()."""

    def __init__(self):
        self.heard = []
        self._clients = []
        self._connections = []
        self._lock = threading.RLock()  # of the libraries and all above
        self._handlers = {name: kind(getattr(self, "_" + name, lambda *_: None))
                          for name, kind in EVENTS.items()}
        self._new_client = NewClient(self._take_client)
        self._let_in = LetIn(lambda host: 1)
        # Left alone, the library ends the process where a program has gone without a word.
        self._on_error = OnError(lambda connection: None)
        ice.IceSetIOErrorHandler(self._on_error)
        why = ctypes.create_string_buffer(256)
        count, listeners = ctypes.c_int(), ctypes.POINTER(Address)()
        if not sm.SmsInitialize(b"test", b"1", self._new_client, None, self._let_in, 256, why) \
                or not ice.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners),
                                                   256, why):
            raise OSError(why.value.decode())
        self._listeners = listeners
        self._count = count.value
        self.environment = {"SESSION_MANAGER": ctypes.string_at(
            ice.IceComposeNetworkIdList(count, listeners)).decode()}
        for each in listeners[:self._count]:
            ice.IceSetHostBasedAuthProc(each, self._let_in)
        self._ends = False
        self._thread = threading.Thread(target=self._listen, daemon=True)
        self._thread.start()

    def close(self):
        self._ends = True
        self._thread.join()
        ice.IceFreeListenObjs(self._count, self._listeners)

    def save(self, kind, shutdown, questions):
        self._tell(sm.SmsSaveYourself, kind, shutdown, questions, False)

    def let_ask(self):
        self._tell(sm.SmsInteract)

    def go_on(self):
        self._tell(sm.SmsShutdownCancelled)

    def let_die(self):
        self._tell(sm.SmsDie)

    def _tell(self, call, *arguments):
        with self._lock:
            for client in self._clients:
                call(client, *arguments)

    # The thread

    def _listen(self):
        while not self._ends:
            with self._lock:
                doors = {ice.IceGetListenConnectionNumber(each): each
                         for each in self._listeners[:self._count]}
                talking = {ice.IceConnectionNumber(each): each for each in self._connections}
            for ready in select.select([*doors, *talking], [], [], 0.02)[0]:
                with self._lock:
                    if ready in doors:
                        status = ctypes.c_int()
                        self._connections.append(
                            ice.IceAcceptConnection(doors[ready], ctypes.byref(status)))
                    elif talking[ready] in self._connections:
                        self._process(talking[ready])

    def _process(self, connection):
        if ice.IceProcessMessages(connection, None, None) == IO_ERROR:
            self._drop(connection)

    def _drop(self, connection):
        self._connections.remove(connection)
        ice.IceSetShutdownNegotiation(connection, False)
        ice.IceCloseConnection(connection)

    # What the library calls

    def _take_client(self, client, _data, mask, callbacks, _why):
        table = ctypes.cast(callbacks, ctypes.POINTER(Callbacks)).contents
        for name, handler in self._handlers.items():
            setattr(table, name, handler)
        ctypes.cast(mask, ctypes.POINTER(ctypes.c_ulong))[0] = ALL_EVENTS
        self._clients.append(client)
        return 1

    def _register_client(self, client, _data, previous):
        if previous:
            return 0  # of another session: the program then asks for a new name
        sm.SmsRegisterClientReply(client, sm.SmsGenerateClientID(client))
        sm.SmsSaveYourself(client, LOCAL, False, NO_QUESTIONS, False)
        return 1

    def _interact_request(self, _client, _data, _kind):
        self.heard.append("asks to ask")

    def _interact_done(self, _client, _data, cancels):
        self.heard.append("cancels" if cancels else "agrees")

    def _save_yourself_done(self, client, _data, went_well):
        if "began" in self.heard:
            self.heard.append("saved" if went_well else "not saved")
        else:
            self.heard.append("began")
            sm.SmsSaveComplete(client)

    def _close_connection(self, client, _data):
        self._clients.remove(client)
        self.heard.append("left")
        connection = sm.SmsGetIceConnection(client)
        sm.SmsCleanUp(client)
        self._drop(connection)
