"""What the gateway and an impatient user do to a connection."""

import road


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
        service, client = self.online(*self.scenario())
        service.order("reconnect 1500")
        self.sees(client, "ReConnecting")
        self.assertNotIn("Online", client.widgets.texts())
        self.sees_online(client)
        self.sees_counters_grow(client)
        self.assertEqual(len(service.messages("start")), 1)

        service.order("disconnect 5")
        client.widgets.press("push button", "OK", road.SECONDS)
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)


if __name__ == "__main__":
    road.main()
