"""Publishing channel-group messages over ZeroMQ (pyzmq), for viewers that subscribe live.

Each message travels as two frames on a PUB socket: the topic ``name[group]`` in ASCII with the
group in decimal, then the message bytes exactly as ``Viewer.send`` takes them. A subscriber
filters by topic prefix, so subscribe to ``Probe[2]`` with its closing bracket.
"""

from __future__ import annotations

from .message import Message, parse_topic


class Publisher:
    """A PUB socket that binds (default) or connects to ``endpoint``; a context manager.

    >>> with Publisher('tcp://*:5556') as pub:
    ...     pub.send(message)
    """

    def __init__(self, endpoint: str, *, bind: bool = True, context=None):
        try:
            import zmq
        except ImportError as error:  # pragma: no cover - python3-zmq is a listed dependency
            raise ImportError("Publisher needs pyzmq (Debian: python3-zmq)") from error
        self._zmq = zmq
        self._own_context = context is None
        self._context = context or zmq.Context()
        self._socket = self._context.socket(zmq.PUB)
        self._socket.setsockopt(zmq.LINGER, 0)
        if bind:
            self._socket.bind(endpoint)
        else:
            self._socket.connect(endpoint)
        self.endpoint = self._socket.getsockopt_string(zmq.LAST_ENDPOINT) or endpoint

    def send(self, message: Message | bytes, topic: str | None = None) -> None:
        """Publishes one message; the topic is taken from the message unless given."""
        data = bytes(message)
        if topic is None:
            topic = message.topic if isinstance(message, Message) else parse_topic(data)
        self._socket.send_multipart([topic.encode("ascii"), data])

    def close(self) -> None:
        self._socket.close(0)
        if self._own_context:
            self._context.term()

    def __enter__(self) -> Publisher:
        return self

    def __exit__(self, *exc) -> None:
        self.close()
