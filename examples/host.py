#!/usr/bin/env python3
"""Runs Veldtrim with "-pipe", as a host program does, and shows its messages and its progress.

    host.py VELDTRIM INPUT_DIRECTORY OUTPUT_NAME BOUNDARY_FILE

The exit code is Veldtrim's.
"""

import json
import subprocess
import sys


def messages(stream):
    """Yields the messages on Veldtrim's standard error, one JSON object per line."""
    for line in stream:
        try:
            message = json.loads(line)
        except ValueError:
            continue  # not a message: a system library can write to standard error too
        if isinstance(message, dict):
            yield message


def show(message):
    kind = message.get("kind")
    if kind == "progress":
        print(f"{message['position']:5.1f} %", end="\r", flush=True)
    elif kind in ("state", "error", "failed", "finish"):
        print(f"{kind}: {message['text'].rstrip()}")
    # Other kinds are ignored, because later versions may add some.


def main(arguments):
    if len(arguments) != 4:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    # Standard output has lines for people, which a host does not need.
    with subprocess.Popen(
        [*arguments, "-pipe"],
        stdout=subprocess.DEVNULL,
        stderr=subprocess.PIPE,
        encoding="utf-8",
    ) as program:
        for message in messages(program.stderr):
            show(message)
    return program.returncode


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
