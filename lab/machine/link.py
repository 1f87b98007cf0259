"""A connection over which one line is asked and one answered, fields apart by tabs."""

import select
import socket

_PART_SIZE = 65536


class CallFailed(Exception):
    """A call of the system that failed, with its code."""

    def __init__(self, request, code):
        super().__init__(f"{request} failed with error {code}")
        self.code = code


class LinkLost(Exception):
    """The other side is gone."""


class Link:
    """`token` is what the other side wants to be told first."""

    def __init__(self, port, token, waiting):
        self._waiting = waiting
        self._received = b""
        self._socket = socket.create_connection(("127.0.0.1", port))
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._socket.sendall(f"{token}\n".encode())

    def close(self):
        self._socket.close()

    def ask(self, *fields):
        request = [str(field) for field in fields]
        try:
            self._socket.sendall(("\t".join(request) + "\n").encode())
            status, *answer = self._read_line(request[0]).split("\t")
        except OSError as error:
            raise LinkLost(f"{request[0]}: {error}") from error
        if status == "error":
            raise CallFailed(" ".join(request), int(answer[0]))
        return answer

    def _read_line(self, request):
        watch = self._waiting.watch(f"{request} is not answered")
        while b"\n" not in self._received:
            ready, _, _ = select.select([self._socket], [], [], watch.look_seconds)
            if not ready:
                watch.look()
                continue
            part = self._socket.recv(_PART_SIZE)
            if not part:
                raise LinkLost(f"{request}: no answer")
            self._received += part
        line, self._received = self._received.split(b"\n", 1)
        return line.decode()
