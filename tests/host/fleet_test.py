"""The example of docs/fleet.md: tests on machines that Ansible reaches, and what a query finds in what they left."""
import json
import os
import subprocess
import sys
import unittest

from host_test import FAIL, HOST, MACHINE, NO_ENDPOINT, HostTest, require

EXAMPLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "docs", "examples", "fleet")


class Fleet(HostTest):
    def failures(self):
        """The rows of the query."""
        with open(os.path.join(EXAMPLE, "failures.sql")) as query:
            found = subprocess.run(["sqlite3", "-json", ":memory:"], stdin=query, check=True, capture_output=True,
                                   cwd=os.path.join(self.directory, "results"))
        return [tuple(row.values()) for row in json.loads(found.stdout or "[]")]

    def test_tells_which_machines_failed_and_on_what(self):
        require(self, "ansible-playbook", "sqlite3")
        speaker, microphone = MACHINE["endpoints"][0], MACHINE["endpoints"][5]
        machines = {"good": [speaker, microphone], "silent": [speaker, {**microphone, "hears": []}], "missing": [speaker]}
        hosts = {}
        for name, endpoints in machines.items():
            self.write(name, json.dumps({**MACHINE, "endpoints": endpoints}).encode())
            hosts[name] = {"record": ["Microphone", "--render", "Speaker", "--platform",
                                      "virtual:" + os.path.join(self.directory, name)]}
        settings = {"ansible_connection": "local", "ansible_python_interpreter": sys.executable, "rmthost": HOST}
        self.write("inventory.json", json.dumps({"all": {"vars": settings, "hosts": hosts}}).encode())
        os.mkdir(os.path.join(self.directory, "tmp"))
        ran = subprocess.run(
            ["ansible-playbook", "-i", "inventory.json", os.path.join(EXAMPLE, "test_sound.yml"), "-e",
             json.dumps({"results": os.path.join(self.directory, "results")})], cwd=self.directory, capture_output=True,
            text=True, timeout=110, env={**os.environ, "HOME": self.directory, "LC_ALL": "C.UTF-8",
                                         "TMPDIR": os.path.join(self.directory, "tmp")})
        for name, code in (("silent", FAIL), ("missing", NO_ENDPOINT)):
            self.assertRegex(ran.stdout, rf"fatal: \[{name}\].*exit code {code}\.")
        self.assertRegex(ran.stdout, r"\ngood +: .* unreachable=0 +failed=0 ")
        self.assertEqual((ran.returncode, os.listdir(os.path.join(self.directory, "tmp"))), (2, []))
        missing = ("missing", "run", "No endpoint is called 'Microphone'.")
        silent = ("silent", "level", "Silence: nothing at all was heard.")
        self.assertEqual(self.failures(), [missing, silent])
        for name, trouble in (("good", None), ("silent", "failure"), ("missing", "error")):
            found = {trouble for trouble, _ in self.suites(f"results/{name}.xml")[0].values()} - {None, "skipped"}
            self.assertEqual(found, {trouble} - {None})
        os.remove(os.path.join(self.directory, "results", "good.json"))
        self.assertEqual(self.failures(), [("good", "run", "There is no document."), missing, silent])


if __name__ == "__main__":
    unittest.main()
