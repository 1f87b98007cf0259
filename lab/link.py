"""A connection over which one line is asked and one answered, fields apart by tabs."""

import socket


class SystemError_(Exception):
    """A call of the system that failed, with its code."""

    def __init__(self, request, code):
        super().__init__(f"{request} failed with error {code}")
        self.code = code


class LinkLost(Exception):
    """The other side is gone, or does not answer in time."""


class Link:
    def __init__(self, port, timeout):
        self._port = port
        self._timeout = timeout
        self._open()

    def close(self):
        self._answers.close()
        self._socket.close()

    def reopen(self):
        """Forgets a request that was broken off."""
        self.close()
        self._open()

    def ask(self, *fields):
        request = [str(field) for field in fields]
        try:
            self._socket.sendall(("\t".join(request) + "\n").encode())
            line = self._answers.readline()
        except OSError as error:
            raise LinkLost(f"{request[0]}: {error}") from error
        if not line.endswith(b"\n"):
            raise LinkLost(f"{request[0]}: no answer")
        status, *answer = line.decode()[:-1].split("\t")
        if status == "error":
            raise SystemError_(" ".join(request), int(answer[0]))
        return answer

    def _open(self):
        self._socket = socket.create_connection(("127.0.0.1", self._port), self._timeout)
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._answers = self._socket.makefile("rb")
