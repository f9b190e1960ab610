"""rmthost's verdict on a real sound server, over a cable between two endpoints that this program is.

What is played on the speaker goes through parec, this process, which bends it, and pacat into another sink, whose monitor
is the microphone.
"""
import array
import itertools
import math
import os
import random
import subprocess
import threading
import unittest

from host_test import HostTest
from sound_server import SINK
from sound_server_test import pactl

RATE, CHANNELS = 48000, 2
AUDIBLE = 30  # of 32768
FULL_SCALE = 32767
# Where the tone is loud, from its begin: it swells five times, around 0.1, 0.3, 0.5, 0.7 and 0.9 s.
LOUD = int(0.29 * RATE)


class Cable(threading.Thread):
    """Carries sound from the speaker to the far sink, through `bend`, a function from a list of left and one of right samples,
    and the number of the first frame since sound began (None before), to the two lists that go on."""

    def __init__(self, bend, rate=RATE):
        super().__init__()
        stream = ["--raw", "--format=s16le", f"--channels={CHANNELS}", "--latency-msec=20"]
        self.bend, self.frame = bend, None
        self.far = subprocess.Popen(["pacat", "--device=far", f"--rate={rate}", *stream], stdin=subprocess.PIPE)
        self.near = subprocess.Popen(["parec", "--device=speaker.monitor", f"--rate={RATE}", *stream],
                                     stdout=subprocess.PIPE)

    def run(self):
        frame_bytes = 2 * CHANNELS
        rest = b""
        while chunk := os.read(self.near.stdout.fileno(), 4096):
            chunk, whole = rest + chunk, (len(rest) + len(chunk)) // frame_bytes * frame_bytes
            rest, samples = chunk[whole:], array.array("h", chunk[:whole])
            if self.frame is None:
                begun = next((i for i, sample in enumerate(samples) if abs(sample) > AUDIBLE), None)
                self.frame = None if begun is None else -(begun // CHANNELS)
            left, right = self.bend(samples[0::2].tolist(), samples[1::2].tolist(), self.frame)
            if self.frame is not None:
                self.frame += len(samples) // CHANNELS
            limited = (max(-FULL_SCALE, min(FULL_SCALE, int(value))) for pair in zip(left, right) for value in pair)
            try:
                self.far.stdin.write(array.array("h", limited).tobytes())
                self.far.stdin.flush()
            except BrokenPipeError:
                return

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        for process in (self.near, self.far):
            process.terminate()
            process.wait()
        self.join()
        self.near.stdout.close()
        try:
            self.far.stdin.close()
        except BrokenPipeError:
            pass


def clean(left, right, _):
    return left, right


def each(change):
    """A condition that changes samples one by one: (sample, number of the frame or None) to sample."""
    def bend(left, right, frame):
        numbers = itertools.repeat(None) if frame is None else itertools.count(frame)
        changed = [(change(one, number), change(other, number)) for one, other, number in zip(left, right, numbers)]
        return [one for one, _ in changed], [other for _, other in changed]
    return bend


def between(number, begin, length):
    return number is not None and begin <= number < begin + length


def gap(sample, number):
    return 0 if between(number, LOUD, int(0.03 * RATE)) else sample


def cut(sample, number):
    return sample if number is None or number < 0.45 * RATE else 0


def sine(hertz, level):
    phase = itertools.count()
    return lambda: level * FULL_SCALE * math.sin(2 * math.pi * hertz * (next(phase) // 2) / RATE)


def added(source):
    return each(lambda sample, _: 0.5 * sample + source())


def instead(source):
    return each(lambda sample, _: source())


NOISE = random.Random(1)
CONDITIONS = [
    ("gap", each(gap), RATE, "interrupted", "gap of"),
    ("cut short", each(cut), RATE, "cut short", "last 0"),
    ("clipped at half scale", each(lambda sample, _: max(-9000, min(9000, sample))), RATE, "distortion", "cut off flat"),
    ("44100 taken for 48000", clean, 44100, "wrong speed", "too low"),
    ("hum beside it", added(sine(50, 0.2)), RATE, "noise", "mains hum of 50 Hz"),
    ("another tone instead", instead(sine(1000, 0.3)), RATE, "no tone", "another tone of (999|1000|1001) Hz"),
    ("noise instead", instead(lambda: NOISE.gauss(0, 0.1 * FULL_SCALE)), RATE, "no tone", "but noise"),
    ("nothing", each(lambda *_: 0), RATE, "silence", "nothing at all"),
    ("one channel inverted", lambda left, right, _: (left, [-one for one in right]), RATE, "inverted channel", "inverted"),
    ("one channel dead", lambda left, right, _: (left, [0] * len(right)), RATE, "dead channel", "is dead"),
]


class Loopback(HostTest):
    @classmethod
    def setUpClass(cls):
        # PulseAudio's null sink would mix two seconds ahead before it gets the cable's sound.
        option = " norewinds=1" if os.environ["ZQRMT_SOUND_SERVER"] == "pulseaudio" else ""
        modules = [SINK.format("far") + option,
                   "module-remap-source source_name=ear master=far.monitor"]
        for module in modules:
            number = pactl("load-module", *module.split()).strip()
            cls.addClassCleanup(pactl, "unload-module", number)

    def verdict(self, bend, rate=RATE):
        with Cable(bend, rate):
            # A stream takes a moment to run evenly.
            subprocess.run(["sleep", "0.5"], check=True)
            code, output, _ = self.rmthost("--json", "record", "ear", "--render", "speaker", machine="pulse")
        document = self.parsed(output)
        self.assertEqual(code, document["exitCode"])
        return document["result"]

    def test_a_clean_cable_passes(self):
        # A busy computer makes real gaps, in this process too; six times in a row it doesn't.
        results = []
        while len(results) < 6 and "pass" not in [result["verdict"] for result in results]:
            results.append(self.verdict(clean))
        self.assertEqual(results[-1]["verdict"], "pass", [result["reason"] for result in results])

    def test_each_fault_is_named(self):
        for name, bend, rate, verdict, reason in CONDITIONS:
            with self.subTest(name):
                results = []
                while len(results) < 3 and verdict not in [result["verdict"] for result in results]:
                    results.append(self.verdict(bend, rate))
                    self.assertNotEqual(results[-1]["verdict"], "pass")
                self.assertEqual(results[-1]["verdict"], verdict, [result["reason"] for result in results])
                self.assertRegex(results[-1]["reason"], reason)


if __name__ == "__main__":
    unittest.main()
