"""The Windows build as it is shipped, looked at from outside: files_test.py MODULE HOST SOURCES"""
import os
import sys
import unittest

MODULE, HOST, SOURCES = (os.path.abspath(path) for path in sys.argv[1:4])


def read(*path):
    with open(os.path.join(*path), "rb") as file:
        return file.read()


class Files(unittest.TestCase):
    def test_the_module_carries_its_version_and_is_small(self):
        content = read(MODULE)
        self.assertIn("FileVersion\0002.4.4.0".encode("utf-16-le"), content.replace(b"\0\0\0\0", b"\0\0"))
        self.assertLess(len(content), 3_000_000)

    def test_nothing_of_the_machine_that_built_them_is_in_the_files(self):
        for file in (MODULE, HOST):
            for place in (SOURCES, os.path.dirname(os.path.dirname(file))):
                self.assertNotIn(place.encode(), read(file))

    def test_the_document_shows_the_example_as_it_is_compiled(self):
        self.assertIn(b"```c\n" + read(SOURCES, "docs", "examples", "windows_host.c") + b"```\n", read(SOURCES, "docs", "windows.md"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
