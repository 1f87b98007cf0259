"""What the service logs and sets for a decision of dozewell-replay."""

from machine.lab_device import DURATION, ENABLED
from machine.service_record import information
from steps.expect import expect


def expect_decided(sleep, decision):
    """Compares what the service did in a sleep that was played with a decision."""
    suspend = sleep.moments[0].step
    expect(suspend.events[1:-1], _events(decision), f"what is logged at {sleep.start}")
    expect(_writes(suspend, "scheme", "hibernate"), _timeout_writes(decision["haMinutes"]),
           f"timeouts set at {sleep.start}")
    expect(_writes(suspend, "driver", "timer"), _timer_writes(decision["timerMinutes"]),
           f"timer armed at {sleep.start}")
    for moment in sleep.moments:
        if moment.what == "is woken by its timer":
            expect(_writes(moment.step, "scheme", "hibernate"),
                   _timeout_writes(decision["nextHAMinutes"]), f"timeouts set at {moment.time}")


def _events(decision):
    return [
        information("Predicted Hibernate at: " + _as_logged(decision["hibernateAt"])),
        information("Predicted Sleep restored at: " + _as_logged(decision["sleepRestoredAt"])),
        information("Predicted Hibernate next at: " + _as_logged(decision["hibernateNextAt"])),
    ]


def _as_logged(text):
    """A time is logged with the line feed that ends it, words are not."""
    return text if text in ("no prediction", "never") else text + "\n"


def _timeout_writes(minutes):
    """What the record shows of a timeout that the service sets for both sources; None for none."""
    if minutes is None:
        return []
    seconds = 60 * max(minutes, 1)
    return [f"write 0 hibernate AC {seconds}", f"write 0 hibernate DC {seconds}"]


def _timer_writes(minutes):
    if minutes is None or minutes <= 0:
        return []
    return [f"write timer 0x0 0x{ENABLED | DURATION | minutes:x}"]


def _writes(step, kind, what):
    return [text for text in step.of(kind) if text.startswith("write") and what in text]
