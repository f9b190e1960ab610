"""The files that a person has rmthost write: what becomes of their names, the sound in a WAV file, the page in a browser, the
results in JUnit's XML."""
import contextlib
import ctypes
import json
import os
import signal
import subprocess
import time
import unittest
import wave
import xml.etree.ElementTree

from host_test import (BAD_INPUT, BROKEN, FAIL, HOST, INTERRUPTED, MACHINE, MISBEHAVING, MODULE, NO_ENDPOINT, NOT_RESTORED,
                       RUNNER, TIMED_OUT, HostTest, enough, require)

EARLIER = b"what was there before"


class FileTest(HostTest):
    def machine(self, **microphone):
        """A description of the machine with another microphone; `speaker` is the name of its speaker."""
        machine = json.loads(json.dumps(MACHINE))
        machine["endpoints"][0]["name"] = microphone.pop("speaker", "Speaker")
        machine["endpoints"][5].update(microphone)
        self.write("other.json", json.dumps(machine).encode())
        return "virtual:other.json"

    def path(self, name):
        return os.path.join(self.directory, name)

    def content(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()


class OutputFiles(FileTest):
    def test_a_name_that_cant_be_used_is_refused_before_the_test(self):
        os.mkdir(self.path("folder.svg"))
        cases = [("--plot", "a.png", "doesn't end in .svg"), ("--report", "a.svg", "doesn't end in .html"),
                 ("--save", "a", "doesn't end in .wav"), ("--junit", "a.json", "doesn't end in .xml"),
                 ("--plot", "folder.svg", "is there, and is no file"),
                 ("--report", "none/a.html", "a folder that isn't there")]
        if not RUNNER:
            os.mkfifo(self.path("pipe.wav"))
            os.symlink("/dev/full", self.path("link.html"))
            cases += [("--save", "pipe.wav", "is there, and is no file"),
                      ("--report", "link.html", "is there, and is no file"),
                      ("--plot", "/proc/a.svg", "takes no new file"), ("--plot", "x" * 300 + ".svg", "can't be: ")]
        os.mkdir(self.path("log"))
        before = sorted(os.listdir(self.directory))
        for option, name, reason in cases:
            with self.subTest(name):
                document = self.document("record", "--render", "speaker", option, name, exit_code=BAD_INPUT,
                                         ZQRMT_LOG_DIRECTORY=self.path("log"))
                self.assertIn(f"'{name}' of {option} ", document["error"]["message"])
                self.assertIn(reason, document["error"]["message"])
                self.assertEqual((sorted(os.listdir(self.directory)), os.listdir(self.path("log"))), (before, []))

    def test_only_what_is_whole_replaces_a_file(self):
        names = ["a.svg", "b.HTML", "c.wav", "d.xml"]
        for name in names:
            self.write(name, EARLIER)
        files = ("--plot", "a.svg", "--report", "b.HTML", "--save", "c.wav", "--junit", "d.xml")
        keys = ("plot", "report", "save", "junit")
        before = sorted(os.listdir(self.directory))
        # Nothing is heard of a module that crashes, but the report and the results say so.
        result = self.document("record", "--render", "speaker", *files, module=MISBEHAVING, exit_code=BROKEN,
                               MISBEHAVIOUR="crash", ASAN_OPTIONS="handle_segv=0")["result"]
        self.assertEqual([result[key] for key in keys], [None, "b.HTML", None, "d.xml"])
        self.assertEqual((self.content("a.svg"), self.content("c.wav")), (EARLIER, EARLIER))
        self.assertIn(b"NO RESULT", self.content("b.HTML"))
        result = self.document("record", "--render", "speaker", *files)["result"]
        self.assertEqual([result[key] for key in keys], names)
        self.assertNotIn("logLines", result)
        for name in names:
            self.assertNotEqual(self.content(name), EARLIER)
        self.assertEqual(sorted(os.listdir(self.directory)), before)

    @unittest.skipIf(RUNNER, "signals reach the emulator")
    def test_an_interrupted_test_leaves_all_as_it_was(self):
        self.write("a.html", EARLIER)
        self.write("b.xml", EARLIER)
        before = sorted(os.listdir(self.directory))
        with self.start("play", "--report", "a.html", "--junit", "b.xml", module=MISBEHAVING, MISBEHAVIOUR="hang") as running:
            deadline = time.monotonic() + 60
            while len(os.listdir(self.directory)) < len(before) + 2 and time.monotonic() < deadline:
                time.sleep(0.01)
            running.send_signal(signal.SIGINT)
            running.communicate(timeout=60)
        self.assertEqual((running.returncode, self.content("a.html"), self.content("b.xml"),
                          sorted(os.listdir(self.directory))), (INTERRUPTED, EARLIER, EARLIER, before))

    @unittest.skipIf(RUNNER, "limits of a process don't reach it through the emulator")
    def test_a_full_disk_leaves_the_file_as_it_was(self):
        os.mkdir(self.path("log"))
        for option, name in (("--plot", "a.svg"), ("--report", "a.html"), ("--save", "a.wav")):
            self.write(name, EARLIER)
            before = sorted(os.listdir(self.directory))
            command = ["prlimit", "--fsize=4096", "env", "--ignore-signal=XFSZ", HOST, "--json", "record", "--render",
                       "speaker", option, name, "--platform", "virtual:machine.json", "--module", MODULE]
            ran = subprocess.run(command, cwd=self.directory, stdout=subprocess.PIPE, timeout=60,
                                 env={**os.environ, "ZQRMT_LOG_DIRECTORY": self.path("log")})
            document = json.loads(ran.stdout)
            self.assertEqual((ran.returncode, document["error"]["message"], document["result"][option[2:]]),
                             (BROKEN, f"'{name}' can't be written: File too large.", None))
            self.assertEqual((self.content(name), sorted(os.listdir(self.directory))), (EARLIER, before))


class SoundFileInfo(ctypes.Structure):
    """What libsndfile, which PulseAudio brings along, tells of a file."""
    _fields_ = [("frames", ctypes.c_int64), ("rate", ctypes.c_int), ("channels", ctypes.c_int),
                ("format", ctypes.c_int), ("sections", ctypes.c_int), ("seekable", ctypes.c_int)]


class Sound(FileTest):
    # What the microphone captures, and what libsndfile calls the file: a plain header or an extensible one, and the samples.
    WAV, WAVEX, S8, S16, S24, S32, FLOAT = 0x10000, 0x130000, 5, 2, 3, 4, 6
    FORMATS = [({"tag": "pcm", "channels": 2, "bits": 8}, WAV | S8),
               ({"tag": "pcm", "channels": 1, "bits": 16}, WAV | S16),
               ({"tag": "extensible", "channels": 2, "bits": 24}, WAV | S24),
               ({"tag": "pcm", "channels": 2, "bits": 32, "rate": 44100}, WAV | S32),
               ({"tag": "float", "channels": 2, "bits": 32}, WAV | FLOAT),
               ({"tag": "extensible", "channels": 2, "bits": 32, "validBits": 24}, WAVEX | S32),
               ({"tag": "extensible", "channels": 8, "bits": 16}, WAVEX | S16)]

    def read(self, library):
        info = SoundFileInfo()
        library.sf_open.restype = ctypes.c_void_p
        file = library.sf_open(self.path("a.wav").encode(), 0x10, ctypes.byref(info))
        self.assertTrue(file)
        samples = (ctypes.c_double * (info.frames * info.channels))()
        library.sf_readf_double.restype = ctypes.c_int64
        self.assertEqual(library.sf_readf_double(ctypes.c_void_p(file), samples, ctypes.c_int64(info.frames)), info.frames)
        library.sf_close(ctypes.c_void_p(file))
        return info, list(samples)

    def test_is_saved_as_it_was_captured(self):
        try:
            library = ctypes.CDLL("libsndfile.so.1")
        except OSError as missing:
            require(self, str(missing))
            raise
        for format, kind in enough(self.FORMATS):
            format = {"rate": 48000, **format}
            with self.subTest(format):
                channels, dead = format["channels"], format["channels"] - 1
                machine = self.machine(format=format, closest=format, levels=[1] * channels,
                                       path=[{"kind": "dead", "channel": dead}] if channels > 1 else [])
                answer = self.rmthost("--json", "record", "--render", "speaker", "--save", "a.wav", machine=machine)[1]
                result = json.loads(answer)["result"]
                self.assertEqual(result["save"], "a.wav", result["verdict"])
                info, samples = self.read(library)
                self.assertEqual((info.format, info.channels, info.rate), (kind, channels, format["rate"]))
                self.assertEqual(info.frames, round(result["findings"]["seconds"] * format["rate"]))
                for channel, found in enumerate(result["findings"]["channels"]):
                    peak = max(map(abs, samples[channel::channels]))
                    self.assertAlmostEqual(peak, found["level"]["peak"], delta=0.00001)
                    self.assertEqual(peak == 0.0, channels > 1 and channel == dead)
                if kind < self.WAVEX and format["tag"] != "float":
                    with wave.open(self.path("a.wav")) as file:
                        self.assertEqual((file.getnchannels(), file.getsampwidth(), file.getnframes()),
                                         (channels, format["bits"] // 8, info.frames))
                os.remove(self.path("a.wav"))


class Page(FileTest):
    def browse(self, *arguments):
        """What the browser prints; fails when a page writes to its console."""
        # Root, as in a container, has no sandbox.
        command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--enable-logging=stderr",
                   "--user-data-dir=" + self.path("browser"), *arguments]
        with subprocess.Popen(command, cwd=self.directory, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              env={**os.environ, "HOME": self.directory}, start_new_session=True) as browser:
            try:
                output, errors = browser.communicate(timeout=100)
            finally:
                # Its helpers can outlive it, and would write into the directory that is taken away.
                with contextlib.suppress(ProcessLookupError):
                    os.killpg(browser.pid, signal.SIGKILL)
        self.assertEqual((browser.returncode, b"CONSOLE" in errors), (0, False), errors)
        return output.decode()

    def look(self, *arguments, **more):
        """The page of a run as the browser has it; it prints on one sheet."""
        require(self, "chromium", "pdfinfo")
        self.document(*arguments, "--report", "a.html", **more)
        self.browse("--no-pdf-header-footer", "--print-to-pdf=" + self.path("a.pdf"), self.path("a.html"))
        sheet = subprocess.run(["pdfinfo", self.path("a.pdf")], capture_output=True, check=True, text=True).stdout
        self.assertRegex(sheet, r"Pages: +1\n")
        self.assertRegex(sheet, r"\(A4\)")
        return self.browse("--dump-dom", self.path("a.html"))

    def assert_has(self, dom, *texts):
        self.assertEqual([text for text in texts if text not in dom], [])

    def test_of_a_pass_says_all(self):
        dom = self.look("record", "--render", "speaker")
        self.assert_has(dom, '<h1 class="pass">PASS</h1>', "Recording from 'Microphone' while 'Speaker' plays",
                        "nothing was played or heard by real hardware", "tone above everything else", "at least 10 dB",
                        "What was heard over time", "The test tone's seven parts", "levels 25 % 75 %, muted",
                        "as before", "{0.0.1}.{microphone}", "100% Progress completed", '"CoreData"')

    def test_of_a_failure_with_eight_channels_and_long_names(self):
        faults = [{"kind": "hum", "hz": 50, "level": 0.1}, {"kind": "clip", "level": 0.3},
                  *({"kind": "gap", "atMs": 100 * i, "lengthMs": 20} for i in range(1, 9))]
        name = "Microphone array with a long name & an even longer one, which nobody can read aloud " * 3
        dom = self.look("record", "--render", "a speaker", exit_code=FAIL, machine=self.machine(
            name=name, speaker="a speaker " * 30, path=faults, levels=[1] * 8,
            format={"tag": "extensible", "channels": 8, "rate": 48000, "bits": 24}))
        self.assert_has(dom, '<h1 class="fail">FAIL: distortion</h1>', '<td class="word fail">FAIL</td>',
                        name.replace("&", "&amp;"), "of 8: 1 is full scale", '<p class="">interruptions: The tone is interrupted: ',
                        '<p class="">noise: The tone stands only ')
        # Each is marked where it is, and explained beside.
        self.assertGreater(min(dom.count(f'class="{mark}"') for mark in ("clipped", "tone")), 2)

    def test_of_names_that_are_markup_shows_them(self):
        name = "</title></svg><script>alert(1)</script><img src=x onerror=alert(2)>\"'&amp;]]>"
        dom = self.look("record", "--render", "<b>", machine=self.machine(name=name, speaker="<b>"))
        self.assert_has(dom, "&lt;script&gt;alert(1)&lt;/script&gt;&lt;img src=x onerror=alert(2)&gt;\"'&amp;amp;]]&gt;")
        self.assertEqual([element for element in ("<script", "<img", "<b>") if element in dom], [])

    def test_of_playing_warns_of_settings_that_are_not_back(self):
        faults = [{"operation": "IAudioClient::Start", "status": -2004287484},
                  {"operation": "IAudioEndpointVolume::SetMute", "status": -2147467263, "observer": True}]
        self.write("faulty.json", json.dumps({**MACHINE, "faults": faults}).encode())
        dom = self.look("play", machine="virtual:faulty.json", exit_code=NOT_RESTORED)
        self.assert_has(dom, '<h1 class="fail">FAIL</h1>', "Playing on 'Speaker'", "Set them by hand",
                        '<div class="long">levels 25 % 75 %, muted</div>', '<div class="long">levels 25 % 75 %</div>',
                        "NOT as before: the audio system doesn't take its mute")
        self.assertFalse("<svg" in dom)

    def test_the_texts_of_a_picture_stay_inside_it(self):
        require(self, "chromium")
        measure = ("<script>document.title = Math.max(...[...document.querySelectorAll('text')].map("
                   "text => text.getBBox().x + text.getBBox().width))</script>")
        for name in ("W" * 90, "Mikrofon am Rechner Nummer " * 4, "麦克风" * 30, "🎧" * 40):
            tone = [] if name[0] == "W" else ["--render", "loud"]
            self.document("record", *tone, "--plot", "a.svg", "--max-peak", "1", "--min-peak", "0",
                          machine=self.machine(name=name, speaker=name[::-1] + " loud"))
            subprocess.run(["xmllint", "--noout", self.path("a.svg")], check=True)
            self.write("a.html", self.content("a.svg").split(b"?>", 1)[1] + measure.encode())
            right = self.browse("--dump-dom", self.path("a.html")).split("<title>")[1].split("</title>")[0]
            self.assertLess(float(right), 820, name)


class Results(FileTest):
    def assert_suite(self, suite, expected):
        self.assertEqual([(case, trouble) for case, (trouble, _) in suite.items()],
                         [(case, trouble) for case, (trouble, _) in expected.items()])
        for case, (_, text) in expected.items():
            self.assertIn(text, suite[case][1])

    def test_say_what_went_wrong_before_in_and_after_the_call(self):
        start = {"operation": "IAudioClient::Start", "status": -2004287484}
        mute = {"operation": "IAudioEndpointVolume::SetMute", "status": -2147467263, "observer": True}
        for name, faults in (("refuses.json", [start]), ("stays.json", [start, mute])):
            self.write(name, json.dumps({**MACHINE, "faults": faults}).encode())
        refused = ("failure", "IAudioClient::Start on 'Speaker' gave")
        ended = ("skipped", "ended with the module's process")
        cases = [
            (NO_ENDPOINT, ["nobody"], {}, {"run": ("error", "No endpoint is called 'nobody'.\n'rmthost list'")}),
            (NO_ENDPOINT, ["spea"], {}, {"run": ("error", "\nHeadset Speaker  {0.0.0}.{headset}\n")}),
            (BAD_INPUT, [], {"machine": "loudspeaker"}, {"run": ("error", "'loudspeaker' can't be used")}),
            (BROKEN, [], {"module": MISBEHAVING, "MISBEHAVIOUR": "crash", "ASAN_OPTIONS": "handle_segv=0"},
             {"run": ("error", "The module crashed: "), "settings": ended}),
            (TIMED_OUT, ["--timeout", "0.4"], {"module": MISBEHAVING, "MISBEHAVIOUR": "hang"},
             {"run": ("error", "with --timeout SECONDS"), "settings": ended}),
            (FAIL, [], {"machine": "virtual:refuses.json"}, {"run": refused, "settings": (None, "")}),
            (NOT_RESTORED, [], {"machine": "virtual:stays.json"},
             {"run": refused, "settings": ("error", "Set them by hand")})]
        for code, arguments, more, expected in cases:
            with self.subTest(code, arguments=arguments):
                self.assertEqual(self.rmthost("play", *arguments, "--junit", "a.xml", **more)[0], code)
                self.assert_suite(self.suites("a.xml")[0], expected)

    def test_have_a_suite_for_each_run_and_the_log_in_it(self):
        self.document("repeat", "record", "-n", "2", "--min-peak", "0.5", "--junit", "a.xml", exit_code=FAIL,
                      machine=self.machine(hears=[]))
        suites = self.suites("a.xml")
        self.assertEqual(len(suites), 2)
        for suite in suites:
            self.assert_suite(suite, {"run": (None, ": Audio Record Test passed., ["), "level": ("failure", "at least 50 %"),
                                      "settings": (None, "")})

    def test_hold_names_that_xml_can_not(self):
        name = "a\x01\x1b[31m\u202e\ufffe]]></testcase>&\"'.b"
        self.document("play", name, "--junit", "a.xml", machine=self.machine(speaker=name))
        shown = "a<U+0001><U+001B>[31m<U+202E>\ufffd]]></testcase>&\"'"
        root = xml.etree.ElementTree.parse(self.path("a.xml")).getroot()
        self.assertEqual(root[0].get("name"), f"play {shown}.b")
        self.assertTrue(root[0].find("testcase").get("classname").endswith(f".play {shown}_b"))
        self.assertIn(f"{shown}.b {{0.0.0}}.{{speaker}}", [property.get("value") for property in root[0][0]])
        self.suites("a.xml")


if __name__ == "__main__":
    unittest.main()
