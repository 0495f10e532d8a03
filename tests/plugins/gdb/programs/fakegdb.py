#!/usr/bin/python3
"""Answers like gdb, from the table in the file table.json beside it; see fakegdb.h."""
import json
import os
import re
import sys
import time

with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "table.json"), encoding="utf-8") as file:
    table = json.load(file)
print("(gdb) ", flush=True)
for text in sys.stdin:
    token, command = re.match(r"(\d*)(.*)", text).groups()
    if command.startswith("-gdb-exit"):
        break
    for line in next((lines for start, lines in table if command.startswith(start)), ["TOKEN^done"]):
        if line.startswith("SLEEP "):
            time.sleep(float(line[6:]))
        elif line == "EXIT":
            sys.exit(1)
        else:
            print(line.replace("TOKEN", token), flush=True)
