"""The shipped module and rmthost on Wine's own Core Audio: core_audio_test.py CLASS HOST EXAMPLE RUNNER...

WithSound needs a sound server with the sinks and the source of sound_server.py, WithoutSound none. Wine's endpoint
volume has no channel levels, so that each test ends at the step that saves them.
"""
import json
import os
import subprocess
import sys
import unittest

HOST, EXAMPLE, *RUNNER = sys.argv[2:]
NO_ENDPOINT = 3


def run(*command):
    return subprocess.run([*RUNNER, *command], stdin=subprocess.DEVNULL, capture_output=True, timeout=60)


def rmthost(*arguments):
    return run(HOST, *arguments, "--platform", "coreaudio", "--json")


def outcome(function, id):
    """Has the example host of the documentation call the function, and returns the outcome."""
    core = json.loads(run(EXAMPLE, function, id).stdout)["CoreData"]
    return core["ReturnCode"], core["ReturnMessage"]


class WithSound(unittest.TestCase):
    def pactl(self, *arguments):
        return subprocess.run(["pactl", *arguments], check=True, capture_output=True, text=True, timeout=20).stdout

    def settings(self):
        return [self.pactl(f"get-{kind}-{what}", name) for kind, name in
                [("sink", "speaker"), ("sink", "headset"), ("source", "mic")] for what in ("volume", "mute")]

    def test_endpoints_are_listed_and_failing_tests_leave_them_as_they_were(self):
        for command in ["set-sink-volume speaker 25% 75%", "set-sink-mute speaker 1", "set-source-volume mic 50% 50%"]:
            self.pactl(*command.split())
        before = self.settings()
        endpoints = json.loads(rmthost("list").stdout)["result"]["endpoints"]
        found = {}
        for endpoint in endpoints:
            found.setdefault(endpoint["flow"], []).append(endpoint)
            self.assertTrue(endpoint["name"])
            self.assertEqual((endpoint["state"], endpoint["format"]["rate"]), ("active", 48000), endpoint)
        for flow, function in [("render", "AudioPlaybackTest"), ("capture", "AudioRecordTest")]:
            default = [endpoint["id"] for endpoint in found[flow] if "console" in endpoint["default"]]
            self.assertEqual(len(default), 1)
            self.assertEqual(outcome(function, default[0]), (744995582, "Microsoft API Error"))
        self.assertEqual(self.settings(), before)


class WithoutSound(unittest.TestCase):
    def test_there_is_no_endpoint(self):
        done = rmthost("play")
        self.assertEqual((done.returncode, json.loads(done.stdout)["ok"]), (NO_ENDPOINT, False))
        self.assertEqual(outcome("AudioRecordTest", "X"), (744770117, "Could not find device"))
        self.assertEqual(outcome("AudioPlaybackTest", "X"), (744995582, "Microsoft API Error"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:2] + ["-v"])
