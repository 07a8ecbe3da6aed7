"""The ZeroMQ contract: two frames, the topic name[group], then the message bytes."""

import zmq

import quillon


def test_messages_arrive_as_topic_and_bytes():
    context = zmq.Context()
    with quillon.Publisher("tcp://127.0.0.1:*", context=context) as publisher:
        subscriber = context.socket(zmq.SUB)
        subscriber.connect(publisher.endpoint)
        subscriber.setsockopt(zmq.SUBSCRIBE, b"Probe[2]")
        m = quillon.Message("Probe", 2)
        m.add_1d(1.0)
        other = quillon.Message("Probe", 21)
        other.add_1d(2.0)
        received = None
        for _ in range(50):  # a subscription takes a moment to reach the publisher
            publisher.send(other, topic="Probe[21]x")
            publisher.send(m)
            if subscriber.poll(100):
                received = subscriber.recv_multipart()
                break
        assert received == [b"Probe[2]", bytes(m)]
        publisher.send(bytes(m))  # the topic is read from the bytes
        assert subscriber.poll(1000) and subscriber.recv_multipart() == [b"Probe[2]", bytes(m)]
        subscriber.close(0)
    context.term()
