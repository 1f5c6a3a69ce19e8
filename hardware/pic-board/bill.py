# SPDX-License-Identifier: MIT
"""Writes and checks the bill of materials, a table between two marks on a page."""

import re

BEGIN = "<!-- bill of materials: made by hardware/pic-board/bom -->"
END = "<!-- end of the bill of materials -->"


def readable(value):
    """Returns a value with the usual symbols: 10 kΩ, 10 µF."""
    value = re.sub(r"^([\d.]+ [kM]?)ohm$", r"\1Ω", value)
    return re.sub(r"^([\d.]+) uF$", r"\1 µF", value)


def remarks(parts):
    """Returns the remark that these parts share, or each remark with its reference."""
    found = list(dict.fromkeys(part.remark for part in parts))
    if len(found) == 1:
        return found[0]
    return "; ".join(f"{part.reference} {part.remark}" for part in parts)


def lines(board):
    groups = {}
    for part in board.parts.values():
        groups.setdefault((part.role, part.value, part.package), []).append(part)
    table = ["| reference | quantity | value | package | remark |", "|---|---|---|---|---|"]
    for (_, value, package), parts in groups.items():
        references = ", ".join(part.reference for part in parts)
        table.append(f"| {references} | {len(parts)} | {readable(value)} | {package} | {remarks(parts)} |")
    for quantity, what, package, remark in board.also:
        table.append(f"| | {quantity} | {what} | {package} | {remark} |")
    return table


def region(guide):
    """Returns the lines between the marks, or None unless the page has exactly one pair of marks."""
    if guide.count(BEGIN) != 1 or guide.count(END) != 1:
        return None
    return guide.partition(BEGIN)[2].partition(END)[0].strip().splitlines()


def replaced(board, guide):
    before, _, rest = guide.partition(BEGIN)
    return "\n".join([before + BEGIN, "", *lines(board), "", END]) + rest.partition(END)[2]


def check(board, guide):
    found = region(guide)
    if found is None:
        return ["the guide has no bill of materials between its marks"]
    listed = {reference.strip() for line in found[2:] for reference in line.split("|")[1].split(",")}
    faults = [f"{reference} is not in the bill of materials" for reference in board.parts if reference not in listed]
    faults += [f"{reference} is in the bill of materials, not in the netlist"
               for reference in sorted(listed - set(board.parts) - {""})]
    if not faults and found != lines(board):
        faults.append("the bill of materials differs from the netlist: run hardware/pic-board/bom")
    return faults
