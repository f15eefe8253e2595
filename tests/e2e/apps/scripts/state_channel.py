"""The other end of the harness's StateChannel, for editors in Python: tells the text and the caret after
each change, and how often the harness has had the text emptied."""

import os
import socket


class StateChannel:
    def __init__(self):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(os.environ["ZARVY_E2E_CHANNEL"])
        self._clear_count = 0

    def fileno(self):
        return self._socket.fileno()

    def report(self, text, caret):
        """`caret` is the number of characters of `text` before it."""

        def units(part):
            return part.encode("utf-16-be", "surrogatepass")

        line = f"{self._clear_count} {len(units(text[:caret])) // 2} {units(text).hex()}\n"
        self._socket.sendall(line.encode())

    def take_commands(self):
        """True where the text is to be emptied; ends the program where the harness has gone."""
        commands = self._socket.recv(4096)
        if not commands:
            raise SystemExit
        self._clear_count += commands.count(b"\n")
        return True
