"""What a test counted or measured, for whoever runs ./test to read, also when it passes."""


def figure(text):
    """./test shows the lines that begin so: see tools/setup/figures.py."""
    for line in text.splitlines():
        print(f"| {line}", flush=True)
