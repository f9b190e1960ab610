#!/usr/bin/env python3
"""Record tests in a row on the sound server that this program finds: sound_server_benchmark.py LIBRARIES [RUNS]

Loads the module from the folder LIBRARIES as a host does, and calls it on `mic` and `speaker`, the endpoints of
tests/support/sound_server.py. Shows wall time, the CPU time of this whole process, libpulse's thread included, and the peak.
"""
import ctypes
import json
import os
import resource
import statistics
import sys
import time

CONTRACT = {"CoreData": {"DeviceInfo": {"DeviceInstanceID": "mic", "AudioData": {"targetDevice": "speaker"}}}}
PASSED = 244995728  # ZQRMT_RETURN_RECORD_PASSED
TONE_SECONDS = 1.0


def cpu_seconds():
    usage = resource.getrusage(resource.RUSAGE_SELF)
    return usage.ru_utime + usage.ru_stime


def text_at(address):
    units = []
    while unit := ctypes.c_uint16.from_address(address + 2 * len(units)).value:
        units.append(unit)
    return b"".join(unit.to_bytes(2, "little") for unit in units).decode("utf-16-le")


def main():
    libraries, runs = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 20
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
        address = module.AudioRecordTest(contract)
        wall, cpu = time.monotonic() - wall, cpu_seconds() - cpu
        reply = json.loads(text_at(address))["CoreData"]
        ctypes.CDLL(None).free(ctypes.c_void_p(address))
        if reply["ReturnCode"] != PASSED:
            sys.exit(reply["ReturnMessage"])
        measured.append((wall, wall / TONE_SECONDS, cpu * 1000, reply["DeviceInfo"]["AudioData"]["maxAmplitude"]))
    print(f"{runs} record tests, all passed    minimum   median  maximum")
    for what, values in zip(("wall, s", "wall, times the tone", "CPU, ms", "peak"), zip(*measured)):
        print(f"{what:27}", *(f"{value:9.4f}" for value in (min(values), statistics.median(values), max(values))))
    platform.AudioPlatformUninitialize()


if __name__ == "__main__":
    main()
