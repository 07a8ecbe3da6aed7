#!/usr/bin/python3
"""Publishes the robot arm's motion live over ZeroMQ, computed as it goes, for robot_arm.xml.

The channels and the message layout are those of robot_arm_stream.py, whose message() this
reuses; here each message goes out when it is due, as topic "Arm[1]" and the message bytes.

    publish_robot_arm.py [--bind|--connect ENDPOINT] [--rate HZ] [--curve-secret-key FILE]

Then, in another terminal:

    quillon view examples/robot_arm.xml --connect tcp://127.0.0.1:5556
"""
import argparse
import time

import zmq

from robot_arm_stream import message

STEPS_PER_CYCLE = 120  # one back-and-forth of the arm, as in the recorded stream
STEPS_PER_SECOND = 20  # the recorded stream's pace


def read_key(value):
    """A Z85 key given as text, or the first key line of a file (see docs/live-data.md)."""
    if len(value) == 40:
        return value.encode()
    with open(value) as f:
        for line in f:
            line = line.strip()
            if len(line) == 40:
                return line.encode()
    raise SystemExit("publish_robot_arm.py: no key in " + value)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    where = parser.add_mutually_exclusive_group()
    where.add_argument("--bind", default=None, help="endpoint to bind (default tcp://127.0.0.1:5556)")
    where.add_argument("--connect", default=None, help="endpoint to connect to, e.g. a proxy's frontend")
    parser.add_argument("--rate", type=float, default=20.0, help="messages a second (default 20)")
    parser.add_argument("--curve-secret-key", help="this publisher's CURVE secret key, as a server")
    parser.add_argument("--curve-server-key", help="the server's CURVE public key, as a client of a proxy")
    args = parser.parse_args()

    socket = zmq.Context.instance().socket(zmq.PUB)
    socket.setsockopt(zmq.LINGER, 0)
    if args.curve_server_key:
        public, secret = zmq.curve_keypair()
        if args.curve_secret_key:
            secret = read_key(args.curve_secret_key)
            public = zmq.curve_public(secret)
        socket.curve_serverkey = read_key(args.curve_server_key)
        socket.curve_publickey = public
        socket.curve_secretkey = secret
    elif args.curve_secret_key:
        socket.curve_server = True
        socket.curve_secretkey = read_key(args.curve_secret_key)
    if args.connect:
        socket.connect(args.connect)
    else:
        socket.bind(args.bind or "tcp://127.0.0.1:5556")
    print("publishing Arm[1] at %g messages/s on %s; Ctrl-C stops" %
          (args.rate, socket.getsockopt_string(zmq.LAST_ENDPOINT)), flush=True)

    start = time.monotonic()
    step = 0
    try:
        while True:
            due = start + step / args.rate
            time.sleep(max(0.0, due - time.monotonic()))
            # The pose follows the clock, whatever the rate: a late message shows where the arm is now.
            phase = ((time.monotonic() - start) * STEPS_PER_SECOND) % STEPS_PER_CYCLE
            socket.send_multipart([b"Arm[1]", message(phase, STEPS_PER_CYCLE)])
            step += 1
    except KeyboardInterrupt:
        pass


if __name__ == "__main__":
    main()
