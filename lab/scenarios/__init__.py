"""What the service does on a machine. Every function here that has no leading underscore is a
scenario; lab/run_scenarios.py runs it."""
