"""The completion scripts in the shells that they are for, and the manual page."""
import fcntl
import os
import select
import shutil
import subprocess
import termios
import time
import unittest

from host_test import HOST, HostTest

# How each shell is started without a user's settings, and reads the script.
SHELLS = {"bash": (["bash", "--norc", "--noprofile", "-i"], 'eval "$(rmthost completion bash)"'),
          "zsh": (["zsh", "-f", "-i"], 'autoload -Uz compinit; compinit -u -D; eval "$(rmthost completion zsh)"'),
          "fish": (["fish", "--no-config", "-i"], "rmthost completion fish | source")}
# What stands in for rmthost: it only answers the completion, and otherwise notes down what was typed.
STAND_IN = """#!/bin/sh
case $1 in completion) test $# != 2 || exec "$HOST" "$@" ;; list) test "$2" != --names || exec "$HOST" "$@" ;; esac
printf '%s\\n' "$@" >typed.part
mv typed.part typed
"""
P = "--platform virtual:machine.json "
# What is typed, and the arguments that come of it.
CASES = [("ver\t", ["version"]),
         ("--qui\trep\t-n 3 pl\t", ["--quiet", "repeat", "-n", "3", "play"]),
         ("comp\tfi\t--json", ["completion", "fish", "--json"]),
         ("run pl\tcontr\t", ["run", "play", "contract one.json"]),
         ("record --platform virtual:mach\t--render Rea\t", ["record", *P.split(), "--render", "Rear"]),
         (P + "record --render Headset\t", [*P.split(), "record", "--render", "Headset Speaker"]),
         (P + "repeat record Hör\t", [*P.split(), "repeat", "record", "Hörmuschel 🎧"]),
         (P + "play '{0.0.0}.{hea\t", [*P.split(), "play", "{0.0.0}.{headset}"]),
         ("record --plot dra\t--json", ["record", "--plot", "drawing.svg", "--json"])]


class Shells(HostTest):
    def setUp(self):
        super().setUp()
        for name in ("contract one.json", "drawing.svg"):
            self.write(name, b"")
        self.write("rmthost", STAND_IN.encode())
        os.chmod(os.path.join(self.directory, "rmthost"), 0o755)

    def await_file(self, name, terminal):
        """The lines of a file that the shell makes, which is removed."""
        path, deadline, shown = os.path.join(self.directory, name), time.monotonic() + 60, b""
        while not os.path.exists(path):
            self.assertLess(time.monotonic(), deadline, shown)
            if select.select([terminal], [], [], 0.05)[0]:
                shown += os.read(terminal, 10000)
        with open(path) as file:
            lines = file.read().splitlines()
        os.remove(path)
        return lines

    def complete(self, shell):
        if shutil.which(shell) is None:
            self.skipTest(f"there is no {shell}")
        command, script = SHELLS[shell]
        terminal, other_end = os.openpty()
        self.addCleanup(os.close, terminal)
        environment = {"PATH": self.directory + ":" + os.environ["PATH"], "HOME": self.directory, "HOST": HOST,
                       "TERM": "xterm", "LC_ALL": "C.UTF-8", "PS1": "$ "}
        running = subprocess.Popen(command, stdin=other_end, stdout=other_end, stderr=other_end, cwd=self.directory,
                                   env=environment, start_new_session=True,
                                   preexec_fn=lambda: fcntl.ioctl(0, termios.TIOCSCTTY, 0))
        self.addCleanup(running.wait)
        self.addCleanup(running.kill)
        os.close(other_end)
        os.write(terminal, (script + "; touch ready\r").encode())
        self.await_file("ready", terminal)
        for keys, arguments in CASES:
            with self.subTest(keys):
                os.write(terminal, f"rmthost {keys}\r".encode())
                self.assertEqual(self.await_file("typed", terminal), arguments)

    def test_bash(self):
        self.complete("bash")

    def test_zsh(self):
        self.complete("zsh")

    def test_fish(self):
        self.complete("fish")


if __name__ == "__main__":
    unittest.main()
