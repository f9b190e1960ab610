"""Disturbs record tests on a sound server of its own, at random moments, and looks whether settings come back:

    tests/host/disturbed_settings.py pulseaudio|pipewire [--count N] [--seed S]

The environment names RMTHOST and RMTHOST_MODULE, and PYTHONPATH the folder of sound_server.py. For each kind of disturbance it
counts how often settings were back at once or within two seconds, or when rmthost ran next, and how often they weren't, or were
other than they should be; any of these fails. Ends with 77 where there is no server.
"""
import argparse
import collections
import contextlib
import glob
import os
import random
import shutil
import signal
import subprocess
import sys
import time
import unittest

from settings_test import children
from sound_server import MIC, SINK, SKIPPED, SoundServer
from sound_server_test import pactl

HOST = [os.environ["RMTHOST"], "--platform", "pulse", "--module", os.environ["RMTHOST_MODULE"]]
RECORD = [*HOST, "--quiet", "record", "mic", "--render", "speaker"]
GUARDIAN_SECONDS = 2.0
LONGEST = 1.6  # of a test that nothing disturbs, and a little more
SIGNALS = ["INT", "TERM", "HUP", "QUIT", "USR1", "USR2", "ALRM", "PIPE", "XCPU", "ABRT", "SEGV"]
# At the root of this tree of processes is rmthost.
PARTS = {"rmthost": lambda process: [process], "module's process": lambda process: children(process, "module-process"),
         "guardian": lambda process: children(process, "guardian-process")}


def settings():
    return tuple(pactl("get-" + what, name) for what, name in [
        ("sink-volume", "speaker"), ("sink-mute", "speaker"), ("source-volume", "mic"), ("source-mute", "mic")])


def records():
    return glob.glob(os.path.join(os.environ["XDG_STATE_HOME"], "rmthost", "settings-*"))


def set_by_a_person(generator):
    left, right, mic = (f"{generator.randint(1, 99)}%" for _ in range(3))
    pactl("set-sink-volume", "speaker", left, right)
    pactl("set-sink-mute", "speaker", generator.choice("01"))
    pactl("set-source-volume", "mic", mic)
    return settings()


def start():
    return subprocess.Popen(RECORD, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def kill(names):
    def disturb(generator, *_):
        with start() as running:
            time.sleep(generator.uniform(0, LONGEST))
            processes = [process for name in names for process in PARTS[name](running.pid)]
            for process in processes:
                with contextlib.suppress(ProcessLookupError):
                    os.kill(process, signal.SIGKILL)
    return disturb


def send(generator, *_):
    with start() as running:
        time.sleep(generator.uniform(0, LONGEST))
        running.send_signal(getattr(signal, "SIG" + generator.choice(SIGNALS)))


def several(generator, *_):
    many = []
    for _ in range(generator.randint(2, 4)):
        many.append(start())
        time.sleep(generator.uniform(0, 0.5))
    if generator.random() < 0.5:
        generator.choice(many).kill()
    for running in many:
        running.wait(60)


def hang_server(generator, _, server):
    with start():
        time.sleep(generator.uniform(0, LONGEST))
        os.kill(server.pid, signal.SIGSTOP)
        time.sleep(generator.uniform(0, 3))
        os.kill(server.pid, signal.SIGCONT)


def restart_server(generator, before, server):
    """What a server remembers may be older than `before`, and is then left alone as a person's; so this one remembers nothing."""
    with start() as running:
        has_changed = await_change(before, generator.uniform(0, LONGEST))
        server.end(generator.choice([signal.SIGTERM, signal.SIGKILL]))
        shutil.rmtree(os.path.join(os.environ["XDG_STATE_HOME"], "wireplumber"), ignore_errors=True)
        time.sleep(generator.uniform(0, 4))
        server.start()
        running.wait(60)
    return before if has_changed else settings()


def unplug(generator, before, server):
    """The speaker goes, and with it the microphone that hears it, and both come back."""
    with start() as running:
        has_changed = await_change(before, generator.uniform(0, LONGEST))
        for line in pactl("list", "short", "modules").splitlines():
            number, *module = line.split("\t")
            if any(name in " ".join(module) for name in ("source_name=mic", "sink_name=speaker")):
                with contextlib.suppress(subprocess.CalledProcessError):
                    pactl("unload-module", number)
        time.sleep(generator.uniform(0, 3))
        for module in (SINK.format("speaker"), MIC):
            pactl("load-module", *module.split())
        server.await_endpoints()
        running.wait(60)
    return before if has_changed else settings()


def await_change(before, seconds):
    """Waits, and says whether the test may have changed something by then."""
    time.sleep(seconds)
    return bool(records()) or settings() != before


def turn_by_hand(generator, before, _):
    """While the test plays; it is what must be there afterwards when the test is killed, but not what the test has set."""
    with start() as running:
        for _ in range(500):
            if settings()[2] != before[2]:
                break
            time.sleep(0.005)
        pactl("set-sink-volume", "speaker", "33%", "44%")
        for name in ("rmthost", "module's process"):
            for process in PARTS[name](running.pid):
                os.kill(process, signal.SIGKILL)
    return (by_hand(), *before[1:])


def by_hand():
    """What pactl says of the speaker with this volume, however the server words it."""
    said = pactl("get-sink-volume", "speaker")
    assert "33%" in said and "44%" in said, said
    return said


KINDS = {"rmthost killed": kill(["rmthost"]), "module's process killed": kill(["module's process"]),
         "guardian killed": kill(["guardian"]), "rmthost and the module's process killed": kill(["rmthost", "module's process"]),
         "rmthost and the guardian killed": kill(["guardian", "rmthost"]),
         "module's process and guardian killed": kill(["module's process", "guardian"]),
         "all three killed": kill(["guardian", "module's process", "rmthost"]), "a signal": send,
         "two to four tests at once": several, "server stopped for a while": hang_server,
         "server ends and comes back": restart_server, "endpoints removed and back": unplug,
         "volume turned by hand, and killed": turn_by_hand}


def disturb_once(kind, generator, server):
    """Returns when settings were as they should be."""
    before = set_by_a_person(generator)
    expected = KINDS[kind](generator, before, server) or before
    end = time.monotonic() + GUARDIAN_SECONDS
    while time.monotonic() < end:
        # As long as a record is there, somebody is about to put back.
        if not records() and settings() == expected:
            return "at once or within 2 s"
        time.sleep(0.05)
    subprocess.run([*HOST, "--quiet", "list"], check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    if not records() and settings() == expected:
        return "when rmthost ran next"
    print(f"{kind}: {settings()} instead of {expected}", file=sys.stderr)
    return "not"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("server", choices=["pulseaudio", "pipewire"])
    parser.add_argument("--count", type=int, default=260)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", choices=KINDS, nargs="*", default=list(KINDS))
    arguments = parser.parse_args()
    generator = random.Random(arguments.seed)
    counts = collections.defaultdict(collections.Counter)
    try:
        with SoundServer(arguments.server) as server:
            os.environ.update(server.environment)
            for number in range(arguments.count):
                kind = arguments.only[number % len(arguments.only)]
                counts[kind][disturb_once(kind, generator, server)] += 1
    except unittest.SkipTest as reason:
        print("SKIPPED:", reason, file=sys.stderr)
        return SKIPPED
    whens = ["at once or within 2 s", "when rmthost ran next", "not"]
    print("| Disturbance | Runs | Back " + " | ".join(whens) + " |\n|---|---|---|---|---|")
    for kind, counted in counts.items():
        print(f"| {kind} | {counted.total()} | " + " | ".join(str(counted[when]) for when in whens) + " |")
    return 1 if any(counted["not"] for counted in counts.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
