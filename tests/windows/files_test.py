"""The Windows build as it is shipped, looked at from outside: files_test.py MODULE HOST SOURCES"""
import os
import re
import subprocess
import sys
import unittest

MODULE, HOST, SOURCES = (os.path.abspath(path) for path in sys.argv[1:4])
SYSTEM_LIBRARIES = {"KERNEL32.dll", "msvcrt.dll", "ole32.dll", "SHELL32.dll"}


def headers(file):
    return subprocess.run(["x86_64-w64-mingw32-objdump", "-p", file], check=True, capture_output=True, text=True).stdout


def read(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


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
        content = read(MODULE)
        self.assertIn("FileVersion\0002.4.4.0".encode("utf-16-le"), content.replace(b"\0\0\0\0", b"\0\0"))
        self.assertLess(len(content), 3_000_000)

    def test_nothing_of_the_machine_that_built_them_is_in_the_files(self):
        for file in (MODULE, HOST):
            for place in (SOURCES, os.path.dirname(os.path.dirname(file))):
                self.assertNotIn(place.encode(), read(file))

    def test_the_document_shows_the_example_as_it_is_compiled(self):
        self.assertIn(b"```c\n" + read(SOURCES, "docs", "examples", "host.c") + b"```\n", read(SOURCES, "docs", "windows.md"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
