"""A window with a GTK 4 text view that tells each change of its text."""

import gi

gi.require_version("Gtk", "4.0")
from gi.repository import GLib, Gtk

from state_channel import StateChannel


def show(application):
    channel = StateChannel()
    buffer = Gtk.TextBuffer()

    def tell(*_):
        text = buffer.get_text(buffer.get_start_iter(), buffer.get_end_iter(), True)
        channel.report(text, buffer.props.cursor_position)

    def empty(*_):
        channel.take_commands()
        buffer.set_text("")
        tell()
        return GLib.SOURCE_CONTINUE

    buffer.connect("changed", tell)
    buffer.connect("notify::cursor-position", tell)
    GLib.unix_fd_add_full(GLib.PRIORITY_DEFAULT, channel.fileno(), GLib.IOCondition.IN, empty)
    view = Gtk.TextView(buffer=buffer)
    window = Gtk.ApplicationWindow(application=application, title="Editor", default_width=800,
                                   default_height=600, child=view)
    window.present()
    view.grab_focus()
    tell()


application = Gtk.Application()
application.connect("activate", show)
application.run()
