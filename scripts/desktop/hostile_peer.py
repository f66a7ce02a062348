"""A peer that may be the service, by its user, and sends what no service does."""

import json
import socket
import struct
import threading

from waiting import wait_for

_PORT = 35421
_HEARTBEAT, _COMMON = 0, 2
_CONNECTING, _ONLINE, _OFFLINE, _KEY_EXCHANGE = 40976, 40971, 40973, 40994
_SERVERS_TEXT = -99
_MIB = 1 << 20


def frame(kind, payload=b"", length=None):
    """`length`: what the header says, where it lies."""
    told = len(payload) if length is None else length
    return struct.pack("=4sii", b"deaf", kind, told) + payload


def reply(subtype, **keys):
    message = {"profileName": "Head office", "type": "reply", "subtype": subtype, **keys}
    return frame(_COMMON, json.dumps(message).encode())


def status(code, **keys):
    return reply("connectStatus", statusCode=code, **keys)


def _gateways(count, entry):
    text = json.dumps(entry, separators=(",", ":")).encode()
    head = b'{"profileName":"Head office","type":"reply","subtype":"gatewayList","gatewayList":['
    return frame(_COMMON, head + b",".join([text] * count) + b"]}")


def floods():
    """What is too much, by name: frames."""
    gateway = {"name": "g", "addr": "192.0.2.1", "detectPort": "1", "sslPort": "1"}
    text = reply("errmsgbyServer", statusCode=_SERVERS_TEXT, errorMsgEnglish="x" * _MIB)
    pages = [status(_KEY_EXCHANGE, redirectUrl=f"http://127.0.0.1/{n}") for n in range(300)]
    return {
        "a frame of 30 MB of junk": [frame(_COMMON, b"de\0a\xff" * (6 * _MIB))],
        "a list of 700,000 gateways": [_gateways(700_000, gateway)],
        "700,000 gateways in one whole frame": [_gateways(700_000, {"name": "g"})],
        "a text of 1 MB": [text],
        "300 redirects": pages,
        "a false header of 15 MB": [frame(_COMMON, b"junk" * 1000, length=15 * _MIB)],
    }


class Peer:
    """The service's end of the wire; shows signs of life between two sends."""

    def __init__(self):
        self._listener = socket.create_server(("127.0.0.1", _PORT))
        self._lock = threading.Lock()
        self._over = threading.Event()
        self._client, _ = self._listener.accept()
        threading.Thread(target=self._live, daemon=True).start()
        threading.Thread(target=self._read, daemon=True).start()

    def send(self, *parts):
        with self._lock:
            for part in parts:
                self._client.sendall(part)

    def close(self):
        self._over.set()
        self._client.close()
        self._listener.close()

    def go_online(self, client, seconds):
        client.widgets.press("push button", "Connect Head office", seconds)
        self._until(client, "Connected", seconds, status(_CONNECTING), status(_ONLINE))

    def go_offline(self, client, seconds):
        self._until(client, "Disconnected", seconds, status(_OFFLINE))

    def _until(self, client, text, seconds, *messages):
        """Says it until the client shows it, whatever stands in the way."""

        def probe():
            if button := client.widgets.look("push button", "OK"):  # of a box
                button.press()
            self.send(*messages)
            return text in client.widgets.texts()

        wait_for(text, probe, seconds)

    def _live(self):
        try:
            while not self._over.wait(0.2):
                self.send(frame(_HEARTBEAT))
        except OSError:
            pass

    def _read(self):
        try:
            while self._client.recv(65536):
                pass
        except OSError:
            pass
