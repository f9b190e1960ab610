#!/usr/bin/env python3
"""A private sound server: render endpoints `speaker` and `headset`, and `mic` in front of the speaker.

As a command, `sound_server.py pulseaudio|pipewire COMMAND...` runs the command with a server of its own and ends with its
exit code. As a module, `with SoundServer(kind) as server:` has one for as long as the block lasts, `server.environment` is
for the programs that shall use it, and `server.end()` and `server.start()` let it go and come back. The server lies in a directory of its own and ends with the process that started it,
however that ends. Where no server can be had the command ends with 77, and the block raises unittest.SkipTest; either is
a failure when ZQRMT_REQUIRE_SOUND_SERVERS is set.
"""
import contextlib
import ctypes
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
import unittest

SKIPPED = 77
START_SECONDS = 20
STOP_SECONDS = 5
PR_SET_PDEATHSIG = 1
libc = ctypes.CDLL(None)

SINK = "module-null-sink sink_name={} rate=48000 channels=2"
MIC = "module-remap-source source_name=mic master=speaker.monitor"
# Nothing is activated on this bus: there are no folders with services.
BUS = """<busconfig><type>session</type><listen>unix:path={}</listen><auth>EXTERNAL</auth>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>"""


class Unavailable(Exception):
    """Why there is no server."""


class SoundServer:
    """`environment` names the server to libpulse, `pid` is the process that answers, `kind` what it is."""

    def __init__(self, kind):
        self.kind, self.pid, self.processes = kind, None, []

    def __enter__(self):
        self.directory = tempfile.mkdtemp(prefix="zqrmt-sound-")
        try:
            self.make_environment()
            self.start()
        except Exception as error:
            reason = f"no {self.kind}: {error}" + self.log_tail()
            self.__exit__()
            if os.environ.get("ZQRMT_REQUIRE_SOUND_SERVERS"):
                raise Unavailable(reason) from error
            raise unittest.SkipTest(reason) from error
        return self

    def __exit__(self, *_):
        self.end()
        shutil.rmtree(self.directory, ignore_errors=True)

    def end(self, by=signal.SIGTERM):
        for process in reversed(self.processes):
            with contextlib.suppress(ProcessLookupError):
                # A test may have stopped it in its tracks.
                process.send_signal(signal.SIGCONT)
                process.send_signal(by)
            try:
                process.wait(STOP_SECONDS)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.processes.clear()

    def make_environment(self):
        run = self.path("run")
        for folder in (run, self.path("home")):
            os.mkdir(folder, 0o700)
        kept = {key: value for key, value in os.environ.items() if not key.startswith(("PULSE_", "PIPEWIRE_", "DBUS_"))}
        kept.pop("DISPLAY", None)
        self.environment = {**kept, "XDG_RUNTIME_DIR": run, "HOME": self.path("home"),
                            "XDG_CONFIG_HOME": self.path("home", "config"), "XDG_STATE_HOME": self.path("home", "state")}

    def start(self):
        self.deadline = time.monotonic() + START_SECONDS
        server = self.path("run", "pulse", "native")
        {"pulseaudio": self.start_pulseaudio, "pipewire": self.start_pipewire}[self.kind](server)
        self.pid = self.processes[-1].pid
        self.environment.update(PULSE_SERVER="unix:" + server, ZQRMT_SOUND_SERVER=self.kind,
                                ZQRMT_SOUND_SERVER_PID=str(self.pid))
        if self.kind == "pipewire":
            for module in (SINK.format("speaker"), SINK.format("headset"), MIC):
                self.pactl("load-module", *module.split())
        self.await_endpoints()

    def await_endpoints(self):
        self.deadline = time.monotonic() + START_SECONDS
        self.poll(self.mic_hears_the_speaker, "the microphone")
        for flow, name in (("sink", "speaker"), ("source", "mic")):
            self.poll(lambda: self.makes_default(flow, name), "the default " + flow)

    def mic_hears_the_speaker(self):
        def rows(kind):
            return [line.split("\t") for line in self.pactl("list", "short", kind).splitlines()]
        sources = {name: index for index, name, *_ in rows("sources")}
        return "mic" in sources and sources.get("speaker.monitor") in [source for _, source, *_ in rows("source-outputs")]

    def makes_default(self, flow, name):
        # PipeWire refuses it until its session manager is up.
        with contextlib.suppress(Unavailable):
            self.pactl(f"set-default-{flow}", name)
        return self.pactl(f"get-default-{flow}").strip() == name

    def start_pulseaudio(self, _):
        script = [".fail", *("load-module " + SINK.format(name) + " norewinds=1" for name in ("speaker", "headset")),
                  "load-module " + MIC, "load-module module-stream-restore", "load-module module-native-protocol-unix"]
        with open(self.path("server.pa"), "w") as file:
            file.write("\n".join(script) + "\n")
        self.spawn("pulseaudio", "-n", "-F", file.name, "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                   "--disallow-exit=yes", "--realtime=no", "--high-priority=no", "--log-target=stderr")
        self.await_socket(self.path("run", "pulse", "native"))

    def start_pipewire(self, server):
        bus = self.path("run", "bus")
        with open(self.path("bus.conf"), "w") as file:
            file.write(BUS.format(bus))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=" + bus
        self.spawn("dbus-daemon", "--config-file=" + file.name, "--nofork", "--nopidfile")
        self.await_socket(bus)
        # Bluetooth has nothing to do here, and its wait for a login session ends WirePlumber where systemd doesn't run.
        bluetooth = self.path("home", "config", "wireplumber", "bluetooth.lua.d")
        os.makedirs(bluetooth, exist_ok=True)
        with open(os.path.join(bluetooth, "80-disabled.lua"), "w") as file:
            file.write("bluez_monitor.enabled = false\n")
        self.spawn("pipewire")
        self.await_socket(self.path("run", "pipewire-0"))
        self.spawn("wireplumber")
        self.spawn("pipewire-pulse")
        self.await_socket(server)

    def path(self, *names):
        return os.path.join(self.directory, *names)

    def spawn(self, *command):
        with open(self.path(command[0] + ".log"), "w") as log:
            self.processes.append(subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=log,
                                                   stderr=log, preexec_fn=end_with_parent))

    def pactl(self, *arguments):
        done = subprocess.run(["pactl", *arguments], env={**self.environment, "LC_ALL": "C"}, capture_output=True,
                              text=True, timeout=max(0.1, self.deadline - time.monotonic()))
        if done.returncode != 0:
            raise Unavailable(f"pactl {' '.join(arguments)}: {done.stderr.strip()}")
        return done.stdout

    def await_socket(self, path):
        def answers():
            with socket.socket(socket.AF_UNIX) as client, contextlib.suppress(OSError):
                client.connect(path)
                return True
        self.poll(answers, os.path.basename(path))

    def poll(self, condition, what):
        while not condition():
            ended = [process.args[0] for process in self.processes if process.poll() is not None]
            if ended:
                raise Unavailable(f"{ended[0]} has ended")
            if time.monotonic() > self.deadline:
                raise Unavailable(f"{what} isn't there after {START_SECONDS} s")
            time.sleep(0.02)

    def log_tail(self):
        lines = []
        for name in sorted(os.listdir(self.directory)):
            if name.endswith(".log"):
                with open(self.path(name), errors="replace") as file:
                    lines += [f"\n  {name}: {line.rstrip()}" for line in file.readlines()[-5:]]
        return "".join(lines)


def end_with_parent():
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def main():
    # A request to end is an exception, so that the server is taken down on its way.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    try:
        with SoundServer(sys.argv[1]) as server:
            command = subprocess.Popen(sys.argv[2:], env=server.environment, preexec_fn=end_with_parent)
            try:
                code = command.wait()
            finally:
                command.kill()
                command.wait()
        return code if code >= 0 else 128 - code
    except unittest.SkipTest as reason:
        print("SKIPPED:", reason, file=sys.stderr)
        return SKIPPED
    except Unavailable as reason:
        print(reason, file=sys.stderr)
        return 1


if __name__ == "__main__":
    sys.exit(main())
