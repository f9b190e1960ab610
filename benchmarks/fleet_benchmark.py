#!/usr/bin/env python3
"""Measures the query of docs/fleet.md over the documents of many machines:

    benchmarks/fleet_benchmark.py build/release/bin/rmthost [MACHINES]

rmthost writes one document for each kind of machine, on virtual machines; each is then copied under the names of as many
machines as have that kind. Prints the table of docs/fleet.md.
"""
import collections
import json
import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

# How many machines of ten thousand are of a kind, and the conditions of the path from speaker to microphone.
KINDS = {"good": (9400, []), "silent": (200, None), "interrupted": (200, [{"kind": "gap", "atMs": 290, "lengthMs": 20}]),
         "noisy": (100, [{"kind": "hum", "hz": 50, "level": 0.2}]), "no microphone": (100, None)}
QUERY = os.path.join(os.path.dirname(__file__), "..", "docs", "examples", "fleet", "failures.sql")
RUNS = 5


def describe(kind, path):
    format = {"tag": "pcm", "channels": 2, "rate": 48000, "bits": 16}
    both = {"levels": [0.5, 0.5], "format": format, "default": ["console", "multimedia"]}
    speaker = {"id": "{0.0.0}.{speaker}", "name": "Speaker", "flow": "render", **both}
    microphone = {"id": "{0.0.1}.{microphone}", "name": "Microphone", "flow": "capture", **both, "path": path or [],
                  "hears": [] if path is None else [{"endpoint": speaker["id"], "gain": 0.5}]}
    return {"clock": "virtual", "endpoints": [speaker] if kind == "no microphone" else [speaker, microphone]}


def write_documents(host, count, folder):
    """Writes a document for each machine; returns the document of each kind and the kind of each machine."""
    documents, kinds = {}, []
    for kind, (share, path) in KINDS.items():
        machine = os.path.join(folder, "machine")
        with open(machine, "w") as file:
            json.dump(describe(kind, path), file)
        documents[kind] = subprocess.run([host, "--json", "record", "Microphone", "--render", "Speaker", "--platform",
                                          "virtual:" + machine], stdout=subprocess.PIPE).stdout
        kinds += [kind] * (count * share // 10000)
    kinds += ["good"] * (count - len(kinds))
    names = [f"pc-{number:05}" for number in range(count)]
    for name, kind in zip(names, kinds):
        with open(os.path.join(folder, name + ".json"), "wb") as file:
            file.write(documents[kind])
    with open(os.path.join(folder, "machines.json"), "w") as file:
        json.dump(names, file)
    return documents, kinds


def cpu_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def main():
    host, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 10000
    folder = tempfile.mkdtemp(prefix="zqrmt-fleet-")
    try:
        documents, kinds = write_documents(host, count, folder)
        for kind, machines in collections.Counter(kinds).items():
            print(f"| {kind} | {machines} | {len(documents[kind])} |")
        print(f"all together: {sum(len(documents[kind]) for kind in kinds) / 1e6:.1f} MB")
        seconds, before = [], cpu_seconds()
        for _ in range(RUNS):
            begin = time.monotonic()
            with open(QUERY) as query:
                rows = subprocess.run(["sqlite3", ":memory:"], stdin=query, cwd=folder, check=True, stdout=subprocess.PIPE)
            seconds.append(time.monotonic() - begin)
        cpu = (cpu_seconds() - before) / RUNS
        found = collections.Counter(line.split("|")[1] for line in rows.stdout.decode().splitlines())
        print("found: " + ", ".join(f"{number} {what}" for what, number in sorted(found.items())))
        print(f"the query: {min(seconds):.2f} s least, {statistics.median(seconds):.2f} s median, {max(seconds):.2f} s most; "
              f"{cpu:.2f} s of a processor")
    finally:
        shutil.rmtree(folder)


if __name__ == "__main__":
    main()
