#!/usr/bin/env python3
"""Watches a studio over D-Bus: watch_studio.py [GROUP [COMMAND-WORD]...]

Debian packages: python3-dbus, python3-gi. Groups count from 1, lines in command words from 0.
"""
import sys
import dbus, dbus.mainloop.glib, dbus.service
from gi.repository import GLib

group = int(sys.argv[1]) if len(sys.argv) > 1 else 1
dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()  # dbus.SystemBus() where the server is on the system's bus

class Client(dbus.service.Object):
    def told(self, *values):
        print(*(repr(str(v)) if isinstance(v, str) else v for v in values), flush=True)
    method = lambda types: dbus.service.method("quorlink.CBClientClass", in_signature=types)
    @method("s")
    def ReturnCommand(self, status): self.told("lines", status)
    @method("sii")
    def ReturnCallerData(self, data, line, of_group): self.told("caller", line, *data.split("\2")[1:-1])
    @method("ii")
    def ReturnNextCall(self, line, of_group): self.told("next", line)
    @method("siii")
    def ReturnMessageData(self, text, of_group, back, fore): self.told("message", text)

client = Client(bus, "/CBClientClass")
server = dbus.Interface(bus.get_object("quorlink.Server", "/SerialInput"), "quorlink.SerialInput")
seats = dbus.Interface(bus.get_object("quorlink.Server", "/CBServerClass"), "quorlink.CBServerClass")
seats.AddObjectReference(dbus.ObjectPath("/CBClientClass"), group)
client.told("lines", server.OutputSerialPort(group))
for word in sys.argv[2:]:  # "P02" takes line 3 to handset position 1
    server.InputSerialPort(group, word)
GLib.MainLoop().run()
