# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers
"""A small client for OBS's own remote control, obs-websocket 5."""

import base64
import json

from websockets.exceptions import WebSocketException
from websockets.sync.client import connect

from picture import Picture

PORT = 4455
HELLO, IDENTIFY, IDENTIFIED, REQUEST, RESPONSE = 0, 1, 2, 6, 7
NOT_READY = 207


class RequestRefused(Exception):
    """OBS answered a request with an error."""

    def __init__(self, name, status):
        super().__init__(f"{name}: {status.get('comment', 'refused')} ({status['code']})")
        self.code = status["code"]


class ObsWebsocket:
    def __init__(self, port=PORT):
        self._socket = connect(f"ws://127.0.0.1:{port}", max_size=None, open_timeout=5,
                               close_timeout=1)
        self._count = 0
        self._expect(HELLO)
        self._send(IDENTIFY, {"rpcVersion": 1, "eventSubscriptions": 0})
        self._expect(IDENTIFIED)

    @classmethod
    def connect_when_ready(cls, port=PORT):
        """A client, or None for as long as OBS is still starting."""
        client = None
        try:
            client = cls(port)
            client.request("GetSceneList")
            return client
        except (OSError, WebSocketException, RequestRefused) as error:
            if client:
                client.close()
            if isinstance(error, RequestRefused) and error.code != NOT_READY:
                raise
            return None

    def _send(self, op, data):
        self._socket.send(json.dumps({"op": op, "d": data}))

    def _expect(self, op):
        message = json.loads(self._socket.recv(timeout=20))
        if message["op"] != op:
            raise ValueError(f"obs-websocket sent op {message['op']} instead of {op}.")
        return message["d"]

    def request(self, name, **data):
        """Sends one request and returns the answer's data."""
        self._count += 1
        self._send(REQUEST, {"requestType": name, "requestId": str(self._count),
                             "requestData": data})
        answer = self._expect(RESPONSE)
        if not answer["requestStatus"]["result"]:
            raise RequestRefused(name, answer["requestStatus"])
        return answer.get("responseData", {})

    def create_input(self, scene, name, kind, settings, place=(0, 0), shown=True, **transform):
        """Adds a new source to a scene at a place, and returns the scene item's id."""
        item = self.request("CreateInput", sceneName=scene, inputName=name, inputKind=kind,
                            inputSettings=settings, sceneItemEnabled=shown)["sceneItemId"]
        position = {"positionX": place[0], "positionY": place[1]}
        self.request("SetSceneItemTransform", sceneName=scene, sceneItemId=item,
                     sceneItemTransform=position | transform)
        return item

    def lock(self, scene, item):
        """Keeps a scene item from being moved with the mouse, and from being framed when chosen."""
        self.request("SetSceneItemLocked", sceneName=scene, sceneItemId=item, sceneItemLocked=True)

    def picture(self, source):
        """What a source or scene looks like now, in its own size; None while it has no size."""
        try:
            answer = self.request("GetSourceScreenshot", sourceName=source, imageFormat="png")
        except RequestRefused as refused:
            if "width or height" in str(refused) or refused.code == 702:
                return None
            raise
        return Picture(base64.b64decode(answer["imageData"].partition(",")[2]))

    def close(self):
        self._socket.close()
