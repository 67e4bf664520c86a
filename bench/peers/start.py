#!/usr/bin/env python3
"""start.py [--prepare COMMAND] PROGRAM ARG...: starts it once, waits for READY, then sums the proportional memory of
its processes. COMMAND runs before, in the same private home.

Prints RESULT with milliseconds from before the start to READY, and the memory in MB one second later.
"""
import os
import shlex
import subprocess
import sys
import tempfile
import time


def tree(pid):
    children = {}
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{process}/stat") as f:
                children.setdefault(int(f.read().rsplit(")", 1)[1].split()[1]), []).append(int(process))
        except OSError:
            pass
    out, todo = [], [pid]
    while todo:
        out.append(todo.pop())
        todo += children.get(out[-1], [])
    return out


def proportional_kilobytes(pid):
    try:
        with open(f"/proc/{pid}/smaps_rollup") as f:
            return next(int(line.split()[1]) for line in f if line.startswith("Pss:"))
    except OSError:
        return 0


def main():
    command, preparation = sys.argv[1:], []
    if command[0] == "--prepare":
        preparation, command = shlex.split(command[1]), command[2:]
    with tempfile.TemporaryDirectory() as home:
        env = dict(os.environ, HOME=home, XDG_RUNTIME_DIR=home)
        if preparation:
            subprocess.run(preparation, env=env, check=True, stderr=subprocess.DEVNULL)
        env["START_NS"] = str(time.monotonic_ns())
        child = subprocess.Popen(command, env=env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        milliseconds = float(child.stdout.readline().split()[1])
        time.sleep(1)
        processes = tree(child.pid)
        memory = sum(map(proportional_kilobytes, processes)) / 1024
        child.terminate()
        child.wait(10)
        time.sleep(0.2)
    print(f"RESULT\t{len(processes)} processes\t{milliseconds:.3f}\t{memory:.1f}")


main()
