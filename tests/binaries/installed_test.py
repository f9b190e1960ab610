"""What the tests of binaries share: the same files in the build tree and in an installed one."""
import os
import subprocess
import tempfile
import unittest


class InstalledTest(unittest.TestCase):
    """The class of a test sets BUILD, the build tree, and NAMES, the files to look at."""

    @classmethod
    def setUpClass(cls):
        installed = tempfile.TemporaryDirectory(prefix="zqrmt-installed-")
        cls.addClassCleanup(installed.cleanup)
        subprocess.run(["cmake", "--install", cls.BUILD, "--prefix", installed.name], check=True, capture_output=True)
        built = [os.path.join(cls.BUILD, folder) for folder in ("bin", "lib")]
        cls.files = [cls.find(name, trees) for trees in (built, [installed.name]) for name in cls.NAMES]

    @staticmethod
    def find(name, trees):
        # Completions have their program's name.
        found = [os.path.join(folder, name) for tree in trees for folder, _, files in os.walk(tree)
                 if name in files and "completions" not in folder]
        assert len(found) == 1, f"{name} in {trees}: {found}"
        return found[0]

    def named(self, *names):
        """The files of these names."""
        return [file for file in self.files if os.path.basename(file) in names]
