"""A sound server that answers every request in time, but slowly: slow_server_test.py LIBAUDIOPLATFORM"""
import contextlib
import ctypes
import json
import os
import select
import socket
import sys
import tempfile
import threading
import time
import unittest

LIBRARY = sys.argv.pop()
SERVICE_NOT_RUNNING = -2004287472


class SlowWay:
    """A socket in front of the server's; each request takes `seconds` on its way."""

    def __init__(self, directory):
        self.seconds, self.address = 0, os.path.join(directory, "slow")
        # Memory that the two share would have to go the same way.
        os.environ["PULSE_CLIENTCONFIG"] = os.path.join(directory, "client.conf")
        with open(os.environ["PULSE_CLIENTCONFIG"], "w") as settings:
            settings.write("enable-shm = no\n")
        self.server = os.environ["PULSE_SERVER"].removeprefix("unix:")
        self.listening = socket.socket(socket.AF_UNIX)
        self.listening.bind(self.address)
        self.listening.listen()
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        with self.listening, self.listening.accept()[0] as client, socket.socket(socket.AF_UNIX) as server:
            server.connect(self.server)
            other = {client: server, server: client}
            while True:
                for source in select.select(list(other), [], [])[0]:
                    if source is client:
                        time.sleep(self.seconds)  # whatever comes meanwhile goes along
                    data = source.recv(1 << 20)
                    if not data:
                        return
                    with contextlib.suppress(OSError):  # that one has just ended
                        other[source].sendall(data)


class SlowServer(unittest.TestCase):
    def status(self, seconds):
        """Of asking the server for its name and all endpoints: four requests in one operation."""
        with tempfile.TemporaryDirectory(prefix="zqrmt-slow-") as directory:
            way = SlowWay(directory)
            self.assertEqual(self.platform.AudioPlatformInitialize(f"pulse:unix:{way.address}".encode()), 0)
            way.seconds = seconds
            text = self.platform.AudioPlatformState()
            self.platform.AudioPlatformUninitialize()
            return json.loads(ctypes.string_at(text))["status"]

    def test_an_operation_ends_although_each_answer_comes_in_time(self):
        self.platform = ctypes.CDLL(LIBRARY)
        self.platform.AudioPlatformState.restype = ctypes.c_void_p
        self.assertEqual(self.status(0.3), 0, "slow isn't gone")
        self.assertEqual(self.status(1.6), SERVICE_NOT_RUNNING)


if __name__ == "__main__":
    unittest.main()
