"""The packages as they are shipped, met by those whom they are for: packages_test.py PRESET WINDOWS_MODULE

PRESET is the Windows build that tools/package has made them of, WINDOWS_MODULE the module of another one.
"""
import filecmp
import glob
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

PRESET, WINDOWS_MODULE = sys.argv[1:3]
SOURCES = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PACKAGES = os.path.join(SOURCES, "build", "packages")
NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
needs_root = unittest.skipUnless(os.geteuid() == 0, "only root can be somebody else, and install")


def package(pattern):
    found = glob.glob(os.path.join(PACKAGES, pattern))
    assert len(found) == 1, f"{pattern}: {found}"
    return found[0]


RUNTIME, DEVELOPMENT = package("zqrmt-tests-audio_*.deb"), package("zqrmt-tests-audio-dev_*.deb")


def run(*command, **more):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120, **more)
    assert done.returncode == 0, f"{command}: {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout


class Packages(unittest.TestCase):
    def setUp(self):
        directory = tempfile.TemporaryDirectory(prefix="zqrmt-packages-")
        self.addCleanup(directory.cleanup)
        self.directory = directory.name
        os.chmod(self.directory, 0o755)

    def path(self, *names):
        return os.path.join(self.directory, *names)

    def unpack(self):
        for file in (RUNTIME, DEVELOPMENT):
            run("dpkg-deb", "-x", file, self.path("root"))
        return self.path("root", "usr")

    def test_lintian_finds_nothing(self):
        self.assertEqual(run("lintian", "--allow-root", "--fail-on", "error,warning", RUNTIME, DEVELOPMENT), "")

    def test_files_hold_no_path_of_the_builder_and_no_run_path(self):
        for folder, _, names in os.walk(self.unpack()):
            for file in (os.path.join(folder, name) for name in names):
                with open(file, "rb") as opened:
                    content = opened.read()
                self.assertNotIn(SOURCES.encode(), content, file)
                if content.startswith(b"\x7fELF"):
                    self.assertNotIn("RUNPATH", run("readelf", "-d", file), file)

    def test_packages_that_are_made_again_are_the_same(self):
        kept = shutil.copytree(PACKAGES, self.path("kept"))
        run(os.path.join(SOURCES, "tools", "package"), PRESET)
        names = sorted(os.listdir(kept))
        self.assertEqual((sorted(os.listdir(PACKAGES)), len(names)), (names, 4))
        self.assertEqual(filecmp.cmpfiles(kept, PACKAGES, names, shallow=False)[0], names)

    @needs_root
    def test_the_archive_runs_wherever_it_is_for_whoever_unpacks_it(self):
        home = self.path("höme")
        for name in ("home", "höme"):
            os.makedirs(self.path(name))
            shutil.chown(self.path(name), 65534, 65534)
        run(*NOBODY, "tar", "xzf", package("*-linux-*.tar.gz"), "-C", self.path("home"))
        rmthost = glob.glob(self.path("home", "*", "bin", "rmthost"))[0]
        record = [*NOBODY, rmthost, "record", "Microphone", "--render", "Speaker", "--platform", "virtual", "--json"]
        environment = {"PATH": os.environ["PATH"], "HOME": self.path("home")}
        result = json.loads(run(*record, env=environment))["result"]
        log = self.path("home", ".local", "state", "ZQOrb", "ZQRMLOG.LOG")
        self.assertEqual((result["passed"], result["log"], result["logMissing"]), (True, log, None))
        self.assertIn("/var/log/ZQOrb", result["logMoved"])
        self.assertTrue(os.path.exists(log))
        done = subprocess.run(record, env={**environment, "HOME": home}, capture_output=True, text=True, timeout=60)
        self.assertIn("only the letters", json.loads(done.stdout)["result"]["logMoved"])

    def test_a_host_is_built_from_what_is_installed_alone(self):
        usr = self.unpack()
        libraries = os.path.dirname(glob.glob(os.path.join(usr, "lib", "*", "libaudioplatform.so"))[0])
        examples = os.path.join(usr, "share", "doc", "zqrmt-tests-audio-dev", "examples")
        environment = {**os.environ, "PKG_CONFIG_LIBDIR": os.path.join(libraries, "pkgconfig"),
                       "LD_LIBRARY_PATH": libraries, "ZQRMT_LOG_DIRECTORY": self.path("log")}

        with open(os.path.join(os.path.dirname(examples), "hosting.md")) as document:
            contract = re.search(r"```json\n(.*?)```", document.read(), re.DOTALL).group(1)

        def pkg_config(*options):
            return run("pkg-config", *options, "zqrmttestsaudio", env=environment).split()

        by_pkg_config, by_cmake = self.path("linux_host"), self.path("build", "linux_host")
        run("cc", "-Wall", "-Wextra", "-Werror", os.path.join(examples, "linux_host.c"), "-o", by_pkg_config,
            *pkg_config("--cflags", "--libs"))
        project = os.path.join(SOURCES, "tests", "packages", "host_project")
        run("cmake", "-S", project, "-B", self.path("build"), f"-DCMAKE_PREFIX_PATH={usr}", f"-DEXAMPLES={examples}")
        run("cmake", "--build", self.path("build"))
        with open(self.path("build", "module.txt")) as file:
            module = file.read()
        self.assertTrue(os.path.samefile(module, pkg_config("--variable=module")[0]))
        for host in ([by_pkg_config], [by_cmake], [sys.executable, os.path.join(examples, "linux_host.py")]):
            with self.subTest(host):
                reply = run(*host, module, "AudioRecordTest", "virtual", input=contract, env=environment)
                self.assertEqual(json.loads(reply)["CoreData"]["ReturnMessage"], "Audio Record Test passed.")

    def test_the_windows_archive_has_the_module_that_was_tested(self):
        with zipfile.ZipFile(package("*-windows-*.zip")) as archive:
            content = {os.path.basename(name): archive.read(name) for name in archive.namelist()}
        with open(WINDOWS_MODULE, "rb") as module:
            self.assertEqual(content["ZQRMTTestsAudio.dll"], module.read())
        self.assertLessEqual({"rmthost.exe", "zqrmt_tests_audio.h", "windows_host.c", "windows.md", "copyright"}, content.keys())

    @needs_root
    def test_install_upgrade_and_purge_leave_what_they_should(self):
        root = self.path("root")
        log = self.path("root", "var", "log", "ZQOrb")
        os.makedirs(self.path("root", "var", "lib", "dpkg", "updates"))
        os.makedirs(self.path("root", "etc"))
        os.makedirs(log)
        for name in ("passwd", "group"):
            shutil.copy("/etc/" + name, self.path("root", "etc"))
        for name in ("status", "available"):
            open(self.path("root", "var", "lib", "dpkg", name), "w").close()
        # Root has run a test before there was a package.
        open(os.path.join(log, "ZQRMLOG.LOG"), "w").close()
        dpkg = ["dpkg", f"--root={root}", f"--log={os.devnull}", "--force-depends", "--force-script-chrootless"]
        for _ in range(2):
            run(*dpkg, "-i", RUNTIME)
            self.assertEqual([oct(os.stat(path).st_mode)[-4:] for path in (log, os.path.join(log, "ZQRMLOG.LOG"))],
                             ["2775", "0664"])
        run(*dpkg, "--remove", "zqrmt-tests-audio")
        self.assertTrue(os.path.exists(os.path.join(log, "ZQRMLOG.LOG")))
        run(*dpkg, "--purge", "zqrmt-tests-audio")
        self.assertFalse(os.path.exists(log))
        self.assertFalse(glob.glob(self.path("root", "usr", "**", "*rmthost*"), recursive=True))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
