"""The service comes late, dies, and comes back on another port."""

import road


class ServiceLoss(road.Road):
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
