"""The machine's power schemes. Timeouts are in minutes."""

from machine.machine_state import POWER_SCHEMES, POWER_SETTINGS, POWER_SOURCES

_TIMEOUTS = ("display", "sleep", "hibernate")
_SCHEMES = list(POWER_SCHEMES)

_FRESH = {"display": 10, "sleep": 30, "hibernate": 180, "wake-timers": 1, "hybrid-sleep": 0}


class PowerSchemes:
    def __init__(self, state):
        self._state = state

    def reset(self):
        for place, (name, guid) in enumerate(POWER_SCHEMES.items()):
            self._state.schemes[place].id[:] = guid.bytes_le
            for setting, value in _FRESH.items():
                for source in POWER_SOURCES:
                    self.set(setting, value, source, name)
        self.activate("balanced")

    @property
    def active(self):
        return _SCHEMES[self._state.active_scheme]

    def activate(self, scheme):
        self._state.active_scheme = _SCHEMES.index(scheme)

    def get(self, setting, source="AC", scheme=None):
        """A setting of a scheme, by default of the active one."""
        return self._values(source, scheme)[POWER_SETTINGS.index(setting)] / _unit(setting)

    def set(self, setting, value, source="AC", scheme=None):
        self._values(source, scheme)[POWER_SETTINGS.index(setting)] = int(value * _unit(setting))

    @property
    def hibernate_after(self):
        """Minutes until a sleeping machine hibernates, on mains and on battery."""
        return self.get("hibernate", "AC"), self.get("hibernate", "DC")

    @hibernate_after.setter
    def hibernate_after(self, minutes):
        for source, value in zip(POWER_SOURCES, minutes):
            self.set("hibernate", value, source)

    def _values(self, source, scheme):
        place = _SCHEMES.index(scheme or self.active)
        return self._state.schemes[place].values[POWER_SOURCES.index(source)]


def _unit(setting):
    return 60 if setting in _TIMEOUTS else 1
