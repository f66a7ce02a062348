"""Connect, look at the tunnel, disconnect, leave; what the gateway and an impatient user do to it."""

import re

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

    def test_a_kick_out_ends_the_session_before_its_box(self):
        service, client = self.online()
        service.order("hold on")
        service.order("disconnect 5")
        service.order("hold off")
        client.widgets.find("push button", "OK", road.SECONDS)
        self.sees(client, "Disconnected")
        texts = client.widgets.texts()
        self.assertFalse({"Connected", "Online"} & set(texts), texts)
        self.assertFalse([text for text in texts if "duration" in text], texts)
        client.widgets.gone("push button", road.DISCONNECT)
        client.widgets.press("push button", "OK")
        self.go_online(client)

    def test_leaving_while_online_sends_one_stop(self):
        self.write_profile()
        service = self.service()
        for leave in (self._close, self._terminate, self._close_after_a_come_back):
            with self.subTest(leave.__name__):
                client = self.client(leave.__name__)
                self.go_online(client)
                stops = len(service.messages("stop"))
                leave(service, client)
                wait_for("the client's end", lambda: not client.alive(), road.SECONDS)
                self.assertEqual(client.process.returncode, 0)
                quits = "link=down"
                wait_for("goodbye", lambda: quits in service.order("state"), road.SECONDS)
                self.assertEqual(len(service.messages("stop")), stops + 1)

    def _close(self, _, client):
        client.widgets.click("push button", "Close")
        client.widgets.find("dialog", ".*", road.SECONDS)
        client.widgets.press("push button", "OK")

    def _terminate(self, _, client):
        client.process.terminate()

    def _close_after_a_come_back(self, service, client):
        service.order("vanish")
        self.sees(client, "Ready")
        service.order("status CONNECTING")
        service.order("status ONLINE")
        self.sees_online(client)
        self._close(service, client)

    def test_an_end_while_connecting_and_a_double_click_on_disconnect(self):
        self.write_profile()
        service = self.service(*self.scenario(delays={"connecting_ms": 3000, "stop_ms": 2000}))
        client = self.client()
        client.settle(road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        self.sees(client, "Connecting")
        service.order("offline")
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)

        self.go_online(client)
        stops = len(service.messages("stop"))
        client.widgets.look("push button", road.DISCONNECT).click(times=2)
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        self.assertEqual(len(service.messages("stop")) - stops, 1)
        self.assertEqual(len(service.messages("start")), 2)

    def test_a_tunnel_is_lost_and_comes_back(self):
        opened = self.browser()
        page = "http://127.0.0.1/portal"
        service, client = self.online(*self.scenario(session={"redirectUrl": page}))
        wait_for("the page", opened, road.SECONDS)
        service.order("reconnect 1500")
        self.sees(client, "ReConnecting")
        self.assertNotIn("Online", client.widgets.texts())
        self.sees_online(client)
        self.sees_counters_grow(client)
        self.assertEqual(len(service.messages("start")), 1)
        self.assertEqual(opened(), [page], "a reconnect opens nothing again")

        service.order("disconnect 5")
        client.widgets.press("push button", "OK", road.SECONDS)
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)

    def test_an_expired_server_certificate_is_the_users_to_accept(self):
        self.write_profile()
        service = self.service(*self.scenario(serverCertificate="expired"))
        client = self.client()
        client.settle(road.SECONDS)
        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        client.widgets.press("push button", "No", road.SECONDS)
        self.sees(client, "Disconnected")

        client.widgets.click("push button", road.CONNECT, road.SECONDS)
        client.widgets.press("push button", "Yes", road.SECONDS)
        self.sees_online(client)
        answers = [m for m in service.messages("set") if m["subtype"] == "acceptServerCert"]
        self.assertEqual([answer["result"] for answer in answers], [False, True])


if __name__ == "__main__":
    road.main()
