"""The lines of the table, how sure each is, and what became worse than another run."""

import json
import math
import statistics

# Student's t for 95 %, by the number of rounds less one.
T95 = {1: 12.71, 2: 4.30, 3: 3.18, 4: 2.78, 5: 2.57, 6: 2.45, 7: 2.36, 8: 2.31, 9: 2.26}


def interval(rounds):
    """Where the true figure is in 95 of 100 runs; None for a single round. Of ratios and times the
    logarithms are spread evenly."""
    if len(rounds) < 2 or min(rounds) <= 0:
        return None
    logs = [math.log(value) for value in rounds]
    half = T95.get(len(logs) - 1, 1.96) * statistics.stdev(logs) / math.sqrt(len(logs))
    middle = statistics.mean(logs)
    return math.exp(middle - half), math.exp(middle + half)


class Row:
    """A line of the table. Less is better in all of them; `rounds` are what the figure is the median
    of, None for what has no rounds of its own."""

    HEADS = ("what", "measured", "bar", "verdict", "rounds", "95 % sure")

    def __init__(self, what, measured, bar, met, spread="", rounds=None, form="{:.2f}"):
        self.what = what
        self.rounds = rounds
        sure = interval(rounds or [])
        verdict = {None: "", True: "met", False: "MISSED"}[met]
        self.cells = (what, measured, bar, verdict, spread,
                      "{} to {}".format(*map(form.format, sure)) if sure else "")


def spread(values, form="{:.2f}"):
    return f"{form.format(min(values))} to {form.format(max(values))} ({len(values)})"


def show(rows, markdown):
    lines = [row.cells for row in rows]
    if markdown:
        print("| " + " | ".join(Row.HEADS) + " |")
        print("|" + "---|" * len(Row.HEADS))
        for line in lines:
            print("| " + " | ".join(line) + " |")
        return
    widths = [max(len(line[column]) for line in [Row.HEADS] + lines)
              for column in range(len(Row.HEADS))]
    for line in [Row.HEADS] + lines:
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def save(named, path):
    """Writes the rounds of {name: Row} down for a later run."""
    with open(path, "w", encoding="utf-8") as file:
        json.dump({name: {"what": row.what, "rounds": row.rounds}
                   for name, row in named.items() if row.rounds}, file, indent=1)
        file.write("\n")


def worse(named, path):
    """A line for each figure that is worse than in that run by more than both are unsure of."""
    with open(path, encoding="utf-8") as file:
        before = json.load(file)
    for name, row in named.items():
        then = interval(before.get(name, {}).get("rounds") or [])
        now = interval(row.rounds or [])
        if then and now and now[0] > then[1]:
            yield (f"{row.what}: {now[0]:.3g} to {now[1]:.3g}, "
                   f"before {then[0]:.3g} to {then[1]:.3g}")
