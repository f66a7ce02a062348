"""A peer that may be the service sends what no service does."""

import road
from hostile_peer import Peer, floods


class Hostile(road.Road):
    def test_what_is_too_much_leaves_the_client_alive_and_listening(self):
        opened = self.browser()
        self.write_profile()
        client = self.client()
        peer = Peer()
        self.addCleanup(peer.close)
        self.sees(client, "Ready")
        for meaning, parts in floods().items():
            with self.subTest(meaning):
                peer.go_online(client, road.SECONDS)
                peer.send(*parts)
                peer.go_offline(client, road.SECONDS)
        peer.go_online(client, road.SECONDS)
        self.assertLessEqual(len(opened()), 4)


if __name__ == "__main__":
    road.main()
