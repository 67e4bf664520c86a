#!/usr/bin/python3
"""startup.py warm|cold [--prepare COMMAND] PROGRAM ARG...: starts it once, waits for READY, then sums the proportional
memory of its processes. COMMAND runs before, in the same private home.

Prints RESULT with milliseconds from before the start to READY, and the memory in MB one second later.
"""
import os
import shlex
import subprocess
import sys
import tempfile
import time


def tree(pid):
    kids = {}
    for p in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{p}/stat") as f:
                kids.setdefault(int(f.read().rsplit(")", 1)[1].split()[1]), []).append(int(p))
        except OSError:
            pass
    out, todo = [], [pid]
    while todo:
        out.append(todo.pop())
        todo += kids.get(out[-1], [])
    return out


def pss(pid):
    try:
        with open(f"/proc/{pid}/smaps_rollup") as f:
            return next(int(line.split()[1]) for line in f if line.startswith("Pss:"))
    except OSError:
        return 0


heat, *command = sys.argv[1:]
preparation = []
if command[0] == "--prepare":
    preparation, command = shlex.split(command[1]), command[2:]
if heat == "cold":
    os.sync()
    with open("/proc/sys/vm/drop_caches", "w") as f:
        f.write("3")
with tempfile.TemporaryDirectory() as home:
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen", QTWEBENGINE_DISABLE_SANDBOX="1", HOME=home, XDG_RUNTIME_DIR=home,
               QTWEBENGINE_CHROMIUM_FLAGS="--disable-gpu")
    if preparation:
        subprocess.run(preparation, env=env, check=True, stderr=subprocess.DEVNULL)
    env["START_NS"] = str(time.monotonic_ns())
    child = subprocess.Popen(command, env=env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    line = child.stdout.readline()
    ms = float(line.split()[1])
    time.sleep(1)
    processes = tree(child.pid)
    memory = sum(map(pss, processes)) / 1024
    child.terminate()
    child.wait(10)
    time.sleep(0.2)
print(f"RESULT\t{len(processes)} processes\t{ms:.3f}\t{memory:.1f}")
