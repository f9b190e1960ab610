"""The Windows build as it is shipped, looked at and run under Wine: wine_test.py DIST GOLDEN

Runs in a Wine prefix of its own, which is removed with all that it holds.
"""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

DIST, GOLDEN = (os.path.abspath(path) for path in sys.argv[1:3])
MODULE, HOST = os.path.join(DIST, "ZQRMTTestsAudio.dll"), os.path.join(DIST, "rmthost.exe")
MACHINE = {"clock": "virtual", "endpoints": [
    {"id": "{0.0.0.00000000}.{speaker}", "name": "Speaker", "flow": "render", "default": ["console", "multimedia"],
     "levels": [0.25, 0.75], "muted": True, "format": {"tag": "pcm", "channels": 2, "rate": 48000, "bits": 16}},
    {"id": "{0.0.1.00000000}.{mic}", "name": "Mic", "flow": "capture", "default": ["console", "multimedia"],
     "levels": [0.5, 0.125], "muted": True, "format": {"tag": "pcm", "channels": 2, "rate": 44100, "bits": 16},
     "hears": [{"endpoint": "{0.0.0.00000000}.{speaker}", "gain": 0.5}]}]}
SYSTEM_LIBRARIES = {"KERNEL32.dll", "msvcrt.dll", "ole32.dll", "SHELL32.dll"}


def headers(file):
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", file], check=True, capture_output=True, text=True).stdout


class Files(unittest.TestCase):
    def test_the_module_exports_its_two_functions_and_imports_the_system_alone(self):
        text = headers(MODULE)
        names = text[text.index("[Ordinal/Name Pointer] Table"):text.index("The Function Table")]
        self.assertEqual(re.findall(r"\[ *\d+\] (\w+)", names), ["AudioPlaybackTest", "AudioRecordTest"])
        for file in (MODULE, HOST):
            self.assertLessEqual(set(re.findall(r"DLL Name: (\S+)", headers(file))), SYSTEM_LIBRARIES)

    def test_the_module_can_be_loaded_anywhere_and_runs_no_data(self):
        flags = int(re.search(r"DllCharacteristics\s+([0-9a-f]+)", headers(MODULE)).group(1), 16)
        self.assertEqual(flags & 0x140, 0x140)

    def test_the_module_carries_its_version_and_is_small(self):
        with open(MODULE, "rb") as file:
            content = file.read()
        self.assertIn("FileVersion\0002.4.4.0".encode("utf-16-le"), content.replace(b"\0\0\0\0", b"\0\0"))
        self.assertLess(len(content), 3_000_000)


class UnderWine(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.directory = tempfile.mkdtemp(prefix="zqrmt-wine-")
        cls.environment = {"PATH": os.environ["PATH"], "WINEDEBUG": "-all", "LC_ALL": "C.UTF-8", "HOME": cls.directory,
                           "WINEPREFIX": os.path.join(cls.directory, "prefix"), "XDG_RUNTIME_DIR": cls.directory,
                           "WINEDLLOVERRIDES": "winemenubuilder.exe=d"}
        cls.run_wine("wineboot", "-i", timeout=120)
        cls.log = os.path.join(cls.directory, "prefix", "drive_c", "windows", "Logs", "ZQOrb")
        os.makedirs(cls.log)
        with open(os.path.join(cls.directory, "machine.json"), "w") as file:
            json.dump(MACHINE, file)

    @classmethod
    def tearDownClass(cls):
        for argument in ("-k", "-w"):
            subprocess.run(["wineserver", argument], env=cls.environment, check=False, timeout=60)
        shutil.rmtree(cls.directory)

    @classmethod
    def run_wine(cls, *command, timeout=60):
        return subprocess.run(command, cwd=cls.directory, env=cls.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=timeout, check=False)

    def rmthost(self, *arguments):
        done = self.run_wine("wine", HOST, "--platform", "virtual:machine.json", *arguments)
        return done.returncode, done.stdout

    def test_golden_contracts_give_their_replies_and_logs(self):
        for name in sorted(os.listdir(GOLDEN)):
            with self.subTest(golden=name):
                shutil.rmtree(self.log)
                os.mkdir(self.log)
                open(os.path.join(self.log, "debug3.flg"), "w").close()
                golden = os.path.join(GOLDEN, name)
                shutil.copy(os.path.join(golden, "contract.json"), self.directory)
                _, reply = self.rmthost("run", "play" if name.startswith("play_") else "record", "contract.json")
                with open(os.path.join(golden, "reply.json"), "rb") as file:
                    self.assertEqual(reply + b"\n", file.read())
                with open(os.path.join(self.log, "ZQRMLOG.LOG"), "rb") as file:
                    # In its C locale the Windows runtime has a narrow form for Latin-1; elsewhere such a text is empty.
                    lines = [re.sub(rb":[^:]*[\x80-\xff].*, \[", b":, [", line[26:])
                             for line in file.read().split(b"\r\n")]
                with open(os.path.join(golden, "log.txt"), "rb") as file:
                    self.assertEqual(lines, file.read().split(b"\n"))

    def test_the_host_lists_tests_and_tells_its_exit_codes(self):
        code, output = self.rmthost("list", "--json")
        endpoints = json.loads(output)["result"]["endpoints"]
        self.assertEqual((code, [endpoint["name"] for endpoint in endpoints]), (0, ["Speaker", "Mic"]))
        code, output = self.rmthost("record", "mic", "--render", "speaker", "--json")
        self.assertEqual((code, json.loads(output)["result"]["maxAmplitude"]), (0, 0.45758056640625))
        self.assertEqual(self.rmthost("play")[0], 0)
        self.assertEqual(self.rmthost("play", "nowhere")[0], 3)
        self.assertEqual(self.rmthost("run", "play", "none.json")[0], 2)
        self.assertEqual(self.rmthost("check", "machine.json")[0], 2)

    def test_without_a_sound_system_core_audio_has_no_endpoint(self):
        done = self.run_wine("wine", HOST, "--platform", "coreaudio", "play", "--json")
        self.assertEqual((done.returncode, json.loads(done.stdout)["ok"]), (3, False))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
