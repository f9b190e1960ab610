"""Builds and tests mutants in a copy of the checkout."""
import collections
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import time
import types

# Ends with this program, however that ends.
BOUND = ["setpriv", "--pdeathsig", "KILL"]
# What a test may do: send signals to its own processes alone, whatever number a mutant takes for theirs, write to a folder for
# temporary files that ends with it, where its standard streams are too, since the rights of a device are everybody's, and fill neither
# memory nor disk. What it leaves running ends with it too.
CONFINED = ["env", "--default-signal", *BOUND, "prlimit", "--data=4294967296", "--fsize=1073741824",
            "unshare", "--pid", "--fork", "--kill-child", "--mount-proc",
            *([] if os.geteuid() == 0 else ["--user", "--map-current-user", "--keep-caps"]), "sh", "-c",
            'mount -t tmpfs -o size=2G tmpfs /var/tmp && : >/var/tmp/in && "$@" </var/tmp/in >/var/tmp/out 2>&1; exit $?', "sh"]
# A little optimised: that builds soon, and shows what is the same code.
PLAIN = ["-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG -w"]
# The counts are kept in the file as they are made, so that those of a process that is killed aren't lost.
COUNTING = ["-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_C_COMPILER=clang", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG -w"
           " -fprofile-instr-generate -fcoverage-mapping -mllvm -runtime-counter-relocation"]


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


def copied(root, folder):
    """Makes folder/source the checkout with what isn't committed, and gives the hash of all that a result rests on."""
    (folder / "source").mkdir(parents=True, exist_ok=True)
    # The checkout becomes a tree by an index beside its own; another knows the copy's files.
    of_root, of_copy = ({"cwd": root, "env": {**os.environ, "GIT_INDEX_FILE": f"{folder}/{one}.index"}} for one in ("root", "copy"))
    output_of("git", "add", "--all", **of_root)
    tree = output_of("git", "write-tree", **of_root)
    output_of("git", f"--work-tree={folder}/source", "read-tree", "--reset", "-u", tree, **of_copy)
    files = output_of("git", "ls-tree", "-r", tree, cwd=root).splitlines()
    checked = [line for line in files if not re.search(r"\.md$|\ttools/(mutat|coverage)", line)]
    return hashlib.sha256("".join(checked).encode()).hexdigest()


class Workshop:
    """A copy in folder/source, built in folder/build by a flavour's options."""

    def __init__(self, root, folder, jobs, flavour=PLAIN):
        self.tree, self.source, self.folder, self.jobs = copied(root, folder), folder / "source", folder / "build", jobs
        # The build runs no test, unconfined as it is.
        output_of("cmake", "-S", self.source, "-B", self.folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", *flavour,
                  "-DCMAKE_UNITY_BUILD=OFF", f"-DZQRMT_LOG_DIRECTORY={self.folder}/log",
                  "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST")
        self.unchanged = {}
        self.unchanged = self.build()
        if not self.unchanged:
            raise SystemExit(f"The code doesn't build. To see why: cmake --build {self.folder}")
        listed = json.loads(output_of("ctest", "--show-only=json-v1", cwd=self.folder))["tests"]
        self.tests = {one["name"]: self.read_test(**one) for one in listed if "command" in one}

    @staticmethod
    def read_test(name, command, properties, **_):
        test = types.SimpleNamespace(name=name, command=command, ENVIRONMENT=[], SKIP_RETURN_CODE=0, PROCESSORS=1)
        vars(test).update((one["name"], one["value"]) for one in properties)
        return test

    def sources(self):
        """The C++ sources that are built and the headers beside them: name, path and the compiler's arguments.

        Without the headers of which a change has more than ten sources built anew.
        """
        # A compiler cache makes paths relative.
        listed = output_of("ninja", "-C", self.folder, "-t", "deps").splitlines()
        built = collections.Counter(os.path.normpath(self.folder / line.strip()) for line in listed)
        found = {}
        for entry in json.loads((self.folder / "compile_commands.json").read_text()):
            words, path = shlex.split(entry["command"]), pathlib.Path(entry["file"])
            kept = [one for before, one in zip(words, words[1:]) if re.match("-I|-D|-std|-isystem", one) or before == "-isystem"]
            for source in (path, *path.parent.glob("*.h")):
                found.setdefault(os.path.relpath(source, self.source), (str(source), kept))
        return [(name, *rest) for name, rest in sorted(found.items()) if built[rest[0]] <= 10]

    def build(self):
        """The programs and libraries whose bytes aren't as they were unchanged; None when it doesn't compile."""
        if exit_code([*BOUND, "cmake", "--build", self.folder, "-j", str(self.jobs)], 3600) != 0:
            return None
        hashes = {file: hashlib.sha256(file.read_bytes()).digest() for kind in ("bin", "lib") for file in (self.folder / kind).iterdir()}
        return {file: one for file, one in hashes.items() if self.unchanged.get(file) != one}

    def run(self, test, limit, **environment):
        """The seconds that a test took; None if it failed, the limit if it hung."""
        begin = time.monotonic()
        code = exit_code([*CONFINED, *test.command], limit, cwd=test.WORKING_DIRECTORY, env={
            **os.environ, **dict.fromkeys(("HOME", "TMPDIR", "XDG_STATE_HOME"), "/var/tmp"),
            **dict(one.split("=", 1) for one in test.ENVIRONMENT), **environment})
        seconds = limit if code is None else round(time.monotonic() - begin, 2)
        return seconds if code in (None, 0, test.SKIP_RETURN_CODE) else None

    def each(self, function, tests):
        """A test's name with what the function makes of it, for all. Tests wait for sound and other programs more than they compute."""
        with concurrent.futures.ThreadPoolExecutor(2 * self.jobs) as pool:
            return dict(zip((test.name for test in tests), pool.map(function, tests)))

    def lines_run(self, test):
        """By source the lines that a test runs, each a bit of a number, in a workshop whose programs count; None if that is unknown."""
        profiles = self.folder / "profiles" / test.name
        shutil.rmtree(profiles, ignore_errors=True)
        profiles.mkdir(parents=True)
        self.run(test, 500, LLVM_PROFILE_FILE=f"{profiles}/%m%c.profraw")
        programs = sorted(file for file in self.unchanged if os.access(file, os.X_OK) and not file.is_symlink())
        known, raw, lines = profiles / "all.profdata", [*profiles.iterdir()], {}
        # A test may let its programs write to no file.
        subprocess.run(["llvm-profdata", "merge", "-sparse", "-failure-mode=all", "-o", known, *raw], stderr=subprocess.DEVNULL)
        if known.exists():
            shown = output_of("llvm-cov", "export", "-format=lcov", f"-instr-profile={known}", programs[0],
                              *(word for file in programs[1:] for word in ("-object", file)), stderr=subprocess.DEVNULL)
            for kind, _, value in (line.partition(":") for line in shown.splitlines()):
                if kind == "SF":
                    file = os.path.relpath(value, self.source)
                elif kind == "DA" and not value.endswith(",0"):
                    lines[file] = lines.get(file, 0) | 1 << int(value.partition(",")[0])
        shutil.rmtree(profiles)
        return lines if lines or not raw else None

    def failure(self, tests, seconds):
        """Runs tests until one fails twice, and gives its name and how it ended. What fails once met something else."""
        failures = []

        def run(test):
            limit = 20 + 5 * seconds[test.name]
            took = [] if failures else [self.run(test, limit)]
            if took in ([None], [limit]):
                took.append(self.run(test, limit))
                if took[1] in (None, limit):
                    failures.append([test.name, "failed" if took[1] is None else "hung"])

        self.each(run, tests)
        return failures and failures[0]
