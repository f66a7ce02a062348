"""Launchers, a second start, odd port files, broken resources."""

import os
from pathlib import Path

import road
from programs import CLIENT_NAME
from waiting import wait_for


class Environment(road.Road):
    def test_one_client_whoever_started_it(self):
        """Neither its launcher nor an editor of its name is taken for a client that runs; a second
        start brings the first one to the front."""
        self.service()
        editor = ["/usr/bin/python3", "-c", "import signal; signal.pause()", CLIENT_NAME]
        self.desktop.processes.start(editor, self.desktop.log("editor"))
        client = self.client(start=False)
        # Its pages are newer than those of the package before.
        page = Path(os.environ["XDG_DATA_HOME"], "ZorvaneLink", "portal", "index.html")
        for folder, text in ((page.parent, "old"), (client.resources / "portal", "new")):
            folder.mkdir(parents=True)
            (folder / page.name).write_text(text)
        client.start("sh", "-c", '"$0"; true')
        self.sees(client, "Ready")
        self.assertEqual(page.read_text(), "new")
        button = client.widgets.find("push button", "Minimize", road.SECONDS)
        button.press()
        wait_for("the first client behind", lambda: not button.in_front(), road.SECONDS)
        second = self.client("second")
        wait_for("the end of the second start", lambda: not second.alive(), road.SECONDS)
        self.assertEqual(second.process.returncode, 0)
        wait_for("the first client in front", button.in_front, road.SECONDS)

    def test_odd_port_files_leave_the_standard_port(self):
        self.service("--port-file", str(self.desktop.sockets / "port"))
        elsewhere = self.desktop.sockets / "elsewhere"
        elsewhere.write_text("40000\n")
        for meaning, make in {
            "missing": lambda: None,
            "text": lambda: road.PORT_FILE.write_text("service\n"),
            "no port": lambda: road.PORT_FILE.write_text("0\n"),
            "the last port": lambda: road.PORT_FILE.write_text("65535\n"),
            "a link": lambda: road.PORT_FILE.symlink_to(elsewhere),
            "a pipe": lambda: os.mkfifo(road.PORT_FILE),
        }.items():
            with self.subTest(meaning):
                road.PORT_FILE.unlink(missing_ok=True)
                make()
                client = self.client()
                self.sees(client, "Ready")
                client.stop()

    def test_broken_resources_do_not_stop_the_start(self):
        self.service()
        with self.subTest("control file without JSON"):
            client = self.client(control='{"LANGUAGE": 1')
            self.sees(client, "Ready")
            client.stop()
        with self.subTest("resource folder that cannot be read"):
            client = self.client("unreadable", start=False)
            client.resources.rmdir()
            client.resources.write_text("no folder\n")
            client.start()
            self.sees(client, "Ready")


if __name__ == "__main__":
    road.main()
