"""The service's settings in the registry."""

import struct

from machine.link import CallFailed

ROOT = "SOFTWARE\\Corisk"
CURRENT = ROOT + "\\Z7\\Current"
BRANDING = ROOT + "\\Z7\\Branding"
DEFAULT = ROOT + "\\Z7\\Default"
PREDICTOR = "CyclicProbabilityPredictor"

REG_SZ, REG_BINARY, REG_DWORD, REG_QWORD = 1, 3, 4, 11
NOT_FOUND = 2


class Registry:
    """Numbers are written as REG_DWORD, texts as REG_SZ and bytes as REG_BINARY, unless another
    kind is given."""

    def __init__(self, agent):
        self._agent = agent

    def read(self, name, key=CURRENT):
        """A value as number, text or bytes; None when there is none."""
        try:
            kind, data = self._agent.ask("read-value", key, name)
        except CallFailed as error:
            if error.code == NOT_FOUND:
                return None
            raise
        data = bytes.fromhex(data)
        if int(kind) == REG_DWORD:
            return struct.unpack("<I", data)[0]
        if int(kind) == REG_QWORD:
            return struct.unpack("<Q", data)[0]
        if int(kind) == REG_SZ:
            return data.decode("utf-16-le").rstrip("\0")
        return data

    def write(self, name, value, key=CURRENT, kind=None):
        if isinstance(value, int):
            kind, data = kind or REG_DWORD, struct.pack("<Q" if kind == REG_QWORD else "<I", value)
        elif isinstance(value, str):
            kind, data = kind or REG_SZ, (value + "\0").encode("utf-16-le")
        else:
            kind, data = kind or REG_BINARY, value
        self._agent.ask("write-value", key, name, kind, data.hex())

    def delete(self, name, key=CURRENT):
        self._agent.ask("delete-value", key, name)

    def names(self, key=CURRENT):
        try:
            return sorted(self._agent.ask("list-values", key))
        except CallFailed as error:
            if error.code == NOT_FOUND:
                return []
            raise

    def delete_key(self, key):
        try:
            self._agent.ask("delete-key", key)
        except CallFailed as error:
            if error.code != NOT_FOUND:
                raise


def predictor_key(key):
    return f"{key}\\Predictors\\{PREDICTOR}"
