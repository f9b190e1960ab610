"""What rmthost makes of the module's figures: the verdict, a series, the log, the platform that was used."""
import copy
import json
import re
import unittest

from host_test import (BAD_INPUT, BROKEN, FAIL, MACHINE, MISBEHAVING, NOT_RESTORED, PASS, RETURN, RUNNER, HostTest,
                       enough)

RECORD = ["record", "--render", "speaker"]


class Verdicts(HostTest):
    def use_gain(self, gain):
        machine = copy.deepcopy(MACHINE)
        machine["endpoints"][5]["hears"][0]["gain"] = gain
        self.write("machine.json", json.dumps(machine).encode())

    def test_the_peak_is_held_to_its_limits(self):
        cases = [  # The tone's peak is 0.915 times the gain.
            (0, RECORD, "silence", "cable"), (0.005, RECORD, "too quiet", "--min-peak"),
            (2, RECORD, "clipping", "--max-peak"), (0.5, RECORD, "pass", None),
            (0, [*RECORD, "--min-peak", "0"], "pass", None),
            (0.5, [*RECORD, "--min-peak", "0.5"], "too quiet", "--min-peak"),
            (0.5, [*RECORD, "--max-peak", "0.4"], "clipping", "--max-peak"),
            (2, [*RECORD, "--max-peak", "1"], "pass", None), (0.5, ["record"], "pass", None),
            (0.5, ["record", "--min-peak", "1e-9"], "silence", "cable")]
        for gain, arguments, verdict, advice in enough(cases):
            with self.subTest(gain=gain, arguments=arguments):
                self.use_gain(gain)
                result = self.document(*arguments, exit_code=PASS if verdict == "pass" else FAIL)["result"]
                self.assertEqual((result["verdict"], result["passed"], result["returnCode"]),
                                 (verdict, verdict == "pass", RETURN["RECORD_PASSED"]))
                self.assertIn(advice or "", result["advice"] or "")
                self.assertEqual(result["advice"] is None, verdict == "pass")

    def test_the_text_shows_limits_and_time(self):
        self.use_gain(0.005)
        text = self.rmthost(*RECORD)[1].decode()
        self.assertRegex(text, r"^FAIL  Too quiet: the peak 0\.004\d+ is below 0\.01\. \(%d\)\n" % RETURN["RECORD_PASSED"])
        self.assertIn("  limits     at least 0.01, at most 0.999\n", text)
        self.assertRegex(text, r"  time       \d+\.\d\d s\n")
        self.assertNotIn("limits", self.rmthost("record")[1].decode())

    def test_limits_that_make_no_sense_are_refused(self):
        for options in enough([["--min-peak", "0.5", "--max-peak", "0.4"], ["--min-peak", "nan"], ["--timeout", "0"],
                               ["--max-peak", "1.1"], ["--timeout", "inf"], ["--timeout", "x"]]):
            self.document("record", *options, exit_code=BAD_INPUT)

    def test_verbose_shows_the_log_of_this_call(self):
        code = RETURN["PLAYBACK_PASSED"]
        line = f"{code}, normal: Audio Playback Test passed., [ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]"
        lines = self.document("play", "--verbose")["result"]["logLines"]
        self.assertTrue(any(shown.endswith(line) for shown in lines), lines)
        self.assertIn(line, self.rmthost("play", "--verbose")[1].decode())
        self.assertNotIn(line, self.rmthost("play")[1].decode())


class Repeat(HostTest):
    def test_a_series_is_summed_up(self):
        result = self.document("repeat", "-n", "3", *RECORD)["result"]
        self.assertEqual((result["asked"], result["passes"], result["failures"], len(result["runs"])), (3, 3, {}, 3))
        for figure, key in [("peak", "maxAmplitude"), ("seconds", "seconds")]:
            values = sorted(run[key] for run in result["runs"])
            self.assertEqual(result[figure], dict(zip(["minimum", "median", "maximum"], values)))
        text = self.rmthost("repeat", "play", "-n", "2")[1].decode()
        self.assertRegex(text, r"^PASS  2 of 2 passed\n\n.*\n  time       [\d. ]+ s\n\nrestored: yes, after every run\n$")

    def test_failures_are_counted_by_what_they_came_to(self):
        def machine(*operations):
            self.write("faulty.json", json.dumps({**MACHINE, "faults": [
                {"operation": operation, "call": call, "status": -2004287484, "sticky": True}
                for operation, call in operations]}).encode())
            return {"machine": "virtual:faulty.json"}
        fails = ("IAudioClient::Start", 1)
        refused = str(RETURN["PLATFORM"])
        hangs = {"module": MISBEHAVING, "MISBEHAVIOUR": "hang"}
        cases = [(FAIL, {refused: 2}, [], lambda: machine(fails)),
                 (FAIL, {refused: 1}, ["--fail-fast"], lambda: machine(fails)),
                 (FAIL, {"too quiet": 2}, ["--min-peak", "0.5"], dict),
                 (FAIL, {"timed out": 2}, ["--timeout", "0.4"], lambda: hangs),
                 # What one run leaves changed, the next would take for how it was.
                 (NOT_RESTORED, {refused: 1}, [],
                  lambda: machine(fails, ("IAudioEndpointVolume::SetMute", 2)))]
        for code, failures, options, setting in enough(cases):
            with self.subTest(failures=failures, options=options):
                code_and_output = self.rmthost("--json", "repeat", "-n", "2", *RECORD, *options, **setting())
                result = json.loads(code_and_output[1])["result"]
                self.assertEqual((code_and_output[0], result["failures"], result["passes"]), (code, failures, 0))

    def test_a_series_that_can_not_begin_says_why(self):
        for code, arguments, more in [(BAD_INPUT, ["-n", "0", "play"], {}), (BAD_INPUT, ["-n", "2"], {}),
                                      (3, ["play", "nobody"], {}), (BROKEN, ["play"], {"module": "none.so"})]:
            self.document("repeat", *arguments, exit_code=code, **more)


@unittest.skipIf(RUNNER, "the emulator's own sound answers")
class Auto(HostTest):
    NOWHERE = {"PULSE_SERVER": "unix:/nowhere/native"}

    def test_without_a_sound_server_no_test_is_simulated(self):
        for arguments in [["list"], ["play"], ["record"], ["repeat", "play"], ["run", "play", "-"]]:
            more = {"machine": None, "stdin": b"{}", **self.NOWHERE}
            document = self.document(*arguments, exit_code=BROKEN, **more)
            self.assertNotIn("result", document)
            self.assertRegex(document["error"]["message"], "'pulse' can't be used: .*unix:/nowhere/native.*: .+")
            self.assertIn("'--platform virtual' simulates", document["error"]["advice"])
        self.assertEqual(self.rmthost("play", machine=None, **self.NOWHERE)[:2], (BROKEN, b""))

    def test_a_platform_that_was_named_is_never_replaced(self):
        for code, platform in [(BROKEN, "pulse"), (BROKEN, "pulse:unix:/nowhere"), (BAD_INPUT, "pulse:"),
                               (BAD_INPUT, "coreaudio")]:
            error = self.document("play", exit_code=code, machine=platform, **self.NOWHERE)["error"]
            self.assertTrue(re.search("pulse|virtual", error["advice"] + error["message"]))


if __name__ == "__main__":
    unittest.main()
