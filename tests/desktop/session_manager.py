"""A session manager of X, driven over its standard input: "address" prints where it listens, "log out" ends the session.
It prints "joined" for each program that comes, and "left" for each that goes.

It logs out as the real ones do: everybody is asked to save, and told to die once all have.
"""

import ctypes
import select
import sys

ICE = ctypes.CDLL("libICE.so.6")
SM = ctypes.CDLL("libSM.so.6")
SAVE_LOCAL = 1
NO_INTERACTION = 0
OK = 1
EVERY_CALLBACK = (1 << 10) - 1
ERROR_LENGTH = 256

Pointer = ctypes.c_void_p
Notice = ctypes.CFUNCTYPE(None, Pointer, Pointer)
Register = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, Pointer)
InteractRequest = ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int)
SaveRequest = ctypes.CFUNCTYPE(None, Pointer, Pointer, *[ctypes.c_int] * 5)
Done = ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int)
Close = ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int, Pointer)
Properties = ctypes.CFUNCTYPE(None, Pointer, Pointer, ctypes.c_int, Pointer)
Allow = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)
Broken = ctypes.CFUNCTYPE(None, Pointer)

CALLBACKS = (("register", Register), ("interact_request", InteractRequest), ("interact_done", Done),
             ("save_request", SaveRequest), ("phase2_request", Notice), ("save_done", Done), ("close", Close),
             ("set_properties", Properties), ("delete_properties", Properties), ("get_properties", Notice))


class Callbacks(ctypes.Structure):
    _fields_ = [field for name, kind in CALLBACKS for field in ((name, kind), (name + "_data", Pointer))]


NewClient = ctypes.CFUNCTYPE(ctypes.c_int, Pointer, Pointer, ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(Callbacks),
                             Pointer)

for function, answer in ((ICE.IceComposeNetworkIdList, ctypes.c_char_p), (ICE.IceAcceptConnection, Pointer),
                         (SM.SmsGenerateClientID, Pointer)):
    function.restype = answer


def say(line):
    print(line, flush=True)


class SessionManager:
    def __init__(self):
        self.clients = {}  # whether each has saved
        self.is_ending = False
        self.connections = {}
        self._new_client = NewClient(self.welcome)
        self._allow = Allow(lambda _host: 1)
        self._broken = Broken(lambda _connection: None)
        ICE.IceSetIOErrorHandler(self._broken)
        self._callbacks = {"register": Register(self.register), "interact_request": InteractRequest(lambda *_: None),
                           "interact_done": Done(lambda *_: None), "save_request": SaveRequest(lambda *_: None),
                           "phase2_request": Notice(lambda client, _: SM.SmsSaveYourselfPhase2(Pointer(client))),
                           "save_done": Done(self.saved), "close": Close(self.left),
                           "set_properties": Properties(lambda *_: None),
                           "delete_properties": Properties(lambda *_: None),
                           "get_properties": Notice(lambda client, _: SM.SmsReturnProperties(Pointer(client), 0, None))}
        error = ctypes.create_string_buffer(ERROR_LENGTH)
        if not SM.SmsInitialize(b"test", b"1", self._new_client, None, self._allow, ERROR_LENGTH, error):
            raise SystemExit(error.value.decode())
        count, listeners = ctypes.c_int(), ctypes.POINTER(Pointer)()
        if not ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), ERROR_LENGTH, error):
            raise SystemExit(error.value.decode())
        self.listeners = [Pointer(listeners[index]) for index in range(count.value)]
        for listener in self.listeners:
            ICE.IceSetHostBasedAuthProc(listener, self._allow)
        self.address = ICE.IceComposeNetworkIdList(count, listeners).decode()
        say("ready")

    def welcome(self, _client, _data, mask, callbacks, _reason):
        mask[0] = EVERY_CALLBACK
        for name, callback in self._callbacks.items():
            setattr(callbacks[0], name, callback)
        return 1

    def register(self, client, _data, _previous):
        self.clients[client] = False
        SM.SmsRegisterClientReply(Pointer(client), Pointer(SM.SmsGenerateClientID(Pointer(client))))
        SM.SmsSaveYourself(Pointer(client), SAVE_LOCAL, 0, NO_INTERACTION, 0)
        return OK

    def saved(self, client, _data, success):
        if not self.is_ending:
            SM.SmsSaveComplete(Pointer(client))
            say("joined")
            return
        say("saved" if success else "not saved")
        self.clients[client] = True
        if all(self.clients.values()):
            for each in self.clients:
                SM.SmsDie(Pointer(each))

    def left(self, client, *_):
        self.clients.pop(client, None)
        say("left")

    def obey(self, line):
        if line == "address":
            say("address " + self.address)
        else:
            self.is_ending = True
            for client in self.clients:
                SM.SmsSaveYourself(Pointer(client), SAVE_LOCAL, 1, NO_INTERACTION, 0)
        say("done " + line)

    def run(self):
        while True:
            listening = {ICE.IceGetListenConnectionNumber(listener): listener for listener in self.listeners}
            ready, _, _ = select.select([sys.stdin, *listening, *self.connections], [], [])
            for one in ready:
                if one is sys.stdin:
                    line = sys.stdin.readline()
                    if not line:
                        return
                    self.obey(line.rstrip("\n"))
                elif one in listening:
                    connection = Pointer(ICE.IceAcceptConnection(listening[one], ctypes.byref(ctypes.c_int())))
                    self.connections[ICE.IceConnectionNumber(connection)] = connection
                elif ICE.IceProcessMessages(self.connections[one], None, None) != 0:
                    del self.connections[one]


if __name__ == "__main__":
    SessionManager().run()
