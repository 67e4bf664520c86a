#!/usr/bin/env python3
"""python.py FILE: reads an XML-RPC reply into Python's values; prints a RESULT line."""
import re
import statistics
import sys
import time
import xmlrpc.client


def main():
    with open(sys.argv[1], "rb") as f:
        reply = f.read()
    xmlrpc.client.loads(reply)
    times = []
    while len(times) < 3 or sum(times) < 0.3:
        start = time.perf_counter()
        xmlrpc.client.loads(reply)
        times.append(time.perf_counter() - start)
    with open("/proc/self/status") as f:
        peak = int(re.search(r"VmHWM:\s*(\d+)", f.read())[1]) / 1024
    print(f"RESULT\tpython\t{statistics.median(times) * 1000:.5f}\t{peak:.1f}")


main()
