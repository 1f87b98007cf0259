"""Others on the computer that the lab runs on can connect to it, and get nothing done."""

import socket
import stat

from steps.expect import expect, expect_true

NAME, VALUE = "HistoryLimit", 7
KEY = "SOFTWARE\\Corisk\\Z7\\Current"
DELETE = f"delete-value\t{KEY}\t{NAME}\n"


def _answer(port, text):
    """All that is answered until the other side closes the connection."""
    with socket.create_connection(("127.0.0.1", port)) as stranger:
        stranger.settimeout(60)
        answer = b""
        try:
            stranger.sendall(text.encode())
            while part := stranger.recv(4096):
                answer += part
        except ConnectionError:
            pass  # closed before all was read
        return answer.decode()


def _expect_nothing_done(machine, port, text):
    expect(_answer(port, text), "", f"answer to {text!r}")
    expect(machine.registry.read(NAME), VALUE, f"the value after {text!r}")


def who_does_not_know_the_token_is_not_answered(machine):
    machine.provision()
    machine.start_service()
    machine.registry.write(NAME, VALUE)
    token = machine.token_file.read_text("ascii")
    ports = machine.open_ports()
    expect(len(ports), 2, "ports of the agent and the service")
    for port in ports:
        for first in ("", "\n", "token\n", f"{token[:-1]}\n", f" {token}\n", f"{token}x\n",
                      "GET / HTTP/1.1\r\n", "x" * 100000 + "\n"):
            _expect_nothing_done(machine, port, first + DELETE)


def a_line_that_the_test_would_not_send_ends_its_connection(machine):
    machine.provision()
    machine.start_service()
    machine.registry.write(NAME, VALUE)
    token = machine.token_file.read_text("ascii")
    for port in machine.open_ports():
        for wrong in ("\n", "run\tcmd\n", "deliver\t1\n"):
            _expect_nothing_done(machine, port, f"{token}\n{wrong}{DELETE}")


def only_its_owner_can_read_the_token(machine):
    expect(stat.S_IMODE(machine.token_file.stat().st_mode), 0o600, "mode of its file")
    expect_true(len(machine.token_file.read_text("ascii")) >= 32, "it could be guessed")
