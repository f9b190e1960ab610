"""What the module may do in its process without harm: crash, hang, talk, leave endpoints changed, be interrupted."""
import json
import os
import signal
import subprocess
import time
import unittest

from host_test import (BROKEN, CONTRACT, FAIL, HOST, INTERRUPTED, MACHINE, MISBEHAVING, MODULE, NO_ENDPOINT,
                       NOT_RESTORED, PASS, RUNNER, TIMED_OUT, HostTest, enough)

VALID = (CONTRACT % (0, "", "X")).encode()
START_FAILS = {"operation": "IAudioClient::Start", "status": -2004287484}


class Misbehaviour(HostTest):
    def test_what_happens_to_the_module_is_told(self):
        cases = [(["play"], "crash", BROKEN, "crashed: "), (["run", "record", "-"], "crash", BROKEN, "crashed: "),
                 (["check", "-"], "crash", BROKEN, "crashed: "), (["check", "-"], "hang", TIMED_OUT, "longer than 0.7 s"),
                 (["--json", "play"], "hang", TIMED_OUT, "longer than 0.7 s"),
                 (["--json", "play"], "exit", BROKEN, "ended its process, with exit code 0"),
                 (["--json", "run", "play", "-"], "nonsense", BROKEN, "isn't a data contract")]
        if not RUNNER:  # Windows passes over what happens while it takes a process down.
            cases.append((["play"], "crash at the end", BROKEN, "crashed: SIGSEGV (Segmentation fault)"))
        for arguments, behaviour, code, sentence in cases:
            with self.subTest(behaviour=behaviour, arguments=arguments):
                timeout = "0.7" if behaviour == "hang" else "30"
                exit_code, output, errors = self.rmthost(
                    *arguments, "--timeout", timeout, module=MISBEHAVING, stdin=VALID, MISBEHAVIOUR=behaviour,
                    ASAN_OPTIONS="handle_segv=0")
                self.assertEqual(exit_code, code, errors)
                told = json.loads(output)["error"]["message"] if "--json" in arguments else errors
                self.assertIn(sentence, told)

    def test_what_it_prints_is_not_taken_for_an_answer(self):
        code, output, errors = self.rmthost("--json", "play", module=MISBEHAVING, MISBEHAVIOUR="chatter")
        self.assertEqual((code, json.loads(output)["result"]["passed"]), (PASS, True))
        self.assertIn('{"CoreData"', errors)

    def test_a_process_that_does_not_come_about_is_told(self):
        ran = subprocess.run([*RUNNER, HOST, "module-process"], input=b"nonsense", capture_output=True)
        self.assertEqual((ran.returncode, ran.stderr.strip()),
                         (1, b"rmthost: The module's process can't go on: it got no request"))
        with open(HOST, "rb") as program:
            is_sanitized = b"__ubsan" in program.read()  # which needs descriptors too
        if not RUNNER and not is_sanitized:
            ran = subprocess.run(["prlimit", "--nofile=5", HOST, "play", "--platform", "virtual", "--module", MODULE], capture_output=True)
            self.assertEqual((ran.returncode, ran.stderr.splitlines()[0]), (BROKEN, (
                b"rmthost: The module can't be given a process of its own: socketpair: Too many open files.")))


@unittest.skipIf(RUNNER, "signals reach the emulator")
class Interruption(HostTest):
    def children(self, running):
        with open(f"/proc/{running.pid}/task/{running.pid}/children") as file:
            return file.read().split()

    def next_child(self, running, before=()):
        for _ in range(3000):
            children = self.children(running)
            if children and children != before:
                return children
            time.sleep(0.01)
        self.fail("no child was started")

    def test_every_request_to_end_ends_the_child_too(self):
        for request in [signal.SIGINT, signal.SIGTERM, signal.SIGHUP]:
            for arguments in [["play"], ["check", "-"]]:
                with self.subTest(request), self.start("--json", *arguments, module=MISBEHAVING,
                                                       MISBEHAVIOUR="hang") as running:
                    running.stdin.write(VALID)
                    running.stdin.close()
                    child, = self.next_child(running)
                    running.send_signal(request)
                    document = json.loads(running.stdout.read())
                    self.assertEqual((running.wait(60), document["error"]["exitCode"]), (INTERRUPTED, INTERRUPTED))
                    self.assertFalse(os.path.exists("/proc/" + child))
                    if arguments == ["play"]:
                        self.assertIn("ended with", document["result"]["restored"]["notNeeded"])

    def test_a_request_that_was_ignored_before_stays_so(self):
        self.addCleanup(signal.signal, signal.SIGHUP, signal.signal(signal.SIGHUP, signal.SIG_IGN))
        with self.start("play", module=MISBEHAVING, MISBEHAVIOUR="hang") as running:
            self.next_child(running)
            with open(f"/proc/{running.pid}/status") as status:
                ignored = int(status.read().split("SigIgn:")[1].split()[0], 16)
            running.terminate()
        self.assertTrue(ignored & 1 << signal.SIGHUP - 1)

    def test_a_request_ends_the_wait_for_standard_input(self):
        for arguments in [["check", "-"], ["record", "--limits", "-"], ["repeat", "record", "--limits", "-"]]:
            with self.subTest(arguments), self.start(*arguments) as running:
                # By now it waits. Before that it would end in the same way.
                time.sleep(0.2)
                running.send_signal(signal.SIGTERM)
                self.assertEqual(running.wait(60), -signal.SIGTERM)

    def test_the_child_ends_with_its_parent(self):
        with self.start("play", module=MISBEHAVING, MISBEHAVIOUR="hang") as running:
            child, = self.next_child(running)
            running.kill()
        for _ in range(3000):
            if not os.path.exists("/proc/" + child):
                return
            time.sleep(0.01)
        os.kill(int(child), signal.SIGKILL)
        self.fail("the child lives on")

    def test_an_interrupted_series_is_summed_up(self):
        with self.start("--json", "repeat", "-n", "100000", "play") as running:
            self.next_child(running, before=self.next_child(running))
            running.send_signal(signal.SIGINT)
            result = json.loads(running.stdout.read())["result"]
            self.assertEqual(running.wait(60), INTERRUPTED)
        self.assertGreater(result["passes"], 0)
        self.assertIn(len(result["runs"]) - result["passes"], [0, 1])


class EmptyHanded(HostTest):
    def test_what_an_operation_does_not_hand_out_is_not_used(self):
        operations = ["CoCreateInstance", "IMMDeviceEnumerator::EnumAudioEndpoints", "IMMDeviceEnumerator::GetDevice",
                      "IMMDeviceEnumerator::GetDefaultAudioEndpoint", "IMMDeviceCollection::Item", "IMMDevice::Activate",
                      "IMMDevice::GetId", "IMMDevice::OpenPropertyStore", "IPropertyStore::GetValue",
                      "IAudioClient::IsFormatSupported", "IAudioClient::GetService", "IAudioCaptureClient::GetBuffer"]
        for operation in enough(operations):
            fault = {"operation": operation, "status": 0, "sticky": True, "observer": True}
            self.write("faulty.json", json.dumps({**MACHINE, "faults": [fault]}).encode())
            for arguments in (["list"], ["record", "--render", "speaker"]):
                with self.subTest(operation, arguments=arguments):
                    code, output, _ = self.rmthost("--json", *arguments, machine="virtual:faulty.json")
                    self.assertIn(code, (PASS, NO_ENDPOINT, BROKEN))
                    self.assertNotIn("crashed", self.parsed(output).get("error", {}).get("message", ""))


class Restoration(HostTest):
    def restored(self, exit_code, *arguments, faults, **more):
        """Returns the state of the settings after a test, and by endpoint what was put back, unknown, and wrong."""
        self.write("faulty.json", json.dumps({**MACHINE, "faults": faults}).encode())
        document = self.document(*arguments, exit_code=exit_code, machine="virtual:faulty.json", **more)
        restored = document["result"]["restored"]
        return restored["state"], {shown["name"]: (shown["putBack"], shown["unknown"], shown["error"])
                                   for shown in restored["endpoints"]}

    def test_what_a_test_leaves_changed_is_put_back(self):
        def all_calls(operation, observer=True):
            return {"operation": "IAudioEndpointVolume::" + operation, "status": -2147467263, "sticky": True,
                    "observer": observer}
        record = ["record", "--render", "speaker"]
        cases = [
            (record, [], PASS, "yes", {"Microphone": ([], [], None), "Speaker": ([], [], None)}),
            (record, [START_FAILS], FAIL, "yes",
             {"Microphone": (["levels"], [], None), "Speaker": (["mute", "levels"], [], None)}),
            (["play"], [START_FAILS, all_calls("SetChannelVolumeLevelScalar")], NOT_RESTORED, "no",
             {"Speaker": (["mute"], [], "the audio system doesn't take its levels")}),
            (["play"], [], PASS, "yes", {"Speaker": ([], [], None)}),
            (["play"], [START_FAILS], FAIL, "yes", {"Speaker": (["mute", "levels"], [], None)}),
            (["play"], [START_FAILS, all_calls("SetMute")], NOT_RESTORED, "no",
             {"Speaker": (["levels"], [], "the audio system doesn't take its mute")}),
            (["play"], [all_calls("GetChannelVolumeLevelScalar"), all_calls("GetChannelVolumeLevelScalar", False)], FAIL, "unknown",
             {"Speaker": (["mute"], ["levels"], None)}),
        ]
        for arguments, faults, code, state, endpoints in enough(cases):
            with self.subTest(arguments=arguments, faults=faults):
                self.assertEqual(self.restored(code, *arguments, faults=faults), (state, endpoints))

    def test_a_contract_given_is_guarded_by_the_modules_own_rule(self):
        named = (CONTRACT % (0, "", "SWD\\\\{0.0.0}.{SPEAKER}")).encode()
        self.assertEqual(self.restored(FAIL, "run", "play", "-", faults=[START_FAILS], stdin=named),
                         ("yes", {"Speaker": (["mute", "levels"], [], None)}))
        self.assertEqual(self.restored(FAIL, "run", "record", "-", faults=[], stdin=named), ("not needed", {}))

    def test_the_text_says_so(self):
        keeps_unmuted = {"operation": "IAudioEndpointVolume::SetMute", "status": -2147467263, "observer": True}
        self.restored(NOT_RESTORED, "play", faults=[START_FAILS, keeps_unmuted])
        self.assertIn("take its mute, and it had levels 25 % 75 %, muted",
                      self.rmthost("play", machine="virtual:faulty.json")[2])
        self.assertTrue(self.rmthost("play")[1].endswith(b"\n\nrestored: yes\n"))
        self.restored(FAIL, "play", faults=[START_FAILS])
        for arguments, stream in [(["play"], 1), (["run", "play", "-"], 2)]:
            contract = (CONTRACT % (0, "", "{0.0.0}.{speaker}")).encode()
            shown = self.rmthost(*arguments, machine="virtual:faulty.json", stdin=contract)[stream]
            self.assertIn("restored: yes; 'Speaker': mute and levels put back\n",
                          shown if stream == 2 else shown.decode())


if __name__ == "__main__":
    unittest.main()
