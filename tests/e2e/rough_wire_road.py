"""A service that comes late, dies, says nothing or stands still; junk, pieces of frames and
floods on the wire."""

import signal

import road


class RoughWire(road.Road):
    def test_junk_and_broken_pieces_end_with_the_truth(self):
        service, client = self.online()
        service.order("junk 7")
        self.sees_counters_grow(client)
        # A frame may be taken before its last twelve bytes are there: such pieces spoil messages,
        # and nothing else.
        service.order("split 5")
        service.order("flood 50")
        service.order("split off")
        self.sees_counters_grow(client)
        service.order("offline")
        self.sees(client, "Disconnected")

    def test_a_flood_holds_up_neither_clicks_nor_the_truth(self):
        service, client = self.online()
        service.order("flood 10000")
        self.click_tab(client, "Interface")
        self.sees(client, "10.8.0.2")
        self.click_tab(client, "Statistics")
        told = "exceeded the limit[100], drop the front"
        road.wait_for("the flood in the log", lambda: told in client.log.read_text(), road.SECONDS)
        # A frame on the edge of what was read at once may be spoilt, whatever it says.
        self.sees_counters_grow(client)
        service.order("offline")
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)
        self.go_online(client)

    def test_the_window_answers_whatever_the_service_does(self):
        service, client = self.online()
        service.order("silence on")
        self.click_tab(client, "Interface")
        self.sees(client, "10.8.0.2")
        service.order("silence off")

        service.order("slow 5")
        self.click_tab(client, "Route")
        client.widgets.find("table cell", "10.20.0.0", road.SECONDS)
        service.order("slow off")
        self.click_tab(client, "Statistics")
        self.sees_counters_grow(client)

        service.process.send_signal(signal.SIGSTOP)
        try:
            client.widgets.click("push button", road.DISCONNECT)
            self.click_tab(client, "Interface")
            self.sees(client, "10.8.0.2")
        finally:
            service.process.send_signal(signal.SIGCONT)
        self.sees(client, "Disconnected")
        client.widgets.usable("push button", road.CONNECT, road.SECONDS)

    def test_the_service_comes_after_the_client(self):
        self.write_profile()
        client = self.client()
        self.sees(client, road.LOOKING)
        self.service()
        self.sees(client, "Ready")
        client.widgets.gone("label", road.LOOKING)

    def test_the_service_dies_while_online(self):
        service, client = self.online()
        service.kill()
        self.sees(client, road.LOOKING)
        client.widgets.gone("push button", road.DISCONNECT)
        self.assertNotIn("Online", client.widgets.texts())

        self.service("--port", "35999", name="successor")
        self.sees(client, "Ready")
        self.go_online(client)
        self.sees_counters_grow(client)

    def test_a_link_is_cut_and_the_service_moves(self):
        service, client = self.online()
        for order in ("vanish", "restart 1 37100"):
            service.order(order)
            self.sees(client, "Ready")
            client.widgets.gone("push button", road.DISCONNECT)
            self.go_online(client)
            self.sees_counters_grow(client)


if __name__ == "__main__":
    road.main()
