"""Junk, pieces of frames, floods and strangers on the wire."""

import socket

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

    def test_a_stranger_on_the_port_disturbs_nobody(self):
        service, client = self.online()
        with socket.create_connection(("127.0.0.1", service.port()), road.SECONDS) as stranger:
            self.assertEqual(stranger.recv(1), b"", "a second client was not closed")
        self.sees_online(client)
        self.sees_counters_grow(client)


if __name__ == "__main__":
    road.main()
