"""The machine that the lab tests on, seen from the test's side."""
