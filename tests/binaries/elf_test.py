"""The files for Linux as they are built and installed: elf_test.py BUILD [WHY-NOT]"""
import os
import platform
import re
import subprocess
import sys
import unittest

from installed_test import InstalledTest

MODULE, LIBRARY, HOST = "ZQRMTTestsAudio.so", "libaudioplatform.so", "rmthost"
EXPORTS = {
    MODULE: ["AudioPlaybackTest", "AudioRecordTest"],
    LIBRARY: ["AudioPlatformError", "AudioPlatformInitialize", "AudioPlatformState", "AudioPlatformUninitialize",
              "core_audio::CoCreateInstance", "core_audio::CoTaskMemAlloc", "core_audio::CoTaskMemFree",
              "core_audio::PropVariantClear", "core_audio::Sleep"]}


def shown(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True, env={**os.environ, "LC_ALL": "C"}).stdout


def symbols(file):
    """The dynamic symbols by name, without the types of C++ parameters: whether each is defined."""
    rows = re.findall(r"^ *\d+: \w+ +\d+ \w+ +\w+ +\w+ +(\w+) (.*)$", shown("readelf", "-CW", "--dyn-syms", file), re.M)
    return {re.split(r"[@(]", name)[0]: section != "UND" for section, name in rows}


class Elf(InstalledTest):
    BUILD, NAMES = sys.argv[1], [MODULE, LIBRARY, HOST]

    def test_nothing_is_exported_but_the_public_functions(self):
        for file in self.named(*EXPORTS):
            with self.subTest(file):
                names = sorted(name for name, is_defined in symbols(file).items() if is_defined)
                self.assertEqual(names, EXPORTS[os.path.basename(file)])

    def test_what_is_loaded_is_bound_at_once_then_read_only_and_anywhere(self):
        for file in self.files:
            with self.subTest(file):
                dynamic, segments = shown("readelf", "-dW", file), shown("readelf", "-lW", file)
                flags = re.search(r"\(FLAGS_1\) +Flags: (.*)", dynamic).group(1).split()
                self.assertIn("NOW", flags)
                self.assertEqual("PIE" in flags, os.path.basename(file) == HOST)
                self.assertIn("Elf file type is DYN", segments)
                self.assertIn("GNU_RELRO", segments)
                self.assertRegex(segments, r"GNU_STACK( +0x0+){5} RW ")
                self.assertNotIn("TEXTREL", dynamic)
                for path in re.findall(r"\((?:RUNPATH|RPATH)\).*\[(.*)\]", dynamic):
                    for element in path.split(":"):
                        self.assertRegex(element, r"^\$ORIGIN(/|$)", "an empty or relative one is in the current folder")

    def test_stack_and_buffers_are_guarded(self):
        for file in self.files:
            with self.subTest(file):
                used = symbols(file)
                self.assertIn("__stack_chk_fail", used)
                self.assertTrue([name for name in used if re.fullmatch("__(?!stack)[a-z_]+_chk", name)], "fortified functions")

    # The property that turns the check of indirect jumps on isn't looked for: the linker sets it where all objects have it,
    # and Debian's start files have not.
    @unittest.skipUnless(platform.machine() == "x86_64", "an instruction of that processor")
    def test_indirect_jumps_may_come_to_the_exported_functions(self):
        for file in self.named(*EXPORTS):
            with self.subTest(file):
                code = shown("objdump", "-dC", "--no-show-raw-insn", "-j", ".text", file)
                for name in EXPORTS[os.path.basename(file)]:
                    self.assertRegex(code, r"(?m)^[0-9a-f]+ <%s(\(.*\))?>:\n +[0-9a-f]+:\s+endbr64" % name)


if __name__ == "__main__":
    if len(sys.argv) > 2:
        print("SKIPPED:", *sys.argv[2:])
        sys.exit(77)
    unittest.main(argv=[sys.argv[0], "-v"])
