#!/usr/bin/env python3
"""Record tests in a row on the sound server that this program finds: sound_server_benchmark.py LIBRARIES [RUNS]

Loads the module from the folder LIBRARIES as a host does, and calls it on `mic` and `speaker`, the endpoints of
tests/support/sound_server.py. Shows wall time, the CPU time of this whole process, libpulse's thread included, the peak, and
where the time beside the tone goes, by when the module's log lines appear. Ends with the medians as one line of JSON.
"""
import ctypes
import json
import os
import resource
import statistics
import sys
import tempfile
import threading
import time

CONTRACT = {"CoreData": {"DeviceInfo": {"DeviceInstanceID": "mic", "AudioData": {"targetDevice": "speaker"}}}}
PASSED = 244995728  # ZQRMT_RETURN_RECORD_PASSED
TONE_SECONDS = 1.0
# What lies between a line of the log and the one before it in this list.
STAGES = {"Setting up render object": "finding the endpoints", "Saving and setting render settings": "opening the playback",
          "Setting up capture object": "tone and settings of the playback", "Saving and setting capture settings": "opening the recording",
          "Starting record and play": "settings of the recording", "Stopping record and play": "playing, beyond the tone's second",
          "Calculating amplitudes": "putting settings back, and taking the recording", "Audio Record Test passed.": "amplitude"}


class LogWatch(threading.Thread):
    """Notes when each line of the log appears. The module's call leaves this thread the interpreter."""

    def __init__(self, path):
        super().__init__(daemon=True)
        self.path, self.seen, self.size = path, [], 0

    def run(self):
        while True:
            now = time.monotonic()
            if os.path.exists(self.path) and os.path.getsize(self.path) > self.size:
                with open(self.path, "rb") as log:
                    log.seek(self.size)
                    text = log.read()
                self.size += len(text)
                self.seen += [(now, line) for line in text.decode(errors="replace").splitlines()]
            time.sleep(0.0003)

    def stages(self, began):
        durations, last = {}, began
        for line, name in STAGES.items():
            now = next((at for at, text in self.seen if line in text and at >= last), last)
            durations[name] = (now - last - (TONE_SECONDS if "tone's second" in name else 0)) * 1000
            last = now
        self.seen.clear()
        return durations


def cpu_seconds():
    usage = resource.getrusage(resource.RUSAGE_SELF)
    return usage.ru_utime + usage.ru_stime


def text_at(address):
    units = []
    while unit := ctypes.c_uint16.from_address(address + 2 * len(units)).value:
        units.append(unit)
    return b"".join(unit.to_bytes(2, "little") for unit in units).decode("utf-16-le")


def call(module, contract):
    """Runs a record test. Gives its amplitude."""
    address = module.AudioRecordTest(contract)
    reply = json.loads(text_at(address))["CoreData"]
    ctypes.CDLL(None).free(ctypes.c_void_p(address))
    if reply["ReturnCode"] != PASSED:
        sys.exit(reply["ReturnMessage"])
    return reply["DeviceInfo"]["AudioData"]["maxAmplitude"]


def measure(libraries, runs, log):
    os.environ["ZQRMT_LOG_DIRECTORY"] = log
    platform = ctypes.CDLL(os.path.join(libraries, "libaudioplatform.so"))
    module = ctypes.CDLL(os.path.join(libraries, "ZQRMTTestsAudio.so"))
    platform.AudioPlatformError.restype = ctypes.c_char_p
    module.AudioRecordTest.restype = ctypes.c_void_p
    if platform.AudioPlatformInitialize(b"pulse") != 0:
        sys.exit(platform.AudioPlatformError().decode())
    contract = json.dumps(CONTRACT).encode("utf-16-le") + b"\0\0"
    measured = []
    for _ in range(runs):
        wall, cpu = time.monotonic(), cpu_seconds()
        peak = call(module, contract)
        measured.append(((time.monotonic() - wall) / TONE_SECONDS, (cpu_seconds() - cpu) * 1000, peak))

    # The stages are measured by themselves: watching the log takes time too.
    open(os.path.join(log, "debug3.flg"), "w").close()
    watch = LogWatch(os.path.join(log, "ZQRMLOG.LOG"))
    watch.start()
    stages = []
    for _ in range(min(runs, max(5, runs // 4))):
        began = time.monotonic()
        call(module, contract)
        time.sleep(0.05)
        stages.append(watch.stages(began))
    platform.AudioPlatformUninitialize()

    result = {name: [min(values), statistics.median(values), max(values)]
              for name, values in zip(("wall", "cpu", "peak"), zip(*measured))}
    result["stages"] = {name: statistics.median(one[name] for one in stages) for name in STAGES.values()}
    return result


def main():
    libraries, runs = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 20
    with tempfile.TemporaryDirectory(prefix="zqrmt-benchmark-") as log:
        result = measure(libraries, runs, log)
    print(f"{runs} record tests, all passed    minimum   median  maximum")
    for what, name in (("wall, times the tone", "wall"), ("CPU, ms", "cpu"), ("peak", "peak")):
        print(f"{what:27}", *(f"{value:9.4f}" for value in result[name]))
    for name, milliseconds in result["stages"].items():
        print(f"{milliseconds:9.2f} ms  {name}")
    print(json.dumps(result))


if __name__ == "__main__":
    main()
