"""Connect, look at the tunnel, disconnect, leave."""

import road
from waiting import wait_for


class Session(road.Road):
    def test_connect_show_the_tunnel_and_disconnect(self):
        service, client = self.online()
        self.sees_counters_grow(client)
        self.press_tab(client, "Interface")
        self.sees(client, "10.8.0.2", "fd00:8::2")
        self.press_tab(client, "Route")
        client.widgets.find("table cell", "10.20.0.0", road.SECONDS)

        client.widgets.press("push button", road.DISCONNECT)
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        self.assertNotIn("10.8.0.2", client.widgets.texts())

        # The same once more: nothing of the first session is left.
        self.go_online(client)
        starts = service.messages("start")
        self.assertEqual([start["profileName"] for start in starts], ["Head office"] * 2)
        # The one thing that is said only once in a run.
        self.assertEqual([start.pop("hasPromotedUpdate") for start in starts], [False, True])
        self.assertEqual(starts[0], starts[1])
        self.assertEqual(starts[0]["encryptedPassword"], "****")
        self.assertEqual(len(service.messages("stop")), 1)

    def test_leaving_while_online_sends_one_stop(self):
        service, client = self.online()
        client.widgets.click("push button", "Close")
        client.widgets.find("dialog", ".*", road.SECONDS)
        client.widgets.press("push button", "OK")
        wait_for("the client's end", lambda: not client.alive(), road.SECONDS)
        self.assertEqual(client.process.returncode, 0)
        wait_for("a stop", lambda: service.messages("stop"), road.SECONDS)
        self.assertEqual(len(service.messages("stop")), 1)


if __name__ == "__main__":
    road.main()
