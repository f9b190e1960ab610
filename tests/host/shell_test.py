"""The completion scripts in the shells that they are for, and the manual page."""
import fcntl
import json
import os
import re
import select
import shutil
import subprocess
import termios
import time
import unittest

from host_test import HOST, HostTest, endpoint

MAN_PAGE = os.path.join(os.path.dirname(__file__), "../../docs/rmthost.1")
# How each shell is started without a user's settings, and reads the script.
SHELLS = {"bash": (["bash", "--norc", "--noprofile", "-i"], 'eval "$(rmthost completion bash)"'),
          "zsh": (["zsh", "-f", "-i"], 'autoload -Uz compinit; compinit -u -D; eval "$(rmthost completion zsh)"'),
          "fish": (["fish", "--no-config", "-i"], "rmthost completion fish | source")}
# What stands in for rmthost: it only answers the completion, and otherwise notes down what was typed.
STAND_IN = """#!/bin/sh
case $1 in __complete) exec "$HOST" "$@" ;; completion) test $# != 2 || exec "$HOST" "$@" ;; esac
printf '%s\\n' "$@" >typed.part
mv typed.part typed
"""
P = "--platform virtual:machine.json "
# What is typed, and the arguments that come of it.
CASES = [("ver\t", ["version"]),
         ("--qui\trep\t-n 3 pl\t", ["--quiet", "repeat", "-n", "3", "play"]),
         ("comp\tfi\t--json", ["completion", "fish", "--json"]),
         ("run pl\tcontr\t", ["run", "play", "contract one.json"]),
         ("check 'evi\t", ["check", "evil$(touch PWNED)"]),
         ("record --platform virtual:mach\t--render Rea\t", ["record", *P.split(), "--render", "Rear"]),
         (P + "record --render=Headset\t", [*P.split(), "record", "--render=Headset Speaker"]),
         (P + "record --render Headset\\ S\t", [*P.split(), "record", "--render", "Headset Speaker"]),
         (P + "record --render \"Headset S\t", [*P.split(), "record", "--render", "Headset Speaker"]),
         (P + "repeat record Hör\t", [*P.split(), "repeat", "record", "Hörmuschel 🎧"]),
         (P + "play '{0.0.0}.{hea\t", [*P.split(), "play", "{0.0.0}.{headset}"]),
         ("record --plot=dra\t--json", ["record", "--plot=drawing.svg", "--json"]),
         ("record --plot dra\t--json", ["record", "--plot", "drawing.svg", "--json"])]
# Each is the one render endpoint of a machine, and the name of a file.
HOSTILE_NAMES = ["evil$(touch PWNED)x", "evil`touch PWNED`x", "a;touch PWNED", "a|touch PWNED&", "<(touch PWNED)",
                 "!;touch PWNED;", "';touch PWNED;'", "it's", "'", 'say "hi"', "!\"'\\$`", "back\\slash\\",
                 "two  words ", "-dash", "--module=x", "~", "~/x", "=ls", "#x", "$HOME", "*", "?[a-z]", "{a,b}",
                 "a!b!!", "^a^b", "%s:=@x", "\u00a0é\U0001f3a7", "\\';touch PWNED;'", '\\";touch PWNED;"', "$'x'",
                 "x\\$(touch PWNED)"]
QUOTES = {"bash": ["", "'", '"', "$'", '$"'], "zsh": ["", "'", '"', "$'"], "fish": ["", "'", '"']}
# Which names aren't offered for a word that begins with this quote. Fish completes an unquoted word with a ~ in front only
# as somebody's home.
LEFT_OUT = {("bash", "'"): "'", ("bash", '"'): "[\"\\\\$`!]", ("bash", "$'"): "", ("bash", '$"'): "",
            ("zsh", "$'"): "", ("fish", ""): "^~"}
# Words that are typed, and the lines of the answer: the last word is the one that is completed.
ANSWERS = [(["--platform", "pulse:unix:/none", "play", ""], ""),
           (["--platform", "virtual:none.json", "play", ""], ""),
           (["--platform", "virtual:odd.json", "play", ""],
            "two  words\tb\\\nb\\\ttwo  words\na\tnew<U+000A>line<U+0009>\nc\t-dash\n"),
           (["--platform=virtual:odd.json", "play", "--", "-"], "-dash\tc\n"),
           (["--platform", "virtual:odd.json", "record", "--render=C"], "--render=c\t-dash\n"),
           (["--platform", "virtual:odd.json", "record", ""], ""),
           (["--platform", "virtual:m"], "\tfile\tvirtual:\n"),
           (["record", "--plot=a=b"], "\tfile\t--plot=\n"),
           (["run", "play", ""], "\tfile\t\n"),
           (["run", "play", "-", ""], ""),
           (["run", ""], "play\nrecord\n"), (["help", "lis"], "list\tShow the endpoints\n"),
           (["repeat", "play", "--fail"], "--fail-fast\tEnd at the first run that doesn't pass\n"),
           (["play", "--fail"], ""), (["list", "--names"], ""), (["man"], "")]


class Answers(HostTest):
    def test_words(self):
        odd = {"b\\": "two  words", "a": "new\nline\t", "c": "-dash"}
        self.write("odd.json", json.dumps({"endpoints": [endpoint("render", *item) for item in odd.items()]}).encode())
        for words, lines in ANSWERS:
            with self.subTest(words):
                ran = subprocess.run([HOST, "__complete", *words], cwd=self.directory, capture_output=True)
                self.assertEqual((ran.returncode, ran.stdout.decode(), ran.stderr), (0, lines, b""))


class Shells(HostTest):
    def setUp(self):
        super().setUp()
        for name in ("contract one.json", "drawing.svg", "evil$(touch PWNED)"):
            self.write(name, b"")
        self.write("rmthost", STAND_IN.encode())
        os.chmod(os.path.join(self.directory, "rmthost"), 0o755)

    def await_file(self, name, terminal, what):
        """The lines of a file that the shell makes, which is removed."""
        path, deadline, shown = os.path.join(self.directory, name), time.monotonic() + 60, b""
        while not os.path.exists(path):
            self.assertLess(time.monotonic(), deadline, (what, shown))
            if select.select([terminal], [], [], 0.01)[0]:
                shown += os.read(terminal, 10000)
        with open(path) as file:
            lines = file.read().splitlines()
        os.remove(path)
        return lines

    def start_shell(self, shell):
        if shutil.which(shell) is None:
            self.skipTest(f"there is no {shell}")
        command, script = SHELLS[shell]
        terminal, other_end = self.open_terminal()
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
        self.await_file("ready", terminal, script)
        return terminal

    def complete(self, shell):
        terminal = self.start_shell(shell)

        def check(keys, arguments):
            os.write(terminal, f"rmthost {keys}\r".encode())
            self.assertEqual(self.await_file("typed", terminal, keys), arguments, keys)
            self.assertFalse(os.path.exists(os.path.join(self.directory, "PWNED")), keys)

        for keys, arguments in CASES:
            check(keys, arguments)
        for name in HOSTILE_NAMES:
            file = "f" + name.replace("/", "")
            self.write(file, b"")
            keys, arguments = "record", ["record"]
            for begin in ("", "ev"):
                machine = f"{begin}m.json"
                own = endpoint("render", begin + name, begin + name)
                self.write(machine, json.dumps({"endpoints": [own]}).encode())
                keys += f" --platform virtual:{machine}"
                arguments += ["--platform", "virtual:" + machine]
                for quote in QUOTES[shell]:
                    isLeftOut = re.search(LEFT_OUT.get((shell, quote), "$^"), begin + name)
                    # Whatever stands behind the cursor then has to end the quote.
                    keys += f" --render {quote}{begin}\t" + (f"x{quote[-1:]}" if isLeftOut else "")
                    arguments += ["--render", begin + ("x" if isLeftOut else name)]
            # The shells quote files themselves; zsh forgets to end '...' behind a name that ends in a quote.
            for quote in ("", '"'):
                keys += f" --plot {quote}f\t"
                arguments += ["--plot", file]
            check(keys, arguments)
            os.remove(os.path.join(self.directory, file))
        if shell == "bash":  # The others complete commands behind a $(.
            self.write("pwn", b"#!/bin/sh\ntouch PWNED\n")
            os.chmod(os.path.join(self.directory, "pwn"), 0o755)
            self.write("m.json", json.dumps({"endpoints": [endpoint("render", "evil", "evil$(pwn")]}).encode())
            check("--platform virtual:m.json play evil$(\t)", ["--platform", "virtual:m.json", "play", "evil"])
        two = ["it is <(touch PWNED) one", "it is <(touch PWNED) two"]
        self.write("m.json", json.dumps({"endpoints": [endpoint("render", name, name) for name in two]}).encode())
        for quote in ("", "'", '"'):
            check(f"--platform virtual:m.json play {quote}\tt\t", ["--platform", "virtual:m.json", "play", two[1]])

    def test_bash(self):
        self.complete("bash")

    def test_zsh(self):
        self.complete("zsh")

    def test_fish(self):
        self.complete("fish")


class ManPage(unittest.TestCase):
    """The page is written by hand, so it is held to what the help says."""

    def read_help(self, *command):
        """The commands, the options and the exit codes that a help lists."""
        text = subprocess.run([HOST, *command, "--help"], capture_output=True, text=True, check=True).stdout
        listed = {title: re.findall(r"^  (\S+)", below, re.M)
                  for title, below in re.findall(r"^([A-Z][a-z ]+):\n((?:  .*\n)+)", text, re.M)}
        options = {name for names in listed["Options"] for name in names.split(",")}
        return listed.get("Subcommands", []), options, listed.get("Exit codes", [])

    def read_page(self):
        """{section: {first word of an item: the options in it and in the lists below it}}"""
        page, depth = {}, 0
        with open(MAN_PAGE) as file:
            for line in file:
                macro, _, rest = line.strip().partition(" ")
                depth += (macro == ".Bl") - (macro == ".El")
                if macro == ".Sh":
                    items = page.setdefault(rest, {})
                elif macro == ".It":
                    if depth == 1:
                        named = items.setdefault(re.sub("Cm |Fl ", "", rest).split()[0], set())
                    named |= {"-" + name for name in re.findall(r"Fl (\S+)", rest)}
        return page

    def test_names_what_the_help_names(self):
        page = self.read_page()
        commands, options, exit_codes = self.read_help()
        self.assertEqual([*page["COMMANDS"]], commands)
        self.assertEqual([*page["EXIT STATUS"]], exit_codes)
        self.assertEqual(set().union(*page["OPTIONS"].values()), options)
        for command in commands:
            inner_commands, own, _ = self.read_help(command)
            self.assertEqual(page["COMMANDS"][command], own - options, command)
            for inner in inner_commands:
                # The page says of these that they take what the command of the same name takes.
                inner_options = self.read_help(command, inner)[1] - options
                self.assertLessEqual(inner_options, page["COMMANDS"][inner], (command, inner))


if __name__ == "__main__":
    unittest.main()
