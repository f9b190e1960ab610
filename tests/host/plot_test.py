"""What rmthost heard along with the module, as a drawing and as JSON."""
import json
import os
import unittest
import xml.etree.ElementTree as xml

from host_test import CONTRACT, FAIL, MACHINE, PASS, HostTest

SVG = "{http://www.w3.org/2000/svg}"


class Plot(HostTest):
    def record(self, *arguments, **more):
        return self.document("record", "--render", "speaker", *arguments, **more)["result"]

    def test_listening_leaves_the_measurement_as_it_is(self):
        noisy = json.loads(json.dumps(MACHINE))
        noisy["endpoints"][5]["noise"] = 0.001
        self.write("noisy.json", json.dumps(noisy).encode())
        contract = (CONTRACT % (0, "", "{0.0.1}.{microphone}")).replace('"Y"', '"{0.0.0}.{speaker}"').encode()
        document = self.document("run", "record", "-", stdin=contract, machine="virtual:noisy.json")
        plain = document["result"]["reply"]["CoreData"]["DeviceInfo"]["AudioData"]["maxAmplitude"]
        heard = self.record("--plot-data", machine="virtual:noisy.json")
        self.assertEqual(heard["maxAmplitude"], plain)
        self.assertEqual(f"{heard['plotData']['peak']:.6g}", f"{plain:.6g}")
        self.assertAlmostEqual(heard["plotData"]["dominantHz"], 1200, delta=15)
        # Evenly distributed between -0.001 and 0.001, its RMS is 0.001 / sqrt(3).
        self.assertAlmostEqual(heard["plotData"]["noiseFloor"], 0.000577, delta=0.00006)

    def draw(self, exit_code=PASS, **microphone):
        """The drawing of a run with another microphone: its root, its texts, and its rectangles by their class."""
        machine = json.loads(json.dumps(MACHINE))
        machine["endpoints"][5].update(microphone)
        self.write("other.json", json.dumps(machine).encode())
        self.record("--plot", "a.svg", machine="virtual:other.json", exit_code=exit_code)
        path = os.path.join(self.directory, "a.svg")
        self.assertLess(os.path.getsize(path), 60000)
        root = xml.parse(path).getroot()
        rectangles = {}
        for one in root.iter(SVG + "rect"):
            rectangles.setdefault(one.get("class"), []).append(one)
        return root, ["".join(text.itertext()) for text in root.iter(SVG + "text")], rectangles

    def test_the_drawing_stands_by_itself(self):
        root, texts, rectangles = self.draw(name="Microphone <&> \uffff\"'")
        self.assertEqual(root.find(SVG + "title").text,
                         "PASS: Recording from 'Microphone <&> \ufffd\"'' while 'Speaker' plays")
        self.assertRegex(root.find(SVG + "desc").text, r"^What was heard in 1\.\d+ s: peak -6\.8 dBFS, RMS -18\.. dBFS")
        for text in ("PASS", "tone: pass", "channels: pass", "the test tone, 1.2 kHz", "1185", "1215",
                     "This ran on the virtual machine: nothing was played or heard by real hardware."):
            self.assertIn(text, texts)
        self.assertEqual(texts.count("0.0"), 7, texts)
        self.assertEqual(rectangles["heard"][-1].get("y"), rectangles["expected"][-1].get("y"), "the legend's")
        self.assertNotIn("clipped", rectangles)
        self.assertFalse([node.tag for node in root.iter() if node.tag in (SVG + "script", SVG + "image")])

    def test_an_endpoint_that_takes_no_second_stream_is_told(self):
        fault = {"operation": "IAudioClient::Initialize", "status": -2004287480, "observer": True}
        for sticky, peak, drawing in ((False, True, "a.svg"), (True, False, "b.svg")):
            self.write("faulty.json", json.dumps({**MACHINE, "faults": [{**fault, "sticky": sticky}]}).encode())
            result = self.record("--plot", drawing, machine="virtual:faulty.json")
            self.assertEqual(result["findings"] is not None, peak, "a shorter buffer is tried")
            self.assertEqual(os.path.exists(os.path.join(self.directory, drawing)), peak)
        self.assertIn("IAudioClient::Initialize gave 0x88890008", result["notHeard"])

    def test_the_drawing_shows_where_something_was_wrong(self):
        faults = [{"kind": "clip", "level": 0.3}, {"kind": "gap", "atMs": 450, "lengthMs": 30},
                  {"kind": "dead", "channel": 0}]
        _, texts, rectangles = self.draw(FAIL, path=faults, levels=[1, 1], format=MACHINE["endpoints"][0]["format"])
        self.assertTrue({"interrupted", "cut off: too loud", "interruptions: fail",
                         "What was heard over time, channel 2 of 2: 1 is full scale"} <= {*texts}, texts)
        self.assertTrue([one for one in texts if one.startswith("FAIL: ")])
        # The first of the class explains it, the last marks the tone in the spectrum; 730 units are as long as the sound.
        marks = [float(one.get("x")) for one in rectangles["tone"] if float(one.get("height")) == 150]
        seconds = self.record("--no-plot")["findings"]["seconds"]
        self.assertEqual([round((x - 60) / 730 * seconds, 1) for x in marks], [0.5], rectangles)

    def test_silence_is_drawn_as_silence(self):
        for noise, word in ((0, "silence"), (0.0005, "as good as silence: never above -66 dBFS")):
            _, texts, rectangles = self.draw(FAIL, hears=[], noise=noise)
            self.assertIn(word, texts)
            self.assertTrue({"FAIL: silence" if noise == 0 else "FAIL: too quiet", "1", "-1", "not heard"} <= {*texts}, texts)
            self.assertEqual(len(rectangles["heard"]), 1, "the legend's alone")


if __name__ == "__main__":
    unittest.main()
