"""A service that says nothing, speaks slowly or stands still leaves the window alive."""

import signal

import road


class FrozenService(road.Road):
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


if __name__ == "__main__":
    road.main()
