"""Which values the template offers, and how the editor of policies asks for each. Their explanations
are those of docs/settings.md."""

from typing import NamedTuple

from default_values import SECTION, number_of_strengths

BRANDING = r"SOFTWARE\Corisk\Z7\Branding"
PREDICTOR_SECTION = rf"{BRANDING}\Predictors\{SECTION}"

# The largest number that every editor of policies takes.
_LARGEST = 9999


class Switch(NamedTuple):
    """A number of 0 or 1, each with its words."""
    off: str = "Off"
    on: str = "On"


class Number(NamedTuple):
    least: int = 0
    most: int = _LARGEST
    is_text: bool = False  # in the registry


class Word(NamedTuple):
    """One of some texts, each with its words."""
    words: dict


class Text(NamedTuple):
    longest: int = 255


class Policy(NamedTuple):
    name: str  # of the value
    title: str
    form: NamedTuple
    key: str = BRANDING


def _of_predictor(name, title, form):
    return Policy(name, title, form, PREDICTOR_SECTION)


# By their category, which is a folder of the editor.
POLICIES = {
    "Service": (
        Policy("EnableZ7Feature", "The feature", Switch()),
        Policy("DisablePrediction", "Predictions", Switch("Predict", "Do not predict")),
        Policy("DebugLogging", "More events", Switch()),
        Policy("TotalAttempts", "Start attempts that are only counted", Number()),
        Policy("HistoryLimit", "How long the history is kept", Number()),
    ),
    "Predictor": (
        _of_predictor("Predictor", "Which predictor works",
                      Word({"slots": "Slots", "rates": "Rates"})),
        _of_predictor("WakeTimer", "What wakes the machine without a driver",
                      Word({"driver": "Nothing", "windows": "A timer of Windows"})),
        _of_predictor("Strength", "Between saving power and waiting",
                      Number(0, number_of_strengths() - 1, True)),
        Policy("TimeResolution", "Length of a slot", Number(1, 30)),
        _of_predictor("DaysInCycle", "Length of the cycle", Number(1, 366, True)),
        _of_predictor("DayGrouping", "Days that count together", Number(0, 255, True)),
        _of_predictor("FirstLastWeight", "Weight of the last observation", Number(0, 100, True)),
        _of_predictor("SecondLastWeight", "Weight of the second-last observation",
                      Number(0, 100, True)),
        _of_predictor("AgregationWeight", "Weight of older observations", Number(0, 100, True)),
        _of_predictor("StrengthHigh", "In use at or above", Number(0, 100, True)),
        _of_predictor("StrengthLow", "Idle below", Number(0, 100, True)),
    ),
    "Search": (
        Policy("OptimizerInterval", "Days between searches", Number()),
        Policy("OptimizerDelay", "Wait before a search", Number()),
        Policy("TotalOptimizerAttemptsInDCmode", "Launches on battery that put off a search",
               Number()),
        _of_predictor("WR", "How much a wait counts, for each strength", Text()),
        _of_predictor("FirstLastWeightRange", "Weights of the last observation to try", Text()),
        _of_predictor("SecondLastWeightRange", "Weights of the second-last observation to try",
                      Text()),
        _of_predictor("StrengthHighRange", "Limits of use to try", Text()),
        _of_predictor("StrengthLowRange", "Limits of idleness to try", Text()),
        _of_predictor("DayGroupingRange", "Groups of days to try", Text()),
    ),
}

# Values that the template does not offer, and why.
LEFT_OUT = {
    "CurrentAttempt": "a count",
    "CurrentOptimizerAttemptsInDCmode": "a count",
    "StartTime": "a record of what the service did",
    "ServiceStatus": "a record of what the service did",
    "ServiceFeedback": "a record of what the service did",
    "LastOptimizerRun": "a record of what the service did",
    "WindowsTimerState": "a record of what the service did",
    "HA_AC": "it would be put back over the user's own timeout",
    "HA_DC": "it would be put back over the user's own timeout",
    "Best%d": "a result of the machine's own searches",
    "MinutesInDay": "the same on every machine",
    "EnableDynamicHA": "nobody reads it",
    "UseDualStrength": "nobody reads it",
}
