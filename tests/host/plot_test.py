"""What rmthost heard along with the module, as a drawing and as JSON."""
import json
import os
import unittest
import xml.etree.ElementTree as xml

from host_test import CONTRACT, MACHINE, HostTest

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

    def test_the_drawing_stands_by_itself(self):
        machine = json.loads(json.dumps(MACHINE))
        machine["endpoints"][5]["name"] = "Microphone <&> \uffff\"'"
        self.write("odd.json", json.dumps(machine).encode())
        self.record("--plot", "a.svg", machine="virtual:odd.json")
        path = os.path.join(self.directory, "a.svg")
        self.assertLess(os.path.getsize(path), 60000)
        root = xml.parse(path).getroot()
        self.assertEqual(root.find(SVG + "title").text, "Microphone <&> \ufffd\"': pass")
        self.assertRegex(root.find(SVG + "desc").text, r"^What was heard in 1\.\d+ s: peak -6\.8 dBFS, RMS -18\.. dBFS")
        self.assertIn("tone, 1.2 kHz", [text.text for text in root.iter(SVG + "text")])
        self.assertFalse([node.tag for node in root.iter() if node.tag in (SVG + "script", SVG + "image")])

    def test_an_endpoint_that_takes_no_second_stream_is_told(self):
        fault = {"operation": "IAudioClient::Initialize", "status": -2004287480, "observer": True}
        for sticky, peak, drawing in ((False, True, "a.svg"), (True, False, "b.svg")):
            self.write("faulty.json", json.dumps({**MACHINE, "faults": [{**fault, "sticky": sticky}]}).encode())
            result = self.record("--plot", drawing, machine="virtual:faulty.json")
            self.assertEqual(result["findings"] is not None, peak, "a shorter buffer is tried")
            self.assertEqual(os.path.exists(os.path.join(self.directory, drawing)), peak)
        self.assertIn("IAudioClient::Initialize gave 0x88890008", result["notHeard"])


if __name__ == "__main__":
    unittest.main()
