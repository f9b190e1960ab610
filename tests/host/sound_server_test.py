"""rmthost on a real sound server, which sound_server.py has started around this program."""
import contextlib
import json
import os
import signal
import subprocess
import time
import unittest

from host_test import FAIL, INTERRUPTED, NOT_RESTORED, PASS, TIMED_OUT, HostTest
from sound_server import SoundServer

RECORD = ["record", "mic", "--render", "speaker"]


def pactl(*arguments):
    return subprocess.run(["pactl", *arguments], env={**os.environ, "LC_ALL": "C"}, capture_output=True, text=True,
                          timeout=30, check=True).stdout


class OnServer(HostTest):
    def setUp(self):
        super().setUp()
        pactl("set-sink-volume", "speaker", "25%", "75%")
        pactl("set-sink-mute", "speaker", "1")
        pactl("set-source-volume", "mic", "41%")
        self.before = self.settings()

    def settings(self):
        return [pactl("get-sink-volume", "speaker"), pactl("get-sink-mute", "speaker"),
                pactl("get-source-volume", "mic"), pactl("get-source-mute", "mic")]

    def await_change(self):
        for _ in range(1000):
            if self.settings()[2] != self.before[2]:  # what a test changes last
                return
            time.sleep(0.02)
        self.fail("the test doesn't begin")

    def record_document(self, *arguments, **more):
        """The document of a record test, whatever came of it: a busy computer makes real gaps in the sound."""
        code, output, errors = self.rmthost("--json", *RECORD, *arguments, **more)
        document = self.parsed(output)
        self.assertEqual((code, errors), (document["exitCode"], ""))
        self.assertIn(code, (PASS, FAIL))
        return document


class Server(OnServer):
    def test_a_test_is_played_heard_and_leaves_no_trace(self):
        for _ in range(3):
            result = self.record_document(machine=None)["result"]
            if result["verdict"] == "pass":
                break
        self.assertEqual((result["platform"], result["verdict"]), ("pulse", "pass"), result["reason"])
        self.assertTrue(0.90 < result["maxAmplitude"] < 0.93, result["maxAmplitude"])
        self.assertEqual([shown["putBack"] for shown in result["restored"]["endpoints"]], [[], []])
        self.assertEqual(self.document("record", "mic", "--render", "headset", machine="pulse",
                                       exit_code=FAIL)["result"]["verdict"], "silence")
        self.assertEqual((self.settings(), result["restored"]["state"]), (self.before, "yes"))

    def test_a_test_that_is_cut_short_is_put_back(self):
        for request, code, timeout in [(signal.SIGINT, INTERRUPTED, "30"), (signal.SIGTERM, INTERRUPTED, "30"),
                                       (None, TIMED_OUT, "0.8")]:
            with self.subTest(request), self.start("--json", *RECORD, "--timeout", timeout, machine="pulse") as running:
                self.await_change()
                if request is not None:
                    running.send_signal(request)
                document = json.loads(running.stdout.read())
                self.assertEqual((running.wait(60), document["result"]["restored"]["state"]), (code, "yes"))
                self.assertEqual(self.settings(), self.before)
                self.assertEqual([shown["putBack"] for shown in document["result"]["restored"]["endpoints"]],
                                 [["levels"], ["mute", "levels"]])

    def test_a_server_that_dies_can_not_be_put_back_and_that_is_said(self):
        with SoundServer(os.environ["ZQRMT_SOUND_SERVER"]) as server:
            environment = {key: server.environment[key] for key in ["PULSE_SERVER", "XDG_RUNTIME_DIR", "HOME"]}
            with self.start("--json", *RECORD, machine="pulse", **environment) as running:
                for _ in range(500):
                    if self.streams(environment):
                        break
                    time.sleep(0.02)
                os.kill(server.pid, signal.SIGKILL)
                document = json.loads(running.stdout.read())
                self.assertEqual((running.wait(60), document["result"]["restored"]["state"]), (NOT_RESTORED, "no"))
                self.assertIn("could not be put back", document["error"]["message"])

    @staticmethod
    def streams(environment):
        with contextlib.suppress(subprocess.CalledProcessError):
            return subprocess.run(["pactl", "list", "short", "source-outputs"], env={**os.environ, **environment},
                                  capture_output=True, timeout=30, check=True).stdout.count(b"\n") > 1


if __name__ == "__main__":
    unittest.main()
