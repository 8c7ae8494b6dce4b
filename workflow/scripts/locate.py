#!/usr/bin/env python3
"""Prints the line of the input that became a line of a shard: locate.py PLAN SHARD LINE, lines counted from 1."""

from __future__ import annotations

import sys
from pathlib import Path

from shard_plan import input_line, read_plan

if __name__ == "__main__":
    plan, shard, line = sys.argv[1:]
    print(input_line(read_plan(Path(plan)), int(shard), int(line)))
