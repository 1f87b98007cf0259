"""What dozewellctl is told of the machine and the service is not: ways to sleep, policies, logs, and
a call that fails."""

from datetime import datetime, timezone

from machine.machine_state import POWER_SETTINGS, POWER_SOURCES

# Places in SYSTEM_POWER_CAPABILITIES.
S3, S4, HIBERNATION_FILE, FAST_STARTUP, MODERN_STANDBY, TIMER_WAKE = 5, 6, 8, 18, 20, 64
# What TIMER_WAKE holds: the deepest state that a timer wakes the machine from.
FROM_S3, FROM_S4 = 4, 5

_CONTROL = "SYSTEM\\CurrentControlSet\\Control\\Session Manager"
_POLICIES = "SOFTWARE\\Policies\\Microsoft\\Power\\PowerSettings"
_EVENT_SOURCE = "SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\Dozewell Service"
_SETTING_IDS = {"hibernate": "9D7815A6-7EE4-497E-8888-515A05F02364",
                "wake-timers": "BD3B718A-0680-4D9D-8AB2-E1D2B4AC806D"}
_LEVELS = {"success": 0, "error": 2, "information": 4}

KERNEL_POWER = "Microsoft-Windows-Kernel-Power"
SLEPT, WOKE = 42, 107


class ClientView:
    def __init__(self, state, registry, lab_folder):
        self._state = state
        self._registry = registry
        self._folder = lab_folder

    def reset(self):
        """A machine that sleeps and hibernates, without policies and without event logs."""
        self._state.capabilities[:] = [0] * len(self._state.capabilities)
        for capability in S3, S4, HIBERNATION_FILE, FAST_STARTUP:
            self.set_capability(capability, True)
        self.set_capability(TIMER_WAKE, FROM_S4)
        for source in self._state.setting_policies:
            source[:] = [0] * len(POWER_SETTINGS)
        self._state.scheme_policy = 0
        self._state.gives_up_privileges = 0
        self._state.fails_for_client = b""
        self._registry.delete_key(_POLICIES)
        self._registry.delete_key(_EVENT_SOURCE)
        self.set_fast_startup(0)
        for log in self._folder.glob("*.xml"):
            log.unlink()

    def set_capability(self, capability, value):
        self._state.capabilities[capability] = value

    def set_fast_startup(self, setting):
        self._registry.write("HiberbootEnabled", setting, _CONTROL + "\\Power")

    def overrule(self, setting, source, value):
        """Has a policy decide on a power setting, in the system's own units; None is a policy
        without a value."""
        self._state.setting_policies[POWER_SOURCES.index(source)][POWER_SETTINGS.index(setting)] = 1
        if value is not None:
            self._registry.write(f"{source}SettingIndex", value,
                                 f"{_POLICIES}\\{_SETTING_IDS[setting]}")

    def overrule_scheme(self):
        self._state.scheme_policy = 1

    def give_up_privileges(self):
        self._state.gives_up_privileges = 1

    def fail(self, function):
        """Has a function of the system fail, one of those that native/client_stand_ins ask Fails()
        about."""
        self._state.fails_for_client = function.encode()

    def register_event_source(self, file):
        self._registry.write("EventMessageFile", file, _EVENT_SOURCE)

    def log_system_event(self, provider, number):
        """Adds an event to the System log, at the machine's present time."""
        self._log("System", f"<Provider Name='{provider}'/><EventID>{number}</EventID>", "")

    def log_service_events(self, step):
        """Adds the service's events of a step to the Application log, which begins with it."""
        for event in step.events:
            self._log("Application", f"<Level>{_LEVELS[event.kind]}</Level>",
                      f"<EventData><Data>{event.text}</Data></EventData>")

    def _log(self, log, system, data):
        time = datetime.fromtimestamp(self._state.clock, timezone.utc)
        with open(self._folder / f"{log}.xml", "a", encoding="ascii") as file:
            file.write(f"<Event><System>{system}<TimeCreated "
                       f"SystemTime='{time:%Y-%m-%dT%H:%M:%S}Z'/></System>{data}</Event>\n")
