"""The files for Windows as they are built and installed: pe_test.py BUILD"""
import os
import re
import subprocess
import sys
import unittest

from installed_test import InstalledTest

MODULE, HOST = "ZQRMTTestsAudio.dll", "rmthost.exe"
# The guard of the stack takes its random number from the first.
IMPORTS = {MODULE: {"ADVAPI32.dll", "KERNEL32.dll", "msvcrt.dll", "ole32.dll"},
           HOST: {"ADVAPI32.dll", "KERNEL32.dll", "msvcrt.dll", "ole32.dll", "SHELL32.dll"}}


def headers(file):
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", file], check=True, capture_output=True, text=True).stdout


class Pe(InstalledTest):
    BUILD, NAMES = sys.argv[1], [MODULE, HOST]

    def test_the_module_exports_its_two_functions(self):
        for file in self.named(MODULE):
            text = headers(file)
            names = text[text.index("[Ordinal/Name Pointer] Table"):text.index("The Function Table")]
            self.assertEqual(re.findall(r"\[ *\d+\] (\w+)", names), ["AudioPlaybackTest", "AudioRecordTest"])

    def test_they_need_the_system_alone_are_loaded_anywhere_and_run_no_data(self):
        for file in self.files:
            with self.subTest(file):
                text = headers(file)
                self.assertEqual(set(re.findall(r"DLL Name: (\S+)", text)), IMPORTS[os.path.basename(file)])
                flags = int(re.search(r"DllCharacteristics\s+([0-9a-f]+)", text).group(1), 16)
                self.assertEqual(flags & 0x160, 0x160, "high-entropy, dynamic base, no execution of data")
                relocations = re.search(r"Entry 5 [0-9a-f]+ ([0-9a-f]+) Base Relocation", text).group(1)
                self.assertGreater(int(relocations, 16), 0)

    def test_the_stack_is_guarded(self):
        for file in self.files:
            with self.subTest(file), open(file, "rb") as content:
                self.assertIn(b"stack smashing detected", content.read())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
