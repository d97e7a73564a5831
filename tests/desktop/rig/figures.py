"""What a test counted or measured, for whoever runs ./test to read, also when it passes."""


def figure(text):
    """./test shows the lines that begin so: see tools/setup/figures.py. The test's own name may stand before the first
    one, without an end of its line."""
    print("\n" + "\n".join(f"| {line}" for line in text.splitlines()), flush=True)
