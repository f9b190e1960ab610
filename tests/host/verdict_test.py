"""What rmthost makes of the module's figures: the verdict, a series, the log, the platform that was used."""
import copy
import json
import os
import re
import unittest

from host_test import (BAD_INPUT, BROKEN, FAIL, MACHINE, MISBEHAVING, NOT_RESTORED, PASS, RETURN, RUNNER, HostTest,
                       enough)

RECORD = ["record", "--render", "speaker"]


class Verdicts(HostTest):
    def use(self, gain, path=(), channels=1):
        """Lets the microphone hear the speaker so loud, through a path with these conditions."""
        machine = copy.deepcopy(MACHINE)
        microphone = machine["endpoints"][5]
        microphone["hears"] = [{"endpoint": "{0.0.0}.{speaker}", "gain": gain}] if gain else []
        microphone["format"]["channels"] = channels
        microphone["levels"] *= channels
        microphone.update(path=list(path), marksSilence=True)
        self.write("machine.json", json.dumps(machine).encode())

    def judged(self, *arguments, verdict):
        """The result, whose verdict must be this one, for the reasons that its checks give."""
        result = self.document(*arguments, exit_code=PASS if verdict == "pass" else FAIL)["result"]
        self.assertEqual((result["verdict"], result["passed"], result["returnCode"]),
                         (verdict, verdict == "pass", RETURN["RECORD_PASSED"]), result["reason"])
        failed = [check for check in result["checks"] if check["result"] == "fail"]
        self.assertEqual([bool(failed), result["advice"] is not None, result["reason"] is not None],
                         [verdict != "pass"] * 3)
        if failed:
            self.assertIn(result["reason"], [check["sentence"] for check in failed])
        return result

    def test_the_peak_is_held_to_its_limits(self):
        cases = [  # The tone's peak is 0.915 times the gain.
            (0, RECORD, "silence", "cable"), (0.005, RECORD, "too quiet", "--min-peak"),
            (2, RECORD, "clipping", "--max-peak"), (0.5, RECORD, "pass", ""),
            (0.5, [*RECORD, "--min-peak", "0.5"], "too quiet", "--min-peak"),
            (0.5, [*RECORD, "--max-peak", "0.4"], "clipping", "--max-peak"),
            (0.005, [*RECORD, "--min-peak", "0.001"], "pass", ""),
            (0.5, ["record"], "silence", "cable"), (0.5, ["record", "--min-peak", "0"], "pass", "")]
        for gain, arguments, verdict, advice in enough(cases):
            with self.subTest(gain=gain, arguments=arguments):
                self.use(gain)
                self.assertIn(advice, self.judged(*arguments, verdict=verdict)["advice"] or "")

    def test_a_pass_needs_the_tone_whole_and_clean(self):
        cases = [  # The tone is loud around 100, 300 ... 900 ms.
            (0.5, {"kind": "gap", "atMs": 290, "lengthMs": 20}, "interrupted", r"gap of \d+ ms at \d\.\d\d s.*loose plug"),
            (0, {"kind": "hum", "hz": 60, "level": 0.2}, "no tone", "mains hum of 60 Hz"),
            (0.5, {"kind": "speed", "ratio": 0.92}, "wrong speed", "8.00 % too low.*sample rate"),
            (0.5, {"kind": "repeat", "atMs": 500, "lengthMs": 10}, "interrupted", r"repeat of \d+ ms"),
            (0.5, {"kind": "cut", "atMs": 600}, "cut short", r"last 0\.[45]\d s are missing.*too early"),
            (0.5, {"kind": "clip", "level": 0.2}, "distortion", "cut off flat.*too loud"),
            (0.5, {"kind": "hum", "hz": 50, "level": 0.2}, "noise", "mains hum of 50 Hz"),
            (0.5, {"kind": "tone", "hz": 1500, "level": 0.2}, "noise", "another tone of 1500 Hz"),
            (0.5, {"kind": "noise", "ratioDb": 0}, "noise", r"most of it noise \(-\d+ dBFS\)"),
            (0.5, {"kind": "dead", "channel": 1}, "dead channel", "2 is dead: the tone is heard on channel 1, but.*broken wire"),
            (0.5, {"kind": "inverted", "channel": 0}, "inverted channel", "Channel 2 is inverted against channel 1.*wires"),
            (0, {"kind": "tone", "hz": 1200, "level": 0.4}, "no tone", "another tone of 1200 Hz"),
            (0, {"kind": "noise", "ratioDb": 10}, "no tone", "but noise"),
            (0.5, {"kind": "echo", "delayMs": 60, "gain": 0.3}, "pass", "^$"),
            (0.5, {"kind": "lowpass", "hz": 3400}, "pass", "^$"),
            (0.5, {"kind": "noise", "ratioDb": 30}, "pass", "^$")]
        for gain, condition, verdict, reason in enough(cases):
            with self.subTest(verdict, condition=condition):
                self.use(gain, [condition], channels=2)
                result = self.judged(*RECORD, verdict=verdict)
                self.assertRegex((result["reason"] or "") + (result["advice"] or ""), reason)

    def test_the_text_shows_the_checks_and_not_the_modules_pass_as_a_reason(self):
        self.use(0.5, [{"kind": "gap", "atMs": 290, "lengthMs": 20}])
        text = self.rmthost(*RECORD)[1].decode()
        self.assertRegex(text, r"^FAIL  The tone is interrupted: gap of \d+ ms at \d\.\d\d s\.\n\nA loose plug ")
        self.assertRegex(text, r"\n  interruptions  FAIL +interruptions of the sound +1   at most 0\n  duration")
        self.assertRegex(text, r"\n  level          ok +peak, of full scale +45\.\d\d %   1 to 99.9 %\n")
        self.assertNotIn(str(RETURN["RECORD_PASSED"]), text)

    def test_a_verdict_without_listening_says_what_it_rests_on(self):
        refuses = {"operation": "IAudioClient::Initialize", "status": -2004287480, "sticky": True, "observer": True}
        self.write("machine.json", json.dumps({**MACHINE, "faults": [refuses]}).encode())
        result = self.judged(*RECORD, verdict="pass")
        self.assertIn("IAudioClient::Initialize gave 0x88890008", result["notHeard"])
        self.assertIn("rests on the loudness alone", result["caution"])
        self.assertIn("rests on the loudness alone", self.rmthost(*RECORD)[1].decode())
        self.judged(*RECORD, "--require-listening", verdict="not listened")

    def test_limits_come_from_options_and_from_a_file(self):
        printed = self.document("limits")["result"]["limits"]
        self.assertEqual(json.loads(self.rmthost("limits")[1]), printed)
        self.use(0.5, [{"kind": "gap", "atMs": 290, "lengthMs": 20}])
        self.write("limits.json", json.dumps({**printed, "maxInterruptions": 1}).encode())
        self.judged(*RECORD, "--limits", "limits.json", verdict="pass")
        self.judged(*RECORD, "--limits", "limits.json", "--min-peak", "0.5", verdict="too quiet")
        self.assertEqual(self.document("limits", "--limits", "limits.json")["result"]["limits"]["maxInterruptions"], 1)
        series = self.document("repeat", "-n", "2", *RECORD, "--limits", "-", stdin=b'{"maxInterruptions":1}')["result"]
        self.assertEqual(series["passes"], 2)
        cases = [(b"[]", "holds no JSON object"), (b"{", "isn't JSON"), (b'{"maxPeak":2}', "a number from 0 to 1"),
                 (b'{"maxInteruptions":1}', "has no limit 'maxInteruptions'"), (b'{"minPeak":"x"}', "not \"x\""),
                 (b'{"minPeak":0.1,"minPeak":0.2}', "names 'minPeak' twice"), (b"\xff", "isn't valid UTF-8"),
                 (b'{"minPeak":0.5,"maxPeak":0.4}', "No peak can pass"), (b'{"maxLostSeconds":1e999}', "isn't JSON")]
        for content, sentence in enough(cases):
            with self.subTest(content):
                self.write("limits.json", content)
                for command in (RECORD, ["limits"], ["repeat", *RECORD]):
                    error = self.document(*command, "--limits", "limits.json", exit_code=BAD_INPUT)["error"]
                    self.assertIn(sentence, error["message"])

    def test_limits_that_make_no_sense_are_refused(self):
        for options in enough([["--min-peak", "0.5", "--max-peak", "0.4"], ["--min-peak", "nan"], ["--timeout", "0"],
                               ["--max-peak", "1.1"], ["--timeout", "inf"], ["--timeout", "x"], ["--color", "green"]]):
            self.document("record", *options, exit_code=BAD_INPUT)

    def test_verbose_shows_the_log_of_this_call(self):
        code = RETURN["PLAYBACK_PASSED"]
        line = f"{code}, normal: Audio Playback Test passed., [ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]"
        os.mkdir(os.path.join(self.directory, "log"))
        for _ in range(2):  # the second time the log holds the lines of the first
            lines = self.document("play", "--verbose", ZQRMT_LOG_DIRECTORY=os.path.join(self.directory, "log"))["result"]["logLines"]
            self.assertEqual([shown.endswith(line) for shown in lines].count(True), 1, lines)
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
                {"operation": operation, "status": -2004287484, "sticky": True, "observer": observer}
                for operation, observer in operations]}).encode())
            return {"machine": "virtual:faulty.json"}
        fails = ("IAudioClient::Start", False)
        refused = str(RETURN["PLATFORM"])
        hangs = {"module": MISBEHAVING, "MISBEHAVIOUR": "hang"}
        cases = [(FAIL, {refused: 2}, [], lambda: machine(fails)),
                 (FAIL, {refused: 1}, ["--fail-fast"], lambda: machine(fails)),
                 (FAIL, {"too quiet": 2}, ["--min-peak", "0.5"], dict),
                 (FAIL, {"timed out": 2}, ["--timeout", "0.4"], lambda: hangs),
                 # What one run leaves changed, the next would take for how it was.
                 (NOT_RESTORED, {refused: 1}, [],
                  lambda: machine(fails, ("IAudioEndpointVolume::SetMute", True)))]
        for code, failures, options, setting in enough(cases):
            with self.subTest(failures=failures, options=options):
                code_and_output = self.rmthost("--json", "repeat", "-n", "2", *RECORD, *options, **setting())
                result = json.loads(code_and_output[1])["result"]
                self.assertEqual((code_and_output[0], result["failures"], result["passes"]), (code, failures, 0))

    def test_what_broke_is_said_in_words(self):
        text = self.rmthost("repeat", "-n", "2", *RECORD, "--min-peak", "0.5")[1].decode()
        self.assertRegex(text, r"\nrun 2: Too quiet: the peak 0\.45\d+ is below 0\.5\. restored: yes\nBoth endpoints ")
        self.assertEqual(text.count("Both endpoints"), 1, "advice is given once")
        self.write("faulty.json", json.dumps({**MACHINE, "faults": [
            {"operation": "IAudioClient::Start", "status": -2004287484, "sticky": True}]}).encode())
        text = self.rmthost("repeat", "-n", "2", *RECORD, machine="virtual:faulty.json")[1].decode()
        self.assertRegex(text, rf"\nrun 2: .* \({RETURN['PLATFORM']}\)")

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
