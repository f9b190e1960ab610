"""Builds and tests mutants in a copy of the checkout."""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import signal
import subprocess
import time
import types

# Ends with this program, however that ends.
BOUND = ["setpriv", "--pdeathsig", "KILL"]
# What a test may do: send signals to its own processes alone, whatever number a mutant takes for theirs, write to a folder for
# temporary files that ends with it, and fill neither memory nor disk. What it leaves running ends with it too.
CONFINED = ["env", "--default-signal", *BOUND, "prlimit", "--data=4294967296", "--fsize=1073741824",
            "unshare", "--pid", "--fork", "--kill-child", "--mount-proc",
            *([] if os.geteuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]), "sh", "-c",
            'mount -t tmpfs -o size=2G tmpfs /var/tmp && "$@"; exit $?', "sh"]


def output_of(*command, **more):
    return subprocess.run(command, stdout=subprocess.PIPE, check=True, **more).stdout.decode().strip()


def exit_code(command, seconds, **more):
    """Of the command, which is ended with its group after that time; None then."""
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          start_new_session=True, **more) as process:
        try:
            return process.wait(seconds)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return None


class Workshop:
    """`tree` is the hash of all that a result rests on, `seconds` what each test takes without a mutant."""

    def __init__(self, root, folder, jobs):
        self.source, self.folder, self.jobs, self.unchanged, self.seconds = folder / "source", folder / "build", jobs, {}, {}
        self.source.mkdir(parents=True, exist_ok=True)
        # The checkout, with what isn't committed, becomes a tree by an index beside its own; another knows the copy's files.
        of_root, of_copy = ({"cwd": root, "env": {**os.environ, "GIT_INDEX_FILE": f"{folder}/{one}.index"}} for one in ("root", "copy"))
        output_of("git", "add", "--all", **of_root)
        tree = output_of("git", "write-tree", **of_root)
        output_of("git", f"--work-tree={self.source}", "read-tree", "--reset", "-u", tree, **of_copy)
        files = output_of("git", "ls-tree", "-r", tree, cwd=root).splitlines()
        checked = [line for line in files if not re.search(r"\.md$|\ttools/(mutat|coverage)", line)]
        self.tree = hashlib.sha256("".join(checked).encode()).hexdigest()
        # A little optimised: that builds soon, and shows what is the same code. The build runs no test, unconfined as it is.
        output_of("cmake", "-S", self.source, "-B", self.folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                  "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG -w", f"-DZQRMT_LOG_DIRECTORY={self.folder}/log",
                  "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST")
        self.unchanged = self.build()
        if not self.unchanged:
            raise SystemExit(f"The code doesn't build. To see why: cmake --build {self.folder}")
        listed = json.loads(output_of("ctest", "--show-only=json-v1", cwd=self.folder))["tests"]
        self.tests = [self.read_test(one) for one in listed if "command" in one]

    def read_test(self, described):
        test = types.SimpleNamespace(ENVIRONMENT=[], SKIP_RETURN_CODE=0, RUN_SERIAL=False, **described)
        vars(test).update((one["name"], one["value"]) for one in described["properties"])
        # A file is used where its name stands: in the command or the environment, or in another file that is used.
        names = " ".join([*test.command, *test.ENVIRONMENT]).encode()
        for _ in range(3):
            test.files = {file for file in self.unchanged if file.name.encode() in names}
            names += b"".join(file.read_bytes() for file in test.files)
        return test

    def sources(self):
        """The C++ sources that are built and the headers beside them: name, path and the compiler's arguments."""
        found = {}
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words, path = shlex.split(entry["command"]), pathlib.Path(entry["file"])
            kept = [one for before, one in zip(words, words[1:]) if re.match("-I|-D|-std|-isystem", one) or before == "-isystem"]
            for source in (path, *path.parent.glob("*.h")):
                found.setdefault(os.path.relpath(source, self.source), (str(source), kept))
        return [(name, *rest) for name, rest in sorted(found.items())]

    def build(self):
        """The programs and libraries whose bytes aren't as they were unchanged; None when it doesn't compile."""
        if exit_code([*BOUND, "cmake", "--build", self.folder, "-j", str(self.jobs)], 3600) != 0:
            return None
        hashes = {file: hashlib.sha256(file.read_bytes()).digest() for kind in ("bin", "lib") for file in (self.folder / kind).iterdir()}
        return {file: one for file, one in hashes.items() if self.unchanged.get(file) != one}

    def failures(self, tests):
        """Runs tests, fastest first, until one fails twice, and gives its name and how it ended. What fails once met something else.

        A test that is run for the first time only gets its seconds, None if it fails.
        """
        failures = []

        def run(test):
            if failures:
                return
            environment = {**os.environ, **dict.fromkeys(("HOME", "TMPDIR", "XDG_STATE_HOME"), "/var/tmp"),
                           **dict(one.split("=", 1) for one in test.ENVIRONMENT)}
            for _ in range(2):
                begin, limit = time.monotonic(), 20 + 5 * self.seconds.get(test.name, 100)
                code = exit_code([*CONFINED, *test.command], limit, cwd=test.WORKING_DIRECTORY, env=environment)
                if code in (0, test.SKIP_RETURN_CODE):
                    self.seconds.setdefault(test.name, round(time.monotonic() - begin, 2))
                    return
            if test.name in self.seconds:
                failures.append((test.name, "hung" if code is None else "failed"))
            else:
                self.seconds[test.name] = None

        # Tests wait for sound and for other programs more than they compute.
        for width, alone in ((2 * self.jobs, False), (1, True)):
            # A test that has to run alone is failed by what else keeps the processors busy.
            if alone and os.getloadavg()[0] > 2.5 * os.cpu_count():
                break
            with concurrent.futures.ThreadPoolExecutor(width) as pool:
                chosen = [test for test in tests if test.RUN_SERIAL == alone and test.files]
                list(pool.map(run, sorted(chosen, key=lambda test: self.seconds.get(test.name, 0))))
        return failures
