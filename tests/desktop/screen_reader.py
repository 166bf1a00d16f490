#!/usr/bin/python3
"""Hears what a screen reader would speak of a program's windows, and writes it down.

    screen_reader.py LOG

One line for each thing spoken, in the order of the events on the accessibility bus:

    window   Lineweir - Talent                  a window has come to the front
    focus    Line 3, main hybrid, button        name, role, value and description of what has the focus
    alert    Line 3 is ringing                  an announcement

The first line of the log is "listening", once events are heard.
"""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

PROGRAM = "lineweir"
# States that a reader tells of what has the focus, where they are set or where they are missing.
SPOKEN_IF_SET = {
    Atspi.StateType.CHECKED: "checked",
    Atspi.StateType.PRESSED: "pressed",
    Atspi.StateType.SELECTED: "selected",
}
SPOKEN_IF_MISSING = {Atspi.StateType.SENSITIVE: "unavailable"}


class Reader:
    def __init__(self, log):
        self.log = log
        self.last = None

    def speak(self, kind, words):
        line = f"{kind:<8} {words}"
        # Both the bus and the toolkit may tell one thing twice.
        if line == self.last:
            return
        self.last = line
        print(line, file=self.log, flush=True)

    @staticmethod
    def words_of(thing):
        words = [thing.get_name() or "(no name)", thing.get_role_name()]
        value = Reader.text_of(thing)
        if value:
            words.append(f'"{value}"')
        states = thing.get_state_set()
        words += [word for state, word in SPOKEN_IF_SET.items() if states.contains(state)]
        words += [word for state, word in SPOKEN_IF_MISSING.items() if not states.contains(state)]
        if thing.get_description():
            words.append(f"({thing.get_description()})")
        return ", ".join(words)

    @staticmethod
    def text_of(thing):
        text = thing if "Text" in thing.get_interfaces() else None
        editable = thing.get_state_set().contains(Atspi.StateType.EDITABLE)
        if text is None or not editable:
            return ""
        return Atspi.Text.get_text(text, 0, Atspi.Text.get_character_count(text))

    def hear(self, event):
        try:
            self.take(event)
        except GLib.Error:
            # What it was about has gone.
            pass

    def take(self, event):
        thing = event.source
        application = thing.get_application()
        if application is None or application.get_name() != PROGRAM:
            return
        if event.type.startswith("window:activate"):
            self.speak("window", thing.get_name())
        elif event.type.startswith("object:state-changed:focused") and event.detail1:
            self.speak("focus", self.words_of(thing))
        elif event.type.startswith("object:state-changed:showing") and event.detail1:
            if thing.get_role() == Atspi.Role.ALERT:
                said = [text for text in (thing.get_name(), thing.get_description()) if text]
                self.speak("alert", ": ".join(said))


def tell_that_a_reader_runs():
    """Programs put their windows on the bus only for somebody who listens."""
    session = Gio.bus_get_sync(Gio.BusType.SESSION)
    for name in ("IsEnabled", "ScreenReaderEnabled"):
        status = GLib.Variant("(ssv)", ("org.a11y.Status", name, GLib.Variant("b", True)))
        session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                          status, None, Gio.DBusCallFlags.NONE, -1)


def main():
    tell_that_a_reader_runs()
    with open(sys.argv[1], "w", encoding="utf-8") as log:
        reader = Reader(log)
        listener = Atspi.EventListener.new(reader.hear)
        # Names are kept on this side, and told anew only to those who ask for it.
        for event in ("window:activate", "object:state-changed:focused",
                      "object:state-changed:showing", "object:property-change:accessible-name"):
            listener.register(event)
        print("listening", file=log, flush=True)
        Atspi.event_main()


main()
