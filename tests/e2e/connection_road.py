"""What the gateway and an impatient user do to a connection."""

import road
from waiting import wait_for


class Connection(road.Road):
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
