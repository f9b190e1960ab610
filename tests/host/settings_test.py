"""Settings are found as they were, whatever ends a test: on a real sound server, which sound_server.py has started around this
program."""
import contextlib
import glob
import json
import os
import signal
import time
import unittest

from host_test import FAIL, INTERRUPTED, NO_ENDPOINT, NOT_RESTORED, PASS, TIMED_OUT
from sound_server_test import RECORD, OnServer, pactl

GUARDIAN_SECONDS = 2.0


def children(process, command):
    """The ids of the rmthost processes that `process` has started with `command`."""
    found = []
    for folder in glob.glob("/proc/[0-9]*"):
        with contextlib.suppress(OSError):
            with open(folder + "/cmdline", "rb") as file:
                arguments = file.read().split(b"\0")
            with open(folder + "/stat") as file:
                parent = int(file.read().rsplit(")", 1)[1].split()[1])
            if parent == process and arguments[1:2] == [command.encode()]:
                found.append(int(os.path.basename(folder)))
    return found


class Settings(OnServer):
    def setUp(self):
        super().setUp()
        self.state = os.path.join(self.directory, "state")
        os.environ["XDG_STATE_HOME"] = self.state
        self.addCleanup(os.environ.pop, "XDG_STATE_HOME")

    def records(self):
        return glob.glob(os.path.join(self.state, "rmthost", "*"))

    @contextlib.contextmanager
    def test_in_progress(self, *arguments):
        """A record test that has changed the settings, and in the end is no more."""
        with self.start("--json", *RECORD, *arguments, machine="pulse") as running:
            try:
                self.await_change()
                yield running
            finally:
                running.kill()

    def await_settings(self, expected, seconds=GUARDIAN_SECONDS):
        end = time.monotonic() + seconds
        while self.settings() != expected and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(self.settings(), expected)

    def test_a_guardian_puts_back_what_a_killed_test_has_changed(self):
        with self.test_in_progress() as running:
            running.kill()
            self.await_settings(self.before)
        end = time.monotonic() + GUARDIAN_SECONDS
        while self.records() and time.monotonic() < end:
            time.sleep(0.02)
        self.assertEqual(self.records(), [])

    def test_a_server_that_answers_slowly_is_waited_for(self):
        server = int(os.environ["ZQRMT_SOUND_SERVER_PID"])
        with self.test_in_progress("--timeout", "0.8") as running:
            os.kill(server, signal.SIGSTOP)
            try:
                for _ in range(500):
                    if not children(running.pid, "module-process"):
                        break
                    time.sleep(0.02)
                time.sleep(1.3)  # from when settings are to be put back
            finally:
                os.kill(server, signal.SIGCONT)
            self.assertEqual(json.loads(running.stdout.read())["result"]["restored"]["state"], "yes")
            self.assertEqual((running.wait(60), self.settings()), (TIMED_OUT, self.before))

    def test_what_nobody_could_put_back_the_next_run_does(self):
        for then, shown in [(["restore"], "runs"), (["list"], "leftRuns"), (RECORD, "leftRuns"), (["restore"], None)]:
            with self.subTest(then):
                with self.test_in_progress() as running:
                    guardians = children(running.pid, "guardian-process")
                    self.assertEqual(len(guardians), 1)
                    for process in (guardians[0], running.pid):
                        os.kill(process, signal.SIGKILL)
                self.assertNotEqual(self.settings(), self.before)
                left = self.document("restore", "--list", machine="pulse")["result"]["runs"]
                self.assertEqual([(run["process"], run["isRunning"], run["restored"]) for run in left],
                                 [(running.pid, False, None)])
                if shown is None:
                    text = self.rmthost(*then, machine="pulse")[1].decode()
                    self.assertRegex(text, r"^The test of process %d, .*restored: yes.*\n.*\n.*\n  .*\n    "
                                           r"levels 100 %% 100 %%  ->  levels 25 %% 75 %%, muted\n$" % running.pid)
                    continue
                # The run is remembered with the server's address, not with the variable that names it.
                server = "pulse:" + os.environ["PULSE_SERVER"]
                document = self.record_document(machine="pulse") if then is RECORD else self.document(*then, machine=server)
                put_back = document.get(shown) or document["result"][shown]
                self.assertEqual([run["restored"]["endpoints"][1]["putBack"] for run in put_back], [["mute", "levels"]])
                self.assertEqual((self.settings(), self.records()), (self.before, []))
                self.assertNotIn("leftRuns", self.document("list", machine="pulse"))

    def test_every_signal_that_ends_a_process_is_an_interruption(self):
        for name in ["SIGQUIT", "SIGUSR1", "SIGUSR2", "SIGALRM", "SIGXCPU", "SIGVTALRM", "SIGPROF"]:
            with self.subTest(name), self.test_in_progress() as running:
                running.send_signal(getattr(signal, name))
                document = json.loads(running.stdout.read())
                self.assertEqual((running.wait(60), document["result"]["restored"]["state"]), (INTERRUPTED, "yes"))
                self.assertEqual(self.settings(), self.before)

    def test_one_test_at_a_time_changes_an_endpoint(self):
        with self.test_in_progress() as first:
            error = self.document(*RECORD, "--wait", "0", machine="pulse", exit_code=NO_ENDPOINT)["error"]
            self.assertIn(f"is being tested by process {first.pid} since ", error["message"])
            with self.start("--json", *RECORD, machine="pulse") as second:
                documents = [json.loads(running.stdout.read()) for running in (first, second)]
        self.assertEqual([document["result"]["restored"]["state"] for document in documents], ["yes", "yes"])
        self.assertEqual(self.settings(), self.before)

    def test_a_persons_hand_wins(self):
        with self.test_in_progress() as running:
            pactl("set-sink-volume", "speaker", "60%", "100%")
            by_hand = pactl("get-sink-volume", "speaker")
            running.send_signal(signal.SIGTERM)
            restored = json.loads(running.stdout.read())["result"]["restored"]
        speaker = restored["endpoints"][1]
        self.assertEqual((restored["state"], speaker["kept"], speaker["putBack"]), ("yes", ["levels"], ["mute", "levels"]))
        left, right = [word for word in pactl("get-sink-volume", "speaker").split() if word.endswith("%")][:2]
        self.assertEqual((left, right), ("60%", "75%"))
        self.assertNotEqual(pactl("get-sink-volume", "speaker"), by_hand)
        self.assertEqual(pactl("get-sink-mute", "speaker"), self.before[1])

    def test_a_record_that_is_none_is_reported_and_never_obeyed(self):
        folder = os.path.join(self.state, "rmthost")
        self.document("restore", machine="pulse")
        whole = {"formatVersion": 1, "machine": os.uname().nodename, "platform": "pulse:" + os.environ["PULSE_SERVER"],
                 "process": 1, "began": "", "endpoints": [
                     {"id": "speaker", "name": "", "flow": "render", "levels": [0.5, 0.5], "muted": False}]}
        pactl("set-sink-volume", "speaker", "100%", "100%")
        now = self.settings()
        foreign = json.dumps(whole)
        cases = [("settings-1-half.json", foreign[:60], 0o600), ("settings-1-level.json", foreign.replace("0.5]", "7]"), 0o600),
                 ("settings-1-open.json", foreign, 0o666), ("settings-1-pipe.json", None, 0o600),
                 ("settings-1-link.json", None, 0o600)]
        linked = os.path.join(self.directory, "linked")
        with open(linked, "w") as file:
            file.write(foreign)
        os.chmod(linked, 0o600)
        for name, content, mode in cases:
            with self.subTest(name):
                path = os.path.join(folder, name)
                if name == "settings-1-link.json":
                    os.symlink(linked, path)
                elif content is None:
                    os.mkfifo(path, mode)
                else:
                    with open(path, "w") as file:
                        file.write(content)
                    os.chmod(path, mode)
                document = self.document("restore", machine="pulse", exit_code=NOT_RESTORED)
                trouble = document["result"]["runs"][0]["trouble"]
                self.assertTrue(trouble.startswith((f"'{path}' can't be used: ", "the record is half written,")), trouble)
                self.assertEqual((self.settings(), os.path.exists(path)), (now, True))
                os.remove(path)
        with open(os.path.join(folder, "settings-1-ours.json"), "w") as file:
            file.write(foreign)
        os.chmod(file.name, 0o600)
        self.document("restore", machine="pulse")
        self.assertNotEqual(self.settings(), now)

    def test_a_test_that_fails_leaves_no_record(self):
        self.document("record", "mic", "--render", "headset", machine="pulse", exit_code=FAIL)
        self.assertEqual(self.records(), [])
        self.assertEqual(self.rmthost("restore", machine="pulse"), (PASS, b"Nothing is left to put back.\n", ""))


if __name__ == "__main__":
    unittest.main()
