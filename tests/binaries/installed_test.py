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
        cls.files = [cls.find(name, tree) for tree in (cls.BUILD, installed.name) for name in cls.NAMES]

    @staticmethod
    def find(name, tree):
        found = [os.path.join(folder, name) for top in ("bin", "lib")
                 for folder, _, files in os.walk(os.path.join(tree, top)) if name in files]
        assert len(found) == 1, f"{name} in {tree}: {found}"
        return found[0]

    def named(self, *names):
        """The files of these names."""
        return [file for file in self.files if os.path.basename(file) in names]
