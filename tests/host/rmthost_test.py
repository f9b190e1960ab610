"""What rmthost says on virtual machines, and its exit codes."""
import contextlib
import json
import os
import re
import subprocess
import unittest

from host_test import (BAD_INPUT, BROKEN, CONTRACT, FAIL, HOST, MACHINE, MISBEHAVING, MODULE, NO_ENDPOINT, PASS, RETURN,
                       RUNNER, HostTest, endpoint, enough)

# What could steer a terminal or turn the direction of writing; lines end all the same.
NOT_PRINTABLE = re.compile("[\x00-\x09\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]")


class BadInput(HostTest):
    def test_each_gets_its_exit_code_and_sentence_as_text_and_as_json(self):
        for name, content in {"latin1.json": b'{"CoreData":"\xe9"}', "odd.json": b"\xff\xfe{", "zero.json": b"{}\0{}",
                              "surrogate.json": b"\xff\xfe\x00\xd8{\x00", "text.so": b"no library",
                              "huge.json": b" " * 2**24 + b"{}", "empty.json": b'{"endpoints": []}', "typo.json": b'{"endpoint": []}'}.items():
            self.write(name, content)
        cases = [
            (BAD_INPUT, "There is no file 'none.json'", ["run", "play", "none.json"], {}),
            (BAD_INPUT, "'.' can't be read", ["run", "play", "."], {}),
            (BAD_INPUT, "The contract 'latin1.json' isn't valid UTF-8", ["run", "play", "latin1.json"], {}),
            (BAD_INPUT, "The contract 'odd.json' isn't valid UTF-8", ["run", "record", "odd.json"], {}),
            (BAD_INPUT, "The contract 'surrogate.json' isn't valid UTF-8", ["run", "record", "surrogate.json"], {}),
            (BAD_INPUT, "'zero.json' holds a NUL", ["run", "play", "zero.json"], {}),
            (BAD_INPUT, "'sing' is no test", ["run", "sing", "-"], {}),
            (BAD_INPUT, "Invalid value", ["check", "-"], {"stdin": b"\xef\xbb\xbf" * 2 + b'{"CoreData":{}}'}),
            (BAD_INPUT, "line 1, column 15: The surrogate pair", ["check", "-"], {"stdin": b'{"CoreData":{"\\uDC00":1}}'}),
            (BAD_INPUT, "Number too big", ["check", "-"], {"stdin": b'{"CoreData":{"A":1.8e308}}'}),
            (BAD_INPUT, "no object CoreData", ["check", "-"], {"stdin": b"[]"}),
            (BAD_INPUT, "no object CoreData", ["check", "-"], {"stdin": b'{"CoreData":[],"CoreData":{}}'}),
            (BAD_INPUT, "subcommand is required", [], {}),
            (BAD_INPUT, "There is no option '--loud' of 'list'.", ["list", "--loud"], {}),
            (BAD_INPUT, "no option '--rendr' of 'record'; did you mean '--render'?", ["record", "--rendr=x"], {}),
            (BAD_INPUT, "did you mean '--min-peak'?", ["record", "--min-pek=1"], {}),
            (BAD_INPUT, "--color:  not in {auto,always,never}", ["--color", "", "list"], {}),
            (BAD_INPUT, "'--plot' of 'record' must stand behind the command", ["--plot", "x", "record"], {}),
            (BAD_INPUT, "no command 'recrod'; did you mean 'record'?", ["recrod", "mic", "--render", "speaker"], {}),
            (BAD_INPUT, "no command 'repeat PLEY'; did you mean 'repeat play'?", ["repeat", "PLEY"], {}),
            (BAD_INPUT, "There is no command 'symphony'.", ["help", "symphony"], {}),
            (BAD_INPUT, "extra", ["play", "Speaker", "extra"], {}),
            (BAD_INPUT, "The name of the render endpoint is empty", ["play", ""], {}),
            (NO_ENDPOINT, "No endpoint is called 'list'", ["play", "list"], {}),
            (NO_ENDPOINT, "'Microphone' is a capture endpoint", ["play", "microph"], {}),
            (NO_ENDPOINT, "'0.0.0' can mean any of 3 render endpoints", ["play", "0.0.0"], {}),
            (NO_ENDPOINT, "'Line Out' is unplugged", ["record", "--render", "line out"], {}),
            (NO_ENDPOINT, "'HDMI' is disabled", ["play", "hdmi"], {}),
            (NO_ENDPOINT, "'Microphone' is not present", ["record", "{0.0.1}.{gone}"], {}),
            (NO_ENDPOINT, "would test 'Speaker'", ["play", "Rear"], {}),
            (NO_ENDPOINT, "no default capture endpoint", ["record"], {"machine": "virtual:empty.json"}),
            (BROKEN, "There is no module 'none.so'", ["play"], {"module": "none.so"}),
            (BROKEN, "'text.so' can't be loaded", ["play"], {"module": "text.so"}),
            (BROKEN, "gave no reply", ["play"], {"module": MISBEHAVING}),
            (BAD_INPUT, "endpoint", ["list"], {"machine": "virtual:typo.json"}),
            (BAD_INPUT, "none.json", ["list"], {"machine": "virtual:none.json"}),
            (BAD_INPUT, "'virtual:.' can't be used: \".\" can't be read", ["list"], {"machine": "virtual:."}),
            (BAD_INPUT, '"huge.json" is larger than 16 MiB', ["list"], {"machine": "virtual:huge.json"}),
            (BAD_INPUT, "limits file 'huge.json' is larger than 1 MiB", ["limits", "--limits", "huge.json"], {}),
            (BAD_INPUT, "limits file '-' is larger than 1 MiB", ["limits", "--limits", "-"], {"stdin": b" " * 2**20 + b"{}"}),
            (BAD_INPUT, "'loudspeaker' can't be used", ["list"], {"machine": "loudspeaker"}),
        ]
        plain = os.path.join(os.path.dirname(HOST), "..", "lib", "libaudioplatform.so")
        if os.path.exists(plain):  # not on Windows
            cases.append((BROKEN, "doesn't export AudioPlaybackTest", ["run", "play", "-"], {"module": plain}))
        if hasattr(os, "mkfifo") and not RUNNER:
            os.mkfifo(os.path.join(self.directory, "pipe"))
            os.mkdir(os.path.join(self.directory, "log"))
            os.mkfifo(os.path.join(self.directory, "log", "ZQRMLOG.LOG"))
            cases.append((BAD_INPUT, "'/proc/self/mem' can't be read: Input/output error", ["check", "/proc/self/mem"], {}))
            cases.append((BAD_INPUT, 'There is no audio platform "virtuall"; there are "virtual", "virtual:FILE", "pulse" and '
                          '"pulse:SERVER".', ["list"], {"machine": "virtuall"}))
            os.symlink("loop", os.path.join(self.directory, "loop"))
            cases.append((BAD_INPUT, "Too many levels of symbolic links", ["list"], {"machine": "virtual:loop"}))
            for name in ["pipe", "/dev/zero"]:
                cases += [
                    (BAD_INPUT, f"'{name}' can't be read: it is a folder, a pipe", ["check", name], {}),
                    (BAD_INPUT, f"'{name}' can't be read: it is", ["record", "--limits", name], {}),
                    (BAD_INPUT, f'"{name}" can\'t be read: it is', ["list"], {"machine": "virtual:" + name}),
                    (BROKEN, f"'{name}' can't be loaded: it is", ["play"], {"module": name})]
            cases.append((BROKEN, "gave no reply", ["play", "--verbose"],
                          {"ZQRMT_LOG_DIRECTORY": os.path.join(self.directory, "log")}))
        for code, sentence, arguments, more in cases:
            with self.subTest(arguments=arguments, **more):
                exit_code, output, errors = self.rmthost(*arguments, **more)
                self.assertEqual((exit_code, output), (code, b""))
                self.assertIn(sentence, errors)
                self.assertGreaterEqual(errors.count("\n"), 2, "what is wrong, and what to do")
                error = self.document(*arguments, exit_code=code, **more)["error"]
                self.assertEqual(error["exitCode"], code)
                self.assertIn(sentence, error["message"])
                self.assertTrue(error["advice"])


class Endpoints(HostTest):
    def test_list_shows_what_the_platform_holds(self):
        document = self.document("list")
        self.assertEqual(document["command"], "list")
        listed = {shown["id"]: shown for shown in document["result"]["endpoints"]}
        self.assertEqual(list(listed), [given["id"] for given in MACHINE["endpoints"]])
        self.assertEqual(listed["{0.0.0}.{speaker}"], {
            "id": "{0.0.0}.{speaker}", "name": "Speaker", "flow": "render", "state": "active",
            "default": ["console", "multimedia"], "levels": [0.25, 0.75], "muted": True,
            "format": {"channels": 2, "rate": 48000, "bits": 16, "encoding": "pcm"}})
        self.assertEqual(listed["{0.0.0}.{headset}"]["format"]["encoding"], "float")
        self.assertEqual(listed["{0.0.1}.{microphone}"]["format"],
                         {"channels": 1, "rate": 48000, "bits": 24, "encoding": "pcm"})
        line_out = listed["{0.0.0}.{line}"]
        self.assertEqual((line_out["state"], line_out["levels"], line_out["muted"]), ("unplugged", None, None))
        self.assertIn("* Speaker\n    {0.0.0}.{speaker}\n    active, 2 channels, 48000 Hz, 16 bits pcm, "
                      "volume 25 % 75 %, muted", self.rmthost("list")[1].decode())

    def test_an_endpoint_is_found_by_id_name_or_piece(self):
        for name, found in [("{0.0.0}.{SPEAKER}", "{0.0.0}.{speaker}"), ("speaker", "{0.0.0}.{speaker}"),
                            ("head", "{0.0.0}.{headset}"), ("{head", "{0.0.0}.{headset}")]:
            self.assertEqual(self.document("play", name)["result"]["render"]["id"], found, name)
        names = {"1": "Köpfhörer", "2": "ΉΧΟΣ", "3": "Наушники", "4": "Łódź"}
        more = [endpoint("render", *item) for item in names.items()]
        self.write("world.json", json.dumps({**MACHINE, "endpoints": MACHINE["endpoints"] + more}).encode())
        for name, found in [("KÖPF", "1"), ("ήχος", "2"), ("НАУШ", "3"), ("łÓDŹ", "4")]:
            render = self.document("play", name, machine="virtual:world.json")["result"]["render"]
            self.assertEqual(render["id"], found, name)
        capture = self.document("record", "MICROPHONE", "--render", "speaker")["result"]["capture"]
        self.assertEqual(capture["id"], "{0.0.1}.{microphone}")

    def test_an_ambiguous_name_lists_what_it_can_mean(self):
        candidates = self.document("play", "spea", exit_code=NO_ENDPOINT)["error"]["candidates"]
        self.assertEqual(candidates[:2], [{"name": "Speaker", "id": "{0.0.0}.{speaker}"},
                                          {"name": "Headset Speaker", "id": "{0.0.0}.{headset}"}])
        self.assertIn("Headset Speaker  {0.0.0}.{headset}", self.rmthost("play", "spea")[2])


class Tests(HostTest):
    def test_a_record_test_measures_the_tone_or_the_silence(self):
        result = self.document("record", "--render", "speaker")["result"]
        self.assertEqual((result["passed"], result["returnCode"], result["returnMessage"], result["advice"]),
                         (True, RETURN["RECORD_PASSED"], "Audio Record Test passed.", None))
        # The tone's peak is 29987 of 32768, and half of it is heard.
        self.assertAlmostEqual(result["maxAmplitude"], 29987 / 32768 / 2, delta=0.01)
        self.assertAlmostEqual(result["maxAmplitudeDbfs"], -6.8, delta=0.2)
        self.assertEqual(result["reply"]["CoreData"]["DeviceInfo"]["AudioData"]["targetDevice"], "{0.0.0}.{speaker}")
        silence = self.document("record", "Hörmuschel", exit_code=FAIL)["result"]
        self.assertEqual((silence["passed"], silence["maxAmplitude"], silence["maxAmplitudeDbfs"], silence["render"]),
                         (False, 0.0, None, None))

    def test_the_text_shows_verdict_endpoints_and_amplitude(self):
        code, output, errors = self.rmthost("record", "--render", "speaker")
        self.assertEqual((code, errors), (PASS, ""))
        for line in [f"PASS  Audio Record Test passed. ({RETURN['RECORD_PASSED']})\n", "Microphone\n", "{0.0.0}.{speaker}\n",
                     "-6.8 dBFS\n", "[###################################.....] -60 to 0 dBFS\n", "ZQRMLOG.LOG\n"]:
            self.assertIn(line, output.decode())
        self.assertIn(f"PASS  Audio Playback Test passed. ({RETURN['PLAYBACK_PASSED']})\n", self.rmthost("play")[1].decode())

    def test_a_test_that_does_not_pass_says_why(self):
        for status, advice in [(0x88890026, "suspended"), (0x88890010, "ended or stopped"), (0x88890004, "went away"),
                               (0x8889000A, "holds the endpoint"), (0x80070490, "no such endpoint"), (0x80070005, "privacy settings"),
                               (0x80004005, "refused an operation")]:
            fault = {"operation": "IAudioClient::Start", "call": 1, "status": status - 2**32}
            self.write("faulty.json", json.dumps({**MACHINE, "faults": [fault]}).encode())
            for command, name in [("play", "Speaker"), ("record", "Microphone")]:
                result = self.document(command, exit_code=FAIL, machine="virtual:faulty.json")["result"]
                reason = f"Microsoft API Error: IAudioClient::Start on '{name}' gave 0x{status:08X}"
                self.assertEqual((result["passed"], result["returnCode"], result["reason"]),
                                 (False, RETURN["PLATFORM"], reason))
                self.assertIn(advice, result["advice"])
            self.assertIsNone(result["maxAmplitude"])
        text = self.rmthost("record", machine="virtual:faulty.json")[1].decode()
        self.assertIn(f"FAIL  {reason} ({RETURN['PLATFORM']})", text)


class Contracts(HostTest):
    def test_the_reply_comes_out_byte_for_byte(self):
        contract = CONTRACT % (0, "", "X")
        reply = (CONTRACT % (RETURN["NO_ENDPOINT"], "Could not find device", "X")).encode()
        for encoding, content in [("UTF-8", contract.encode()), ("with a mark", contract.encode("utf-8-sig")),
                                  ("UTF-16LE", b"\xff\xfe" + contract.encode("utf-16-le"))]:
            with self.subTest(encoding):
                self.write("größe.json", content)
                self.assertEqual(self.rmthost("run", "record", "größe.json"), (FAIL, reply, ""))
                self.assertEqual(self.rmthost("run", "record", "-", stdin=content), (FAIL, reply, ""))
        self.assertIn(reply, self.rmthost("--json", "run", "record", "-", stdin=contract.encode())[1])

    def test_the_outcome_decides_the_exit_code(self):
        for test, id in [("play", "{0.0.0}.{speaker}"), ("record", "{0.0.1}.{microphone}")]:
            contract = (CONTRACT % (0, "", id)).replace('"Y"', '""').encode()
            self.assertTrue(self.document("run", test, "-", stdin=contract)["result"]["passed"])

    def test_a_text_that_is_no_json_is_answered_and_explained(self):
        broken = '{\n "é": 1,\n "CoreData" {}}'.encode()
        code, output, errors = self.rmthost("run", "play", "-", stdin=broken)
        self.assertEqual((code, json.loads(output)["CoreData"]["ReturnCode"]), (BAD_INPUT, RETURN["BAD_INPUT"]))
        self.assertIn("line 3, column 13: Missing a colon", errors)
        document = self.document("run", "play", "-", exit_code=BAD_INPUT, stdin=broken)
        self.assertEqual((document["result"]["returnCode"], document["error"]["exitCode"]), (RETURN["BAD_INPUT"], BAD_INPUT))
        for text in [b"", b"[" * 1000000, b'{"a":1} {}']:
            self.assertEqual(self.rmthost("run", "record", "-", stdin=text)[0], BAD_INPUT)


class Check(HostTest):
    def check(self, contract, prefix="", expected=None):
        """Returns what was added with the default, by path, and what else was found, which must be `expected`."""
        exit_code = self.rmthost("check", "-", "--quiet", stdin=contract.encode())[0]
        result = self.document("check", "-", exit_code=exit_code, stdin=contract.encode())["result"]
        added = {finding["path"]: finding["after"] for finding in result.pop("added")}
        # 4 and 4.0 are the same to Python, but not their texts.
        found = {kind: {finding.pop("path"): json.dumps(list(finding.values()))[1:-1] for finding in findings}
                 for kind, findings in result.items() if findings}
        self.assertEqual(exit_code, FAIL if found else PASS)
        if expected is not None:
            self.assertEqual(found, {kind: {prefix + path: values for path, values in findings.items()}
                                     for kind, findings in expected.items()})
        return added, found

    def test_each_kind_of_finding_has_its_path_and_values(self):
        entries = ",".join('{"Name":"%d"}' % number for number in range(23))
        cases = [
            ('"TaskID":"ü","StateInfo":{},"EventLoggerData":{}', {}),
            ('"ReturnCode":4.0,"Result":4,"Status":"a\\u0000b","TaskID":{"a":[1]}', {"changed": {
                "/ReturnCode": "4.0, 0", "/Result": '4, ""', "/Status": '"a\\u0000b", "a"', "/TaskID": '{}, ""'}}),
            ('"a/b~":[0,{"c":1,"c":2,"c":3}],"TaskID":"","a/b~":{"d":1,"d":1}', {
                "dropped": {"/a~1b~0": "[]"}, "doubled": {"/a~1b~0": "", "/a~1b~0/1/c": "", "/a~1b~0/d": ""}}),
            # Numbers: the same value in another text, and values at the ends of their kinds.
            ('"DeviceInfo":{"AudioData":{"maxAmplitude":1.50,"CommandExecuted":-0}}', {}),
            ('"DeviceInfo":{"AudioData":{"maxAmplitude":0.%s123456789012345678901}}' % ("0" * 400), {}),
            ('"DeviceInfo":{"AudioData":{"maxAmplitude":18446744073709551616}},"TaskID":"first","TaskID":5',
             {"doubled": {"/TaskID": ""}}),
            ('"DeviceInfo":{"AudioData":{"maxAmplitude":4}}',
             {"changed": {"/DeviceInfo/AudioData/maxAmplitude": "4, 0.0"}}),
            ('"DeviceInfo":{"StorageData":'
             '{"di":{"DriveType":0,"TotalLBAs":-9223372036854775808,"BlockSize":4294967295}}}',
             {"changed": {"/DeviceInfo/StorageData/di/BlockSize": "4294967295, -1"}}),
            # Lists: elements skipped, filled up, carried over from the one before, merged, and outside the page.
            ('"DeviceInfo":{"KeyboardData":{"hexValuesPressed":["a",1,"b"]}}',
             {"dropped": {"/DeviceInfo/KeyboardData/hexValuesPressed/1": "1"}}),
            ('"DeviceInfo":{"StorageData":{"di":{"DriveType":0,"sasAddr":[0,0]}}}', {}),
            ('"DeviceInfo":{"NICData":{"NICAccessPoints":[{}]},"MotherboardData":{"FanData":[{}]}}', {}),
            ('"DeviceInfo":{"NICData":{"NICAccessPoints":[{"NICAccessPointName":"A"},{}]}}',
             {"addedOther": {"/DeviceInfo/NICData/NICAccessPoints/1/NICAccessPointName": '"A"'}}),
            ('"DeviceInfo":{"RegistryAccessData":{"RegistryData":[{"b":"1"},{"b":"2"}]}}',
             {"dropped": {"/DeviceInfo/RegistryAccessData/RegistryData/1": "{}"}}),
            ('"DeviceInfo":{"DevList":{"CurrentIndex":1,"Segment":[%s]}}' % entries,
             {"dropped": {"/DeviceInfo/DevList/Segment/%d" % number: "{}" for number in range(20)}}),
        ]
        for core, expected in cases:
            with self.subTest(core[:100]):
                self.check('{"CoreData":{%s}}' % core, "/CoreData", expected)
        self.check('{"Other":1,"CoreData":{},"CoreData":5}', "",
                   {"dropped": {"/Other": "1"}, "doubled": {"/CoreData": ""}})

    def test_whatever_names_a_device_travels_and_is_not_tested(self):
        id = '"DeviceInstanceID":"{0.0.1}.{microphone}"'
        for device, defaults, expected in [
                ("", 0, {}), ('"DeviceInfo":null,', 0, {"dropped": {"": "null"}}), ('"DeviceInfo":{},', 5, {}),
                ('"DeviceInfo":null,"DeviceInfo":{%s,"AudioData":{}},' % id, 0,
                 {"dropped": {"": "null"}, "doubled": {"": ""}}),
                ('"DeviceInfo":[1],', 0, {"dropped": {"": "[]"}}), ('"DeviceInfo":{ %s,"AudioData":{}},' % id, 7, {}),
                ('"DeviceInfo":{"AudioData":{"targetDevice":"T"},"AudioData":null,%s,"DeviceInstanceID":""},' % id, 6,
                 {"doubled": {"/AudioData": "", "/DeviceInstanceID": ""}}),
                ('"DeviceInfo":{"DeviceInstanceID":7,"\\u0041udioData":{}},', 7,
                 {"changed": {"/DeviceInstanceID": '7, ""'}})]:
            for outcome in ['"ReturnCode":0,"ReturnMessage":""', '"ReturnCode":-5,"ReturnMessage":"m"']:
                with self.subTest(device + outcome):
                    added, _ = self.check('{"CoreData":{%s%s}}' % (device, outcome), "/CoreData/DeviceInfo", expected)
                    self.assertEqual(sum("DeviceInfo" in path for path in added), defaults)

    def test_size_and_depth_are_no_matter(self):
        found = self.check('{"CoreData":{"TaskID":%s,"X":%s}}' % (
            "[" * 300000 + "]" * 300000, '{"a":1,"a":' * 20000 + "1" + "}" * 20000))[1]
        self.assertEqual((found["changed"], found["dropped"]), ({"/CoreData/TaskID": '[], ""'}, {"/CoreData/X": "{}"}))
        self.assertEqual(max(map(len, found["doubled"])), 303, "a path is cut")
        found = self.check('{"CoreData":{%s}}' % ",".join('"%d":1,"%d":1' % (key, key) for key in range(30000)))[1]
        self.assertEqual((len(found["dropped"]), len(found["doubled"])), (30000, 30000))

    def test_the_text_groups_the_findings_and_shortens_them(self):
        unknown = ",".join('"X%d":[]' % number for number in range(30))
        contract = ('{"CoreData":{"Result":4,%s,"Y":"%s"}}' % (unknown, "ü" * 99)).encode()
        output = self.rmthost("check", "-", stdin=contract)[1].decode()
        for line in ["doesn't come back as it is.\n", '1 came back changed:\n  /CoreData/Result  4  ->  ""\n',
                     "31 dropped:\n  /CoreData/X0  []\n", "  /CoreData/X19  []\n  and 11 more",
                     "7 added with the default:\n"]:
            self.assertIn(line, output)
        code, output, errors = self.rmthost("check", "--all", "-", stdin=contract)
        self.assertIn('  /CoreData/X29  []\n  /CoreData/Y  "%s...\n' % ("ü" * 29), output.decode())
        self.assertEqual((code, errors), (FAIL, ""))
        self.assertIn("No audio test is run", self.document("check", "--help")["result"]["text"])


class Output(HostTest):
    def test_quiet_prints_nothing_but_errors(self):
        for arguments in [["list"], ["play"], ["version"], ["run", "play", "-"]]:
            code, output, errors = self.rmthost(*arguments, "--quiet", stdin=b"{}")
            self.assertEqual((code, output, errors), (FAIL if arguments[0] == "run" else PASS, b"", ""), arguments)
        self.assertRegex(self.rmthost("play", "none", "--quiet")[2], "^rmthost: No endpoint is called 'none'")

    def test_version_and_help(self):
        result = self.document("version")["result"]
        self.assertEqual(result["module"], {"path": MODULE, "found": True})
        self.assertRegex(result["version"], r"^\d+\.\d+\.\d+\.\d+$")
        self.assertEqual([self.document(flag)["result"] for flag in ["--version", "-V"]], [result, result])
        for told in ["take headphones off", "4    platform or module error"]:
            self.assertIn(told, self.document("--help")["result"]["text"])
        for command in re.findall(r"^  ([a-z]+) ", self.rmthost("--help")[1].decode().split("Subcommands:")[1], re.M):
            self.assertIn(b"The options of 'rmthost --help' are taken here too", self.rmthost(command, "--help")[1], command)
        for asked, same in [(["help"], ["--help"]), (["help", "record"], ["record", "--help"])]:
            self.assertEqual(self.rmthost(*asked), self.rmthost(*same))

    def test_what_others_named_steers_no_terminal_and_turns_no_writing(self):
        bad = "\x1b[2J\n\x7f\x9b31m\x9d\u202e\u2066\u061c\u2029"
        file = "" if RUNNER else bad  # Windows takes no such name of a file.
        os.mkdir(os.path.join(self.directory, "log"))
        self.write("log/debug3.flg", b"")
        default = ["console", "multimedia"]
        own = {"endpoints": [endpoint("render", f"{bad}a1", f"evil{bad}a1", default=default),
                             endpoint("render", f"{bad}b2", f"evil{bad}b2", state="unplugged"),
                             endpoint("render", f"{bad}d4", f"evil{bad}d4"),
                             endpoint("capture", f"{bad}c3", f"evil{bad}c3", default=default,
                                      hears=[{"endpoint": f"{bad}a1", "gain": 0.5}])]}
        start = {"operation": "IAudioClient::Start", "status": -2147467259}
        deaf = {**start, "operation": "IAudioClient::Initialize", "sticky": True, "observer": True}
        kept = {**deaf, "operation": "IAudioEndpointVolume::SetChannelVolumeLevelScalar"}
        for name, faults in [("m", []), ("start", [start]), ("deaf", [deaf]), ("kept", [start, kept])]:
            self.write(name + ".json", json.dumps({"clock": "virtual", **own, "faults": faults}).encode())
        contract = json.dumps({"CoreData": {bad: bad, "TaskName": "\x1b[2J", "DeviceInfo": {"DeviceID": bad}}}).encode()
        record = ["record", "c3", "--render", "a1", "--verbose"]
        cases = [(["list"], "m"), ([*record, "--report", file + "r.html", "--plot", file + "p.svg"], "m"),
                 ([*record, "--report", "k.html"], "kept"), ([*record, "--report", "s.html"], "start"),
                 ([*record, "--report", "d.html"], "deaf"), (["repeat", "-n2", *record], "start"), (["play", "evil"], "m"),
                 (["play", "b2"], "m"), (["play", "c3"], "m"), (["play", bad], "m"), ([bad], "m"),
                 (["run", "play", bad], "m"), (["run", "play", "-", "--verbose"], "m"), (["check", "-"], "m"),
                 (["version"], bad), (["list"], bad)]
        for arguments, machine in enough(cases):
            with self.subTest(arguments, machine=machine):
                _, output, errors = self.rmthost(*arguments, machine=f"virtual:{machine}.json", stdin=contract,
                                                 ZQRMT_LOG_DIRECTORY=os.path.join(self.directory, "log"))
                # The reply to a contract is data.
                shown = errors if arguments[0] == "run" else output.decode().replace("\r\n", "\n") + errors
                self.assertIn("<U+001B>", shown)
                self.assertNotRegex(shown, NOT_PRINTABLE)
        for name in [name for name in os.listdir(self.directory) if name.endswith((".html", ".svg"))]:
            with open(os.path.join(self.directory, name), encoding="utf-8", newline="") as written:
                content = written.read()
            self.assertIn("&lt;U+202E&gt;", content)
            self.assertNotRegex(content, NOT_PRINTABLE, name)

    def on_terminal(self, stream, *arguments, **more):
        """Runs rmthost with `stream` being a terminal; returns the exit code and what is shown there."""
        terminal, other_end = self.open_terminal()
        streams = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, stream: other_end}
        code = subprocess.run([HOST, *arguments, "--module", MODULE], cwd=self.directory, timeout=60, **streams,
                              **more).returncode
        os.close(other_end)
        shown = b""
        with contextlib.suppress(OSError):  # nobody is at the other end any more
            while piece := os.read(terminal, 100000):
                shown += piece
        os.close(terminal)
        return code, shown.decode()

    @unittest.skipUnless(hasattr(os, "openpty") and not RUNNER, "needs a pseudo-terminal")
    def test_a_reply_ends_its_line_on_a_terminal(self):
        code, shown = self.on_terminal("stdout", "run", "play", "-", "--platform", "virtual", input=b"{}")
        self.assertEqual((code, shown[-3:]), (FAIL, "}\r\n"))

    @unittest.skipUnless(hasattr(os, "openpty") and not RUNNER, "needs a pseudo-terminal")
    def test_the_locale_says_what_a_terminal_can_draw(self):
        for locale, blocks in [({"LC_ALL": "C.UTF-8", "LC_CTYPE": "C"}, True), ({"LC_ALL": "C", "LC_CTYPE": "C.UTF-8"}, False),
                               ({"LC_ALL": "", "LC_CTYPE": "en_US.utf8", "LANG": "C"}, True), ({"LC_CTYPE": "C", "LANG": "C.UTF-8"}, False),
                               ({"LANG": "C.UTF-8"}, True), ({}, False)]:
            others = {name: value for name, value in os.environ.items() if name not in ("LC_ALL", "LC_CTYPE", "LANG")}
            shown = self.on_terminal("stdout", "record", "--render", "speaker", "--platform", "virtual",
                                     env={**others, **locale})[1]
            self.assertEqual(" ▁▂▃▄▅▆▇█ 0 dBFS" in shown, blocks, locale)

    @unittest.skipUnless(hasattr(os, "openpty") and not RUNNER, "needs a pseudo-terminal")
    def test_a_terminal_shows_the_progress(self):
        self.write("real.json", json.dumps({**MACHINE, "clock": "real"}).encode())
        code, drawn = self.on_terminal("stderr", "record", "--render", "speaker", "--platform", "virtual:real.json")
        self.assertEqual(code, PASS)
        # Another test's lines in the shared log may move the bar too.
        self.assertRegex(drawn, r"\rrecording \[.{40}\] +[1-9][0-9]* %")
        self.assertRegex(drawn, r"\r +\r$", "the bar is wiped off")


@unittest.skipIf(RUNNER, "on Windows the log has one place")
class Log(HostTest):
    def test_why_nothing_came_to_it_is_said(self):
        link = lambda log: (os.chmod(log, 0o777), os.symlink("../machine.json", os.path.join(log, "ZQRMLOG.LOG")))
        hide = lambda log: open(os.path.join(log, "critical.flg"), "w").close()
        leave = lambda log: None
        cases = [("plain", leave, PASS, None), ("made", os.rmdir, PASS, None), ("shared", link, PASS, "is a link"),
                 ("hidden", hide, FAIL, "critical.flg"), ("höme", leave, PASS, "takes only the letters"),
                 ("nothing/deeper", os.removedirs, BROKEN, "No such file")]
        for name, prepare, exit_code, why in cases:
            with self.subTest(name):
                log = os.path.join(self.directory, name)
                os.makedirs(log)
                prepare(log)
                code, output, _ = self.rmthost("--json", "play", ZQRMT_LOG_DIRECTORY=log)
                result = self.parsed(output)["result"]
                self.assertEqual((code, result["log"], result["logMoved"]), (exit_code, log + "/ZQRMLOG.LOG", None))
                self.assertRegex(result["logMissing"] or "None", why or "^None$")
                if why is not None:
                    told = self.rmthost("play", "--report", "a.html", ZQRMT_LOG_DIRECTORY=log)[2]
                    self.assertRegex(told, f"rmthost: Nothing of this call.*{why}")
                    with open(os.path.join(self.directory, "a.html"), encoding="utf-8") as page:
                        self.assertRegex(page.read(), f"<p>Nothing of this call.*{why}")

    @unittest.skipIf(os.getuid(), "only root becomes another user")
    def test_a_user_without_a_place_for_it_is_told(self):
        nobody = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
        if subprocess.run([*nobody, "test", "-x", HOST], cwd="/").returncode:
            self.skipTest(f"{HOST} is in a folder that others can't look into")
        environment = {name: value for name, value in os.environ.items() if name != "ZQRMT_LOG_DIRECTORY"}
        told = subprocess.run([*nobody, HOST, "play", "--platform", "virtual", "--module", MODULE], cwd="/",
                              env={**environment, "XDG_STATE_HOME": "/dev/null"}, capture_output=True, text=True).stderr
        self.assertRegex(told, r"There is no place for the log: this user can't write to '(/.+)': Permission denied; and "
                               r"'/dev/null/ZQOrb': Not a directory\. Name a directory")


if __name__ == "__main__":
    unittest.main()
