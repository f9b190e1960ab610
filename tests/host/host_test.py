"""What the tests of rmthost share: a virtual machine, and a way to run the program as a person or a script would.

The environment names the files: RMTHOST, RMTHOST_MODULE, RMTHOST_MISBEHAVING_MODULE and, when rmthost is run by another
program, that program in RMTHOST_RUNNER.
"""
import contextlib
import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

import jsonschema

HOST, MODULE = os.environ["RMTHOST"], os.environ["RMTHOST_MODULE"]
MISBEHAVING = os.environ["RMTHOST_MISBEHAVING_MODULE"]
RUNNER = os.environ.get("RMTHOST_RUNNER", "").split()
PASS, FAIL, BAD_INPUT, NO_ENDPOINT, BROKEN, TIMED_OUT, NOT_RESTORED, INTERRUPTED = *range(7), 130


def return_codes():
    """The module's return codes, by the names that its header gives them behind ZQRMT_RETURN_."""
    with open(os.path.join(os.path.dirname(__file__), "..", "..", "audiotests", "zqrmt_return_codes.h")) as file:
        header = file.read()
    numbers = {name: int(number) for name, number in re.findall(r"(ZQRMT_\w+)(?: =)? (\d+)", header)}
    return {name: numbers[level] * 10**8 + numbers["ZQRMT_AUDIO_COMPONENT"] * 10**6 + numbers[outcome]
            for name, level, outcome in re.findall(r"ZQRMT_RETURN_(\w+) = \w+\((\w+), (\w+)\)", header)}


RETURN = return_codes()
DOCS = os.path.join(os.path.dirname(__file__), "..", "..", "docs")
with open(os.path.join(DOCS, "rmthost-json.schema.json")) as file:
    SCHEMA = jsonschema.Draft202012Validator(json.load(file))


def endpoint(flow, id, name, **more):
    format = {"tag": "pcm", "channels": 2, "rate": 48000, "bits": 16}
    return {"id": id, "name": name, "flow": flow, "levels": [0.25, 0.75], "format": format, **more}


MACHINE = {"clock": "virtual", "endpoints": [
    endpoint("render", "{0.0.0}.{speaker}", "Speaker", default=["console", "multimedia"], muted=True),
    endpoint("render", "{0.0.0}.{headset}", "Headset Speaker",
             format={"tag": "float", "channels": 2, "rate": 44100, "bits": 32}),
    endpoint("render", "{0.0.0}.{speaker}.rear", "Rear"),
    endpoint("render", "{0.0.0}.{line}", "Line Out", state="unplugged"),
    endpoint("render", "{0.0.0}.{hdmi}", "HDMI", state="disabled"),
    endpoint("capture", "{0.0.1}.{microphone}", "Microphone", default=["console", "multimedia"],
             format={"tag": "extensible", "channels": 1, "rate": 48000, "bits": 24}, levels=[0.5],
             hears=[{"endpoint": "{0.0.0}.{speaker}", "gain": 0.5, "delayMs": 0}]),
    endpoint("capture", "{0.0.1}.{headset}", "Hörmuschel 🎧", hears=[]),
    endpoint("capture", "{0.0.1}.{gone}", "Microphone", state="notpresent")]}
CONTRACT = ('{"CoreData":{"TimeStamp":"","TaskName":"Größe 🎧","TaskID":"","TaskVersion":"","ReturnCode":%d,'
            '"ReturnMessage":"%s","Result":"","Status":"","DeviceInfo":{"DeviceID":"","DeviceInstanceID":"%s",'
            '"Name":"","DUID":"","Type":"","AudioData":{"CommandExecuted":-1,"maxAmplitude":0.0,"targetDevice":"Y"}}}}')


def enough(cases):
    """The cases; under an emulator, where every process takes its time, the first few."""
    return cases[:3] if RUNNER else cases


def require(test, *programs):
    """Skips the test where a program isn't installed, but never where everything has to be tested."""
    missing = [program for program in programs if shutil.which(program) is None]
    if missing and not os.environ.get("ZQRMT_REQUIRE_SOUND_SERVERS"):
        test.skipTest("not installed: " + ", ".join(missing))


class HostTest(unittest.TestCase):
    def open_terminal(self):
        """Two descriptors: a new terminal, and the end that a program gets."""
        try:
            return os.openpty()
        except OSError as reason:
            self.skipTest(f"there is no pseudo-terminal ({reason}): mount -t devpts devpts /dev/pts")

    def setUp(self):
        directory = tempfile.TemporaryDirectory(prefix="rmthost-")
        self.addCleanup(directory.cleanup)
        # What a test finds in its directory is its own: what is looked at beside it lies above.
        self.directory = os.path.join(directory.name, "test")
        os.mkdir(self.directory)
        self.write("machine.json", json.dumps(MACHINE).encode())

    def write(self, name, content):
        with open(os.path.join(self.directory, name), "wb") as file:
            file.write(content)

    def start(self, *arguments, machine="virtual:machine.json", module=MODULE, **environment):
        """Starts rmthost with the global options behind the command."""
        platform = ["--platform", machine] if machine else []
        return subprocess.Popen([*RUNNER, HOST, *arguments, *platform, "--module", module], cwd=self.directory,
                                env={**os.environ, **environment}, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE)

    def rmthost(self, *arguments, stdin=b"", **more):
        """Runs rmthost to its end; returns exit code, output and error text."""
        with self.start(*arguments, **more) as running:
            try:
                output, errors = running.communicate(stdin, timeout=60)
            finally:
                running.kill()
        return running.returncode, output, errors.decode().replace("\r\n", "\n")

    def document(self, *arguments, exit_code=PASS, **more):
        """Runs rmthost with --json in front and returns its one document, which must be as its schema has it. A test's
        results in JUnit's XML must be so too, and say the same."""
        is_test = arguments[:1] in (("play",), ("record",), ("repeat",)) and "--junit" not in arguments
        junit = ["--junit", "../results.xml"] if is_test else []
        with contextlib.suppress(FileNotFoundError):
            os.remove(os.path.join(self.directory, "../results.xml"))
        code, output, errors = self.rmthost("--json", *arguments, *junit, **more)
        document = self.parsed(output)
        self.assertEqual((code, document["exitCode"], document["ok"], errors),
                         (exit_code, exit_code, exit_code == PASS, ""))
        if is_test and exit_code not in (BAD_INPUT, INTERRUPTED):
            suites = self.suites("../results.xml")
            is_green = all(trouble in (None, "skipped") for suite in suites for trouble, _ in suite.values())
            self.assertEqual(is_green, document["ok"])
            for check in document.get("result", {}).get("checks", []):
                trouble, text = suites[0][check["name"]]
                self.assertEqual(trouble, {"pass": None, "fail": "failure", "not judged": "skipped"}[check["result"]])
                self.assertIn(check["sentence"], text)
        return document

    def suites(self, name):
        """The suites of a file of results, which must be as its schema has it: {case: (failure, error, skipped or None, its
        message and text, or else the log)}"""
        path = os.path.join(self.directory, name)
        checked = subprocess.run(["xmllint", "--noout", "--schema", os.path.join(DOCS, "junit.xsd"), path],
                                 capture_output=True, text=True)
        self.assertEqual(checked.returncode, 0, checked.stderr)
        root = xml.etree.ElementTree.parse(path).getroot()
        for counted in (root, *root):
            for count, tag in [("tests", "testcase"), ("failures", "failure"), ("errors", "error"), ("skipped", "skipped")]:
                self.assertEqual(int(counted.get(count)), len(list(counted.iter(tag))), count)
        return [{case.get("name"): (None if trouble is None or trouble.tag == "system-out" else trouble.tag,
                                    "" if trouble is None else trouble.get("message", "") + "\n" + (trouble.text or ""))
                 for case in suite.iter("testcase") for trouble in [next(iter(case), None)]} for suite in root]

    def parsed(self, output):
        """The document that is all of the output."""
        self.assertEqual(output.count(b"\n"), 1)
        document = json.loads(output)
        SCHEMA.validate(document)
        return document
