"""The text of "brenmark dump --full" as values and arrays."""
import re
import subprocess

import numpy as np


def numbers(text):
    return [float("nan") if word.startswith("nan") else float(word) for word in re.findall(r"[^\s(),]+", text)]


def read(program, deck):
    """Scalars of a deck, and the arrays of its timesteps, by place."""
    values, rows = {}, {}
    text = subprocess.run([program, "dump", "--full", str(deck)], check=True, capture_output=True, text=True).stdout
    for line in text.splitlines():
        place, _, text = line.partition(" ")
        head = re.match(r"[fiu]\d+\[(\d+)(?:,(\d+))?\] ?(sha256:.*)?", text)
        if head and place.startswith("timestep/"):
            rows[place] = (int(head[1]), int(head[2] or 1), [] if head[3] else numbers(text[head.end():]))
        elif place.rpartition("/")[0] in rows:
            rows[place.rpartition("/")[0]][2].extend(numbers(text))
        else:
            values[place] = text.strip('"')
    return values, {place: np.array(found).reshape(count, width) for place, (count, width, found) in rows.items()}
