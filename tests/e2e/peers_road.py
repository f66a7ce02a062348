"""Who is at the other end: another user on the port, peers that leave at once, a folder in the port
file's place."""

import os
import shutil
import subprocess
from pathlib import Path

import road
from waiting import wait_for

_NOBODY = ["setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"]
# Greets whoever connects with a sign of life and a gateway of its own, and prints what it is sent.
_PEER = """
import socket, struct, sys
text = (b'{"profileName":"Head office","type":"reply","subtype":"gatewayList","gatewayList":'
        b'[{"name":"planted","addr":"192.0.2.66","detectPort":"1","sslPort":"1"}]}')
listener = socket.create_server(("127.0.0.1", 35421))
print("listening", flush=True)
while True:
    client, _ = listener.accept()
    try:
        client.sendall(struct.pack("=4sii", b"deaf", 0, 0))
        client.sendall(struct.pack("=4sii", b"deaf", 2, len(text)) + text)
        while sys.argv[1] == "stays" and (heard := client.recv(4096)):
            print("heard", heard, flush=True)
    except OSError:
        pass  # the other end was faster
    client.close()
    print("closed", flush=True)
"""


class Peers(road.Road):
    _services = 0  # each has a record of its own

    def _name(self, name):
        return name  # the path of a socket is short

    def test_another_users_listener_is_told_nothing_and_believed_nothing(self):
        self._needs_another_user()
        for manner in ("stays", "leaves"):
            with self.subTest(manner):
                peer, log = self._peer(manner, _NOBODY)
                client = self._client_with_automatic_login(manner)
                wait_for("two tries", lambda: log.read_text().count("closed") > 1, road.SECONDS)
                self.sees(client, road.LOOKING)
                self.assertNotIn("heard", log.read_text())
                if manner == "stays":
                    told = lambda: "uid 65534" in client.log.read_text()  # noqa: E731
                    wait_for("the stranger in the log", told, road.SECONDS)
                self._is_replaced(peer, client)

    def test_a_peer_of_ours_that_speaks_and_leaves_at_once(self):
        peer, log = self._peer("leaves", [])
        client = self._client_with_automatic_login("client")
        wait_for("two tries", lambda: log.read_text().count("closed") > 1, road.SECONDS)
        # One of our own may be believed as far as it is heard.
        self._is_replaced(peer, client, believed=True)

    def test_a_folder_in_the_port_files_place(self):
        road.PORT_FILE.mkdir()
        self.addCleanup(shutil.rmtree, road.PORT_FILE, ignore_errors=True)
        client = self._client_with_automatic_login("client")
        self.sees(client, road.LOOKING)
        self.sees_online_with(self.service(), client)

    def _needs_another_user(self):
        if subprocess.run([*_NOBODY, "true"], check=False, capture_output=True).returncode == 0:
            return
        print("No other user can be had here.", flush=True)
        if os.environ.get("CI") == "true":
            self.fail("skipped where nothing may be")
        self.skipTest("no other user")

    def _peer(self, manner, as_user):
        log = self.desktop.log(f"{self._testMethodName}-{manner}-peer")
        argv = [*as_user, "/usr/bin/python3", "-I", "-c", _PEER, manner]
        peer = self.desktop.processes.start(argv, log)
        wait_for("a listener", lambda: "listening" in log.read_text(), road.SECONDS)
        return peer, log

    def _client_with_automatic_login(self, name):
        self.write_profile()
        settings = Path(os.environ["XDG_CONFIG_HOME"], "ZorvaneLink", "AppConfig.ini")
        settings.write_text(settings.read_text().replace("AutoLogin=false", "AutoLogin=true"))
        return self.client(name)

    def _is_replaced(self, peer, client, believed=False):
        """By the real service, to which the client then goes online."""
        self.desktop.processes.stop(peer)
        self._services += 1
        service = self.service(name=f"s{self._services}")
        self.sees_online_with(service, client, believed)
        client.stop()
        service.stop()

    def sees_online_with(self, service, client, believed=False):
        self.sees_online(client)
        self.assertEqual(len(service.messages("start")), 1)
        settings = Path(os.environ["XDG_CONFIG_HOME"], "ZorvaneLink", "AppConfig.ini")
        if not believed:
            self.assertNotIn("planted", settings.read_text())


if __name__ == "__main__":
    road.main()
