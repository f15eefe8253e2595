"""A window with a Tk text that tells each change of it."""

import tkinter

from state_channel import StateChannel

channel = StateChannel()
root = tkinter.Tk()
root.title("Editor")
text = tkinter.Text(root, width=100, height=40, undo=False)
text.pack(fill="both", expand=True)
is_told = True


def tell():
    global is_told
    is_told = True
    before = text.get("1.0", "insert")
    channel.report(before + text.get("insert", "end-1c"), len(before))


def changed():
    global is_told
    if is_told:
        root.after_idle(tell)
    is_told = False


def call(*arguments):
    result = root.tk.call((plain_text,) + arguments)
    if arguments[0] in ("insert", "delete", "replace", "mark"):
        changed()
    return result


def empty(*_):
    channel.take_commands()
    text.delete("1.0", "end")
    tell()


# Everything that changes the text or the caret is a call of the widget's command.
plain_text = text._w + "_plain"
root.tk.call("rename", text._w, plain_text)
root.tk.createcommand(text._w, call)
root.tk.createfilehandler(channel, tkinter.READABLE, empty)
text.focus_set()
tell()
root.mainloop()
